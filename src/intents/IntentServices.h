#pragma once

#include <functional>
#include <optional>
#include <variant>

#include "app/permission/PermissionState.h"
#include "capture/ClipboardStore.h"
#include "intents/BrevinIntentError.h"
#include "panel/lock/Lock.h"
#include "platform/Clock.h"
#include "settings/model/SettingsValues.h"

namespace nimbrel {

/// What the intents work with; everything outlives them.
struct IntentServices final {
  ClipboardStore& store;
  const SettingsValues& settings;
  Lock& lock;
  PermissionState& permission;
  const Clock& clock;
  /// Puts a clip on the pasteboard and pastes it where the user is, or tells why not.
  std::function<std::optional<BrevinIntentError>(const ClipItem&)> pasteClipNow;

  /// Whether the user proves who they are before any text is handed out.
  [[nodiscard]] bool isLocked() const { return settings.lockMode != LockMode::disabled; }
};

/// What an intent gives, or why it gives nothing.
template <typename T>
using IntentResult = std::variant<T, BrevinIntentError>;

/// Who waits for it.
template <typename T>
using IntentDone = std::function<void(const IntentResult<T>&)>;

/// Goes on with `unlocked` once the user has proved who they are, where the lock asks for that, or else tells
/// `done` that they have not.
template <typename T>
void whenUnlocked(const IntentServices& services, const IntentDone<T>& done, std::function<void()> unlocked) {
  if (!services.isLocked()) return unlocked();
  services.lock.authenticate(Lock::Reason::history, [done, unlocked = std::move(unlocked)](bool proven) {
    if (proven) return unlocked();
    done(BrevinIntentError::authenticationFailed);
  });
}

}  // namespace nimbrel
