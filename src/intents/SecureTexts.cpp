#include "intents/SecureTexts.h"

namespace nimbrel {

ClipRef latestSecureText(const HistoryList& history, const std::optional<QString>& collection) {
  for (qsizetype row = 0; row < history.size(); ++row) {
    const ClipItem& clip = history.at(row)->clip;
    if (isSecureText(clip) && (!collection || clip.collection == collection)) return history.at(row);
  }
  return nullptr;
}

}  // namespace nimbrel
