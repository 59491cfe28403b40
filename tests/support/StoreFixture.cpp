#include "support/StoreFixture.h"

#include "platform/PasteboardTypes.h"
#include "storage/ContentHash.h"

namespace nimbrel::testing {

ClipItem textClip(const QString& text, double secondsSince1970) {
  ClipItem clip;
  clip.id = QUuid::createUuid();
  clip.text = text;
  clip.date = timestampFromUnixSeconds(secondsSince1970);
  clip.textHash = sha256Hex(text.toUtf8());
  return clip;
}

ClipRef indexed(const ClipItem& clip) {
  return std::make_shared<const IndexedClip>(clip);
}

StoreFixture::StoreFixture() = default;
StoreFixture::~StoreFixture() {
  quit();
}

ClipboardStore& StoreFixture::launch() {
  cipher_ = std::make_unique<HistoryCipher>(secrets, random);
  database_ = std::make_unique<ClipDatabase>(path(QStringLiteral("brevin.sqlite")), *cipher_);
  store_ = std::make_unique<ClipboardStore>(ClipboardStoreParts{.settings = settings,
                                                                .pasteboard = pasteboard,
                                                                .workspace = workspace,
                                                                .clock = clock,
                                                                .database = *database_,
                                                                .grader = grader,
                                                                .files = files,
                                                                .images = images,
                                                                .imageTexts = imageTexts,
                                                                .makeId = &QUuid::createUuid});
  return *store_;
}

void StoreFixture::quit() {
  store_.reset();
  database_.reset();
  cipher_.reset();
}

void StoreFixture::copyText(const QString& text) {
  pasteboard.copyText(text);
  clock.advance(std::chrono::seconds(1));
  store_->tick();
}

void StoreFixture::copySecret(const QString& text) {
  grader.grades.insert(text, SensitivityLevel::hard);
  copyText(text);
}

void StoreFixture::copyImage(const QByteArray& bytes) {
  PasteboardSnapshot snapshot;
  snapshot.types = {pasteboardType::png.toString()};
  snapshot.image = bytes;
  pasteboard.copy(snapshot);
  clock.advance(std::chrono::seconds(1));
  store_->tick();
}

void StoreFixture::copyFile(const QString& path) {
  PasteboardSnapshot snapshot;
  snapshot.types = {pasteboardType::fileUrl.toString()};
  snapshot.fileUrls = {QUrl::fromLocalFile(path)};
  pasteboard.copy(snapshot);
  clock.advance(std::chrono::seconds(1));
  store_->tick();
}

void StoreFixture::copyRtf(const QString& text, const QByteArray& rtf) {
  PasteboardSnapshot snapshot;
  snapshot.types = {pasteboardType::plainText.toString(), pasteboardType::rtf.toString()};
  snapshot.text = text;
  snapshot.rtf = rtf;
  pasteboard.copy(snapshot);
  clock.advance(std::chrono::seconds(1));
  store_->tick();
}

QStringList StoreFixture::texts() const {
  QStringList texts;
  for (qsizetype row = 0; row < store_->items().size(); ++row)
    texts.append(clip(row).text);
  return texts;
}

}  // namespace nimbrel::testing
