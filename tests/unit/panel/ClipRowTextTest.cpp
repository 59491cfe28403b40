#include "panel/ClipRowText.h"

#include <gmock/gmock.h>

#include "panel/ClipRowLayout.h"
#include "panel/HintLine.h"
#include "panel/RowGeometry.h"

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;

ClipItem secret(const QString& text) {
  ClipItem clip;
  clip.text = text;
  clip.sensitive = true;
  return clip;
}

QString maskedText(const QString& text) {
  return previewText(secret(text), Secrecy::masked);
}

TEST(MaskedPreview, ShowsAKnownPrefixAndSixteenBullets) {
  EXPECT_EQ(maskedText(u"sk-abcdef"_s), u"sk-"_s + QString(16, u'•'));
  EXPECT_EQ(maskedText(u"github_pat_x"_s), u"github_pat_"_s + QString(16, u'•'));
  for (const auto* prefix : {u"ghp_", u"xoxb-", u"xoxp-", u"npm_", u"AKIA"})
    EXPECT_EQ(maskedText(QString::fromUtf16(prefix) + u"x"_s),
              QString::fromUtf16(prefix) + QString(16, u'•'));
}

TEST(MaskedPreview, ShowsTwentyBulletsForEverythingElse) {
  EXPECT_EQ(maskedText(u"SK-abc"_s), QString(20, u'•'));
  EXPECT_EQ(maskedText(QString()), QString(20, u'•'));
  EXPECT_EQ(maskedText(QString(5000, u'x')), QString(20, u'•'));
}

TEST(MaskedPreview, IsAllThatAScreenReaderHears) {
  EXPECT_FALSE(accessibleText(secret(u"sk-abcdef"_s), Secrecy::masked, false).contains(u"abcdef"));
  EXPECT_TRUE(
      lengthLabel(IndexedClip(secret(u"sk-abcdef"_s)), Secrecy::masked, QLocale(QLocale::Spanish)).isEmpty());
}

TEST(PreviewText, IsOneLineOfAtMostThreeHundredCharacters) {
  ClipItem clip;
  clip.text = u"uno\r\n\tdos  \u2028tres"_s;
  EXPECT_EQ(previewText(clip, Secrecy::none), u"uno dos tres"_s);
  clip.text = QString(1000, u'ñ');
  EXPECT_EQ(previewText(clip, Secrecy::none).size(), 300);
}

TEST(PreviewText, OfAnImageIsItsTextOrSaysThatItIsOne) {
  ClipItem clip;
  clip.imageFile = u"a.png"_s;
  EXPECT_EQ(previewText(clip, Secrecy::none), u"Imagen copiada"_s);
  clip.ocrText = u"Factura\n7"_s;
  EXPECT_EQ(previewText(clip, Secrecy::none), u"Factura 7"_s);
}

TEST(RelativeDate, GrowsCoarserWithAge) {
  const QLocale spanish(QLocale::Spanish, QLocale::Spain);
  const QDateTime now(QDate(2026, 3, 14), QTime(15, 0));
  const auto said = [&](qint64 secondsAgo) { return relativeDate(now.addSecs(-secondsAgo), now, spanish); };
  EXPECT_EQ(said(-30), u"ahora"_s);
  EXPECT_EQ(said(59), u"ahora"_s);
  EXPECT_EQ(said(60), u"hace 1 min"_s);
  EXPECT_EQ(said(3599), u"hace 59 min"_s);
  EXPECT_EQ(said(2 * 3600), u"hace 2 h"_s);
  EXPECT_EQ(said(20 * 3600), u"ayer"_s);
  EXPECT_EQ(said(3 * 86400), u"miércoles"_s);
  EXPECT_EQ(relativeDate(QDateTime(QDate(2025, 11, 12), QTime(1, 0)), now, spanish), u"12 nov 2025"_s);
}

TEST(SourceLabel, TellsApplicationsAndDevicesApart) {
  ClipItem clip;
  EXPECT_TRUE(sourceLabel(clip).isEmpty());
  clip.sourceBundleID = u"org.kde.kate"_s;
  clip.sourceName = u"Kate"_s;
  EXPECT_EQ(sourceLabel(clip), u"Origen: Kate"_s);
  clip.sourceBundleID = u"com.apple.continuity.iphone"_s;
  clip.sourceName = u"iPhone"_s;
  EXPECT_EQ(sourceLabel(clip), u"Copiado desde tu iPhone vía Portapapeles Universal"_s);
}

TEST(LengthLabel, CountsCharacters) {
  ClipItem clip;
  clip.text = u"an\u0303o 👩‍👩‍👧"_s;
  EXPECT_EQ(lengthLabel(IndexedClip(clip), Secrecy::none, QLocale(QLocale::Spanish)), u"5 car."_s);
}

TEST(LengthLabel, OfALongTextWaitsUntilItHasBeenCounted) {
  ClipItem clip;
  clip.text = QString(100'000, u'ñ');
  const IndexedClip indexed(clip);
  EXPECT_TRUE(lengthLabel(indexed, Secrecy::none, QLocale(QLocale::English)).isEmpty());
  EXPECT_EQ(indexed.traits().characters, 100'000);
  EXPECT_EQ(lengthLabel(indexed, Secrecy::none, QLocale(QLocale::English)), u"100,000 car."_s);
}

TEST(Hint, FollowsTheSelectedClip) {
  const QString other =
      u"↑↓ elegir   ↩ pegar   ⌘1–9 directo   ⌘⌫ borrar   ⌘P fijar   ␣ vista rápida   ⌘↩ sin formato"_s;
  EXPECT_EQ(hintFor(nullptr), other);
  ClipItem clip;
  clip.text = u"hola"_s;
  EXPECT_EQ(hintFor(&clip), other);
  clip.text = u"https://example.org"_s;
  EXPECT_EQ(
      hintFor(&clip),
      u"↑↓ elegir   ↩ pegar   ⌘O abrir enlace   ⌘↩ sin formato   ⌘⌫ borrar   ⌘P fijar   ␣ vista rápida"_s);
  clip.fileURLString = u"file:///a"_s;
  EXPECT_EQ(hintFor(&clip), u"↑↓ elegir   ↩ pegar archivo   ⌘⌫ borrar   ⌘P fijar   ␣ vista rápida"_s);
  clip.fileURLString = u"file:///a\nfile:///b"_s;
  EXPECT_TRUE(hintFor(&clip).contains(u"pegar archivo"));
  clip.fileURLString = QString();
  EXPECT_FALSE(hintFor(&clip).contains(u"pegar archivo"));
  clip.fileURLString.reset();
  clip.imageFile = u"a.png"_s;
  EXPECT_EQ(hintFor(&clip), other);
  clip.ocrText = u"texto"_s;
  EXPECT_EQ(hintFor(&clip),
            u"↑↓ elegir   ↩ pegar imagen   ⌘T pegar su texto   ⌘⌫ borrar   ⌘P fijar   ␣ vista rápida"_s);
}

TEST(ClipRowLayout, KeepsItsPartsInsideAndApart) {
  for (const int width : {200, 340, 640}) {
    for (const int height : {RowGeometry::kLow, RowGeometry::kTall}) {
      const bool picture = height == RowGeometry::kTall;
      const ClipRowLayout layout =
          layoutRow({width, height}, {.picture = picture, .badge = true, .marks = 2});
      const QRect row(0, 0, width, height);
      for (const QRect& part : {layout.icon, layout.badge, layout.marks})
        EXPECT_TRUE(row.contains(part));
      EXPECT_LT(layout.icon.right(), layout.preview.left());
      EXPECT_LT(layout.preview.right(), layout.marks.left());
      EXPECT_LT(layout.marks.right(), layout.badge.left());
      EXPECT_LE(layout.preview.bottom(), layout.details.top());
    }
  }
  EXPECT_TRUE(layoutRow({340, 47}, {}).badge.isEmpty());
  EXPECT_TRUE(layoutRow({340, 47}, {}).marks.isEmpty());
}

}  // namespace
}  // namespace nimbrel
