#pragma once

#include <QString>
#include <QStringList>
#include <chrono>
#include <deque>
#include <optional>

#include "capture/ClipboardStore.h"
#include "capture/model/RemoteDeviceType.h"
#include "platform/Clock.h"

namespace nimbrel {

/// A text that another device has sent.
struct RemoteText final {
  QString text;
  RemoteDeviceType device = RemoteDeviceType::universal;

  bool operator==(const RemoteText&) const = default;
};

/// Reads "nimbrel://add?text=…&source=…" (percent-encoded as in RFC 3986; a plus sign is a plus sign).
/// Nothing for any other URL, for one without text, and for one longer than any text that is kept could make
/// it.
[[nodiscard]] std::optional<RemoteText> remoteTextOf(const QString& url);

/// Takes texts out of URLs into the history. Any program and any web page can open a URL, so they can neither
/// fill the history nor keep the program busy. Main thread.
class RemoteTexts final {
 public:
  /// No more texts than this are added in any `kWindow`.
  static constexpr std::size_t kMaxAdditions = 20;
  static constexpr std::chrono::seconds kWindow{10};
  /// Nor are URLs with more characters than this looked at, each with some for itself.
  static constexpr qsizetype kMaxCharacters = 16'000'000;

  /// Both outlive this.
  RemoteTexts(ClipboardStore& store, const Clock& clock) : store_(store), clock_(clock) {}

  /// Adds the texts of URLs, in order. Texts that capture would refuse for their size are refused here too;
  /// what is too much is refused with one line in the log until something is added again.
  void openUrls(const QStringList& urls);

 private:
  [[nodiscard]] bool mayLookAt(const QString& url);
  void refuse();

  ClipboardStore& store_;
  const Clock& clock_;
  struct Look {
    std::chrono::steady_clock::time_point moment;
    qsizetype characters = 0;
  };
  std::deque<std::chrono::steady_clock::time_point> additions_;
  std::deque<Look> looks_;
  qsizetype lookedAt_ = 0;
  bool refusing_ = false;
};

}  // namespace nimbrel
