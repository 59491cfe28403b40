#include "capture/LegacyImport.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <chrono>

#include "capture/ImportedClips.h"
#include "capture/model/Log.h"
#include "memory/Wipe.h"

namespace nimbrel {
namespace {

constexpr QStringView kDefaultsKey = u"clipboardItems";

/// More than any history that was ever kept as JSON; reading it would take all memory.
constexpr qint64 kMaxFileBytes = 512LL << 20;

/// The whole content of a regular file; none of one that is too large to be a history.
std::optional<QByteArray> contentOf(const QString& path) {
  QFile file(path);
  if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly)) return std::nullopt;
  if (file.size() > kMaxFileBytes) return QByteArray();
  QByteArray data = file.readAll();
  if (file.error() != QFile::NoError) return std::nullopt;
  return data;
}

void rename(const QString& from, const QString& to) {
  QFile file(from);
  file.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
  if (!file.rename(to)) logFailure("No se pudo mover history.json", file.errorString());
}

}  // namespace

std::optional<QList<ClipItem>> clipsFromJson(const QByteArray& json) {
  const QJsonDocument document = QJsonDocument::fromJson(json);
  if (!document.isArray()) return std::nullopt;
  const QJsonArray array = document.array();
  QList<ClipItem> clips;
  clips.reserve(array.size());
  for (const QJsonValue& value : array) {
    auto clip = value.isObject() ? clipFromJson(value.toObject()) : std::nullopt;
    if (!clip) return std::nullopt;
    clips.append(*std::move(clip));
  }
  return clips;
}

LegacyImport::LegacyImport(const LegacyImportParts& parts, const QString& storageDirectory)
    : parts_(parts), folder_(storageDirectory) {}

QString LegacyImport::inFolder(const QString& name) const {
  return QDir(folder_).filePath(name);
}

void LegacyImport::run() {
  if (const auto data = contentOf(inFolder(QStringLiteral("history.json"))))
    importFile(*data);
  else
    importDefaults();
}

void LegacyImport::importFile(const QByteArray& data) {
  auto opened = parts_.cipher.open(data);
  const auto clips = opened ? clipsFromJson(*opened) : std::nullopt;
  if (opened) wipe(*opened);
  if (!clips) return setAside();
  if (store(*clips)) retireFile(data);
}

void LegacyImport::importDefaults() {
  const auto data = parts_.defaults.data(kDefaultsKey.toString());
  const auto clips = data ? clipsFromJson(*data) : std::nullopt;
  if (clips && store(*clips) && !parts_.defaults.remove(kDefaultsKey.toString()))
    logFailure("No se pudo retirar clipboardItems", QStringLiteral("las preferencias no se pueden escribir"));
}

bool LegacyImport::store(const QList<ClipItem>& clips) {
  if (clips.isEmpty()) return false;
  QList<ClipItem> kept;
  kept.reserve(clips.size());
  for (ClipItem clip : clips) {
    if (gradeImported(clip, parts_.settings, parts_.clock.now())) kept.append(std::move(clip));
  }
  // The source may go only when no power cut can take the copy.
  if (!parts_.database.saveMany(kept) || !parts_.database.checkpoint()) return false;
  removeUnusedFilesOf(clips);
  return true;
}

void LegacyImport::removeUnusedFilesOf(const QList<ClipItem>& clips) {
  const auto images = parts_.database.referencedImageFiles();
  const auto rich = parts_.database.referencedRichFiles();
  if (!images || !rich) return;
  for (const ClipItem& clip : clips) {
    if (clip.imageFile && !images->contains(*clip.imageFile)) parts_.files.removeImage(*clip.imageFile);
    if (clip.richFile && !rich->contains(*clip.richFile)) parts_.files.removeRich(*clip.richFile);
  }
}

bool holdsUnimportedHistory(const QString& storageDirectory, const UserDefaults& defaults) {
  const QStringList names{QStringLiteral("history.json"), QStringLiteral("history.corrupt-*.json")};
  return !QDir(storageDirectory).entryList(names, QDir::Files | QDir::System).isEmpty() ||
         defaults.data(kDefaultsKey.toString()).has_value();
}

void LegacyImport::setAside() {
  const auto now = std::chrono::duration_cast<std::chrono::seconds>(parts_.clock.now().time_since_epoch());
  const QString name = QStringLiteral("history.corrupt-%1.json").arg(now.count());
  rename(inFolder(QStringLiteral("history.json")), inFolder(name));
  qCCritical(clipboardLog, "Historial ilegible, copia en %s", qUtf8Printable(name));
}

void LegacyImport::retireFile(const QByteArray& data) {
  const QString path = inFolder(QStringLiteral("history.json"));
  const QString copy = inFolder(QStringLiteral("history.migrated.json"));
  if (QFile older(copy); older.exists() && !older.remove())
    logFailure("No se pudo borrar history.migrated.json", older.errorString());
  // Only a sealed copy may stay: a plain one would leave the history readable on the disk.
  if (HistoryCipher::isSealed(data)) return rename(path, copy);
  QFile file(path);
  if (!file.remove()) logFailure("No se pudo borrar history.json", file.errorString());
}

}  // namespace nimbrel
