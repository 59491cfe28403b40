#include "capture/model/IndexedClip.h"

#include "capture/model/TextRules.h"

namespace nimbrel {
namespace {

constexpr qsizetype kMaxPieceCharacters = 50'000;

}  // namespace

std::optional<QByteArray> searchBody(const ClipItem& clip) {
  if (clip.isSensitive()) return std::nullopt;
  const bool hasText = !clip.text.isEmpty();
  const bool hasOcr = clip.ocrText && !clip.ocrText->isEmpty();
  if (!hasText && !hasOcr) return std::nullopt;
  QByteArray body;
  if (hasText) body = foldedText(firstCharacters(clip.text, kMaxPieceCharacters));
  if (hasText && hasOcr) body += '\n';
  if (hasOcr) body += foldedText(firstCharacters(*clip.ocrText, kMaxPieceCharacters));
  return body;
}

const std::optional<QByteArray>& IndexedClip::body() const {
  std::call_once(folded_, [this] { body_ = searchBody(clip); });
  return body_;
}

}  // namespace nimbrel
