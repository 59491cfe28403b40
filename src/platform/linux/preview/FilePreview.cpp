#include "platform/linux/preview/FilePreview.h"

namespace nimbrel {

FilePreview::FilePreview(ImageCodec& codec) : codec_(codec) {
  loader_.setMaxThreadCount(1);
}

FilePreview::~FilePreview() {
  loading_.requestStop();
  closeHandler_ = {};
}

PreviewWindow& FilePreview::made() {
  if (!window_) {
    window_ = std::make_unique<PreviewWindow>();
    connect(window_.get(), &PreviewWindow::closed, this, [this] {
      loading_.requestStop();
      if (closeHandler_) closeHandler_();
    });
  }
  return *window_;
}

void FilePreview::orderFront(const QRect& beside) {
  made().showBeside(beside);
}

void FilePreview::reload(const std::optional<QUrl>& item) {
  loading_.requestStop();
  loading_ = {};
  if (!item) return made().setContent({{}, PreviewNothing{}});
  loader_.start([this, path = item->toLocalFile(), stop = loading_.token()] {
    if (stop.stopRequested()) return;
    const PreviewContent content = loadPreview(path, codec_, stop);
    QMetaObject::invokeMethod(
        this,
        [this, content, stop] {
          if (!stop.stopRequested()) made().setContent(content);
        },
        Qt::QueuedConnection);
  });
}

void FilePreview::close() {
  if (window_) window_->hide();
}

}  // namespace nimbrel
