#pragma once

#include <QCoreApplication>
#include <QMetaObject>
#include <utility>

namespace nimbrel::macos {

/// Has something done on the main thread, later, by the toolkit's event loop: the main dispatch queue is
/// served by AppKit's alone, which commands without a screen have none of. Any thread.
template <class Task>
void onMainThread(Task&& task) {
  if (auto* const application = QCoreApplication::instance())
    QMetaObject::invokeMethod(application, std::forward<Task>(task), Qt::QueuedConnection);
}

}  // namespace nimbrel::macos
