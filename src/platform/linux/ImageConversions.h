#pragma once

#include <QByteArray>
#include <QList>
#include <QThreadPool>
#include <functional>
#include <mutex>
#include <optional>

#include "platform/ImageCodec.h"
#include "platform/StopToken.h"

namespace nimbrel {

/// Encodes images in other formats beside the thread that asks for it, one after the other. Made, asked and
/// destroyed by one thread.
class ImageConversions final {
 public:
  struct Result final {
    quint64 ticket = 0;
    /// Nothing when the image could not be converted.
    std::optional<QByteArray> bytes;
  };

  /// `finished` is called on another thread whenever there is a result to take. The codec outlives this;
  /// without one nothing can be converted.
  ImageConversions(ImageCodec* codec, std::function<void()> finished);
  ~ImageConversions();
  ImageConversions(const ImageConversions&) = delete;
  ImageConversions& operator=(const ImageConversions&) = delete;

  [[nodiscard]] bool isPossible() const { return codec_ != nullptr; }
  void start(quint64 ticket, const QByteArray& image, ImageCodec::Format format);
  [[nodiscard]] QList<Result> takeResults();

 private:
  ImageCodec* codec_;
  std::function<void()> finished_;
  std::mutex mutex_;
  QList<Result> results_;
  StopSource stop_;
  QThreadPool pool_;
};

}  // namespace nimbrel
