#include <gmock/gmock.h>

#include <QSignalSpy>

#include "platform/PasteboardTypes.h"
#include "support/StoreFixture.h"

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

class Capture : public testing::StoreFixture {};

TEST_F(Capture, LeavesAloneWhatIsOnThePasteboardAtLaunch) {
  pasteboard.copyText(u"de antes"_s);
  launch().tick();
  EXPECT_EQ(store().items().size(), 0);
  copyText(u"de ahora"_s);
  EXPECT_EQ(texts(), QStringList{u"de ahora"_s});
}

TEST_F(Capture, NeverTakesWhatWasCopiedWhilePaused) {
  launch().setPaused(true);
  copyText(u"en pausa"_s);
  store().setPaused(false);
  store().tick();
  EXPECT_EQ(store().items().size(), 0);
  copyText(u"después"_s);
  EXPECT_EQ(texts(), QStringList{u"después"_s});
}

TEST_F(Capture, StillTakesWhatWasCopiedJustBeforeThePause) {
  launch();
  pasteboard.copyText(u"antes"_s);
  store().setPaused(true);
  EXPECT_EQ(texts(), QStringList{u"antes"_s});
}

TEST_F(Capture, GoesByTheMomentOfTheCopyNotOfItsArrival) {
  launch();
  PasteboardSnapshot late;
  late.types = {pasteboardType::plainText.toString()};
  late.text = u"copiado antes de la pausa"_s;
  late.changedAt = clock.steady;
  clock.advance(1s);
  store().setPaused(true);
  pasteboard.copy(late);
  store().tick();
  EXPECT_EQ(texts(), QStringList{u"copiado antes de la pausa"_s});
  late.text = u"copiado en pausa"_s;
  late.changedAt = clock.steady;
  clock.advance(1s);
  store().setPaused(false);
  pasteboard.copy(late);
  store().tick();
  EXPECT_EQ(texts().size(), 1);
}

TEST_F(Capture, TellsOfAPauseOnce) {
  launch();
  const QSignalSpy changes(&store(), &ClipboardStore::pauseChanged);
  store().setPaused(true);
  store().setPaused(true);
  EXPECT_EQ(changes.count(), 1);
}

TEST_F(Capture, TakesEveryOneOfSeveralCopiesBetweenTwoTicks) {
  launch();
  for (const auto* text : {u"uno", u"dos", u"tres"})
    pasteboard.copyText(QString::fromUtf16(text));
  store().tick();
  EXPECT_EQ(texts(), (QStringList{u"tres"_s, u"dos"_s, u"uno"_s}));
}

TEST_F(Capture, LooksAtOnceWhenThePasteboardAnnouncesAChange) {
  launch();
  pasteboard.copyText(u"ya"_s);
  pasteboard.handler();
  EXPECT_EQ(texts(), QStringList{u"ya"_s});
}

TEST_F(Capture, AsksThePasteboardForNoMoreThanItKeeps) {
  launch();
  EXPECT_EQ(pasteboard.policy.maxTextBytes, 1'000'000);
  EXPECT_EQ(pasteboard.policy.maxImageBytes, 20'000'000);
  EXPECT_EQ(pasteboard.policy.maxRichBytes, 256'000);
  EXPECT_EQ(pasteboard.policy.ignoredTypes.size(), 3);
}

TEST_F(Capture, AsksThePasteboardForNothingWhilePaused) {
  launch();
  EXPECT_FALSE(pasteboard.policy.paused);
  store().setPaused(true);
  EXPECT_TRUE(pasteboard.policy.paused);
  store().setPaused(false);
  EXPECT_FALSE(pasteboard.policy.paused);
}

TEST_F(Capture, AsksThePasteboardForNothingOfIgnoredApplications) {
  settings.ignoredApps = {{.bundleID = u"com.example.vault"_s, .name = u"Vault"_s}};
  launch();
  EXPECT_EQ(pasteboard.policy.ignoredApplications, QSet<QString>{u"com.example.vault"_s});
  settings.ignoredApps.clear();
  store().renewReadPolicy();
  EXPECT_TRUE(pasteboard.policy.ignoredApplications.isEmpty());
}

TEST_F(Capture, OfTheSameTextTwiceLeavesOneClipOnTopWithTheLaterDate) {
  launch();
  copyText(u"repetido"_s);
  const QUuid id = clip(0).id;
  copyText(u"otro"_s);
  const QSignalSpy moves(&store(), &ClipboardStore::clipMoved);
  copyText(u"repetido"_s);
  EXPECT_EQ(texts(), (QStringList{u"repetido"_s, u"otro"_s}));
  EXPECT_EQ(clip(0).id, id);
  EXPECT_EQ(clip(0).date, Timestamp(clock.wall));
  ASSERT_EQ(moves.count(), 1);
  EXPECT_EQ(moves.at(0).at(0).toLongLong(), 1);
}

TEST_F(Capture, TellsTextsApartThatOnlyLookAlike) {
  launch();
  copyText(u"hola"_s);
  copyText(u"hola "_s);
  EXPECT_EQ(store().items().size(), 2);
}

TEST_F(Capture, MovesAnOldClipWithoutAHashToTheTopToo) {
  {
    HistoryCipher cipher(secrets, random);
    ClipDatabase before(path(u"brevin.sqlite"_s), cipher);
    ClipItem old = testing::textClip(u"viejo"_s);
    old.textHash.reset();
    ASSERT_TRUE(before.saveMany({old}));
  }
  launch();
  copyText(u"viejo"_s);
  EXPECT_EQ(store().items().size(), 1);
}

TEST_F(Capture, FillsInHashSourceAndDate) {
  launch();
  workspace.front = RunningApplication{u"org.kde.kate"_s, u"Kate"_s, 1};
  copyText(u"abc"_s);
  EXPECT_EQ(clip(0).textHash, u"ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad"_s);
  EXPECT_EQ(clip(0).sourceBundleID, u"org.kde.kate"_s);
  EXPECT_EQ(clip(0).sourceName, u"Kate"_s);
  EXPECT_EQ(clip(0).date, Timestamp(clock.wall));
  EXPECT_FALSE(clip(0).sensitive);
  EXPECT_FALSE(clip(0).pinned);
}

TEST_F(Capture, IgnoresACopyFromAnIgnoredApplication) {
  launch();
  workspace.front = RunningApplication{u"org.keepassxc.keepassxc"_s, u"KeePassXC"_s, 1};
  copyText(u"contraseña"_s);
  EXPECT_TRUE(texts().isEmpty());
}

TEST_F(Capture, OfFilesKeepsTheirUrlsAndPaths) {
  launch();
  PasteboardSnapshot snapshot;
  snapshot.types = {pasteboardType::fileUrl.toString()};
  snapshot.fileUrls = {QUrl(u"file:///tmp/a"_s), QUrl(u"file:///tmp/b"_s)};
  pasteboard.copy(snapshot);
  store().tick();
  pasteboard.copy(snapshot);
  store().tick();
  ASSERT_EQ(store().items().size(), 1);
  EXPECT_EQ(clip(0).fileURLString, u"file:///tmp/a\nfile:///tmp/b"_s);
  EXPECT_EQ(clip(0).text, u"/tmp/a\n/tmp/b"_s);
  EXPECT_TRUE(clip(0).isFile());
}

TEST_F(Capture, DoesNotTakeATextForTheFileItNames) {
  launch();
  PasteboardSnapshot snapshot;
  snapshot.types = {pasteboardType::fileUrl.toString()};
  snapshot.fileUrls = {QUrl(u"file:///tmp/a"_s)};
  pasteboard.copy(snapshot);
  store().tick();
  copyText(u"/tmp/a"_s);
  EXPECT_EQ(store().items().size(), 2);
}

TEST_F(Capture, OfAnImageStoresItAndQueuesItsRecognition) {
  launch();
  copyImage("png");
  copyImage("png");
  ASSERT_EQ(store().items().size(), 1);
  EXPECT_TRUE(clip(0).imageFile && clip(0).imageHash);
  EXPECT_EQ(files.images.size(), 1);
  EXPECT_EQ(imageTexts.queued, QList<QUuid>{clip(0).id});
}

TEST_F(Capture, StoresRichTextBesideTheClip) {
  launch();
  copyRtf(u"hola"_s, "{\\rtf1 hola}");
  ASSERT_TRUE(clip(0).richFile);
  EXPECT_EQ(files.rich.value(*clip(0).richFile), "{\\rtf1 hola}");
  EXPECT_EQ(clip(0).richHash->size(), 64);
}

TEST_F(Capture, GradesWithTheSourceAndLooksForCodes) {
  launch();
  workspace.front = RunningApplication{u"org.kde.kate"_s, u"Kate"_s, 1};
  copyText(u"x"_s);
  EXPECT_EQ(grader.lastSource, u"org.kde.kate"_s);
  EXPECT_TRUE(grader.lastDetectCodes);
}

TEST_F(Capture, OfASecretMarksItAndSetsItsExpiryByItsGrade) {
  launch();
  grader.grades = {{u"123456"_s, SensitivityLevel::soft}, {u"sk-secreto"_s, SensitivityLevel::hard}};
  copyText(u"123456"_s);
  EXPECT_TRUE(clip(0).isSensitive());
  EXPECT_EQ(clip(0).expiresAt, Timestamp(clock.wall + 900s));
  PasteboardSnapshot rich;
  rich.types = {pasteboardType::plainText.toString()};
  rich.text = u"sk-secreto"_s;
  rich.rtf = "{\\rtf1 sk-secreto}";
  pasteboard.copy(rich);
  store().tick();
  EXPECT_EQ(clip(0).expiresAt, Timestamp(clock.wall + 300s));
  EXPECT_FALSE(clip(0).richFile);
  EXPECT_TRUE(files.rich.isEmpty());
}

TEST_F(Capture, OfASecretObeysTheUsersScale) {
  settings.sensitiveExpiry = 0;
  settings.softSensitiveExpiry = -1;
  launch();
  grader.grades = {{u"123456"_s, SensitivityLevel::soft}, {u"sk-secreto"_s, SensitivityLevel::hard}};
  copyText(u"sk-secreto"_s);
  EXPECT_TRUE(texts().isEmpty());
  copyText(u"123456"_s);
  EXPECT_TRUE(clip(0).isSensitive());
  EXPECT_FALSE(clip(0).expiresAt);
}

TEST_F(Capture, OfASecretAgainLetsItLiveOn) {
  launch();
  grader.grades = {{u"sk-secreto"_s, SensitivityLevel::hard}};
  copyText(u"sk-secreto"_s);
  clock.advance(200s);
  copyText(u"sk-secreto"_s);
  EXPECT_EQ(clip(0).expiresAt, Timestamp(clock.wall + 300s));
  EXPECT_EQ(store().items().size(), 1);
}

TEST_F(Capture, OfATextFromAnotherDeviceNamesTheDevice) {
  launch().addRemoteText(u" hola "_s, RemoteDeviceType::iPhone);
  EXPECT_EQ(clip(0).text, u" hola "_s);
  EXPECT_EQ(clip(0).sourceBundleID, u"com.apple.continuity.iphone"_s);
  EXPECT_EQ(clip(0).remoteDevice, RemoteDeviceType::iPhone);
  store().addRemoteText(u" \n"_s, RemoteDeviceType::mac);
  EXPECT_EQ(store().items().size(), 1);
  EXPECT_TRUE(pasteboard.writes.isEmpty());
}

TEST_F(Capture, IgnoresItsOwnWrites) {
  launch();
  copyText(u"uno"_s);
  copyText(u"dos"_s);
  EXPECT_TRUE(store().copyToPasteboard(clip(1), false));
  store().tick();
  EXPECT_EQ(texts(), (QStringList{u"dos"_s, u"uno"_s}));
}

TEST_F(Capture, DoesNotLoseACopyMadeJustBeforeItsOwnWrite) {
  launch();
  copyText(u"uno"_s);
  pasteboard.copyText(u"en el último momento"_s);
  store().copyToPasteboard(clip(0), false);
  store().tick();
  EXPECT_EQ(texts(), (QStringList{u"en el último momento"_s, u"uno"_s}));
}

}  // namespace
}  // namespace nimbrel
