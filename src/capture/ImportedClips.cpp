#include "capture/ImportedClips.h"

#include "capture/SecretClips.h"
#include "capture/detection/SensitiveDetector.h"

namespace nimbrel {

bool gradeImported(ClipItem& clip, const SettingsValues& settings, Timestamp now) {
  if (clip.sensitive) return true;
  const auto isCredential = [&](const QString& text) {
    return SensitiveDetector::classifyText(text, clip.sourceBundleID) == SensitivityLevel::hard;
  };
  const bool credential =
      (clip.isText() && isCredential(clip.text)) || (clip.ocrText && isCredential(*clip.ocrText));
  return !credential || markSecret(clip, SensitivityLevel::hard, settings, now);
}

}  // namespace nimbrel
