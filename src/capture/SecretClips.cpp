#include "capture/SecretClips.h"

#include <algorithm>
#include <chrono>

namespace nimbrel {

void becomeSensitive(ClipItem& clip) {
  clip.sensitive = true;
  clip.richFile.reset();
  clip.richHash.reset();
}

bool markSecret(ClipItem& clip, SensitivityLevel level, const SettingsValues& settings, Timestamp now) {
  if (level == SensitivityLevel::none) return true;
  const qint64 expiry =
      level == SensitivityLevel::soft ? settings.softSensitiveExpiry : settings.sensitiveExpiry;
  becomeSensitive(clip);
  if (clip.pinned) return true;
  // One that was to go sooner still does.
  if (expiry > 0) {
    const Timestamp end = now + std::chrono::duration<double>(static_cast<double>(expiry));
    clip.expiresAt = std::min(clip.expiresAt.value_or(end), end);
  }
  return expiry != 0;
}

}  // namespace nimbrel
