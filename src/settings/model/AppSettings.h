#pragma once

#include <QObject>
#include <functional>

#include "platform/UserDefaults.h"
#include "settings/model/SettingsValues.h"

namespace nimbrel {

/// Reads the user's choices; whatever is missing or cannot be understood has its default. Default ignored
/// applications that are younger than the user's list are added to it, once. *Waits* for the disk at the
/// defaults' first use; any thread, as long as no other one uses them meanwhile.
[[nodiscard]] SettingsValues loadSettings(UserDefaults& defaults);

/// The user's choices, observable and stored with every change. Main thread.
class AppSettings final : public QObject {
  Q_OBJECT

 public:
  /// Registers a combination as a global hot key; false when it is refused, and then the one before is
  /// registered again.
  using HotKeyApplier = std::function<bool(const HotKeyCombo&)>;

  /// Reads every key; the defaults must outlive this, and nobody else writes to them.
  explicit AppSettings(UserDefaults& defaults);

  /// What is chosen now; the reference stays valid, and shows each change at once.
  [[nodiscard]] const SettingsValues& values() const { return values_; }

  /// Each assignment has the complete set of keys stored, and is announced when it changes something.
  void setMaxUnpinned(qint64 count);
  void setSensitiveExpiry(qint64 seconds);
  void setSoftSensitiveExpiry(qint64 seconds);
  void setIgnoredApps(const QList<IgnoredApp>& apps);
  void setOcrEnabled(bool enabled);
  void setRichEnabled(bool enabled);
  void setLockMode(LockMode mode);
  void setHotKey(const HotKeyCombo& combo);
  void setNextHotKey(const HotKeyCombo& combo);

  /// Who registers the two hot keys.
  void setHotKeyApplier(HotKeyApplier applier) { applyHotKey_ = std::move(applier); }
  void setNextHotKeyApplier(HotKeyApplier applier) { applyNextHotKey_ = std::move(applier); }

  /// Registers a combination in place of the chosen one and, when it is accepted, chooses it. False when it
  /// is refused.
  [[nodiscard]] bool applyHotKey(const HotKeyCombo& combo);
  [[nodiscard]] bool applyNextHotKey(const HotKeyCombo& combo);

 Q_SIGNALS:
  void maxUnpinnedChanged();
  void sensitiveExpiryChanged();
  void softSensitiveExpiryChanged();
  void ignoredAppsChanged();
  void ocrEnabledChanged();
  void richEnabledChanged();
  void lockModeChanged();
  void hotKeyChanged();
  void nextHotKeyChanged();

 private:
  template <typename Value>
  void assign(Value SettingsValues::*member, const Value& value, void (AppSettings::*changed)());
  void save();

  UserDefaults& defaults_;
  SettingsValues values_;
  HotKeyApplier applyHotKey_;
  HotKeyApplier applyNextHotKey_;
};

}  // namespace nimbrel
