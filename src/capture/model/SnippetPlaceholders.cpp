#include "capture/model/SnippetPlaceholders.h"

#include <algorithm>
#include <array>

namespace nimbrel {
namespace {

constexpr std::array<QStringView, 7> kPlaceholders{u"{fecha}", u"{date}", u"{hora}",     u"{time}",
                                                   u"{año}",   u"{year}", u"{clipboard}"};

void replaceAll(QString& text, QStringView placeholder, const QString& value) {
  text.replace(placeholder.toString(), value, Qt::CaseInsensitive);
}

}  // namespace

bool qualifiesForSnippets(const ClipItem& clip) {
  return clip.isText() && !clip.isSensitive() && clip.text.contains(u'{') && clip.text.contains(u'}');
}

QString expandSnippets(const ClipItem& clip, const SnippetValues& values) {
  if (!qualifiesForSnippets(clip)) return clip.text;
  QString text = clip.text;
  const QString date = values.locale.toString(values.now.date(), QLocale::ShortFormat);
  const QString time = values.locale.toString(values.now.time(), QLocale::ShortFormat);
  const QString year = QString::number(values.now.date().year());
  replaceAll(text, u"{fecha}", date);
  replaceAll(text, u"{date}", date);
  replaceAll(text, u"{hora}", time);
  replaceAll(text, u"{time}", time);
  replaceAll(text, u"{año}", year);
  replaceAll(text, u"{year}", year);
  if (values.clipboard) replaceAll(text, u"{clipboard}", *values.clipboard);
  return text;
}

bool isTemplate(const ClipItem& clip) {
  return qualifiesForSnippets(clip) &&
         std::any_of(kPlaceholders.begin(), kPlaceholders.end(),
                     [&](QStringView word) { return clip.text.contains(word, Qt::CaseInsensitive); });
}

}  // namespace nimbrel
