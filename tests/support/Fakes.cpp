#include "support/Fakes.h"

#include <QWidget>
#include <algorithm>
#include <thread>

#include "platform/PasteboardTypes.h"
#include "storage/ContentHash.h"

namespace nimbrel::testing {
namespace {

QString keyOf(const SecretItem& item) {
  return item.service + u'/' + item.account;
}

}  // namespace

QList<PasteboardSnapshot> FakePasteboard::changesAfter(qint64 after) {
  QList<PasteboardSnapshot> changes = std::exchange(ready, {});
  changes.removeIf([after](const PasteboardSnapshot& snapshot) { return snapshot.changeCount <= after; });
  return changes;
}

std::optional<qint64> FakePasteboard::write(const PasteboardContent& content) {
  if (failWrites) return std::nullopt;
  writes.append(content);
  text = content.text;
  return ++count;
}

std::optional<qint64> FakePasteboard::clearIfUnchanged(qint64 expected) {
  if (expected != count) return std::nullopt;
  ++clears;
  text.reset();
  return ++count;
}

void FakePasteboard::copy(PasteboardSnapshot snapshot) {
  snapshot.changeCount = ++count;
  text = snapshot.text;
  ready.append(std::move(snapshot));
}

void FakePasteboard::copyText(const QString& copied) {
  PasteboardSnapshot snapshot;
  snapshot.types = {pasteboardType::plainText.toString()};
  snapshot.text = copied;
  copy(snapshot);
}

bool FakeHotKeyRegistrar::registerHotKey(quint32 id, quint32 keyCode, quint32 modifiers) {
  const Combo combo{keyCode, modifiers};
  const bool held =
      std::any_of(registered.begin(), registered.end(), [&](const Combo& other) { return other == combo; });
  if (held || taken.contains(combo) || registered.contains(id)) return false;
  registered.insert(id, combo);
  return true;
}

SecretLookup FakeSecretStore::find(const SecretItem& item) {
  ++finds;
  if (!isThere) return {SecretLookup::Outcome::unavailable, {}, 1};
  if (findStatus != 0) return {SecretLookup::Outcome::failed, {}, findStatus};
  const auto found = secrets.constFind(keyOf(item));
  if (found == secrets.constEnd()) return {SecretLookup::Outcome::notFound, {}, 0};
  return {SecretLookup::Outcome::found, *found, 0};
}

int FakeSecretStore::add(const SecretItem& item, const QByteArray& secret) {
  ++adds;
  if (addStatus == 0) secrets.insert(keyOf(item), secret);
  return addStatus;
}

QRect FakePanelWindow::frame() const {
  return widget_.geometry();
}

void FakePanelWindow::setFrame(const QRect& frame) {
  widget_.setGeometry(frame);
}

void FakePanelWindow::present() {
  widget_.show();
}

void FakePanelWindow::dismiss(bool returnFocus) {
  dismissals.append(returnFocus);
  widget_.hide();
}

SensitivityLevel FakeTextGrader::classify(const QString& text, const std::optional<QString>& sourceBundleID,
                                          bool detectCodes) const {
  lastSource = sourceBundleID;
  lastDetectCodes = detectCodes;
  return grades.value(text, SensitivityLevel::none);
}

void FakeTextGrader::classifyText(const QString& text, const std::optional<QString>& sourceBundleID,
                                  Graded done) {
  lastSource = sourceBundleID;
  gradedTexts.append(text);
  heldBack_.append(
      [done = std::move(done), level = lineGrades.value(text, SensitivityLevel::none)] { done(level); });
  if (!slow) finish();
}

void FakeTextGrader::finish() {
  while (!heldBack_.isEmpty())
    heldBack_.takeFirst()();
}

void FakeSideFiles::run(std::function<void()> task) {
  if (slow)
    heldBack_.append(std::move(task));
  else
    task();
}

void FakeSideFiles::finish() {
  while (!heldBack_.isEmpty())
    heldBack_.takeFirst()();
}

void FakeSideFiles::prepareImage(const QByteArray& data,
                                 std::function<void(const std::optional<PreparedImage>&)> done) {
  run([this, data, done = std::move(done)] {
    if (unreadable.contains(data)) return done(std::nullopt);
    done(PreparedImage{data, sha256Hex(data), QImage(2, 2, QImage::Format_RGB32)});
  });
}

void FakeSideFiles::storeImage(const PreparedImage& image, Stored done) {
  run([this, image, done = std::move(done)] {
    if (failWrites) return done(std::nullopt);
    const QString file = QStringLiteral("%1.png").arg(++count_);
    {
      const std::scoped_lock lock(mutex_);
      images.insert(file, image.png);
    }
    done(file);
  });
}

void FakeSideFiles::storeRich(const RichContent& content, Stored done) {
  run([this, content, done = std::move(done)] {
    if (failWrites) return done(std::nullopt);
    const QString file = QStringLiteral("%1.%2").arg(++count_).arg(content.fileExtension);
    {
      const std::scoped_lock lock(mutex_);
      rich.insert(file, content.data);
    }
    done(file);
  });
}

std::optional<QByteArray> FakeSideFiles::loadImage(const QString& file) {
  const std::scoped_lock lock(mutex_);
  if (!images.contains(file)) return std::nullopt;
  return images.value(file);
}

std::optional<QByteArray> FakeSideFiles::loadRich(const QString& file) {
  const std::scoped_lock lock(mutex_);
  if (!rich.contains(file)) return std::nullopt;
  return rich.value(file);
}

void FakeSideFiles::remove(const SideFileNames& names) {
  const std::scoped_lock lock(mutex_);
  for (const QString& name : names.images)
    images.remove(name);
  for (const QString& name : names.rich)
    rich.remove(name);
}

std::variant<ImageCodec::Encoded, ImageError> FakeImageCodec::encodePng(const QByteArray& image,
                                                                        int maxPixelSize,
                                                                        const StopToken& stop) {
  while ((slow || endless.contains(image)) && !stop.stopRequested())
    std::this_thread::yield();
  if (stop.stopRequested()) return ImageError{QStringLiteral("ya no hace falta")};
  if (!error.isEmpty()) return ImageError{error};
  return Encoded{image, QImage(maxPixelSize, maxPixelSize, QImage::Format_RGB32)};
}

std::variant<QImage, ImageError> FakeImageCodec::thumbnail(const QByteArray&, int maxPixelSize,
                                                           const StopToken&) {
  ++thumbnails;
  if (!error.isEmpty()) return ImageError{error};
  return QImage(maxPixelSize, maxPixelSize, QImage::Format_RGB32);
}

std::variant<QByteArray, ImageError> FakeImageCodec::convert(const QByteArray& image, Format,
                                                             const StopToken&) {
  if (!error.isEmpty()) return ImageError{error};
  return image;
}

std::variant<QList<RecognizedLine>, ImageError> FakeTextRecognizer::recognizeText(const QByteArray& image,
                                                                                  const StopToken& stop) {
  ++calls;
  while (endless && !stop.stopRequested())
    std::this_thread::yield();
  if (stop.stopRequested()) return ImageError{QStringLiteral("ya no hace falta")};
  if (!error.isEmpty()) return ImageError{error};
  return lines.value(image);
}

}  // namespace nimbrel::testing
