#include "platform/linux/SelectionReadPlan.h"

#include <algorithm>

#include "platform/PasteboardTypes.h"

namespace nimbrel {
namespace {

bool isBlank(const QString& text) {
  return std::all_of(text.begin(), text.end(), [](QChar c) { return c.isSpace(); });
}

QList<QUrl> localFiles(QList<QUrl> urls) {
  urls.removeIf([](const QUrl& url) { return !url.isLocalFile(); });
  return urls;
}

}  // namespace

void SelectionReadPlan::setTargets(const std::optional<QStringList>& targets) {
  targetsKnown_ = targets.has_value();
  targets_ = targets.value_or(QStringList{QStringLiteral("UTF8_STRING"), QStringLiteral("STRING")});
  if (targetsKnown_) snapshot_.types = typesOfTargets(targets_);
  const bool ignored =
      std::any_of(snapshot_.types.begin(), snapshot_.types.end(),
                  [this](const QString& type) { return policy_.ignoredTypes.contains(type); });
  if (!ignored) begin(PasteboardFormat::files);
}

std::optional<ReadStep> SelectionReadPlan::nextStep() const {
  if (candidates_.isEmpty()) return std::nullopt;
  return ReadStep{format_, candidates_.first(), budgetOf(format_)};
}

void SelectionReadPlan::accept(const QByteArray& bytes) {
  switch (format_) {
    case PasteboardFormat::files:
      snapshot_.fileUrls = localFiles(decodeUrls(bytes));
      if (!snapshot_.fileUrls.isEmpty()) return finish();
      break;
    case PasteboardFormat::text:
      snapshot_.text = decodeText(candidates_.first(), bytes);
      if (!targetsKnown_) snapshot_.types = {pasteboardType::plainText.toString()};
      break;
    case PasteboardFormat::rtf:
      snapshot_.rtf = bytes;
      if (!bytes.isEmpty()) return finish();
      break;
    case PasteboardFormat::html:
      snapshot_.html = bytes;
      break;
    case PasteboardFormat::image:
      snapshot_.image = bytes;
      break;
  }
  leave(format_);
}

void SelectionReadPlan::refuse() {
  candidates_.removeFirst();
  if (candidates_.isEmpty()) leave(format_);
}

void SelectionReadPlan::reportOversized() {
  const QString type = typesOfTargets({candidates_.first()}).first();
  snapshot_.oversized.insert(type);
  // A text that is too large is not replaced by a picture of it.
  if (format_ == PasteboardFormat::text) return finish();
  leave(format_);
}

bool SelectionReadPlan::hasContent() const {
  return !snapshot_.fileUrls.isEmpty() || hasText() || snapshot_.image;
}

void SelectionReadPlan::begin(PasteboardFormat format) {
  format_ = format;
  candidates_ = candidateTargets(format, targets_);
  if (candidates_.isEmpty()) leave(format);
}

void SelectionReadPlan::leave(PasteboardFormat format) {
  switch (format) {
    case PasteboardFormat::files:
      return begin(PasteboardFormat::text);
    case PasteboardFormat::text:
      if (!hasText()) return begin(PasteboardFormat::image);
      return policy_.wantsRichText ? begin(PasteboardFormat::rtf) : finish();
    case PasteboardFormat::rtf:
      return begin(PasteboardFormat::html);
    case PasteboardFormat::html:
    case PasteboardFormat::image:
      return finish();
  }
}

bool SelectionReadPlan::hasText() const {
  return snapshot_.text && !isBlank(*snapshot_.text);
}

qint64 SelectionReadPlan::budgetOf(PasteboardFormat format) const {
  switch (format) {
    case PasteboardFormat::files:
    case PasteboardFormat::text:
      return policy_.maxTextBytes;
    case PasteboardFormat::rtf:
    case PasteboardFormat::html:
      return policy_.maxRichBytes;
    case PasteboardFormat::image:
      return policy_.maxImageBytes;
  }
  return 0;
}

}  // namespace nimbrel
