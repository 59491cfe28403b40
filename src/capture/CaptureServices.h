#pragma once

#include <QByteArray>
#include <QImage>
#include <QString>
#include <QStringList>
#include <functional>
#include <optional>

#include "capture/model/ClipItem.h"
#include "capture/model/RichContent.h"
#include "capture/model/SensitivityLevel.h"

namespace nimbrel {

/// Grades texts for secrets. Main thread.
class TextGrader {
 public:
  using Graded = std::function<void(SensitivityLevel)>;

  virtual ~TextGrader() = default;

  /// Grades a text as a whole, at once: what takes long is not looked at.
  [[nodiscard]] virtual SensitivityLevel classify(const QString& text,
                                                  const std::optional<QString>& sourceBundleID,
                                                  bool detectCodes) const = 0;

  /// Grades a text with its lines and words, elsewhere, and tells the grade later on the main thread; texts
  /// are told of in the order in which they were given.
  virtual void classifyText(const QString& text, const std::optional<QString>& sourceBundleID,
                            Graded done) = 0;
};

/// An image as it will be stored.
struct PreparedImage final {
  QByteArray png;
  /// Of the PNG.
  QString hash;
  QImage thumbnail;
};

/// Names of files beside the database.
struct SideFileNames final {
  QStringList images;
  QStringList rich;

  [[nodiscard]] bool isEmpty() const { return images.isEmpty() && rich.isEmpty(); }
  SideFileNames& operator+=(const SideFileNames& other) {
    images += other.images;
    rich += other.rich;
    return *this;
  }
};

[[nodiscard]] inline SideFileNames sideFilesOf(const ClipItem& clip) {
  SideFileNames names;
  if (clip.imageFile) names.images.append(*clip.imageFile);
  if (clip.richFile) names.rich.append(*clip.richFile);
  return names;
}

/// Keeps what is too large for the database. Main thread, except where a method says otherwise; what takes
/// time happens elsewhere, in the order in which it was asked for, and what comes of it is told on the main
/// thread.
class SideFiles {
 public:
  /// A file's name; nothing when it could not be stored.
  using Stored = std::function<void(const std::optional<QString>& name)>;

  virtual ~SideFiles() = default;

  /// Turns a copied image into what is stored of it; nothing when it is no image that can be kept.
  virtual void prepareImage(const QByteArray& data,
                            std::function<void(const std::optional<PreparedImage>&)> done) = 0;
  virtual void storeImage(const PreparedImage& image, Stored done) = 0;

  /// Stores a text's formatted form.
  virtual void storeRich(const RichContent& content, Stored done) = 0;

  /// The stored bytes, *waiting* for the disk; nothing when they are missing or cannot be opened. Any thread.
  [[nodiscard]] virtual std::optional<QByteArray> loadImage(const QString& file) = 0;
  [[nodiscard]] virtual std::optional<QByteArray> loadRich(const QString& file) = 0;

  /// Removes files; errors are ignored. Any thread.
  virtual void remove(const SideFileNames& names) = 0;
};

/// Reads the text in stored images, one after the other. Main thread.
class ImageTextQueue {
 public:
  /// The recognised text, empty when there is none; called on the main thread.
  using Recognized = std::function<void(const QUuid& id, const QString& text)>;

  virtual ~ImageTextQueue() = default;

  /// Who is told of each result; set before anything is queued.
  virtual void setHandler(Recognized handler) = 0;

  /// Queues a clip's image, once. An image that cannot be read is not tried again by itself.
  virtual void enqueue(const QUuid& id, const QString& imageFile) = 0;

  /// Forgets a clip, whether it waits or is being read.
  virtual void cancel(const QUuid& id) = 0;

  /// Forgets all of them.
  virtual void cancelAll() = 0;
};

}  // namespace nimbrel
