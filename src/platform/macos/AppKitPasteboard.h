#pragma once

#include <optional>

#include "platform/Pasteboard.h"
#include "platform/Workspace.h"

namespace nimbrel::macos {

/// `NSPasteboard.generalPasteboard`, which announces nothing: who wants to know of changes asks for the
/// change count. Its content is read only after that has moved, since the system may ask the user about each
/// reading.
class AppKitPasteboard final : public Pasteboard {
 public:
  /// The workspace outlives this.
  explicit AppKitPasteboard(const Workspace& workspace);

  [[nodiscard]] Access access() const override;
  void setReadPolicy(const PasteboardReadPolicy& policy) override { policy_ = policy; }
  [[nodiscard]] qint64 changeCount() const override;
  [[nodiscard]] QList<PasteboardSnapshot> changesAfter(qint64 count) override;
  [[nodiscard]] std::optional<QString> currentText() const override;
  std::optional<qint64> write(const PasteboardContent& content) override;
  std::optional<qint64> clearIfUnchanged(qint64 count) override;
  void setChangeHandler(std::function<void()>) override {}

 private:
  [[nodiscard]] std::optional<PasteboardSnapshot> readChange();
  /// Notes what is there now, as far as the program has seen it.
  qint64 remember(const std::optional<QString>& text);

  const Workspace& workspace_;
  PasteboardReadPolicy policy_;
  /// The latest change that was read or made, and its text.
  qint64 known_;
  std::optional<QString> text_;
  /// Somebody's change that the program's own write has replaced before anybody asked for it.
  std::optional<PasteboardSnapshot> missed_;
};

}  // namespace nimbrel::macos
