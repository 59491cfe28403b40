#pragma once

#include <QObject>
#include <functional>

#include "capture/ClipboardStore.h"
#include "platform/Opener.h"
#include "settings/model/SettingsValues.h"

namespace nimbrel {

/// Asks the user to prove who they are and tells whether they did; empty where nobody can ask.
using Authenticate = std::function<void(std::function<void(bool)> done)>;

/// What the actions work with; everything outlives them.
struct ClipActionParts final {
  ClipboardStore& store;
  Opener& opener;
  const SettingsValues& settings;
  Authenticate authenticate;
};

/// What can be done with a clip, whoever asks for it: a key, a row's button, a menu. What does not apply to
/// the clip does nothing, and neither does anything that is asked for a clip which has gone meanwhile. Main
/// thread.
class ClipActions final : public QObject {
  Q_OBJECT

 public:
  explicit ClipActions(const ClipActionParts& parts);

  /// Puts the clip on the pasteboard and asks for the paste, whether or not that succeeded.
  void paste(const ClipItem& clip);
  void pastePlain(const ClipItem& clip);
  void pasteRecognizedText(const ClipItem& clip);
  /// Does nothing but say so when the transform does not apply to the text.
  void pasteTransformed(const ClipItem& clip, TextTransform transform);
  void openLink(const ClipItem& clip);
  void reveal(const ClipItem& clip);
  void remove(const ClipItem& clip);
  void undoRemoval();
  void togglePin(const ClipItem& clip);
  void toggleQueue(const ClipItem& clip);
  void setCollection(const ClipItem& clip, const QString& name);

  /// Whether a masked clip can be unlocked here.
  [[nodiscard]] bool canUnlock() const;
  /// Whether unlocking asks for a proof first.
  [[nodiscard]] bool isLocked() const { return parts_.settings.lockMode != LockMode::disabled; }
  void unlock(const ClipItem& clip);
  /// A proof that was asked for until now shows nothing any more.
  void forgetUnlocking() { ++use_; }

 Q_SIGNALS:
  /// The pasteboard is ready to be pasted from.
  void pasteRequested();
  /// What was asked for happens outside of the panel.
  void leaveRequested();
  /// Something was not done; why, in words.
  void failed(const QString& why);
  /// A clip was removed, and perhaps can be had back.
  void removed(bool canUndo);
  void restored(const QUuid& id);
  /// The content of a sensitive clip may be shown.
  void unlocked(const QUuid& id);

 private:
  /// Whether a clip is still in the history; says so when it is not.
  bool isThere(const ClipItem& clip);

  ClipActionParts parts_;
  /// Which use of the panel a proof belongs to.
  int use_ = 0;
};

}  // namespace nimbrel
