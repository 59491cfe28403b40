#include "platform/linux/PasteboardTargets.h"

#include <array>

#include "platform/PasteboardTypes.h"

namespace nimbrel {
namespace {

struct TargetMeaning {
  QStringView target;
  QStringView type;
  PasteboardFormat format;
};

// Best first within each format.
constexpr std::array kMeanings{
    TargetMeaning{u"text/uri-list", pasteboardType::fileUrl, PasteboardFormat::files},
    TargetMeaning{u"x-special/gnome-copied-files", pasteboardType::fileUrl, PasteboardFormat::files},
    TargetMeaning{u"UTF8_STRING", pasteboardType::plainText, PasteboardFormat::text},
    TargetMeaning{u"text/plain;charset=utf-8", pasteboardType::plainText, PasteboardFormat::text},
    TargetMeaning{u"text/plain;charset=UTF-8", pasteboardType::plainText, PasteboardFormat::text},
    TargetMeaning{u"text/plain", pasteboardType::plainText, PasteboardFormat::text},
    TargetMeaning{u"STRING", pasteboardType::plainText, PasteboardFormat::text},
    TargetMeaning{u"text/rtf", pasteboardType::rtf, PasteboardFormat::rtf},
    TargetMeaning{u"application/rtf", pasteboardType::rtf, PasteboardFormat::rtf},
    TargetMeaning{u"text/richtext", pasteboardType::rtf, PasteboardFormat::rtf},
    TargetMeaning{u"text/html", pasteboardType::html, PasteboardFormat::html},
    TargetMeaning{u"image/png", pasteboardType::png, PasteboardFormat::image},
    TargetMeaning{u"image/tiff", pasteboardType::tiff, PasteboardFormat::image},
    TargetMeaning{u"image/jpeg", u"public.jpeg", PasteboardFormat::image},
    TargetMeaning{u"image/webp", u"org.webmproject.webp", PasteboardFormat::image},
    TargetMeaning{u"image/gif", u"com.compuserve.gif", PasteboardFormat::image},
    TargetMeaning{u"image/bmp", u"com.microsoft.bmp", PasteboardFormat::image},
};

constexpr QStringView kPasswordHint = u"x-kde-passwordManagerHint";

QString typeOf(const QString& target) {
  if (target == kPasswordHint) return pasteboardType::concealed.toString();
  for (const auto& meaning : kMeanings) {
    if (meaning.target == target) return meaning.type.toString();
  }
  return target;
}

QByteArray uriList(const QList<QUrl>& urls, const char* separator) {
  QByteArray list;
  for (const QUrl& url : urls)
    list += url.toEncoded() + separator;
  return list;
}

void offerText(const QString& text, QHash<QString, QByteArray>& offer) {
  const QByteArray utf8 = text.toUtf8();
  for (const auto* target : {u"UTF8_STRING", u"text/plain;charset=utf-8", u"text/plain", u"TEXT"})
    offer.insert(QString::fromUtf16(target), utf8);
  offer.insert(QStringLiteral("STRING"), text.toLatin1());
}

void offerFiles(const QList<QUrl>& urls, QHash<QString, QByteArray>& offer) {
  offer.insert(QStringLiteral("text/uri-list"), uriList(urls, "\r\n"));
  QByteArray copied = "copy\n" + uriList(urls, "\n");
  copied.chop(1);
  offer.insert(QStringLiteral("x-special/gnome-copied-files"), copied);
}

}  // namespace

QStringList typesOfTargets(const QStringList& targets) {
  QStringList types;
  for (const QString& target : targets) {
    const QString type = typeOf(target);
    if (!types.contains(type)) types.append(type);
  }
  return types;
}

QStringList candidateTargets(PasteboardFormat format, const QStringList& targets) {
  QStringList candidates;
  for (const auto& meaning : kMeanings) {
    const QString target = meaning.target.toString();
    if (meaning.format == format && targets.contains(target)) candidates.append(target);
  }
  return candidates;
}

QString decodeText(const QString& target, const QByteArray& bytes) {
  qsizetype length = bytes.size();
  while (length > 0 && bytes.at(length - 1) == '\0')
    --length;
  const QByteArrayView view = QByteArrayView(bytes).first(length);
  return target == u"STRING" ? QString::fromLatin1(view) : QString::fromUtf8(view);
}

QList<QUrl> decodeUrls(const QByteArray& bytes) {
  QList<QUrl> urls;
  for (const QByteArray& raw : bytes.split('\n')) {
    const QByteArray line = raw.trimmed();
    // Comments, and the verb that file managers put before their list.
    if (line.isEmpty() || line.startsWith('#') || line == "copy" || line == "cut") continue;
    const QUrl url = QUrl::fromEncoded(line, QUrl::StrictMode);
    if (url.isValid() && !url.scheme().isEmpty()) urls.append(url);
  }
  return urls;
}

QHash<QString, QByteArray> offeredTargets(const PasteboardContent& content) {
  QHash<QString, QByteArray> offer;
  if (!content.fileUrls.isEmpty()) offerFiles(content.fileUrls, offer);
  if (content.text) offerText(*content.text, offer);
  if (content.rtf) {
    offer.insert(QStringLiteral("text/rtf"), *content.rtf);
    offer.insert(QStringLiteral("application/rtf"), *content.rtf);
  }
  if (content.html) offer.insert(QStringLiteral("text/html"), *content.html);
  if (content.png) offer.insert(QStringLiteral("image/png"), *content.png);
  if (content.tiff) offer.insert(QStringLiteral("image/tiff"), *content.tiff);
  if (content.concealed) offer.insert(kPasswordHint.toString(), QByteArrayLiteral("secret"));
  return offer;
}

QHash<QString, ImageCodec::Format> convertedTargets(const PasteboardContent& content) {
  if (!content.png) return {};
  return {{QStringLiteral("image/tiff"), ImageCodec::Format::tiff},
          {QStringLiteral("image/bmp"), ImageCodec::Format::bmp},
          {QStringLiteral("image/jpeg"), ImageCodec::Format::jpeg}};
}

}  // namespace nimbrel
