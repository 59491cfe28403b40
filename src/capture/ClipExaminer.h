#pragma once

#include <QObject>
#include <QSet>
#include <QUuid>

#include "capture/MainThreadCalls.h"
#include "capture/model/IndexedClip.h"
#include "storage/SerialQueue.h"

namespace nimbrel {

/// Looks through long texts for what a row tells of them, on the queue "Nimbrel.texts", so that painting
/// never does. Main thread.
class ClipExaminer final : public QObject {
  Q_OBJECT

 public:
  ClipExaminer();

  /// Sees to it that the traits of a clip will be there, and `examined` tells when.
  void examine(const ClipRef& clip);

 Q_SIGNALS:
  void examined(const QUuid& id);

 private:
  /// Being looked through.
  QSet<const IndexedClip*> asked_;
  MainThreadCalls calls_;
  // Last member, first to go: what it still runs uses all of the above.
  SerialQueue queue_;
};

}  // namespace nimbrel
