#include "platform/linux/JsonUserDefaults.h"

#include <unistd.h>

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QLoggingCategory>
#include <QStandardPaths>

#include "platform/AtomicFile.h"

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;

Q_LOGGING_CATEGORY(defaultsLog, "clipboard")

/// A history of older versions may be among the values.
constexpr qint64 kMaxBytes = 512LL << 20;

/// Where a chain of symbolic links ends, whether or not anything is there.
QString behindLinks(QString path) {
  constexpr int kLongestChain = 40;
  for (int i = 0; i < kLongestChain && QFileInfo(path).isSymLink(); ++i)
    path = QFileInfo(path).symLinkTarget();
  return path;
}

/// The object in a file; an empty one when nothing is there, nothing when there is something else.
std::optional<QJsonObject> readObject(const QString& path) {
  const QFileInfo entry(path);
  if (!entry.exists()) return QJsonObject();
  QFile file(path);
  if (!entry.isFile() || entry.size() > kMaxBytes || !file.open(QIODevice::ReadOnly)) return std::nullopt;
  const QByteArray bytes = file.readAll();
  if (file.error() != QFile::NoError) return std::nullopt;
  const QJsonDocument document = QJsonDocument::fromJson(bytes);
  return document.isObject() ? std::optional(document.object()) : std::nullopt;
}

/// What tells one state of a file from another; none when nothing is there.
JsonUserDefaults::Stamp stampOf(const QString& path) {
  const QFileInfo entry(path);
  if (!entry.exists()) return {};
  return {entry.lastModified().toMSecsSinceEpoch(), entry.size()};
}

/// A whole number that JSON holds exactly.
std::optional<qint64> integerOf(const QJsonValue& value) {
  const qint64 number = value.toInteger(0);
  return number == value.toInteger(1) ? std::optional(number) : std::nullopt;
}

std::optional<QByteArray> bytesOf(const QJsonObject& object) {
  const QJsonValue encoded = object.value(u"data"_s);
  if (object.size() != 1 || !encoded.isString()) return std::nullopt;
  const auto decoded =
      QByteArray::fromBase64Encoding(encoded.toString().toLatin1(), QByteArray::AbortOnBase64DecodingErrors);
  return decoded ? std::optional(*decoded) : std::nullopt;
}

DefaultsValue fromJson(const QJsonValue& value) {
  if (value.isBool()) return value.toBool();
  if (value.isString()) return value.toString();
  if (const auto number = value.isDouble() ? integerOf(value) : std::nullopt) return *number;
  if (const auto bytes = value.isObject() ? bytesOf(value.toObject()) : std::nullopt) return *bytes;
  return ForeignDefault{};
}

struct ToJson {
  QJsonValue operator()(ForeignDefault) const { return {}; }
  QJsonValue operator()(bool value) const { return value; }
  QJsonValue operator()(qint64 value) const { return value; }
  QJsonValue operator()(const QString& value) const { return value; }
  QJsonValue operator()(const QByteArray& value) const {
    return QJsonObject{{u"data"_s, QString::fromLatin1(value.toBase64())}};
  }
};

/// The first free name beside a path.
QString freeNameBeside(const QString& path) {
  QString name = path + u".damaged"_s;
  for (int i = 2; QFileInfo(name).exists() || QFileInfo(name).isSymLink(); ++i)
    name = u"%1.damaged-%2"_s.arg(path).arg(i);
  return name;
}

/// Gives what stands at a path a second name, so that it outlives being replaced; what cannot be replaced, a
/// folder for one, is moved there.
bool keepBeside(const QString& path) {
  const QFileInfo entry(path);
  if (!entry.exists()) return true;
  const QString kept = freeNameBeside(path);
  const bool linked = entry.isFile() && entry.isWritable() &&
                      ::link(QFile::encodeName(path).constData(), QFile::encodeName(kept).constData()) == 0;
  return linked || QDir().rename(path, kept);
}

void logFailure(const QString& description) {
  qCCritical(defaultsLog, "No se pudieron guardar los ajustes: %s", qUtf8Printable(description));
}

}  // namespace

JsonUserDefaults::JsonUserDefaults(const QString& path) : path_(behindLinks(path)) {
  writer_.setMaxThreadCount(1);
}

JsonUserDefaults::~JsonUserDefaults() {
  writer_.waitForDone();
}

QJsonObject& JsonUserDefaults::values() const {
  if (!values_) {
    seen_ = stampOf(path_);
    const auto read = readObject(path_);
    if (!read) {
      damaged_ = true;
      qCCritical(defaultsLog, "Los ajustes guardados no se entienden: valen los de fábrica");
    }
    values_ = read.value_or(QJsonObject());
  }
  return *values_;
}

std::optional<DefaultsValue> JsonUserDefaults::value(const QString& key) const {
  const auto found = values().constFind(key);
  if (found == values().constEnd()) return std::nullopt;
  return fromJson(*found);
}

void JsonUserDefaults::set(const QString& key, const DefaultsValue& value) {
  values().insert(key, std::visit(ToJson(), value));
}

void JsonUserDefaults::synchronize() {
  writer_.start([this, snapshot = values()] { write(snapshot); });
}

bool JsonUserDefaults::remove(const QString& key) {
  if (!values().contains(key)) return true;
  values().remove(key);
  writer_.waitForDone();
  QJsonObject remaining = values();
  const bool isForeign = stampOf(path_) != seen_;
  if (isForeign) {
    const auto now = readObject(path_);
    if (!now) return false;
    remaining = *now;
    remaining.remove(key);
  }
  // What could not be understood stays in the file. A copy would keep what is to go for good.
  const auto failure = replaceFile(path_, QJsonDocument(remaining).toJson());
  if (failure) logFailure(*failure);
  // What somebody else has written there is still to be kept, before it is replaced.
  if (!isForeign) seen_ = stampOf(path_);
  return !failure;
}

void JsonUserDefaults::markDamaged() {
  static_cast<void>(values());
  if (damaged_.exchange(true)) return;
  qCCritical(defaultsLog, "Hay ajustes guardados que no se entienden: valen los de fábrica");
}

bool JsonUserDefaults::isIntact() const {
  static_cast<void>(values());
  return !damaged_;
}

void JsonUserDefaults::write(const QJsonObject& values) {
  // Somebody else may have written to it meanwhile.
  if (stampOf(path_) != seen_) damaged_ = true;
  if (damaged_ && !keepBeside(path_)) return logFailure(u"lo que había no se puede conservar"_s);
  // Kept once, however often what follows fails.
  damaged_ = false;
  QDir().mkpath(QFileInfo(path_).path());
  if (const auto failure = replaceFile(path_, QJsonDocument(values).toJson())) logFailure(*failure);
  seen_ = stampOf(path_);
}

QString userDefaultsPath() {
  return QDir(QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation))
      .filePath(QStringLiteral("Nimbrel/defaults.json"));
}

}  // namespace nimbrel
