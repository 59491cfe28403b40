#include "capture/SecretClips.h"

#include <chrono>

namespace nimbrel {

bool markSecret(ClipItem& clip, SensitivityLevel level, const AppSettings& settings, Timestamp now) {
  if (level == SensitivityLevel::none) return true;
  const int expiry =
      level == SensitivityLevel::soft ? settings.softSensitiveExpiry : settings.sensitiveExpiry;
  clip.sensitive = true;
  clip.richFile.reset();
  clip.richHash.reset();
  if (clip.pinned) return true;
  if (expiry > 0) clip.expiresAt = now + std::chrono::seconds(expiry);
  return expiry != 0;
}

}  // namespace nimbrel
