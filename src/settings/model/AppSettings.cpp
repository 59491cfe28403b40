#include "settings/model/AppSettings.h"

#include <algorithm>
#include <optional>

#include "settings/model/SettingsCoding.h"

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;

/// Which generation of the default ignored applications the program brings.
constexpr qint64 kIgnoredAppsGeneration = 2;

/// Reads typed values, and tells the defaults of each that is there and cannot be understood.
class Reader final {
 public:
  explicit Reader(UserDefaults& defaults) : defaults_(defaults) {}

  template <typename Value>
  [[nodiscard]] std::optional<Value> read(const QString& key) const {
    const auto stored = defaults_.value(key);
    if (!stored) return std::nullopt;
    if (const auto* const value = std::get_if<Value>(&*stored)) return *value;
    defaults_.markDamaged();
    return std::nullopt;
  }

  /// The same for what is stored in another form, and that `decoding` turns into the value.
  template <typename Stored, typename Decode>
  [[nodiscard]] auto decode(const QString& key, Decode decoding) const
      -> decltype(decoding(std::declval<Stored>())) {
    const auto stored = read<Stored>(key);
    if (!stored) return std::nullopt;
    auto value = decoding(*stored);
    if (!value) defaults_.markDamaged();
    return value;
  }

 private:
  UserDefaults& defaults_;
};

LockMode readLockMode(const Reader& reader) {
  if (const auto mode = reader.decode<QString>(u"lockMode"_s, &lockModeNamed)) return *mode;
  // Before there were modes, there was a switch.
  return reader.read<bool>(u"lockEnabled"_s).value_or(false) ? LockMode::sensitiveOnly : LockMode::disabled;
}

QList<IgnoredApp> withMissingDefaults(QList<IgnoredApp> apps) {
  for (const IgnoredApp& app : defaultIgnoredApps()) {
    if (!containsApp(apps, app.bundleID)) apps.append(app);
  }
  return apps;
}

QList<IgnoredApp> readIgnoredApps(const Reader& reader, UserDefaults& defaults) {
  const qint64 generation = reader.read<qint64>(u"ignoredAppsDefaultsVersion"_s).value_or(0);
  const auto stored = reader.decode<QByteArray>(u"ignoredApps"_s, &decodedIgnoredApps);
  if (stored && generation >= kIgnoredAppsGeneration) return *stored;
  if (!stored && generation == kIgnoredAppsGeneration) return defaultIgnoredApps();
  const QList<IgnoredApp> apps = stored ? withMissingDefaults(*stored) : defaultIgnoredApps();
  defaults.set(u"ignoredAppsDefaultsVersion"_s, kIgnoredAppsGeneration);
  if (stored) defaults.set(u"ignoredApps"_s, encoded(apps));
  if (defaults.isIntact()) defaults.synchronize();
  return apps;
}

}  // namespace

SettingsValues loadSettings(UserDefaults& defaults) {
  const Reader reader(defaults);
  SettingsValues values;
  const qint64 capacity = reader.read<qint64>(u"maxUnpinned"_s).value_or(0);
  if (capacity >= 1) values.maxUnpinned = capacity;
  values.sensitiveExpiry = reader.read<qint64>(u"sensitiveExpiry"_s).value_or(values.sensitiveExpiry);
  values.softSensitiveExpiry =
      reader.read<qint64>(u"softSensitiveExpiry"_s).value_or(values.softSensitiveExpiry);
  values.ocrEnabled = reader.read<bool>(u"ocrEnabled"_s).value_or(values.ocrEnabled);
  values.richEnabled = reader.read<bool>(u"richEnabled"_s).value_or(values.richEnabled);
  values.lockMode = readLockMode(reader);
  values.hotKey = reader.decode<QByteArray>(u"hotKey"_s, &decodedHotKeyCombo).value_or(values.hotKey);
  values.nextHotKey =
      reader.decode<QByteArray>(u"nextHotKey"_s, &decodedHotKeyCombo).value_or(values.nextHotKey);
  values.ignoredApps = readIgnoredApps(reader, defaults);
  return values;
}

AppSettings::AppSettings(UserDefaults& defaults) : defaults_(defaults), values_(loadSettings(defaults)) {}

template <typename Value>
void AppSettings::assign(Value SettingsValues::*member, const Value& value, void (AppSettings::*changed)()) {
  const bool differs = values_.*member != value;
  values_.*member = value;
  save();
  if (differs) Q_EMIT(this->*changed)();
}

void AppSettings::save() {
  defaults_.set(u"maxUnpinned"_s, values_.maxUnpinned);
  defaults_.set(u"sensitiveExpiry"_s, values_.sensitiveExpiry);
  defaults_.set(u"softSensitiveExpiry"_s, values_.softSensitiveExpiry);
  defaults_.set(u"ocrEnabled"_s, values_.ocrEnabled);
  defaults_.set(u"richEnabled"_s, values_.richEnabled);
  defaults_.set(u"lockMode"_s, storedName(values_.lockMode));
  // For versions that knew no modes.
  defaults_.set(u"lockEnabled"_s, values_.lockMode != LockMode::disabled);
  defaults_.set(u"hotKey"_s, encoded(values_.hotKey));
  defaults_.set(u"nextHotKey"_s, encoded(values_.nextHotKey));
  defaults_.set(u"ignoredApps"_s, encoded(values_.ignoredApps));
  defaults_.synchronize();
}

void AppSettings::setMaxUnpinned(qint64 count) {
  assign(&SettingsValues::maxUnpinned, std::max(count, qint64{1}), &AppSettings::maxUnpinnedChanged);
}

void AppSettings::setSensitiveExpiry(qint64 seconds) {
  assign(&SettingsValues::sensitiveExpiry, seconds, &AppSettings::sensitiveExpiryChanged);
}

void AppSettings::setSoftSensitiveExpiry(qint64 seconds) {
  assign(&SettingsValues::softSensitiveExpiry, seconds, &AppSettings::softSensitiveExpiryChanged);
}

void AppSettings::setIgnoredApps(const QList<IgnoredApp>& apps) {
  assign(&SettingsValues::ignoredApps, apps, &AppSettings::ignoredAppsChanged);
}

void AppSettings::setOcrEnabled(bool enabled) {
  assign(&SettingsValues::ocrEnabled, enabled, &AppSettings::ocrEnabledChanged);
}

void AppSettings::setRichEnabled(bool enabled) {
  assign(&SettingsValues::richEnabled, enabled, &AppSettings::richEnabledChanged);
}

void AppSettings::setLockMode(LockMode mode) {
  assign(&SettingsValues::lockMode, mode, &AppSettings::lockModeChanged);
}

void AppSettings::setHotKey(const HotKeyCombo& combo) {
  assign(&SettingsValues::hotKey, combo, &AppSettings::hotKeyChanged);
}

void AppSettings::setNextHotKey(const HotKeyCombo& combo) {
  assign(&SettingsValues::nextHotKey, combo, &AppSettings::nextHotKeyChanged);
}

bool AppSettings::applyHotKey(const HotKeyCombo& combo) {
  if (applyHotKey_ && !applyHotKey_(combo)) return false;
  setHotKey(combo);
  return true;
}

bool AppSettings::applyNextHotKey(const HotKeyCombo& combo) {
  if (applyNextHotKey_ && !applyNextHotKey_(combo)) return false;
  setNextHotKey(combo);
  return true;
}

}  // namespace nimbrel
