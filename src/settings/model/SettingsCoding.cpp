#include "settings/model/SettingsCoding.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <limits>

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;

std::optional<quint32> unsigned32(const QJsonValue& value) {
  constexpr qint64 kNone = -1;
  const qint64 number = value.toInteger(kNone);
  if (number < 0 || number > std::numeric_limits<quint32>::max()) return std::nullopt;
  return static_cast<quint32>(number);
}

}  // namespace

QByteArray encoded(const HotKeyCombo& combo) {
  const QJsonObject object{{u"keyCode"_s, qint64{combo.keyCode}},
                           {u"modifiers"_s, qint64{combo.modifiers}},
                           {u"keyLabel"_s, combo.keyLabel}};
  return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

std::optional<HotKeyCombo> decodedHotKeyCombo(const QByteArray& json) {
  const QJsonObject object = QJsonDocument::fromJson(json).object();
  const auto keyCode = unsigned32(object.value(u"keyCode"_s));
  const auto modifiers = unsigned32(object.value(u"modifiers"_s));
  const QJsonValue label = object.value(u"keyLabel"_s);
  if (!keyCode || !modifiers || !label.isString()) return std::nullopt;
  if (*modifiers & ~hotKeyModifier::all || !isHotKeyMask(*modifiers)) return std::nullopt;
  return HotKeyCombo{.keyCode = *keyCode, .modifiers = *modifiers, .keyLabel = label.toString()};
}

QByteArray encoded(const QList<IgnoredApp>& apps) {
  QJsonArray array;
  for (const IgnoredApp& app : apps)
    array.append(QJsonObject{{u"bundleID"_s, app.bundleID}, {u"name"_s, app.name}});
  return QJsonDocument(array).toJson(QJsonDocument::Compact);
}

std::optional<QList<IgnoredApp>> decodedIgnoredApps(const QByteArray& json) {
  const QJsonDocument document = QJsonDocument::fromJson(json);
  if (!document.isArray()) return std::nullopt;
  const QJsonArray array = document.array();
  QList<IgnoredApp> apps;
  apps.reserve(array.size());
  for (const QJsonValue& value : array) {
    const QJsonValue bundleID = value[u"bundleID"_s];
    const QJsonValue name = value[u"name"_s];
    if (!bundleID.isString() || !name.isString()) return std::nullopt;
    apps.append({.bundleID = bundleID.toString(), .name = name.toString()});
  }
  return apps;
}

QString storedName(LockMode mode) {
  switch (mode) {
    case LockMode::sensitiveOnly:
      return u"sensitiveOnly"_s;
    case LockMode::entirePanel:
      return u"entirePanel"_s;
    case LockMode::disabled:
      break;
  }
  return u"disabled"_s;
}

std::optional<LockMode> lockModeNamed(const QString& name) {
  if (name == u"sensitiveOnly" || name == u"entirePanel") return LockMode::sensitiveOnly;
  if (name == u"disabled") return LockMode::disabled;
  return std::nullopt;
}

}  // namespace nimbrel
