#pragma once

#include <QCoreApplication>
#include <QMetaObject>
#include <utility>

namespace nimbrel::macos {

/// Has something done on the main thread, later, by the toolkit's event loop. The main dispatch queue is
/// served by AppKit's loop alone, which commands without a screen have none of, and by nobody while something
/// that it has called waits in a loop of its own. Any thread.
template <class Task>
void onMainThread(Task&& task) {
  if (auto* const application = QCoreApplication::instance())
    QMetaObject::invokeMethod(application, std::forward<Task>(task), Qt::QueuedConnection);
}

}  // namespace nimbrel::macos
