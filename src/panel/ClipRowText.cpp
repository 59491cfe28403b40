#include "panel/ClipRowText.h"

#include <QCoreApplication>
#include <algorithm>
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

QDateTime localTime(Timestamp moment) {
  // What a foreign history says may be no date at all.
  constexpr double kFarthest = 8.64e15;
  return QDateTime::fromMSecsSinceEpoch(
      static_cast<qint64>(std::clamp(unixSeconds(moment) * 1000, -kFarthest, kFarthest)));
}

QString bullets(int count) {
  return QString(count, u'•');
}

}  // namespace

QString maskedPreview(const QString& text) {
  for (const QStringView prefix : kTokenPrefixes) {
    if (text.startsWith(prefix)) return prefix.toString() + bullets(16);
  }
  return bullets(20);
}

QString previewText(const ClipItem& clip, Secrecy secrecy) {
  const QString head = firstCharacters(clip.text, kPreviewCharacters).toString();
  if (secrecy == Secrecy::masked) return maskedPreview(head);
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

QString shownName(const SourceApp& app) {
  if (!isRemoteSourceID(app.bundleID)) return app.name;
  return QCoreApplication::translate("ClipRow", app.name.toUtf8().constData());
}

QString sourceLabel(const ClipItem& clip) {
  if (!clip.sourceName || clip.sourceName->isEmpty()) return {};
  const bool remote = clip.remoteDevice || (clip.sourceBundleID && isRemoteSourceID(*clip.sourceBundleID));
  if (!remote) return Texts::tr("Origen: %1").arg(*clip.sourceName);
  const QString device = QCoreApplication::translate("ClipRow", clip.sourceName->toUtf8().constData());
  return Texts::tr("Copiado desde tu %1 vía Portapapeles Universal").arg(device);
}

QString lengthLabel(const IndexedClip& indexed, Secrecy secrecy, const QLocale& locale) {
  const ClipTraits* const traits = indexed.readyTraits();
  if (!traits || !indexed.clip.isText() || secrecy == Secrecy::masked) return {};
  return Texts::tr("%1 car.").arg(locale.toString(traits->characters));
}

QList<RowDetail> rowDetails(const IndexedClip& indexed, Secrecy secrecy, const QDateTime& now,
                            const QLocale& locale) {
  const ClipItem& clip = indexed.clip;
  const ClipTraits traits = indexed.readyTraits() ? *indexed.readyTraits() : ClipTraits{};
  QList<RowDetail> details;
  const auto add = [&](const QString& symbol, const QString& text) {
    if (!symbol.isEmpty() || !text.isEmpty()) details.append({symbol, text});
  };
  if (secrecy == Secrecy::masked) add(QStringLiteral("lock.fill"), {});
  if (secrecy == Secrecy::revealed) add(QStringLiteral("lock.open.fill"), Texts::tr("Elemento desbloqueado"));
  if (secrecy != Secrecy::masked && traits.isLink) add(QStringLiteral("link"), {});
  if (clip.isFile()) add(QStringLiteral("folder"), {});
  if (clip.isImage() && clip.ocrText && !clip.ocrText->isEmpty()) add(QStringLiteral("text.viewfinder"), {});
  if (traits.isTemplate) details.append({QStringLiteral("curlybraces"), Texts::tr("Plantilla"), true});
  if (clip.collection) add(QStringLiteral("tray"), clip.collection->simplified());
  add({}, sourceLabel(clip));
  add({}, lengthLabel(indexed, secrecy, locale));
  if (clip.expiresAt) add(QStringLiteral("timer"), Texts::tr("Se borrará automáticamente"));
  add(QStringLiteral("clock"), relativeDate(localTime(clip.date), now, locale));
  return details;
}

QString accessibleText(const ClipItem& clip, Secrecy secrecy, bool queued) {
  QStringList parts{secrecy == Secrecy::masked ? Texts::tr("Elemento oculto") : previewText(clip, secrecy)};
  if (secrecy == Secrecy::revealed) parts.append(Texts::tr("Elemento desbloqueado"));
  if (const QString source = sourceLabel(clip); !source.isEmpty()) parts.append(source);
  if (clip.collection) parts.append(Texts::tr("En la colección %1").arg(*clip.collection));
  if (clip.expiresAt) parts.append(Texts::tr("Se borrará automáticamente"));
  if (clip.pinned) parts.append(Texts::tr("Fijado"));
  if (queued) parts.append(Texts::tr("En la cola"));
  return parts.join(QStringLiteral(", "));
}

}  // namespace nimbrel
