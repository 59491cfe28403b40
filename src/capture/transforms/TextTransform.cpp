#include "capture/transforms/TextTransform.h"

#include <QCoreApplication>
#include <algorithm>
#include <cstddef>

#include "capture/model/TextRules.h"
#include "capture/transforms/CaseMapping.h"
#include "capture/transforms/JsonLayout.h"

namespace nimbrel {
namespace {

struct Names {
  const char* name;
  const char* label;
};

/// In the order of the transforms.
constexpr std::array<Names, kTextTransforms.size()> kNames{{
    {"uppercase", QT_TRANSLATE_NOOP("TextTransform", "Mayúsculas")},
    {"lowercase", QT_TRANSLATE_NOOP("TextTransform", "Minúsculas")},
    {"titleCase", QT_TRANSLATE_NOOP("TextTransform", "Tipo título")},
    {"trimWhitespace", QT_TRANSLATE_NOOP("TextTransform", "Recortar espacios")},
    {"removeLineBreaks", QT_TRANSLATE_NOOP("TextTransform", "Quitar saltos de línea")},
    {"urlEncode", QT_TRANSLATE_NOOP("TextTransform", "Codificar URL")},
    {"urlDecode", QT_TRANSLATE_NOOP("TextTransform", "Decodificar URL")},
    {"base64Encode", QT_TRANSLATE_NOOP("TextTransform", "Codificar Base64")},
    {"base64Decode", QT_TRANSLATE_NOOP("TextTransform", "Decodificar Base64")},
    {"formatJSON", QT_TRANSLATE_NOOP("TextTransform", "Formatear JSON")},
    {"compactJSON", QT_TRANSLATE_NOOP("TextTransform", "Compactar JSON")},
}};

const Names& namesOf(TextTransform transform) {
  return kNames.at(static_cast<std::size_t>(transform));
}

QString withoutLineBreaks(const QString& text) {
  QString joined;
  joined.reserve(text.size());
  bool inRun = false;
  for (const QChar unit : text) {
    const bool lineBreak = isLineBreak(unit);
    if (!lineBreak)
      joined += unit;
    else if (!inRun)
      joined += u' ';
    inRun = lineBreak;
  }
  return joined;
}

std::optional<QString> urlEncoded(const QString& text) {
  if (!text.isValidUtf16()) return std::nullopt;
  return encodedForPath(text);
}

bool isHexDigit(QChar c) {
  return (c >= u'0' && c <= u'9') || (c >= u'a' && c <= u'f') || (c >= u'A' && c <= u'F');
}

std::optional<QString> urlDecoded(const QString& text) {
  for (qsizetype i = text.indexOf(u'%'); i >= 0; i = text.indexOf(u'%', i + 1)) {
    const bool complete = i + 2 < text.size() && isHexDigit(text.at(i + 1)) && isHexDigit(text.at(i + 2));
    if (!complete) return std::nullopt;
  }
  return strictUtf8(QByteArray::fromPercentEncoding(text.toUtf8()));
}

std::optional<QString> base64Decoded(const QString& text) {
  // The library's decoder takes texts without padding.
  if (text.size() % 4 != 0) return std::nullopt;
  const auto decoded = QByteArray::fromBase64Encoding(
      text.toUtf8(), QByteArray::Base64Encoding | QByteArray::AbortOnBase64DecodingErrors);
  if (!decoded) return std::nullopt;
  return strictUtf8(*decoded);
}

std::optional<QString> laidOut(const QString& text, JsonLayout layout) {
  const auto json = laidOutJson(text.toUtf8(), layout);
  if (!json) return std::nullopt;
  return QString::fromUtf8(*json);
}

}  // namespace

QString label(TextTransform transform) {
  return QCoreApplication::translate("TextTransform", namesOf(transform).label);
}

QString name(TextTransform transform) {
  return QString::fromLatin1(namesOf(transform).name);
}

std::optional<TextTransform> textTransformNamed(QStringView name) {
  const auto* const found = std::find_if(
      kNames.begin(), kNames.end(), [&](const Names& names) { return name == QLatin1String(names.name); });
  if (found == kNames.end()) return std::nullopt;
  return kTextTransforms.at(static_cast<std::size_t>(found - kNames.begin()));
}

std::optional<QString> apply(TextTransform transform, const QString& text, const QLocale& locale) {
  switch (transform) {
    case TextTransform::uppercase:
      return uppercased(text);
    case TextTransform::lowercase:
      return lowercased(text);
    case TextTransform::titleCase:
      return titleCased(text, locale);
    case TextTransform::trimWhitespace:
      return trimmedWhitespace(text).toString();
    case TextTransform::removeLineBreaks:
      return withoutLineBreaks(text);
    case TextTransform::urlEncode:
      return urlEncoded(text);
    case TextTransform::urlDecode:
      return urlDecoded(text);
    case TextTransform::base64Encode:
      return QString::fromLatin1(text.toUtf8().toBase64());
    case TextTransform::base64Decode:
      return base64Decoded(text);
    case TextTransform::formatJSON:
      return laidOut(text, JsonLayout::indented);
    case TextTransform::compactJSON:
      return laidOut(text, JsonLayout::compact);
  }
  return std::nullopt;
}

}  // namespace nimbrel
