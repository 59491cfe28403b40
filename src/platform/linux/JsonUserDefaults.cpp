#include "platform/linux/JsonUserDefaults.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QSaveFile>
#include <QStandardPaths>

namespace nimbrel {
namespace {

/// A history of older versions may be among the values.
constexpr qint64 kMaxBytes = 512LL << 20;

QJsonObject readObject(const QString& path) {
  const QFileInfo entry(path);
  QFile file(path);
  if (!entry.isFile() || entry.size() > kMaxBytes || !file.open(QIODevice::ReadOnly)) return {};
  return QJsonDocument::fromJson(file.readAll()).object();
}

}  // namespace

JsonUserDefaults::JsonUserDefaults(QString path) : path_(std::move(path)) {}

QJsonObject& JsonUserDefaults::values() const {
  if (!values_) values_ = readObject(path_);
  return *values_;
}

std::optional<QByteArray> JsonUserDefaults::data(const QString& key) const {
  const QJsonObject value = values().value(key).toObject();
  const QJsonValue encoded = value.value(QStringLiteral("data"));
  if (value.size() != 1 || !encoded.isString()) return std::nullopt;
  const auto decoded =
      QByteArray::fromBase64Encoding(encoded.toString().toLatin1(), QByteArray::AbortOnBase64DecodingErrors);
  if (!decoded) return std::nullopt;
  return *decoded;
}

bool JsonUserDefaults::remove(const QString& key) {
  if (!values().contains(key)) return true;
  values().remove(key);
  return save();
}

bool JsonUserDefaults::save() const {
  QDir().mkpath(QFileInfo(path_).path());
  QSaveFile file(path_);
  if (!file.open(QIODevice::WriteOnly)) return false;
  file.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
  file.write(QJsonDocument(values()).toJson());
  return file.commit();
}

QString userDefaultsPath() {
  return QDir(QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation))
      .filePath(QStringLiteral("Nimbrel/defaults.json"));
}

}  // namespace nimbrel
