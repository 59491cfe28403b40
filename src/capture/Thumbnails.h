#pragma once

#include <QCache>
#include <QImage>
#include <QObject>
#include <QSet>
#include <QString>

#include "capture/CaptureServices.h"
#include "capture/MainThreadCalls.h"
#include "platform/ImageCodec.h"
#include "platform/StopToken.h"
#include "storage/SerialQueue.h"

namespace nimbrel {

/// The small pictures of stored images, made on the queue "Nimbrel.thumbnails" and kept for a while: at most
/// 100, and at most 25,000,000 bytes of pixels. Main thread.
class Thumbnails final : public QObject {
  Q_OBJECT

 public:
  /// Both outlive this.
  Thumbnails(SideFiles& files, ImageCodec& codec);
  ~Thumbnails() override;

  /// The thumbnail of an image file if it is there; else null, and it is made, and `ready` tells when. One
  /// that cannot be made stays null and is not tried again.
  [[nodiscard]] QImage thumbnail(const QString& file);

  void insert(const QString& file, const QImage& thumbnail);
  void remove(const QString& file);

 Q_SIGNALS:
  void ready(const QString& file);

 private:
  void make(const QString& file);

  SideFiles& files_;
  ImageCodec& codec_;
  QCache<QString, QImage> cache_;
  /// Being made, or not to be made: in neither case asked for again.
  QSet<QString> asked_;
  StopSource stop_;
  MainThreadCalls calls_;
  // Last member, first to go: what it still runs uses all of the above.
  SerialQueue queue_;
};

}  // namespace nimbrel
