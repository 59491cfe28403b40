#include "app/QuickLook.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <algorithm>

namespace nimbrel {

QuickLook::QuickLook(PreviewPanel& preview, SideFiles& sideFiles, const QString& folder,
                     std::function<QRect()> panelArea)
    : preview_(preview), files_(folder, sideFiles), panelArea_(std::move(panelArea)) {
  files_.removeAll();
  preview_.setCloseHandler([this] { closed(); });
  QCoreApplication::instance()->installEventFilter(this);
}

QuickLook::~QuickLook() {
  preview_.setCloseHandler({});
  if (isVisible()) preview_.close();
  finish();
}

void QuickLook::toggle(const ClipRef& clip) {
  if (isVisible()) return close();
  if (clip) prepare(clip, true);
}

void QuickLook::update(const ClipRef& clip) {
  if (!isVisible() && !opening_) return;
  if (clip) return prepare(clip, opening_);
  showNothing();
}

void QuickLook::prepare(const ClipRef& clip, bool opens) {
  const int request = ++request_;
  opening_ = opens;
  current_ = clip->clip.id;
  const QUuid id = clip->clip.id;
  background_.run([this, clip] { return files_.fileFor(clip->clip); },
                  [this, request, id, opens](const std::optional<PreviewFile>& file) {
                    const bool current = request == request_ && (opens || isVisible());
                    if (current) return show(id, file, opens);
                    if (file && file->isTemporary) PreviewFiles::remove(file->url);
                  });
}

void QuickLook::show(const QUuid& clip, const std::optional<PreviewFile>& file, bool opens) {
  opening_ = false;
  // Without a file the space bar does nothing.
  if (!file && opens) return;
  if (file && file->isTemporary) previewTempFiles_.append({file->url, clip});
  dataSource_.url = file ? std::optional(file->url) : std::nullopt;
  preview_.reload(dataSource_.previewItemAt(0));
  if (opens) preview_.orderFront(panelArea_());
}

void QuickLook::close() {
  ++request_;
  opening_ = false;
  if (isVisible()) preview_.close();
}

void QuickLook::closed() {
  ++request_;
  current_ = QUuid();
  dataSource_.url.reset();
  removeFiles();
  if (closedHandler_) closedHandler_();
}

void QuickLook::forget(const QUuid& clip) {
  if (clip == current_) showNothing();
  const auto gone = std::stable_partition(previewTempFiles_.begin(), previewTempFiles_.end(),
                                          [&](const TemporaryFile& file) { return file.clip != clip; });
  std::for_each(gone, previewTempFiles_.end(),
                [](const TemporaryFile& file) { PreviewFiles::remove(file.url); });
  previewTempFiles_.erase(gone, previewTempFiles_.end());
}

void QuickLook::showNothing() {
  ++request_;
  opening_ = false;
  current_ = QUuid();
  dataSource_.url.reset();
  if (isVisible()) preview_.reload(std::nullopt);
  // What was seen until now may be what must not be seen any more.
  removeFiles();
}

void QuickLook::removeFiles() {
  for (const TemporaryFile& file : std::as_const(previewTempFiles_))
    PreviewFiles::remove(file.url);
  previewTempFiles_.clear();
}

void QuickLook::finish() {
  ++request_;
  removeFiles();
  files_.removeAll();
  // Behind whatever is still being written.
  background_.wait();
  files_.removeAll();
}

bool QuickLook::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress || !isVisible()) return QObject::eventFilter(watched, event);
  const auto& press = static_cast<const QKeyEvent&>(*event);
  if (press.key() != Qt::Key_Space) return QObject::eventFilter(watched, event);
  // The press that opened the preview may be held down.
  if (!press.isAutoRepeat()) close();
  return true;
}

}  // namespace nimbrel
