#pragma once

#include <QDateTime>
#include <QLocale>
#include <QString>
#include <optional>

#include "capture/model/ClipItem.h"

namespace nimbrel {

/// The current values that a template's placeholders are replaced by.
struct SnippetValues final {
  /// Local date and time.
  QDateTime now;
  QLocale locale;
  /// The pasteboard's text; when absent, "{clipboard}" stays as it is.
  std::optional<QString> clipboard;
};

/// Whether a clip's placeholders may be expanded: a text clip, not sensitive, with both a "{" and a "}".
[[nodiscard]] bool qualifiesForSnippets(const ClipItem& clip);

/// The clip's text with every placeholder replaced, whatever its letter case: {fecha} {date} {hora} {time}
/// {año} {year} {clipboard}. The replacements run one after the other, each over the whole text. A clip that
/// does not qualify gives its text unchanged.
[[nodiscard]] QString expandSnippets(const ClipItem& clip, const SnippetValues& values);

/// Whether a clip is a template: it qualifies and holds at least one placeholder.
[[nodiscard]] bool isTemplate(const ClipItem& clip);

}  // namespace nimbrel
