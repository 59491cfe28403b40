#include <gmock/gmock.h>

#include <QSignalSpy>

#include "support/StoreFixture.h"

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

class Organizing : public testing::StoreFixture {
 protected:
  /// Whatever the database still has to do is done.
  void settle() { database().flush(); }
  [[nodiscard]] QUuid idOf(const QString& text) const {
    for (qsizetype row = 0; row < texts().size(); ++row) {
      if (clip(row).text == text) return clip(row).id;
    }
    return {};
  }
  void restart() {
    quit();
    launch();
  }
};

TEST_F(Organizing, ClearingLeavesExactlyThePinnedClipsInTheirOrder) {
  launch();
  for (int i = 0; i < 6; ++i)
    copyText(QString::number(i));
  store().togglePin(idOf(u"1"_s));
  store().setCollection(idOf(u"4"_s), u"Trabajo"_s);
  const QSignalSpy removals(&store(), &ClipboardStore::clipsRemoved);
  store().clearHistory();
  EXPECT_EQ(texts(), (QStringList{u"4"_s, u"1"_s}));
  EXPECT_EQ(removals.count(), 1);
  restart();
  EXPECT_EQ(texts(), (QStringList{u"4"_s, u"1"_s}));
}

TEST_F(Organizing, ClearingRemovesAnUnpinnedClipOfACollectionLikeAnyOther) {
  launch();
  copyText(u"a"_s);
  store().setCollection(clip(0).id, u"Trabajo"_s);
  store().togglePin(clip(0).id);
  store().clearHistory();
  EXPECT_TRUE(texts().isEmpty());
}

TEST_F(Organizing, ClearingRemovesFilesAndEmptiesTheQueue) {
  launch();
  copyImage("png");
  copyRtf(u"hola"_s, "{\\rtf1}");
  store().addToQueue(clip(0).id);
  store().clearHistory();
  settle();
  EXPECT_TRUE(files.images.isEmpty());
  EXPECT_TRUE(files.rich.isEmpty());
  EXPECT_TRUE(store().queuedIDs().isEmpty());
}

TEST_F(Organizing, ClearingAnEmptyHistoryAnnouncesNothing) {
  launch();
  const QSignalSpy removals(&store(), &ClipboardStore::clipsRemoved);
  store().clearHistory();
  EXPECT_EQ(removals.count(), 0);
}

TEST_F(Organizing, AssigningACollectionPinsAndRemovesTheExpiry) {
  launch();
  copySecret(u"sk-secreto"_s);
  ASSERT_TRUE(clip(0).expiresAt);
  const auto before = store().revision();
  store().setCollection(clip(0).id, u" \n Claves \t"_s);
  EXPECT_EQ(clip(0).collection, u"Claves"_s);
  EXPECT_TRUE(clip(0).pinned);
  EXPECT_FALSE(clip(0).expiresAt);
  EXPECT_GT(store().revision(), before);
  restart();
  EXPECT_EQ(clip(0).collection, u"Claves"_s);
  EXPECT_TRUE(clip(0).pinned);
}

TEST_F(Organizing, ABlankCollectionNameTakesTheClipOutAndLeavesItPinned) {
  launch();
  copyText(u"a"_s);
  for (const auto& none : {std::optional<QString>(), std::optional(u" \n\t "_s), std::optional(QString())}) {
    store().setCollection(clip(0).id, u"Trabajo"_s);
    store().setCollection(clip(0).id, none);
    EXPECT_FALSE(clip(0).collection);
    EXPECT_TRUE(clip(0).pinned);
  }
  restart();
  EXPECT_FALSE(clip(0).collection);
}

TEST_F(Organizing, ABlankNameForAClipWithoutCollectionDoesNotPinIt) {
  launch();
  copyText(u"a"_s);
  store().setCollection(clip(0).id, u"  "_s);
  EXPECT_FALSE(clip(0).pinned);
}

TEST_F(Organizing, UnknownIdsDoNothing) {
  launch();
  copyText(u"a"_s);
  const QSignalSpy changes(&store(), &ClipboardStore::clipChanged);
  const QUuid unknown = QUuid::createUuid();
  store().togglePin(unknown);
  store().setCollection(unknown, u"x"_s);
  store().addToQueue(unknown);
  store().removeFromQueue(unknown);
  store().removeClip(unknown);
  EXPECT_EQ(changes.count(), 0);
  EXPECT_TRUE(store().queuedIDs().isEmpty());
}

TEST_F(Organizing, NamesEachCollectionOnce) {
  launch();
  for (const auto* name : {u"b", u"Ánimo", u"b", u"a"}) {
    copyText(QUuid::createUuid().toString());
    store().setCollection(clip(0).id, QString::fromUtf16(name));
  }
  EXPECT_EQ(store().collections().size(), 3);
  EXPECT_TRUE(store().collections().contains(u"Ánimo"_s));
}

TEST_F(Organizing, ADuplicateKeepsIdPinAndCollection) {
  launch();
  copyText(u"a"_s);
  const QUuid id = clip(0).id;
  store().setCollection(id, u"Trabajo"_s);
  copyText(u"b"_s);
  copyText(u"a"_s);
  EXPECT_EQ(clip(0).id, id);
  EXPECT_TRUE(clip(0).pinned);
  EXPECT_EQ(clip(0).collection, u"Trabajo"_s);
}

TEST_F(Organizing, UnpinningASecretLeavesItWithoutExpiry) {
  launch();
  copySecret(u"sk-secreto"_s);
  store().togglePin(clip(0).id);
  store().togglePin(clip(0).id);
  clock.advance(1000h);
  store().tick();
  EXPECT_EQ(texts().size(), 1);
}

TEST_F(Organizing, PinsDoNotTouchWhatSearchHasFound) {
  launch();
  copyText(u"hola"_s);
  const auto before = store().revision();
  store().togglePin(clip(0).id);
  EXPECT_EQ(store().revision(), before);
}

TEST_F(Organizing, TheQueueKeepsTheOrderAndHoldsNoClipTwice) {
  launch();
  for (const auto* text : {u"a", u"b", u"c"})
    copyText(QString::fromUtf16(text));
  const QSignalSpy changes(&store(), &ClipboardStore::queueChanged);
  for (const auto* text : {u"b", u"a", u"b", u"c"})
    store().addToQueue(idOf(QString::fromUtf16(text)));
  EXPECT_EQ(store().queuedIDs(), (QList<QUuid>{idOf(u"b"_s), idOf(u"a"_s), idOf(u"c"_s)}));
  store().removeFromQueue(idOf(u"a"_s));
  store().removeFromQueue(idOf(u"a"_s));
  EXPECT_EQ(store().queuedIDs(), (QList<QUuid>{idOf(u"b"_s), idOf(u"c"_s)}));
  QList<qlonglong> counts;
  for (const auto& change : changes)
    counts.append(change.at(0).toLongLong());
  EXPECT_EQ(counts, (QList<qlonglong>{1, 2, 3, 2}));
}

TEST_F(Organizing, TheQueueForgetsClipsThatAreGone) {
  settings.maxUnpinned = 3;
  launch();
  for (const auto* text : {u"a", u"b", u"c"}) {
    copyText(QString::fromUtf16(text));
    store().addToQueue(clip(0).id);
  }
  const QSignalSpy changes(&store(), &ClipboardStore::queueChanged);
  store().removeClip(idOf(u"b"_s));
  EXPECT_EQ(store().queuedIDs(), (QList<QUuid>{idOf(u"a"_s), idOf(u"c"_s)}));
  copyText(u"d"_s);
  copyText(u"e"_s);
  EXPECT_EQ(store().queuedIDs(), QList<QUuid>{idOf(u"c"_s)});
  EXPECT_EQ(changes.count(), 2);
}

TEST_F(Organizing, TheQueueSurvivesAMoveToTheTop) {
  launch();
  copyText(u"a"_s);
  copyText(u"b"_s);
  store().addToQueue(idOf(u"a"_s));
  copyText(u"a"_s);
  EXPECT_EQ(store().queuedIDs(), QList<QUuid>{idOf(u"a"_s)});
}

TEST_F(Organizing, RecognizedTextMakesAnImageFindable) {
  launch();
  copyImage("png");
  EXPECT_TRUE(store().search(u"factura"_s).isEmpty());
  imageTexts.handler(clip(0).id, u"Factura\nnúmero 7"_s);
  EXPECT_EQ(store().search(u"factura"_s).size(), 1);
  EXPECT_EQ(store().search(u"numero 7"_s).size(), 1);
  restart();
  EXPECT_EQ(clip(0).ocrText, u"Factura\nnúmero 7"_s);
  EXPECT_EQ(store().search(u"factura"_s).size(), 1);
}

TEST_F(Organizing, AnImageWithoutTextHasAnEmptyOneAndAddsNothingToTheSearch) {
  launch();
  copyImage("png");
  imageTexts.handler(clip(0).id, QString());
  EXPECT_EQ(clip(0).ocrText, QString());
  EXPECT_FALSE(searchBody(clip(0)));
  store().recognitionSwitched();
  EXPECT_EQ(imageTexts.queued.size(), 1);
}

TEST_F(Organizing, RecognizedTextOfAClipThatIsGoneIsDropped) {
  launch();
  copyImage("png");
  const QUuid id = clip(0).id;
  store().removeClip(id);
  EXPECT_EQ(imageTexts.cancelled, QList<QUuid>{id});
  imageTexts.handler(id, u"tarde"_s);
  EXPECT_TRUE(texts().isEmpty());
  EXPECT_EQ(database().count(), 0);
}

TEST_F(Organizing, ASensitiveImagesTextIsNeverFound) {
  {
    HistoryCipher cipher(secrets, random);
    ClipDatabase before(path(u"brevin.sqlite"_s), cipher);
    ClipItem image = testing::textClip(QString());
    image.imageFile = u"A.png"_s;
    image.sensitive = true;
    ASSERT_TRUE(before.saveMany({image}));
  }
  launch();
  imageTexts.handler(clip(0).id, u"contraseña secreta"_s);
  EXPECT_EQ(clip(0).ocrText, u"contraseña secreta"_s);
  EXPECT_TRUE(store().search(u"secreta"_s).isEmpty());
  EXPECT_TRUE(store().search(u"se"_s).isEmpty());
}

TEST_F(Organizing, SwitchingRecognitionOnQueuesTheImagesWithoutText) {
  settings.ocrEnabled = false;
  launch();
  copyImage("one");
  copyImage("two");
  EXPECT_TRUE(imageTexts.queued.isEmpty());
  settings.ocrEnabled = true;
  store().recognitionSwitched();
  EXPECT_EQ(imageTexts.queued, (QList<QUuid>{clip(0).id, clip(1).id}));
}

TEST_F(Organizing, CopiesTheRecognizedTextOfAnImage) {
  launch();
  copyImage("png");
  EXPECT_FALSE(store().copyRecognizedText(clip(0)));
  imageTexts.handler(clip(0).id, u"texto"_s);
  EXPECT_TRUE(store().copyRecognizedText(clip(0)));
  EXPECT_EQ(pasteboard.writes.last().text, u"texto"_s);
  store().tick();
  EXPECT_EQ(store().items().size(), 1);
}

TEST_F(Organizing, AnImageEndsUpWhereItWasCopied) {
  launch();
  files.slow = true;
  copyText(u"antes"_s);
  copyImage("png");
  const auto copied = clock.wall;
  copyText(u"después"_s);
  EXPECT_EQ(texts(), (QStringList{u"después"_s, u"antes"_s}));
  const QSignalSpy insertions(&store(), &ClipboardStore::clipInserted);
  files.finish();
  ASSERT_EQ(store().items().size(), 3);
  EXPECT_TRUE(clip(1).isImage());
  EXPECT_EQ(clip(1).date, Timestamp(copied));
  ASSERT_EQ(insertions.count(), 1);
  EXPECT_EQ(insertions.at(0).at(0).toLongLong(), 1);
  restart();
  EXPECT_TRUE(clip(1).isImage());
}

TEST_F(Organizing, TheSameImageTwiceBeforeItIsStoredIsOneClip) {
  launch();
  files.slow = true;
  copyImage("png");
  copyImage("png");
  files.finish();
  EXPECT_EQ(store().items().size(), 1);
  EXPECT_EQ(files.images.size(), 1);
  EXPECT_EQ(clip(0).date, Timestamp(clock.wall));
}

TEST_F(Organizing, AnImageThatCannotBeStoredIsNoClip) {
  launch();
  files.unreadable.insert("bomb");
  copyImage("bomb");
  files.failWrites = true;
  copyImage("png");
  EXPECT_EQ(store().items().size(), 0);
  EXPECT_TRUE(imageTexts.queued.isEmpty());
}

TEST_F(Organizing, AFormatThatCannotBeStoredLeavesThePlainClip) {
  launch();
  files.failWrites = true;
  copyRtf(u"hola"_s, "{\\rtf1}");
  EXPECT_EQ(texts(), QStringList{u"hola"_s});
  EXPECT_FALSE(clip(0).richFile);
  EXPECT_FALSE(clip(0).richHash);
}

TEST_F(Organizing, AFormatOfAClipThatIsGoneIsRemovedAgain) {
  launch();
  files.slow = true;
  copyRtf(u"hola"_s, "{\\rtf1}");
  store().removeClip(clip(0).id);
  files.finish();
  EXPECT_TRUE(files.rich.isEmpty());
}

TEST_F(Organizing, TheFormatCopiedLastIsTheOneThatIsPasted) {
  launch();
  copyRtf(u"hola"_s, "{\\rtf1 old}");
  copyRtf(u"hola"_s, "{\\rtf1 new}");
  settle();
  EXPECT_EQ(store().items().size(), 1);
  ASSERT_EQ(files.rich.size(), 1);
  EXPECT_EQ(files.rich.value(*clip(0).richFile), "{\\rtf1 new}");
  copyText(u"hola"_s);
  EXPECT_TRUE(clip(0).richFile);
}

TEST_F(Organizing, OfThreeFormatsInARowTheLastStays) {
  launch();
  copyRtf(u"hola"_s, "{\\rtf1 A}");
  files.slow = true;
  copyRtf(u"hola"_s, "{\\rtf1 B}");
  copyRtf(u"hola"_s, "{\\rtf1 A}");
  files.finish();
  settle();
  EXPECT_EQ(files.rich.value(*clip(0).richFile), "{\\rtf1 A}");
  EXPECT_EQ(files.rich.size(), 1);
}

TEST_F(Organizing, AnImageThatAVerySmallHistoryPushedOutIsNotRead) {
  settings.maxUnpinned = 1;
  launch();
  files.slow = true;
  copyImage("png");
  copyText(u"después"_s);
  files.finish();
  EXPECT_EQ(texts(), QStringList{u"después"_s});
  EXPECT_TRUE(imageTexts.queued.isEmpty());
}

TEST_F(Organizing, ASecretNeverKeepsTheFormatItHadBefore) {
  launch();
  copyRtf(u"sk-secreto"_s, "{\\rtf1 sk-secreto}");
  ASSERT_EQ(files.rich.size(), 1);
  copySecret(u"sk-secreto"_s);
  settle();
  EXPECT_TRUE(clip(0).isSensitive());
  EXPECT_FALSE(clip(0).richFile);
  EXPECT_TRUE(files.rich.isEmpty());
}

TEST_F(Organizing, AFileGoesOnlyAfterItsRow) {
  launch();
  copyImage("png");
  settle();
  const QString file = *clip(0).imageFile;
  store().removeClip(clip(0).id);
  // Whenever the file is gone, no row names it any more.
  const auto named = database().referencedImageFiles();
  settle();
  ASSERT_TRUE(named);
  EXPECT_FALSE(named->contains(file));
  EXPECT_TRUE(files.images.isEmpty());
}

TEST_F(Organizing, TheThumbnailOfACapturedImageIsThereAtOnceAndGoesWithTheClip) {
  launch();
  copyImage("png");
  const QString file = *clip(0).imageFile;
  EXPECT_FALSE(store().thumbnails().thumbnail(file).isNull());
  EXPECT_EQ(images.thumbnails, 0);
  store().removeClip(clip(0).id);
  settle();
  EXPECT_TRUE(store().thumbnails().thumbnail(file).isNull());
}

TEST_F(Organizing, WithACapacityAndPinnedClipsTheHistoryHoldsBoth) {
  settings.maxUnpinned = 3;
  launch();
  for (int i = 0; i < 20; ++i) {
    copyText(QString::number(i));
    if (i % 5 == 0) store().togglePin(clip(0).id);
  }
  EXPECT_EQ(store().items().size(), 3 + 4);
}

TEST_F(Organizing, ASmallerCapacityTrimsAtOnceAndSparesThePinnedClips) {
  launch();
  for (const auto& text : {u"a"_s, u"b"_s, u"c"_s, u"d"_s})
    copyText(text);
  store().togglePin(clip(3).id);
  settings.maxUnpinned = 2;
  EXPECT_EQ(texts().size(), 4);
  store().trimToCapacity();
  EXPECT_EQ(texts(), (QStringList{u"d"_s, u"c"_s, u"a"_s}));
  EXPECT_EQ(database().count(), 3);
}

TEST_F(Organizing, SwitchingRecognitionOffForgetsTheImagesThatWait) {
  launch();
  copyImage("png");
  ASSERT_EQ(imageTexts.queued.size(), 1);
  settings.ocrEnabled = false;
  store().recognitionSwitched();
  EXPECT_TRUE(imageTexts.queued.isEmpty());
  copyImage("other");
  EXPECT_TRUE(imageTexts.queued.isEmpty());
}

TEST_F(Organizing, SwitchingFormatsOffKeepsThoseThatAreKept) {
  launch();
  copyRtf(u"a"_s, "{rtf}");
  ASSERT_TRUE(clip(0).richFile);
  settings.richEnabled = false;
  store().renewReadPolicy();
  EXPECT_FALSE(pasteboard.policy.wantsRichText);
  copyRtf(u"b"_s, "{rtf}");
  EXPECT_FALSE(clip(0).richFile);
  EXPECT_TRUE(clip(1).richFile);
  settings.richEnabled = true;
  store().renewReadPolicy();
  EXPECT_TRUE(pasteboard.policy.wantsRichText);
}

}  // namespace
}  // namespace nimbrel
