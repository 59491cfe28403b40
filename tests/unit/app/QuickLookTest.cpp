#include "app/QuickLook.h"

#include <gmock/gmock.h>

#include <QCoreApplication>
#include <QDir>
#include <QKeyEvent>
#include <QTemporaryDir>
#include <QTest>

#include "support/Fakes.h"

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;

ClipRef clipWith(const QString& text) {
  ClipItem clip;
  clip.id = QUuid::createUuid();
  clip.text = text;
  return std::make_shared<IndexedClip>(clip);
}

ClipRef clipOfImage(const QString& file) {
  ClipItem clip;
  clip.id = QUuid::createUuid();
  clip.imageFile = file;
  return std::make_shared<IndexedClip>(clip);
}

ClipRef clipOfFile(const QString& url) {
  ClipItem clip;
  clip.id = QUuid::createUuid();
  clip.fileURLString = url;
  clip.text = u"ruta"_s;
  return std::make_shared<IndexedClip>(clip);
}

class PreviewTest : public ::testing::Test {
 protected:
  [[nodiscard]] QStringList written() const { return QDir(folder).entryList(QDir::Files | QDir::Hidden); }
  static QByteArray contentOf(const QUrl& url) {
    QFile file(url.toLocalFile());
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("?");
  }

  QTemporaryDir home;
  QString folder = home.filePath(u"run/preview"_s);
  testing::FakeSideFiles sideFiles;
};

class PreviewFilesTest : public PreviewTest {
 protected:
  PreviewFiles files{folder, sideFiles};
};

TEST_F(PreviewFilesTest, WritesATextForItsOwnerAlone) {
  const auto file = files.fileFor(clipWith(u"mañana"_s)->clip);
  ASSERT_TRUE(file);
  EXPECT_TRUE(file->isTemporary);
  EXPECT_TRUE(file->url.toLocalFile().endsWith(u".txt"));
  EXPECT_EQ(contentOf(file->url), "mañana");
  constexpr auto kOwner = QFile::ReadOwner | QFile::WriteOwner | QFile::ReadUser | QFile::WriteUser;
  EXPECT_EQ(QFile::permissions(file->url.toLocalFile()), kOwner);
  EXPECT_EQ(QFile::permissions(folder), kOwner | QFile::ExeOwner | QFile::ExeUser);
}

TEST_F(PreviewFilesTest, NamesEveryFileAnew) {
  const ClipRef clip = clipWith(u"a"_s);
  const auto first = files.fileFor(clip->clip);
  const auto second = files.fileFor(clip->clip);
  EXPECT_NE(first, second);
  EXPECT_EQ(written().size(), 2);
}

TEST_F(PreviewFilesTest, WritesAPicture) {
  sideFiles.images.insert(u"a.png"_s, "png");
  const auto file = files.fileFor(clipOfImage(u"a.png"_s)->clip);
  ASSERT_TRUE(file);
  EXPECT_TRUE(file->url.toLocalFile().endsWith(u".png"));
  EXPECT_EQ(contentOf(file->url), "png");
}

TEST_F(PreviewFilesTest, HasNothingForAPictureThatCannotBeRead) {
  EXPECT_EQ(files.fileFor(clipOfImage(u"gone.png"_s)->clip), std::nullopt);
  EXPECT_TRUE(written().isEmpty());
}

TEST_F(PreviewFilesTest, TakesAFileThatExistsAsItIs) {
  const QUrl existing = QUrl::fromLocalFile(home.path());
  const auto file = files.fileFor(clipOfFile(existing.toString() + u"\nfile:///otro"_s)->clip);
  EXPECT_EQ(file, (PreviewFile{existing, false}));
  EXPECT_TRUE(written().isEmpty());
}

TEST_F(PreviewFilesTest, ShowsTheTextOfAFileThatIsGone) {
  const auto file = files.fileFor(clipOfFile(u"file:///no/existe"_s)->clip);
  ASSERT_TRUE(file);
  EXPECT_EQ(contentOf(file->url), "ruta");
}

TEST_F(PreviewFilesTest, HasNothingWhereNothingCanBeWritten) {
  QFile obstacle(home.filePath(u"run"_s));
  ASSERT_TRUE(obstacle.open(QIODevice::WriteOnly));
  EXPECT_EQ(files.fileFor(clipWith(u"a"_s)->clip), std::nullopt);
}

TEST_F(PreviewFilesTest, WritesNothingThroughALink) {
  QDir(home.path()).mkpath(u"run"_s);
  QDir(home.path()).mkpath(u"ajeno"_s);
  ASSERT_TRUE(QFile::link(home.filePath(u"ajeno"_s), folder));
  EXPECT_EQ(files.fileFor(clipWith(u"a"_s)->clip), std::nullopt);
  EXPECT_TRUE(QDir(home.filePath(u"ajeno"_s)).isEmpty());
}

class QuickLookTest : public PreviewTest {
 protected:
  void start() {
    quickLook = std::make_unique<QuickLook>(preview, sideFiles, folder, [] { return QRect(); });
  }
  QuickLookTest() { start(); }

  void open(const ClipRef& clip) {
    quickLook->toggle(clip);
    ASSERT_TRUE(QTest::qWaitFor([this] { return preview.visible; }));
  }
  void move(const ClipRef& clip) {
    const auto before = preview.item;
    quickLook->update(clip);
    ASSERT_TRUE(QTest::qWaitFor([&] { return preview.item != before; }));
  }
  [[nodiscard]] bool press(Qt::Key key, bool held = false) {
    QObject other;
    QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier, u" "_s, held);
    event.ignore();
    return QCoreApplication::sendEvent(&other, &event);
  }

  testing::FakePreviewPanel preview;
  std::unique_ptr<QuickLook> quickLook;
};

TEST_F(QuickLookTest, OpensAndCloses) {
  open(clipWith(u"hola"_s));
  EXPECT_EQ(contentOf(*preview.item), "hola");
  quickLook->toggle(clipWith(u"otro"_s));
  EXPECT_FALSE(preview.visible);
  EXPECT_TRUE(written().isEmpty());
}

TEST_F(QuickLookTest, WithoutAClipOpensNothing) {
  quickLook->toggle({});
  quickLook->finish();
  QCoreApplication::processEvents();
  EXPECT_FALSE(preview.visible);
}

TEST_F(QuickLookTest, WithoutAFileOpensNothing) {
  quickLook->toggle(clipOfImage(u"gone.png"_s));
  quickLook->finish();
  QCoreApplication::processEvents();
  EXPECT_FALSE(preview.visible);
}

TEST_F(QuickLookTest, FollowsTheSelectionAndDeletesEveryFileWhenItCloses) {
  open(clipWith(u"uno"_s));
  move(clipWith(u"dos"_s));
  EXPECT_EQ(contentOf(*preview.item), "dos");
  EXPECT_EQ(written().size(), 2);
  quickLook->close();
  EXPECT_TRUE(written().isEmpty());
}

TEST_F(QuickLookTest, ShowsNothingOfAClipThatIsHidden) {
  open(clipWith(u"uno"_s));
  quickLook->update({});
  EXPECT_TRUE(preview.visible);
  EXPECT_EQ(preview.item, std::nullopt);
}

TEST_F(QuickLookTest, TheSelectionOpensNothing) {
  quickLook->update(clipWith(u"uno"_s));
  quickLook->finish();
  QCoreApplication::processEvents();
  EXPECT_FALSE(preview.visible);
  EXPECT_TRUE(written().isEmpty());
}

TEST_F(QuickLookTest, OpensWithTheClipThatIsSelectedByThen) {
  quickLook->toggle(clipWith(u"uno"_s));
  quickLook->update(clipWith(u"dos"_s));
  ASSERT_TRUE(QTest::qWaitFor([this] { return preview.visible; }));
  EXPECT_EQ(contentOf(*preview.item), "dos");
  EXPECT_EQ(written().size(), 1);
}

TEST_F(QuickLookTest, DoesNotOpenAnyMoreWhenASecretIsSelectedMeanwhile) {
  quickLook->toggle(clipWith(u"uno"_s));
  quickLook->update({});
  quickLook->finish();
  QCoreApplication::processEvents();
  EXPECT_FALSE(preview.visible);
}

TEST_F(QuickLookTest, WhatIsWrittenAfterItWasClosedIsDeleted) {
  open(clipWith(u"uno"_s));
  quickLook->update(clipWith(u"dos"_s));
  quickLook->close();
  EXPECT_TRUE(QTest::qWaitFor([this] { return written().isEmpty(); }));
  EXPECT_FALSE(preview.visible);
}

TEST_F(QuickLookTest, AWindowThatTheUserClosesLeavesNothingEither) {
  int closed = 0;
  quickLook->setClosedHandler([&] { ++closed; });
  open(clipWith(u"uno"_s));
  preview.close();
  EXPECT_TRUE(written().isEmpty());
  EXPECT_EQ(closed, 1);
}

TEST_F(QuickLookTest, AFileOfTheUserIsLeftAlone) {
  QFile own(home.filePath(u"mío.txt"_s));
  ASSERT_TRUE(own.open(QIODevice::WriteOnly));
  own.close();
  open(clipOfFile(QUrl::fromLocalFile(own.fileName()).toString()));
  quickLook->close();
  EXPECT_TRUE(own.exists());
}

TEST_F(QuickLookTest, TheFileOfAClipThatIsGoneGoesAtOnce) {
  const ClipRef gone = clipWith(u"uno"_s);
  open(gone);
  move(clipWith(u"dos"_s));
  quickLook->forget(gone->clip.id);
  ASSERT_EQ(written().size(), 1);
  EXPECT_EQ(contentOf(*preview.item), "dos");
}

TEST_F(QuickLookTest, AClipThatIsGoneIsNotShownAnyMore) {
  const ClipRef gone = clipWith(u"uno"_s);
  open(gone);
  quickLook->forget(gone->clip.id);
  EXPECT_EQ(preview.item, std::nullopt);
  EXPECT_TRUE(written().isEmpty());
}

TEST_F(QuickLookTest, AClipThatGoesWhileItsFileIsWrittenIsNotShown) {
  const ClipRef gone = clipWith(u"uno"_s);
  quickLook->toggle(gone);
  quickLook->forget(gone->clip.id);
  quickLook->finish();
  QCoreApplication::processEvents();
  EXPECT_FALSE(preview.visible);
  EXPECT_TRUE(written().isEmpty());
}

TEST_F(QuickLookTest, LeavesNothingOfWhatMustNotBeSeenAnyMore) {
  open(clipWith(u"uno"_s));
  quickLook->update({});
  EXPECT_TRUE(written().isEmpty());
}

TEST_F(QuickLookTest, WithoutAFolderWritesAndDeletesNothing) {
  PreviewFiles nowhere{QString(), sideFiles};
  EXPECT_EQ(nowhere.fileFor(clipWith(u"a"_s)->clip), std::nullopt);
  nowhere.removeAll();
}

TEST_F(QuickLookTest, TheSpaceBarClosesAndIsSeenByNobodyElse) {
  open(clipWith(u"uno"_s));
  EXPECT_TRUE(press(Qt::Key_Space));
  EXPECT_FALSE(preview.visible);
  EXPECT_FALSE(press(Qt::Key_Space));
}

TEST_F(QuickLookTest, OtherKeysPass) {
  open(clipWith(u"uno"_s));
  EXPECT_FALSE(press(Qt::Key_Down));
  EXPECT_TRUE(preview.visible);
}

TEST_F(QuickLookTest, ASpaceBarThatIsHeldDownDoesNotFlicker) {
  open(clipWith(u"uno"_s));
  EXPECT_TRUE(press(Qt::Key_Space, true));
  EXPECT_TRUE(preview.visible);
}

TEST_F(QuickLookTest, DeletesAtTheStartWhatACrashHasLeft) {
  quickLook.reset();
  QDir(home.path()).mkpath(u"run/preview"_s);
  QFile left(folder + u"/ABC.txt"_s);
  ASSERT_TRUE(left.open(QIODevice::WriteOnly));
  left.close();
  start();
  EXPECT_TRUE(written().isEmpty());
}

TEST_F(QuickLookTest, LeavesNothingWhenTheProgramEnds) {
  open(clipWith(u"uno"_s));
  quickLook->update(clipWith(u"dos"_s));
  quickLook.reset();
  EXPECT_TRUE(written().isEmpty());
  EXPECT_FALSE(preview.visible);
}

TEST(SinglePreviewDataSource, HasOneItemOrNone) {
  SinglePreviewDataSource source;
  EXPECT_EQ(source.numberOfPreviewItems(), 0);
  source.url = QUrl(u"file:///a"_s);
  EXPECT_EQ(source.numberOfPreviewItems(), 1);
  EXPECT_EQ(source.previewItemAt(7), source.url);
}

}  // namespace
}  // namespace nimbrel
