#include <gmock/gmock.h>

#include <QSignalSpy>

#include "support/FailingVfs.h"
#include "support/StoreFixture.h"

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

class History : public testing::StoreFixture {};

TEST_F(History, IsThereAgainAfterARestart) {
  launch();
  copyText(u"uno"_s);
  copyText(u"dos"_s);
  const ClipItem top = clip(0);
  quit();
  launch();
  EXPECT_EQ(texts(), (QStringList{u"dos"_s, u"uno"_s}));
  EXPECT_EQ(clip(0), top);
}

TEST_F(History, KeepsTheDateOfAClipMovedToTheTopThroughARestart) {
  launch();
  copyText(u"uno"_s);
  copyText(u"dos"_s);
  copyText(u"uno"_s);
  quit();
  launch();
  EXPECT_EQ(texts(), (QStringList{u"uno"_s, u"dos"_s}));
}

TEST_F(History, ReportsRowsThatCannotBeRead) {
  {
    HistoryCipher cipher(secrets, random);
    const ClipDatabase before(path(u"brevin.sqlite"_s), cipher);
    SQLiteConnection(path(u"brevin.sqlite"_s).toUtf8())
        .execute("INSERT INTO clips(id, date, payload) VALUES('nada', 1, 'x'), ('nada2', 1, 'x')");
  }
  launch();
  EXPECT_TRUE(log.has(u"2 elementos ilegibles (se conservan en la base de datos)"_s));
}

TEST_F(History, IsSavedByItselfOnceTheDiskWorksAgain) {
  testing::FailingVfs disk;
  launch();
  copyText(u"antes"_s);
  database().flush();
  disk.failWrites = true;
  copyText(u"durante"_s);
  database().flush();
  EXPECT_TRUE(log.has(u"No se pudo guardar: "_s));
  disk.failWrites = false;
  EXPECT_EQ(database().count(), 1);
  clock.advance(10s);
  store().tick();
  EXPECT_EQ(database().count(), 2);
  quit();
}

TEST_F(History, HoldsNoMoreUnpinnedClipsThanItsCapacity) {
  settings.maxUnpinned = 2;
  launch();
  copyText(u"1"_s);
  store().togglePin(clip(0).id);
  const QSignalSpy removals(&store(), &ClipboardStore::clipsRemoved);
  for (int i = 2; i <= 4; ++i)
    copyText(QString::number(i));
  EXPECT_EQ(texts(), (QStringList{u"4"_s, u"3"_s, u"1"_s}));
  EXPECT_EQ(removals.count(), 1);
  EXPECT_EQ(database().count(), 3);
}

TEST_F(History, FreesAPlaceWhenAClipIsPinned) {
  settings.maxUnpinned = 2;
  launch();
  copyText(u"1"_s);
  copyText(u"2"_s);
  store().togglePin(clip(1).id);
  copyText(u"3"_s);
  EXPECT_EQ(texts(), (QStringList{u"3"_s, u"2"_s, u"1"_s}));
}

TEST_F(History, ForgetsAnExpiryForGoodWhenAClipIsPinned) {
  launch();
  copySecret(u"sk-secreto"_s);
  store().togglePin(clip(0).id);
  EXPECT_TRUE(clip(0).pinned);
  EXPECT_FALSE(clip(0).expiresAt);
  store().togglePin(clip(0).id);
  EXPECT_FALSE(clip(0).expiresAt);
  quit();
  launch();
  EXPECT_FALSE(clip(0).expiresAt);
}

TEST_F(History, RemovesAClipFromMemoryDiskAndFiles) {
  launch();
  copyRtf(u"uno"_s, "{\\rtf1 uno}");
  copyImage("png");
  ASSERT_EQ(files.images.size() + files.rich.size(), 2);
  for (const QUuid& id : {clip(1).id, clip(0).id}) {
    store().removeClip(id);
    store().removeClip(id);
  }
  EXPECT_TRUE(texts().isEmpty());
  EXPECT_EQ(database().count(), 0);
  EXPECT_TRUE(files.images.isEmpty());
  EXPECT_TRUE(files.rich.isEmpty());
}

TEST_F(History, RemovesAnExpiredSecretAndClearsItFromThePasteboard) {
  launch();
  copySecret(u"sk-secreto"_s);
  clock.advance(299s);
  store().tick();
  EXPECT_EQ(texts().size(), 1);
  clock.advance(1s);
  store().tick();
  EXPECT_TRUE(texts().isEmpty());
  EXPECT_EQ(pasteboard.clears, 1);
  EXPECT_EQ(database().count(), 0);
  store().tick();
  EXPECT_TRUE(texts().isEmpty());
}

TEST_F(History, LeavesThePasteboardAloneWhenSomethingElseWasCopiedSince) {
  launch();
  copySecret(u"sk-secreto"_s);
  copyText(u"otra cosa"_s);
  clock.advance(300s);
  store().tick();
  EXPECT_EQ(texts(), QStringList{u"otra cosa"_s});
  EXPECT_EQ(pasteboard.clears, 0);
}

TEST_F(History, LeavesThePasteboardAloneWhenACopyIsWaitingToBeSeen) {
  launch();
  copySecret(u"sk-secreto"_s);
  clock.advance(300s);
  pasteboard.copyText(u"sk-secreto"_s);
  grader.grades.clear();
  store().tick();
  EXPECT_EQ(pasteboard.clears, 0);
}

TEST_F(History, NeverExpiresAPinnedClip) {
  launch();
  copySecret(u"sk-secreto"_s);
  store().togglePin(clip(0).id);
  clock.advance(10h);
  store().tick();
  EXPECT_EQ(texts().size(), 1);
}

TEST_F(History, SweepsWhatExpiredWhileTheProgramWasNotRunning) {
  launch();
  copySecret(u"sk-secreto"_s);
  quit();
  clock.advance(10h);
  launch().tick();
  EXPECT_TRUE(texts().isEmpty());
}

TEST_F(History, WritesATextWithItsFormattingOrWithout) {
  launch();
  ClipItem item = testing::textClip(u"hola"_s);
  item.richFile = u"A.rtf"_s;
  files.rich.insert(u"A.rtf"_s, "{\\rtf1 hola}");
  EXPECT_TRUE(store().copyToPasteboard(item, false));
  EXPECT_EQ(pasteboard.writes.last().text, u"hola"_s);
  EXPECT_EQ(pasteboard.writes.last().rtf, QByteArray("{\\rtf1 hola}"));
  EXPECT_TRUE(store().copyToPasteboard(item, true));
  EXPECT_FALSE(pasteboard.writes.last().rtf);
}

TEST_F(History, WritesASensitiveTextWithoutFormattingAndConcealed) {
  launch();
  ClipItem item = testing::textClip(u"hola"_s);
  item.sensitive = true;
  item.richFile = u"A.html"_s;
  files.rich.insert(u"A.html"_s, "<b>hola</b>");
  store().copyToPasteboard(item, false);
  EXPECT_FALSE(pasteboard.writes.last().html);
  EXPECT_TRUE(pasteboard.writes.last().concealed);
}

TEST_F(History, WritesPlainTextWhenTheRichFileIsMissing) {
  launch();
  ClipItem item = testing::textClip(u"hola"_s);
  item.richFile = u"A.rtf"_s;
  EXPECT_TRUE(store().copyToPasteboard(item, false));
  EXPECT_EQ(pasteboard.writes.last(), (PasteboardContent{.fileUrls = {}, .text = u"hola"_s}));
}

TEST_F(History, WritesFilesAsUrlsAndPaths) {
  launch();
  ClipItem item = testing::textClip(u"/tmp/a b"_s);
  item.fileURLString = u"file:///tmp/a%20b\nfile:///tmp/c"_s;
  store().copyToPasteboard(item, false);
  EXPECT_EQ(pasteboard.writes.last().fileUrls,
            (QList<QUrl>{QUrl(u"file:///tmp/a%20b"_s), QUrl(u"file:///tmp/c"_s)}));
  EXPECT_EQ(pasteboard.writes.last().text, u"/tmp/a b\n/tmp/c"_s);
}

TEST_F(History, WritesImagesAsStored) {
  launch();
  ClipItem item = testing::textClip(QString());
  item.imageFile = u"A.png"_s;
  files.images.insert(u"A.png"_s, "png");
  store().copyToPasteboard(item, false);
  EXPECT_EQ(pasteboard.writes.last().png, QByteArray("png"));
}

TEST_F(History, WritesNothingForAnImageThatIsGone) {
  launch();
  ClipItem item = testing::textClip(QString());
  item.imageFile = u"A.png"_s;
  copyText(u"secreto de antes"_s);
  EXPECT_FALSE(store().copyToPasteboard(item, false));
  EXPECT_TRUE(pasteboard.writes.isEmpty());
  // Nothing else may be pasted in its place.
  EXPECT_EQ(pasteboard.clears, 1);
  store().tick();
  EXPECT_EQ(texts(), QStringList{u"secreto de antes"_s});
}

TEST_F(History, ExpandsPlaceholdersButNotTheClipboardsOnTheWayOut) {
  launch();
  store().copyToPasteboard(testing::textClip(u"{year} {clipboard}"_s), false);
  EXPECT_EQ(pasteboard.writes.last().text, u"2026 {clipboard}"_s);
}

TEST_F(History, SaysWhenNothingCouldBeWritten) {
  launch();
  pasteboard.failWrites = true;
  EXPECT_FALSE(store().copyToPasteboard(testing::textClip(u"x"_s), false));
}

TEST_F(History, AnnouncesEachChangeOnceAndPrecisely) {
  launch();
  const QSignalSpy insertions(&store(), &ClipboardStore::clipInserted);
  const QSignalSpy changes(&store(), &ClipboardStore::clipChanged);
  const QSignalSpy removals(&store(), &ClipboardStore::clipsRemoved);
  copyText(u"1"_s);
  copyText(u"2"_s);
  const QUuid first = clip(1).id;
  store().togglePin(first);
  store().removeClip(first);
  EXPECT_EQ(insertions.count(), 2);
  ASSERT_EQ(changes.count(), 1);
  EXPECT_EQ(changes.at(0).at(0).toLongLong(), 1);
  ASSERT_EQ(removals.count(), 1);
  EXPECT_EQ(removals.at(0).at(0).value<QList<qsizetype>>(), QList<qsizetype>{1});
  EXPECT_EQ(removals.at(0).at(1).value<QList<ClipRef>>().at(0)->clip.id, first);
}

}  // namespace
}  // namespace nimbrel
