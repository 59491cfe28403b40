#pragma once

#include <QList>
#include <QString>
#include <QUuid>
#include <functional>
#include <optional>

#include "capture/CaptureServices.h"
#include "capture/MainThreadCalls.h"
#include "platform/StopToken.h"
#include "platform/TextRecognizer.h"
#include "storage/SerialQueue.h"

namespace nimbrel {

/// The lines of a picture as one text: the topmost first, lines of the same height in the recognizer's order.
[[nodiscard]] QString joinedLines(QList<RecognizedLine> lines);

/// Runs text recognition in the background, on the queue "Nimbrel.ocr", one image at a time. Main thread.
class ImageTextReader final : public ImageTextQueue {
 public:
  /// Both outlive this.
  ImageTextReader(SideFiles& files, TextRecognizer& recognizer);
  ~ImageTextReader() override;

  /// Who is told of the images that are not finished whenever that changes, so that an end of the program
  /// interrupts them and does not forget them.
  void setPendingHandler(std::function<void(const QList<QUuid>&)> handler) {
    pendingHandler_ = std::move(handler);
  }

  void setHandler(Recognized handler) override { handler_ = std::move(handler); }
  void enqueue(const QUuid& id, const QString& imageFile) override;
  void cancel(const QUuid& id) override;
  void cancelAll() override;

  /// How many images are not finished.
  [[nodiscard]] qsizetype pendingCount() const { return ocrPending_.size(); }

 private:
  struct Task {
    /// Tells a task from an earlier one for the same clip.
    quint64 number;
    QUuid id;
    QString imageFile;
  };

  void tellPending() const;
  void startNext();
  void finish(const Task& task, const std::optional<QString>& text);

  SideFiles& files_;
  TextRecognizer& recognizer_;
  Recognized handler_;
  std::function<void(const QList<QUuid>&)> pendingHandler_;
  /// The first one is being read, unless it took the place of one that is being given up.
  QList<Task> ocrPending_;
  bool reading_ = false;
  quint64 lastNumber_ = 0;
  StopSource stop_;
  MainThreadCalls calls_;
  // Last member, first to go: what it still runs uses all of the above.
  SerialQueue queue_;
};

}  // namespace nimbrel
