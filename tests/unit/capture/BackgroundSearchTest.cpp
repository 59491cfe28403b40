#include "capture/BackgroundSearch.h"

#include <gmock/gmock.h>

#include <QTest>

#include "support/StoreFixture.h"

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;
using ::testing::ElementsAre;

class BackgroundSearchTest : public testing::StoreFixture {
 protected:
  BackgroundSearchTest() {
    launch();
    for (const QString& text : {u"canción tres"_s, u"otra cosa"_s, u"canción uno"_s})
      copyText(text);
    copyImage("bild");
    database().flush();
  }
  void ask(const QString& text) {
    search().start({text, {}}, store().items().snapshot(), [this, text](const FoundClips& found) {
      answered.append(text);
      last = found;
    });
  }
  BackgroundSearch& search() { return store().backgroundSearch(); }
  QStringList found() const {
    QStringList texts;
    for (const ClipRef& clip : last.clips)
      texts.append(clip->clip.text);
    return texts;
  }

  QStringList answered;
  FoundClips last;
};

TEST_F(BackgroundSearchTest, AnswersLater) {
  ask(u"cancion"_s);
  EXPECT_TRUE(answered.isEmpty());
  EXPECT_TRUE(search().isRunning());
  ASSERT_TRUE(QTest::qWaitFor([this] { return !search().isRunning(); }));
  EXPECT_THAT(found(), ElementsAre(u"canción uno"_s, u"canción tres"_s));
}

TEST_F(BackgroundSearchTest, AnswersOnlyTheLastQuestion) {
  for (const QString& text : {u"c"_s, u"ca"_s, u"can"_s, u"otra"_s})
    ask(text);
  ASSERT_TRUE(QTest::qWaitFor([this] { return !search().isRunning(); }));
  QTest::qWait(20);
  EXPECT_EQ(answered, QStringList{u"otra"_s});
  EXPECT_THAT(found(), ElementsAre(u"otra cosa"_s));
}

TEST_F(BackgroundSearchTest, AnswersAtOnceWhoCannotWait) {
  ask(u"uno"_s);
  search().finish();
  EXPECT_EQ(answered, QStringList{u"uno"_s});
  search().finish();
  EXPECT_EQ(answered.size(), 1);
}

TEST_F(BackgroundSearchTest, ForgetsWhatIsNotWantedAnyMore) {
  ask(u"uno"_s);
  search().cancel();
  EXPECT_FALSE(search().isRunning());
  search().finish();
  QTest::qWait(20);
  EXPECT_TRUE(answered.isEmpty());
}

TEST_F(BackgroundSearchTest, SeesTheHistoryAsItWasWhenItWasAsked) {
  // Too short for the index, which may already know what comes next.
  ask(u"ca"_s);
  copyText(u"canción nueva"_s);
  store().removeClip(clip(2).id);
  search().finish();
  EXPECT_EQ(last.clips.size(), 2);
}

TEST_F(BackgroundSearchTest, TellsTheRowsOfTheImages) {
  search().start({QString(), {ClipKind::image, {}, {}}}, store().items().snapshot(),
                 [this](const FoundClips& found) { last = found; });
  search().finish();
  EXPECT_EQ(last.clips.size(), 1);
  EXPECT_THAT(last.imageRows, ElementsAre(0));
}

}  // namespace
}  // namespace nimbrel
