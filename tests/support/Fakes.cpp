#include "support/Fakes.h"

#include <QCryptographicHash>
#include <QWidget>
#include <algorithm>

#include "platform/PasteboardTypes.h"

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

void FakeSideFiles::storeImage(const QByteArray& data, std::function<void(std::optional<StoredImage>)> done) {
  const QString hash =
      QString::fromLatin1(QCryptographicHash::hash(data, QCryptographicHash::Sha256).toHex());
  const QString file = hash.left(8) + QStringLiteral(".png");
  images.insert(file, data);
  done(StoredImage{file, hash});
}

std::optional<QString> FakeSideFiles::storeRich(const RichContent& content) {
  const QString file = QStringLiteral("%1.%2").arg(rich.size()).arg(content.fileExtension);
  rich.insert(file, content.data);
  return file;
}

std::optional<QByteArray> FakeSideFiles::loadImage(const QString& file) {
  if (!images.contains(file)) return std::nullopt;
  return images.value(file);
}

std::optional<QByteArray> FakeSideFiles::loadRich(const QString& file) {
  if (!rich.contains(file)) return std::nullopt;
  return rich.value(file);
}

void FakeSideFiles::removeFilesOf(const ClipItem& clip) {
  removedFilesOf.append(clip.id);
}

}  // namespace nimbrel::testing
