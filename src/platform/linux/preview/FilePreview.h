#pragma once

#include <QObject>
#include <QThreadPool>
#include <memory>

#include "platform/PreviewPanel.h"
#include "platform/StopToken.h"
#include "platform/linux/preview/PreviewWindow.h"

namespace nimbrel {

/// The preview as a window of the program's own: texts, pictures, and of other files what they are.
class FilePreview final : public QObject, public PreviewPanel {
 public:
  /// The codec outlives this.
  explicit FilePreview(ImageCodec& codec);
  ~FilePreview() override;

  [[nodiscard]] bool isVisible() const override { return window_ && window_->isVisible(); }
  void orderFront(const QRect& beside) override;
  void reload(const std::optional<QUrl>& item) override;
  void close() override;
  void setCloseHandler(std::function<void()> handler) override { closeHandler_ = std::move(handler); }

 private:
  PreviewWindow& made();

  ImageCodec& codec_;
  std::function<void()> closeHandler_;
  std::unique_ptr<PreviewWindow> window_;
  /// Stops the file that is being loaded; what it would give is not wanted any more.
  StopSource loading_;
  // Last member, first to go: it waits for what it still runs.
  QThreadPool loader_;
};

}  // namespace nimbrel
