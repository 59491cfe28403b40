#pragma once

#include <QRect>
#include <QUrl>
#include <functional>
#include <optional>

namespace nimbrel {

/// A window beside the panel that shows one file. The keyboard stays with the panel. Main thread; reading and
/// decoding the file keep nobody waiting.
class PreviewPanel {
 public:
  virtual ~PreviewPanel() = default;

  [[nodiscard]] virtual bool isVisible() const = 0;

  /// Puts the window in front, beside another part of the screen.
  virtual void orderFront(const QRect& beside) = 0;

  /// What to show, a local file; without one the window says that there is nothing to be seen.
  virtual void reload(const std::optional<QUrl>& item) = 0;

  /// Takes the visible window off the screen and forgets what it showed; the close handler is called.
  virtual void close() = 0;

  /// Called when the window has closed, whoever closed it.
  virtual void setCloseHandler(std::function<void()> handler) = 0;
};

}  // namespace nimbrel
