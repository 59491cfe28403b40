#include "platform/linux/JsonUserDefaults.h"

#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QLoggingCategory>
#include <QSaveFile>
#include <QStandardPaths>

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;

Q_LOGGING_CATEGORY(defaultsLog, "clipboard")

/// A history of older versions may be among the values.
constexpr qint64 kMaxBytes = 512LL << 20;

/// The object in a file; an empty one when nothing is there, nothing when there is something else.
std::optional<QJsonObject> readObject(const QString& path) {
  const QFileInfo entry(path);
  if (!entry.exists() && !entry.isSymLink()) return QJsonObject();
  QFile file(path);
  if (!entry.isFile() || entry.size() > kMaxBytes || !file.open(QIODevice::ReadOnly)) return std::nullopt;
  const QByteArray bytes = file.readAll();
  if (file.error() != QFile::NoError) return std::nullopt;
  if (bytes.isEmpty()) return QJsonObject();
  const QJsonDocument document = QJsonDocument::fromJson(bytes);
  return document.isObject() ? std::optional(document.object()) : std::nullopt;
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

/// Gives what stands at a path a second name, so that it outlives being replaced; a folder is moved there.
bool keepBeside(const QString& path) {
  const QFileInfo entry(path);
  if (!entry.exists() && !entry.isSymLink()) return true;
  const QString kept = freeNameBeside(path);
  if (::link(QFile::encodeName(path).constData(), QFile::encodeName(kept).constData()) == 0) return true;
  return QDir().rename(path, kept);
}

QString replaceFile(const QString& path, const QByteArray& bytes) {
  QDir().mkpath(QFileInfo(path).path());
  QSaveFile file(path);
  if (!file.open(QIODevice::WriteOnly)) return file.errorString();
  file.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
  file.write(bytes);
  return file.commit() ? QString() : file.errorString();
}

}  // namespace

JsonUserDefaults::JsonUserDefaults(QString path) : path_(std::move(path)) {
  writer_.setMaxThreadCount(1);
}

JsonUserDefaults::~JsonUserDefaults() {
  writer_.waitForDone();
}

QJsonObject& JsonUserDefaults::values() const {
  if (!values_) {
    const auto read = readObject(path_);
    if (!read) damaged_ = true;
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
  writer_.start([this, snapshot = values()] { static_cast<void>(write(snapshot)); });
}

bool JsonUserDefaults::remove(const QString& key) {
  if (!values().contains(key)) return true;
  values().remove(key);
  writer_.waitForDone();
  return write(values());
}

bool JsonUserDefaults::isIntact() const {
  static_cast<void>(values());
  return !damaged_;
}

bool JsonUserDefaults::write(const QJsonObject& values) {
  const QString failure = damaged_ && !keepBeside(path_)
                              ? u"lo que había en %1 no se puede conservar"_s.arg(path_)
                              : replaceFile(path_, QJsonDocument(values).toJson());
  if (failure.isEmpty()) {
    damaged_ = false;
    return true;
  }
  qCCritical(defaultsLog, "No se pudieron guardar los ajustes: %s", qUtf8Printable(failure));
  return false;
}

QString userDefaultsPath() {
  return QDir(QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation))
      .filePath(QStringLiteral("Nimbrel/defaults.json"));
}

}  // namespace nimbrel
