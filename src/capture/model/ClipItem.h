#pragma once

#include <QJsonObject>
#include <QString>
#include <QUuid>
#include <chrono>
#include <optional>

#include "capture/model/RemoteDeviceType.h"

namespace nimbrel {

/// A moment with the precision that the database keeps: seconds since 1970-01-01 UTC as a double.
using Timestamp = std::chrono::time_point<std::chrono::system_clock, std::chrono::duration<double>>;

[[nodiscard]] constexpr Timestamp timestampFromUnixSeconds(double seconds) {
  return Timestamp{std::chrono::duration<double>{seconds}};
}

[[nodiscard]] constexpr double unixSeconds(Timestamp moment) {
  return moment.time_since_epoch().count();
}

/// One entry of the history, a plain value identified by `id`.
///
/// Equality compares every field, so that a changed clip is always seen as changed. A clip is an image clip
/// when it has an `imageFile`, a file clip when it has a `fileURLString`, and a text clip otherwise.
struct ClipItem final {
  QUuid id;
  QString text;
  Timestamp date{};
  bool pinned = false;
  std::optional<QString> imageFile;
  std::optional<QString> imageHash;
  std::optional<Timestamp> expiresAt;
  /// Three states: true means sensitive; false and absent both mean that it is not.
  std::optional<bool> sensitive;
  std::optional<QString> ocrText;
  std::optional<QString> textHash;
  std::optional<QString> sourceBundleID;
  std::optional<QString> sourceName;
  std::optional<QString> richFile;
  std::optional<QString> richHash;
  std::optional<QString> collection;
  /// Absolute URLs of the copied files, one a line.
  std::optional<QString> fileURLString;
  std::optional<RemoteDeviceType> remoteDevice;

  [[nodiscard]] bool isImage() const { return imageFile.has_value(); }
  [[nodiscard]] bool isFile() const { return fileURLString.has_value(); }
  [[nodiscard]] bool isText() const { return !isImage() && !isFile(); }
  [[nodiscard]] bool isSensitive() const { return sensitive.value_or(false); }

  bool operator==(const ClipItem&) const = default;
};

/// The canonical text of an id wherever it is stored: upper case, with hyphens, without braces.
[[nodiscard]] QString clipIdText(const QUuid& id);

/// The inverse of `clipIdText`, in either letter case; nothing when the text is no UUID in that form.
[[nodiscard]] std::optional<QUuid> clipIdFromText(const QString& text);

/// The serialised form of a clip: exactly its seventeen field names as keys, absent optionals left out, dates
/// as seconds since 2001-01-01 UTC (the reference date of the older history files).
[[nodiscard]] QJsonObject clipToJson(const ClipItem& clip);

/// Reads `clipToJson`'s form. Nothing when a required key is missing or any key holds the wrong type; unknown
/// keys are ignored, and a null counts as absent.
[[nodiscard]] std::optional<ClipItem> clipFromJson(const QJsonObject& object);

}  // namespace nimbrel
