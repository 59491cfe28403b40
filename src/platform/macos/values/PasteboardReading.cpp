#include "platform/macos/values/PasteboardReading.h"

#include <algorithm>

#include "platform/PasteboardTypes.h"

namespace nimbrel::macos {
namespace {

class SnapshotReading {
 public:
  SnapshotReading(PasteboardReader& reader, const PasteboardReadPolicy& policy, PasteboardSnapshot& snapshot)
      : reader_(reader), policy_(policy), snapshot_(snapshot) {}

  void read() {
    if (policy_.paused) return;
    snapshot_.types = reader_.types();
    if (!snapshot_.types.isEmpty() && !isIgnored() && !isFromIgnoredApplication() && !readFiles() &&
        !readText())
      readImage();
  }

 private:
  bool isIgnored() const {
    return std::any_of(snapshot_.types.begin(), snapshot_.types.end(),
                       [this](const QString& type) { return policy_.ignoredTypes.contains(type); });
  }

  bool isFromIgnoredApplication() const {
    if (snapshot_.types.contains(pasteboardType::remoteClipboard)) return false;
    return snapshot_.frontApplication &&
           policy_.ignoredApplications.contains(snapshot_.frontApplication->identifier);
  }

  std::optional<QByteArray> dataOf(QStringView type, qint64 maxBytes) {
    auto reading = reader_.data(type.toString(), maxBytes);
    if (reading.isTooLarge) snapshot_.oversized.insert(type.toString());
    return std::move(reading.content);
  }

  bool readFiles() {
    snapshot_.fileUrls = reader_.fileUrls();
    return !snapshot_.fileUrls.isEmpty();
  }

  bool readText() {
    auto reading = reader_.text(policy_.maxTextBytes);
    // A text that is too large is not replaced by a picture of it.
    if (reading.isTooLarge) snapshot_.oversized.insert(pasteboardType::plainText.toString());
    snapshot_.text = std::move(reading.content);
    if (!snapshot_.text || snapshot_.text->trimmed().isEmpty()) return reading.isTooLarge;
    if (policy_.wantsRichText) readRichText();
    return true;
  }

  void readRichText() {
    snapshot_.rtf = dataOf(pasteboardType::rtf, policy_.maxRichBytes);
    if (!snapshot_.rtf || snapshot_.rtf->isEmpty())
      snapshot_.html = dataOf(pasteboardType::html, policy_.maxRichBytes);
  }

  void readImage() {
    snapshot_.image = dataOf(pasteboardType::png, policy_.maxImageBytes);
    if ((!snapshot_.image || snapshot_.image->isEmpty()) && snapshot_.oversized.isEmpty())
      snapshot_.image = dataOf(pasteboardType::tiff, policy_.maxImageBytes);
  }

  PasteboardReader& reader_;
  const PasteboardReadPolicy& policy_;
  PasteboardSnapshot& snapshot_;
};

}  // namespace

PasteboardSnapshot readSnapshot(PasteboardReader& reader, const PasteboardReadPolicy& policy,
                                qint64 changeCount, const std::optional<RunningApplication>& front) {
  PasteboardSnapshot snapshot;
  snapshot.changeCount = changeCount;
  snapshot.frontApplication = front;
  SnapshotReading(reader, policy, snapshot).read();
  return snapshot;
}

}  // namespace nimbrel::macos
