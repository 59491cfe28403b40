#include "platform/common/FileOpenEvents.h"

#include <QFileOpenEvent>
#include <QUrl>
#include <utility>

namespace nimbrel {

FileOpenEvents::FileOpenEvents(QCoreApplication& application, Open open) : open_(std::move(open)) {
  application.installEventFilter(this);
}

bool FileOpenEvents::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::FileOpen) return QObject::eventFilter(watched, event);
  const QUrl url = static_cast<const QFileOpenEvent*>(event)->url();
  if (url.isEmpty() || url.isLocalFile()) return false;
  open_({url.toString(QUrl::FullyEncoded)});
  return true;
}

}  // namespace nimbrel
