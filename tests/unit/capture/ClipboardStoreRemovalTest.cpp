#include <gmock/gmock.h>

#include <QSignalSpy>

#include "support/StoreFixture.h"

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;

class Removal : public testing::StoreFixture {
 protected:
  QStringList stored() {
    quit();
    launch();
    return texts();
  }
};

TEST_F(Removal, ForNowPutsAClipBackAsItWas) {
  launch();
  for (const QString& text : {u"uno"_s, u"dos"_s, u"tres"_s})
    copyText(text);
  store().setCollection(clip(1).id, u"Recetas"_s);
  const ClipItem before = clip(1);
  store().removeClipForNow(before.id);
  EXPECT_EQ(texts(), (QStringList{u"tres"_s, u"uno"_s}));
  EXPECT_TRUE(store().canUndoRemoval());
  copyText(u"cuatro"_s);
  EXPECT_EQ(store().undoRemoval(), before.id);
  EXPECT_EQ(texts(), (QStringList{u"cuatro"_s, u"tres"_s, u"dos"_s, u"uno"_s}));
  EXPECT_EQ(clip(2), before);
  EXPECT_FALSE(store().canUndoRemoval());
  EXPECT_EQ(store().undoRemoval(), std::nullopt);
  EXPECT_EQ(stored(), (QStringList{u"cuatro"_s, u"tres"_s, u"dos"_s, u"uno"_s}));
}

TEST_F(Removal, ForNowIsForGoodWhenTheProgramIsKilled) {
  launch();
  copyText(u"uno"_s);
  store().removeClipForNow(clip(0).id);
  EXPECT_EQ(stored(), QStringList());
}

TEST_F(Removal, ForNowKeepsTheFilesUntilItIsSettled) {
  launch();
  copyImage("bild");
  copyRtf(u"negrita"_s, "{\\rtf1}");
  for (int i = 0; i < 2; ++i)
    store().removeClipForNow(clip(0).id);
  database().flush();
  EXPECT_EQ(files.images.size(), 1);
  EXPECT_EQ(files.rich.size(), 1);
  ASSERT_TRUE(store().undoRemoval());
  EXPECT_TRUE(clip(0).isImage());
  store().settleRemovals();
  database().flush();
  EXPECT_EQ(files.images.size(), 1);
  EXPECT_TRUE(files.rich.isEmpty());
  EXPECT_FALSE(store().canUndoRemoval());
}

TEST_F(Removal, PutsAClipBackIntoItsPlaceInTheQueue) {
  launch();
  for (const QString& text : {u"uno"_s, u"dos"_s, u"tres"_s})
    copyText(text);
  for (const qsizetype row : {2, 1, 0})
    store().addToQueue(clip(row).id);
  const QList<QUuid> queue = store().queuedIDs();
  const QSignalSpy changes(&store(), &ClipboardStore::queueChanged);
  store().removeClipForNow(clip(1).id);
  EXPECT_EQ(store().queuedIDs().size(), 2);
  ASSERT_TRUE(store().undoRemoval());
  EXPECT_EQ(store().queuedIDs(), queue);
  EXPECT_EQ(changes.count(), 2);
  EXPECT_EQ(changes.last().first().toInt(), 3);
}

TEST_F(Removal, UndoneAfterTheSameWasCopiedAgainKeepsOneClip) {
  launch();
  copyImage("bild");
  copyText(u"uno"_s);
  copyFile(u"/tmp/a.txt"_s);
  store().setCollection(clip(1).id, u"Recetas"_s);
  store().addToQueue(clip(1).id);
  for (int i = 0; i < 3; ++i)
    EXPECT_TRUE(store().removeClipForNow(clip(0).id));
  copyText(u"uno"_s);
  copyImage("bild");
  copyFile(u"/tmp/a.txt"_s);
  const QUuid image = clip(1).id;
  const QUuid text = clip(2).id;
  EXPECT_EQ(store().undoRemoval(), image);
  EXPECT_EQ(store().undoRemoval(), text);
  EXPECT_EQ(store().undoRemoval(), clip(0).id);
  EXPECT_EQ(store().items().size(), 3);
  EXPECT_TRUE(clip(2).pinned);
  EXPECT_EQ(clip(2).collection, u"Recetas"_s);
  EXPECT_FALSE(clip(0).pinned);
  EXPECT_EQ(store().queuedIDs(), QList<QUuid>{text});
  database().flush();
  EXPECT_EQ(files.images.size(), 1);
  EXPECT_EQ(stored().size(), 3);
}

TEST_F(Removal, OfASecretIsForGood) {
  launch();
  copySecret(u"sk-abcdef"_s);
  store().removeClipForNow(clip(0).id);
  EXPECT_TRUE(texts().isEmpty());
  EXPECT_FALSE(store().canUndoRemoval());
}

TEST_F(Removal, OfEverythingIncludesWhatCouldHaveComeBack) {
  launch();
  copyImage("bild");
  copyText(u"uno"_s);
  store().removeClipForNow(clip(1).id);
  store().clearHistory();
  EXPECT_FALSE(store().canUndoRemoval());
  database().flush();
  EXPECT_TRUE(files.images.isEmpty());
}

TEST_F(Removal, UndoneBringsTheClipBackIntoAFullHistoryUntilTheNextCapture) {
  settings.maxUnpinned = 2;
  launch();
  copyText(u"uno"_s);
  copyText(u"dos"_s);
  store().removeClipForNow(clip(1).id);
  copyText(u"tres"_s);
  ASSERT_TRUE(store().undoRemoval());
  EXPECT_EQ(texts(), (QStringList{u"tres"_s, u"dos"_s, u"uno"_s}));
  copyText(u"cuatro"_s);
  EXPECT_EQ(texts(), (QStringList{u"cuatro"_s, u"tres"_s}));
}

TEST_F(Removal, UndoneAfterTheSameWasCopiedAgainKeepsACollectionWithoutAPin) {
  launch();
  copyText(u"uno"_s);
  store().setCollection(clip(0).id, u"Recetas"_s);
  store().togglePin(clip(0).id);
  store().removeClipForNow(clip(0).id);
  copyText(u"uno"_s);
  ASSERT_TRUE(store().undoRemoval());
  EXPECT_EQ(clip(0).collection, u"Recetas"_s);
  EXPECT_FALSE(clip(0).pinned);
}

TEST_F(Removal, UndoneReadsAPictureThatHadNotBeenRead) {
  launch();
  copyImage("bild");
  imageTexts.queued.clear();
  store().removeClipForNow(clip(0).id);
  ASSERT_TRUE(store().undoRemoval());
  EXPECT_EQ(imageTexts.queued, QList<QUuid>{clip(0).id});
}

}  // namespace
}  // namespace nimbrel
