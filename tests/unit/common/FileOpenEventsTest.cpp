#include "platform/common/FileOpenEvents.h"

#include <gmock/gmock.h>

#include <QFileOpenEvent>
#include <QUrl>

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;
using ::testing::ElementsAre;

class FileOpenEventsTest : public ::testing::Test {
 protected:
  /// As the system does it. Whether the event went no further.
  static bool open(const QUrl& url) {
    QFileOpenEvent event(url);
    return QCoreApplication::sendEvent(QCoreApplication::instance(), &event);
  }

  QStringList opened;
  FileOpenEvents events{*QCoreApplication::instance(), [this](const QStringList& urls) { opened += urls; }};
};

TEST_F(FileOpenEventsTest, GivesEachUrlEncoded) {
  EXPECT_TRUE(open(QUrl(u"nimbrel://add?text=ni%C3%B1o%20%26%20co&source=mac"_s)));
  EXPECT_TRUE(open(QUrl(u"nimbrel://add?text=ñ b"_s)));
  EXPECT_THAT(opened, ElementsAre(u"nimbrel://add?text=ni%C3%B1o%20%26%20co&source=mac",
                                  u"nimbrel://add?text=%C3%B1%20b"));
}

TEST_F(FileOpenEventsTest, LeavesFilesToTheApplication) {
  open(QUrl::fromLocalFile(u"/tmp/a.txt"_s));
  open(QUrl());
  EXPECT_TRUE(opened.isEmpty());
}

TEST_F(FileOpenEventsTest, LeavesOtherEventsAlone) {
  QEvent event(QEvent::User);
  EXPECT_FALSE(events.eventFilter(QCoreApplication::instance(), &event));
}

TEST(FileOpenEvents, NothingIsGivenAnyMoreWhenItHasGone) {
  QStringList opened;
  {
    const FileOpenEvents events(*QCoreApplication::instance(),
                                [&](const QStringList& urls) { opened += urls; });
  }
  QFileOpenEvent event(QUrl(u"nimbrel://add?text=a"_s));
  QCoreApplication::sendEvent(QCoreApplication::instance(), &event);
  EXPECT_TRUE(opened.isEmpty());
}

}  // namespace
}  // namespace nimbrel
