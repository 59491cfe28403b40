#include "capture/model/IndexedClip.h"

#include "capture/model/LinkText.h"
#include "capture/model/SnippetPlaceholders.h"
#include "capture/model/TextRules.h"
#include "memory/Wipe.h"

namespace nimbrel {
namespace {

constexpr qsizetype kMaxPieceCharacters = 50'000;

/// UTF-16 units that are looked through in well under a millisecond.
constexpr qsizetype kShortText = 4096;

/// Whether two values of a clip have the very same text, and treat it alike.
bool sharesText(const ClipItem& a, const ClipItem& b) {
  return a.text.isSharedWith(b.text) && a.isText() == b.isText() && a.isSensitive() == b.isSensitive();
}

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

IndexedClip::~IndexedClip() {
  if (!value_.isSensitive()) return;
  wipe(value_.text);
  if (value_.ocrText) wipe(*value_.ocrText);
}

IndexedClip::IndexedClip(ClipItem value, const IndexedClip& before) : value_(std::move(value)) {
  if (!sharesText(clip, before.clip)) return;
  if (before.hasTraits_) {
    std::call_once(examined_, [&] {
      traits_ = before.traits_;
      hasTraits_ = true;
    });
  }
  if (before.hasBody_ && clip.ocrText == before.clip.ocrText) {
    std::call_once(folded_, [&] {
      body_ = before.body_;
      hasBody_ = true;
    });
  }
}

const ClipTraits& IndexedClip::traits() const {
  std::call_once(examined_, [this] {
    traits_ = {characterCount(clip.text), linkOf(clip).has_value(), isTemplate(clip)};
    hasTraits_ = true;
  });
  return traits_;
}

const ClipTraits* IndexedClip::readyTraits() const {
  return hasTraits_ || clip.text.size() <= kShortText ? &traits() : nullptr;
}

const std::optional<QByteArray>& IndexedClip::body() const {
  std::call_once(folded_, [this] {
    body_ = searchBody(clip);
    hasBody_ = true;
  });
  return body_;
}

void IndexedClip::fetch() const {
  __builtin_prefetch(&clip.imageFile);
  __builtin_prefetch(&clip.sensitive);
  __builtin_prefetch(&body_);
  __builtin_prefetch(&hasBody_);
}

void IndexedClip::fetchBody() const {
  if (hasBody_ && body_) __builtin_prefetch(body_->constData());
}

}  // namespace nimbrel
