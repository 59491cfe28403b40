#include "app/PreviewFiles.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QUuid>

#include "memory/Wipe.h"
#include "platform/AtomicFile.h"

namespace nimbrel {
namespace {

constexpr auto kOwnerOnly = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner;

/// The first of the files that a clip refers to.
std::optional<QUrl> existingFileOf(const ClipItem& clip) {
  if (!clip.fileURLString) return std::nullopt;
  const QUrl url(clip.fileURLString->section(u'\n', 0, 0), QUrl::StrictMode);
  if (!url.isLocalFile() || !QFileInfo::exists(url.toLocalFile())) return std::nullopt;
  return url;
}

}  // namespace

std::optional<PreviewFile> PreviewFiles::fileFor(const ClipItem& clip) {
  if (const auto existing = existingFileOf(clip)) return PreviewFile{*existing, false};
  if (!clip.imageFile) {
    const WipedBytes text(clip.text.toUtf8());
    return write(text.bytes(), QStringLiteral("txt"));
  }
  auto loaded = sideFiles_.loadImage(*clip.imageFile);
  if (!loaded) return std::nullopt;
  const WipedBytes picture(std::move(*loaded));
  return write(picture.bytes(), QStringLiteral("png"));
}

bool PreviewFiles::prepareFolder() const {
  if (folder_.isEmpty() || !QDir().mkpath(folder_)) return false;
  const QFileInfo folder(folder_);
  // Whoever else put something there could read what comes into it.
  if (folder.isSymLink() || !folder.isDir()) return false;
  return QFile::setPermissions(folder_, kOwnerOnly);
}

std::optional<PreviewFile> PreviewFiles::write(const QByteArray& bytes, const QString& extension) const {
  if (!prepareFolder()) return std::nullopt;
  const QString name = QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper() + u'.' + extension;
  const QString path = QDir(folder_).filePath(name);
  if (replaceFile(path, bytes)) return std::nullopt;
  return PreviewFile{QUrl::fromLocalFile(path), true};
}

void PreviewFiles::remove(const QUrl& file) {
  QFile::remove(file.toLocalFile());
}

void PreviewFiles::removeAll() const {
  if (folder_.isEmpty() || QFileInfo(folder_).isSymLink()) return;
  QDir folder(folder_);
  const auto entries = folder.entryList(QDir::Files | QDir::Hidden | QDir::System);
  for (const QString& entry : entries)
    folder.remove(entry);
}

}  // namespace nimbrel
