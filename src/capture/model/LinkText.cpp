#include "capture/model/LinkText.h"

#include <algorithm>

#include "capture/model/TextRules.h"

namespace nimbrel {
namespace {

constexpr qsizetype kMaxLinkLength = 8192;

bool hasLinkScheme(QStringView text) {
  const auto starts = [&](QStringView prefix) { return text.startsWith(prefix, Qt::CaseInsensitive); };
  return starts(u"http://") || starts(u"https://") || starts(u"ftp://") || starts(u"mailto:");
}

}  // namespace

std::optional<QUrl> linkOf(const ClipItem& clip) {
  if (!clip.isText()) return std::nullopt;
  const QStringView text = trimmedWhitespace(clip.text);
  if (text.isEmpty() || text.size() > kMaxLinkLength || !hasLinkScheme(text)) return std::nullopt;
  if (std::any_of(text.begin(), text.end(), [](QChar c) { return c.isSpace(); })) return std::nullopt;
  QUrl url(text.toString(), QUrl::StrictMode);
  if (!url.isValid()) return std::nullopt;
  const bool isMail = url.scheme() == u"mailto";
  if (isMail ? url.path().isEmpty() : url.host().isEmpty()) return std::nullopt;
  return url;
}

}  // namespace nimbrel
