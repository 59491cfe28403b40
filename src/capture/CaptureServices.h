#pragma once

#include <QByteArray>
#include <QString>
#include <functional>
#include <optional>

#include "capture/model/ClipItem.h"
#include "capture/model/RichContent.h"
#include "capture/model/SensitivityLevel.h"

namespace nimbrel {

/// Grades texts for secrets. Pure; any thread.
class TextGrader {
 public:
  virtual ~TextGrader() = default;

  [[nodiscard]] virtual SensitivityLevel classify(const QString& text,
                                                  const std::optional<QString>& sourceBundleID,
                                                  bool detectCodes) const = 0;
};

/// Finds nothing in any text.
class NoTextGrader final : public TextGrader {
 public:
  [[nodiscard]] SensitivityLevel classify(const QString& text, const std::optional<QString>& sourceBundleID,
                                          bool detectCodes) const override;
};

/// An image that has been stored.
struct StoredImage final {
  QString file;
  /// Of the stored bytes.
  QString hash;
};

/// Keeps what is too large for the database. Main thread; the work itself happens elsewhere.
class SideFiles {
 public:
  virtual ~SideFiles() = default;

  /// Stores an image; `done` is called on the main thread, with nothing when it could not be stored.
  virtual void storeImage(const QByteArray& data, std::function<void(std::optional<StoredImage>)> done) = 0;

  /// Stores a text's formatted form and gives its file name; nothing when it is not kept.
  [[nodiscard]] virtual std::optional<QString> storeRich(const RichContent& content) = 0;

  /// The stored bytes; nothing when they are missing or cannot be opened.
  [[nodiscard]] virtual std::optional<QByteArray> loadImage(const QString& file) = 0;
  [[nodiscard]] virtual std::optional<QByteArray> loadRich(const QString& file) = 0;

  /// Removes a clip's files; errors are ignored.
  virtual void removeFilesOf(const ClipItem& clip) = 0;
};

/// Keeps no files at all.
class NoSideFiles final : public SideFiles {
 public:
  void storeImage(const QByteArray& data, std::function<void(std::optional<StoredImage>)> done) override;
  [[nodiscard]] std::optional<QString> storeRich(const RichContent& content) override;
  [[nodiscard]] std::optional<QByteArray> loadImage(const QString& file) override;
  [[nodiscard]] std::optional<QByteArray> loadRich(const QString& file) override;
  void removeFilesOf(const ClipItem& clip) override;
};

/// Reads the text in stored images. Main thread; results arrive later through the store.
class ImageTextQueue {
 public:
  virtual ~ImageTextQueue() = default;

  virtual void enqueue(const ClipItem& clip) = 0;
};

/// Never reads any.
class NoImageTextQueue final : public ImageTextQueue {
 public:
  void enqueue(const ClipItem& clip) override;
};

}  // namespace nimbrel
