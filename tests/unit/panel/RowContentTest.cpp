#include "panel/RowContent.h"

#include <gmock/gmock.h>

#include <QGuiApplication>
#include <QPalette>

#include "support/StoreFixture.h"

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;
using ::testing::ElementsAre;
using testing::indexed;
using testing::textClip;

RowContent contentFor(const ClipItem& clip, const QString& query, Secrecy secrecy = Secrecy::none) {
  return RowContent({.clip = indexed(clip),
                     .secrecy = secrecy,
                     .query = query,
                     .minute = 30'000'000,
                     .previewWidth = 300,
                     .detailsWidth = 300,
                     .theme = panelTheme(QGuiApplication::palette())});
}

TEST(RowContentTest, EmphasisesTheMatchInThePreview) {
  const RowContent content = contentFor(textClip(u"Una canción corta"_s), u"cancion"_s);
  EXPECT_TRUE(content.preview.showsMatch());
  EXPECT_EQ(content.excerpt.width(), 0);
  EXPECT_FALSE(contentFor(textClip(u"Una canción corta"_s), QString()).preview.showsMatch());
}

TEST(RowContentTest, ShowsTheSurroundingsOfAMatchBeyondThePreview) {
  const ClipItem clip = textClip(u"principio "_s + u"relleno "_s.repeated(200) + u"aguja y final"_s);
  const RowContent content = contentFor(clip, u"aguja"_s);
  EXPECT_FALSE(content.preview.showsMatch());
  EXPECT_TRUE(content.excerpt.showsMatch());
  EXPECT_GT(content.excerpt.width(), 0);
  EXPECT_LE(content.excerpt.width(), 300);
}

TEST(RowContentTest, ShowsTheSurroundingsOfAMatchInTheTextOfAPicture) {
  ClipItem clip;
  clip.imageFile = u"a.png"_s;
  clip.ocrText = u"Factura "_s + u"línea "_s.repeated(100) + u"total"_s;
  EXPECT_TRUE(contentFor(clip, u"total"_s).excerpt.showsMatch());
}

TEST(RowContentTest, ShowsNoMatchInASecret) {
  ClipItem clip = textClip(u"sk-abcdef "_s + u"x "_s.repeated(400) + u"aguja"_s);
  clip.sensitive = true;
  for (const Secrecy secrecy : {Secrecy::masked, Secrecy::revealed}) {
    const RowContent content = contentFor(clip, u"aguja"_s, secrecy);
    EXPECT_FALSE(content.preview.showsMatch());
    EXPECT_EQ(content.excerpt.width(), 0);
  }
}

TEST(RowContentTest, FitsWhatIsEmphasised) {
  for (const QString& text :
       {u"W"_s.repeated(400), u"שלום עולם "_s.repeated(50), u"👩‍👩‍👧 "_s.repeated(100)})
    EXPECT_LE(contentFor(textClip(text), text.first(6)).preview.width(), 300) << text.toStdString();
}

/// The symbols and texts that a row tells, in their order.
QStringList detailsOf(const ClipItem& clip, Secrecy secrecy = Secrecy::none) {
  QStringList told;
  const QDateTime now = QDateTime::fromSecsSinceEpoch(1'000'000'000, Qt::UTC);
  const auto details = rowDetails(*indexed(clip), secrecy, now, QLocale(QLocale::Spanish, QLocale::Spain));
  for (const RowDetail& detail : details)
    told.append(detail.symbol + (detail.text.isEmpty() ? QString() : u":"_s + detail.text));
  return told;
}

ClipItem recentClip(const QString& text) {
  return textClip(text, 1'000'000'000 - 10);
}

TEST(RowDetails, OfATextAreItsSourceItsLengthAndItsAge) {
  ClipItem clip = recentClip(u"hola"_s);
  EXPECT_THAT(detailsOf(clip), ElementsAre(u":4 car."_s, u"clock:ahora"_s));
  clip.sourceBundleID = u"org.kde.kate"_s;
  clip.sourceName = u"Kate"_s;
  EXPECT_THAT(detailsOf(clip), ElementsAre(u":Origen: Kate"_s, u":4 car."_s, u"clock:ahora"_s));
}

TEST(RowDetails, SayWhatKindOfTextItIs) {
  EXPECT_THAT(detailsOf(recentClip(u"https://example.org"_s)),
              ElementsAre(u"link"_s, u":19 car."_s, u"clock:ahora"_s));
  EXPECT_THAT(detailsOf(recentClip(u"Hoy: {fecha}"_s)),
              ElementsAre(u"curlybraces:Plantilla"_s, u":12 car."_s, u"clock:ahora"_s));
}

TEST(RowDetails, OfFilesAndImagesHaveNoLength) {
  ClipItem file = recentClip(u"/a.txt"_s);
  file.fileURLString = u"file:///a.txt"_s;
  EXPECT_THAT(detailsOf(file), ElementsAre(u"folder"_s, u"clock:ahora"_s));
  ClipItem image = recentClip(QString());
  image.imageFile = u"a.png"_s;
  EXPECT_THAT(detailsOf(image), ElementsAre(u"clock:ahora"_s));
  image.ocrText = u"Factura"_s;
  EXPECT_THAT(detailsOf(image), ElementsAre(u"text.viewfinder"_s, u"clock:ahora"_s));
}

TEST(RowDetails, SayHowAClipIsKept) {
  ClipItem clip = recentClip(u"hola"_s);
  clip.collection = u"Recetas"_s;
  EXPECT_THAT(detailsOf(clip), ElementsAre(u"tray:Recetas"_s, u":4 car."_s, u"clock:ahora"_s));
  clip.collection.reset();
  clip.expiresAt = timestampFromUnixSeconds(2'000'000'000);
  EXPECT_THAT(detailsOf(clip),
              ElementsAre(u":4 car."_s, u"timer:Se borrará automáticamente"_s, u"clock:ahora"_s));
}

TEST(RowDetails, OfAMaskedClipSayNothingAboutItsText) {
  ClipItem clip = recentClip(u"Mi clave, el {fecha}: s3cr3"_s);
  clip.sensitive = true;
  EXPECT_THAT(detailsOf(clip, Secrecy::masked), ElementsAre(u"lock.fill"_s, u"clock:ahora"_s));
  EXPECT_THAT(detailsOf(clip, Secrecy::revealed),
              ElementsAre(u"lock.open.fill:Elemento desbloqueado"_s, u":27 car."_s, u"clock:ahora"_s));
}

}  // namespace
}  // namespace nimbrel
