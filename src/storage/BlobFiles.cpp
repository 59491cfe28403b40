#include "storage/BlobFiles.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <chrono>

#include "capture/model/ClipItem.h"
#include "capture/model/Log.h"
#include "platform/AtomicFile.h"

namespace nimbrel {
namespace {

using namespace std::chrono_literals;

/// How long a file may wait for its row.
constexpr auto kOrphanAge = 600s;

/// More than any image that capture stores takes; a larger file is not ours.
constexpr qint64 kMaxFileBytes = 512LL << 20;

/// Names come from database rows, which anybody may have written.
bool isPlainName(const QString& name) {
  return !name.isEmpty() && name != u"." && name != u".." && !name.contains(u'/') && !name.contains(QChar());
}

void remove(const QString& folder, const QString& name) {
  if (isPlainName(name)) QFile::remove(folder + name);
}

std::chrono::system_clock::time_point modified(const QFileInfo& entry) {
  return std::chrono::system_clock::time_point(
      std::chrono::milliseconds(entry.lastModified().toMSecsSinceEpoch()));
}

}  // namespace

BlobFiles::BlobFiles(const QString& storageDirectory, HistoryCipher& cipher, const Clock& clock)
    : images_(QDir(storageDirectory).filePath(QStringLiteral("Images/"))),
      rich_(QDir(storageDirectory).filePath(QStringLiteral("Rich/"))),
      pendingTexts_(QDir(storageDirectory).filePath(QStringLiteral("recognition.pending"))),
      cipher_(cipher),
      clock_(clock) {}

std::optional<QString> BlobFiles::writeSealedFile(const QByteArray& data, const QString& path) {
  const auto sealed = cipher_.seal(data);
  if (!sealed) return QStringLiteral("no se pudo cifrar");
  return replaceFile(path, *sealed);
}

bool BlobFiles::saveImage(const QByteArray& data, const QString& name) {
  const auto error = writeSealedFile(data, images_ + name);
  if (error) logFailure("No se pudo guardar la imagen", *error);
  return !error;
}

bool BlobFiles::saveRich(const QByteArray& data, const QString& name) {
  const auto error = writeSealedFile(data, rich_ + name);
  if (error) logFailure("No se pudo guardar el formato", *error);
  return !error;
}

std::optional<QByteArray> BlobFiles::load(const QString& folder, const QString& name) {
  if (!isPlainName(name)) return std::nullopt;
  // Opening anything but a regular file could wait for ever.
  const QFileInfo entry(folder + name);
  if (!entry.isFile() || entry.isSymLink() || entry.size() > kMaxFileBytes) return std::nullopt;
  QFile file(entry.filePath());
  if (!file.open(QIODevice::ReadOnly)) return std::nullopt;
  const QByteArray data = file.readAll();
  if (file.error() != QFile::NoError) return std::nullopt;
  return cipher_.open(data);
}

std::optional<QByteArray> BlobFiles::loadImageData(const QString& name) {
  return load(images_, name);
}

std::optional<QByteArray> BlobFiles::loadRichData(const QString& name) {
  return load(rich_, name);
}

void BlobFiles::removeImage(const QString& name) {
  remove(images_, name);
}

void BlobFiles::removeRich(const QString& name) {
  remove(rich_, name);
}

void BlobFiles::savePendingTexts(const QList<QUuid>& ids) {
  QByteArray lines;
  for (const QUuid& id : ids)
    lines += clipIdText(id).toLatin1() + '\n';
  if (lines.isEmpty())
    QFile::remove(pendingTexts_);
  else
    static_cast<void>(writeSealedFile(lines, pendingTexts_));
}

QList<QUuid> BlobFiles::loadPendingTexts() {
  QList<QUuid> ids;
  const QFileInfo entry(pendingTexts_);
  const auto lines = load(entry.path() + u'/', entry.fileName()).value_or(QByteArray()).split('\n');
  for (const QByteArray& line : lines) {
    if (const auto id = clipIdFromText(QString::fromLatin1(line))) ids.append(*id);
  }
  return ids;
}

void BlobFiles::sweepOrphanImages(const std::optional<QSet<QString>>& referenced) {
  if (!referenced) return;
  const qint64 count = deleteOrphans(images_, *referenced, "No se pudo borrar la imagen huérfana");
  if (count > 0) qCInfo(clipboardLog, "Imágenes huérfanas borradas: %lld", static_cast<long long>(count));
}

void BlobFiles::sweepOrphanRichFiles(const std::optional<QSet<QString>>& referenced) {
  if (!referenced) return;
  const qint64 count = deleteOrphans(rich_, *referenced, "No se pudo borrar el formato huérfano");
  if (count > 0)
    qCInfo(clipboardLog, "Archivos de formato huérfanos borrados: %lld", static_cast<long long>(count));
}

qint64 BlobFiles::deleteOrphans(const QString& folder, const QSet<QString>& referenced, const char* failure) {
  const auto oldest = clock_.now() - kOrphanAge;
  qint64 count = 0;
  // Whoever put a link there keeps other things where it leads.
  if (QFileInfo(QDir::cleanPath(folder)).isSymLink()) return 0;
  QDirIterator entries(folder, QDir::Files | QDir::Hidden | QDir::NoDotAndDotDot);
  while (entries.hasNext()) {
    entries.next();
    const QFileInfo entry = entries.fileInfo();
    if (entry.isSymLink() || referenced.contains(entry.fileName()) || modified(entry) >= oldest) continue;
    QFile file(entry.filePath());
    if (file.remove())
      ++count;
    else
      logFailure(failure, file.errorString());
  }
  return count;
}

}  // namespace nimbrel
