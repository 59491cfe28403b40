#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <functional>

namespace nimbrel {

/// What other programs can have done with the history.
enum class Intent { copyLatestClip, searchHistory, toggleCapture, pasteFromCollection, listCollections };

/// Whether the user may be asked to prove who they are for it: whatever gives out text.
[[nodiscard]] constexpr bool mayAskUser(Intent intent) {
  return intent != Intent::toggleCapture && intent != Intent::listCollections;
}

/// One such request.
struct IntentCall final {
  Intent intent = Intent::copyLatestClip;
  /// The text to look for or the name of the collection; as long as anybody likes.
  QString argument;

  bool operator==(const IntentCall&) const = default;
};

/// An intent's own error, beside those that an intent has by itself: what it was given is too long.
inline constexpr QStringView kArgumentTooLong = u"argumentTooLong";

/// What came of it.
struct IntentReply final {
  /// The name of what went wrong, the same in every language, as "emptyHistory"; empty when nothing did.
  QString error;
  /// For the user: what was done, or what went wrong; may be empty.
  QString message;
  /// Texts of clips, or names of collections.
  QStringList texts;
  /// Whether capture is paused now, when that was asked for.
  bool paused = false;

  bool operator==(const IntentReply&) const = default;
};

using IntentAnswer = std::function<void(const IntentReply&)>;

/// A clip as the desktop's own search shows it.
struct ClipSuggestion final {
  QString id;
  QString text;

  bool operator==(const ClipSuggestion&) const = default;
};

/// What other processes ask of the running instance; every handler is called on the main thread.
struct InstanceRequests final {
  std::function<void()> show;
  /// The panel, where the collections can be chosen from.
  std::function<void()> showCollections;
  /// The panel with a text looked for.
  std::function<void(const QString& text)> showSearch;
  /// URLs as they were given, encoded, unchecked and as long as anybody likes.
  std::function<void(const QStringList&)> openUrls;
  std::function<void()> quit;

  /// Carries out an intent, and answers it now or later.
  std::function<void(const IntentCall&, const IntentAnswer&)> perform;
  /// For the desktop's own search: the ids of what matches, what is shown of them, and one was chosen.
  std::function<void(const QStringList& terms, const std::function<void(const QStringList& ids)>&)> suggest;
  std::function<QList<ClipSuggestion>(const QStringList& ids)> describe;
  std::function<void(const QString& id)> choose;
};

}  // namespace nimbrel
