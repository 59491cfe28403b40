#include "platform/linux/preview/PreviewContent.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMimeDatabase>
#include <QStringDecoder>
#include <QUuid>

namespace nimbrel {
namespace {

constexpr qint64 kMaxPictureBytes = 64LL << 20;
constexpr int kMaxPicturePixels = 2048;
/// A character takes four bytes at most.
constexpr qint64 kMaxTextBytes = 4 * kMaxPreviewCharacters;
/// A line that is longer takes long to be laid out.
constexpr qsizetype kMaxLine = 4000;

std::optional<QByteArray> readBeginning(const QString& path, qint64 bytes) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) return std::nullopt;
  return file.read(bytes);
}

QString decoded(const QByteArray& bytes) {
  // What is cut in the middle of a character is still UTF-8.
  QStringDecoder utf8(QStringDecoder::Utf8);
  const QString text = utf8(bytes);
  return utf8.hasError() ? QString::fromLatin1(bytes) : text;
}

/// The text with line breaks in lines that have none for too long.
QString broken(const QString& text) {
  QString result;
  result.reserve(text.size());
  qsizetype column = 0;
  for (const QChar unit : text) {
    column = unit == u'\n' ? 0 : column + 1;
    if (column > kMaxLine && !unit.isLowSurrogate()) {
      result.append(u'\n');
      column = 1;
    }
    result.append(unit);
  }
  return result;
}

PreviewText textOf(const QByteArray& bytes, qint64 size) {
  const QString text = decoded(bytes);
  const bool isCut = size > bytes.size() || text.size() > kMaxPreviewCharacters;
  return {broken(text.left(kMaxPreviewCharacters)), isCut};
}

PreviewFacts factsOf(const QFileInfo& entry, const QMimeType& type) {
  PreviewFacts facts{.name = entry.fileName(), .type = type.comment(), .icon = type.iconName()};
  facts.isFolder = entry.isDir();
  if (facts.isFolder)
    facts.size = QDir(entry.filePath()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot).size();
  else if (entry.isFile())
    facts.size = entry.size();
  return facts;
}

std::optional<PreviewPicture> pictureOf(const QFileInfo& entry, ImageCodec& codec, const StopToken& stop) {
  if (entry.size() > kMaxPictureBytes) return std::nullopt;
  const auto bytes = readBeginning(entry.filePath(), kMaxPictureBytes);
  if (!bytes) return std::nullopt;
  const auto outcome = codec.thumbnail(*bytes, kMaxPicturePixels, stop);
  const auto* const image = std::get_if<QImage>(&outcome);
  if (!image || image->isNull()) return std::nullopt;
  return PreviewPicture{*image};
}

}  // namespace

PreviewContent loadPreview(const QString& path, ImageCodec& codec, const StopToken& stop) {
  const QFileInfo entry(path);
  if (!entry.exists()) return {{}, PreviewNothing{}};
  const QString title = QUuid::fromString(entry.completeBaseName()).isNull() ? entry.fileName() : QString();
  // Opening anything but a regular file could wait for ever.
  const bool isRegular = entry.isFile() && entry.isReadable();
  const QMimeType type = QMimeDatabase().mimeTypeForFile(
      entry, isRegular ? QMimeDatabase::MatchDefault : QMimeDatabase::MatchExtension);
  if (isRegular && type.name().startsWith(u"image/")) {
    if (auto picture = pictureOf(entry, codec, stop)) return {title, std::move(*picture)};
  }
  if (isRegular && type.inherits(QStringLiteral("text/plain"))) {
    if (const auto bytes = readBeginning(path, kMaxTextBytes)) return {title, textOf(*bytes, entry.size())};
  }
  return {title, factsOf(entry, type)};
}

}  // namespace nimbrel
