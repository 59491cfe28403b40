#include "panel/ClipRowText.h"

#include <QCoreApplication>
#include <array>

#include "capture/model/ClipSource.h"
#include "capture/model/TextRules.h"

namespace nimbrel {
namespace {

constexpr qsizetype kPreviewCharacters = 300;

constexpr std::array<QStringView, 7> kTokenPrefixes{u"ghp_",  u"github_pat_", u"sk-", u"xoxb-",
                                                    u"xoxp-", u"npm_",        u"AKIA"};

struct Texts {
  Q_DECLARE_TR_FUNCTIONS(ClipRow)
};

// Names of devices that the program itself gives, stored so and translated where they are shown.
[[maybe_unused]] constexpr const char* kDeviceNames[] = {
    QT_TRANSLATE_NOOP("ClipRow", "Portapapeles Universal"), QT_TRANSLATE_NOOP("ClipRow", "Continuidad")};

QString bullets(int count) {
  return QString(count, u'•');
}

}  // namespace

bool isMasked(const ClipItem& clip) {
  return clip.isSensitive();
}

QString maskedPreview(const QString& text) {
  for (const QStringView prefix : kTokenPrefixes) {
    if (text.startsWith(prefix)) return prefix.toString() + bullets(16);
  }
  return bullets(20);
}

QString previewText(const ClipItem& clip) {
  const QString head = firstCharacters(clip.text, kPreviewCharacters).toString();
  if (isMasked(clip)) return maskedPreview(head);
  if (!clip.isImage()) return head.simplified();
  const QString recognised = firstCharacters(clip.ocrText.value_or(QString()), kPreviewCharacters).toString();
  const QString shown = (head.isEmpty() ? recognised : head).simplified();
  return shown.isEmpty() ? Texts::tr("Imagen copiada") : shown;
}

QString relativeDate(const QDateTime& moment, const QDateTime& now, const QLocale& locale) {
  const qint64 seconds = moment.secsTo(now);
  if (seconds < 60) return Texts::tr("ahora");
  const qint64 days = moment.date().daysTo(now.date());
  if (seconds < 3600) return Texts::tr("hace %1 min").arg(seconds / 60);
  if (days == 0 || seconds < 6 * 3600) return Texts::tr("hace %1 h").arg(seconds / 3600);
  if (days == 1) return Texts::tr("ayer");
  if (days < 7) return locale.dayName(moment.date().dayOfWeek());
  const bool sameYear = moment.date().year() == now.date().year();
  return locale.toString(moment.date(), sameYear ? Texts::tr("d MMM") : Texts::tr("d MMM yyyy"));
}

QString sourceLabel(const ClipItem& clip) {
  if (!clip.sourceName || clip.sourceName->isEmpty()) return {};
  const bool remote = clip.remoteDevice || (clip.sourceBundleID && isRemoteSourceID(*clip.sourceBundleID));
  if (remote) {
    const QString device = QCoreApplication::translate("ClipRow", clip.sourceName->toUtf8().constData());
    return Texts::tr("Copiado desde tu %1 vía Portapapeles Universal").arg(device);
  }
  return Texts::tr("Origen: %1").arg(*clip.sourceName);
}

QString lengthLabel(const IndexedClip& indexed, const QLocale& locale) {
  const ClipTraits* const traits = indexed.readyTraits();
  if (!traits || !indexed.clip.isText() || isMasked(indexed.clip)) return {};
  return Texts::tr("%1 car.").arg(locale.toString(traits->characters));
}

QString accessibleText(const ClipItem& clip) {
  QStringList parts{isMasked(clip) ? Texts::tr("Elemento oculto") : previewText(clip)};
  if (const QString source = sourceLabel(clip); !source.isEmpty()) parts.append(source);
  if (clip.pinned) parts.append(Texts::tr("Fijado"));
  return parts.join(QStringLiteral(", "));
}

}  // namespace nimbrel
