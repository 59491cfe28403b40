#include "platform/common/InstanceInbox.h"

#include <gmock/gmock.h>

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;
using ::testing::ElementsAre;

class InstanceInboxTest : public ::testing::Test {
 protected:
  /// Notes what is asked for.
  InstanceRequests noting() {
    return {.show = [this] { asked.append(u"show"_s); },
            .showCollections = [this] { asked.append(u"collections"_s); },
            .showSearch = [this](const QString& text) { asked.append(u"search "_s + text); },
            .openUrls = [this](const QStringList& urls) { asked.append(u"open "_s + urls.join(u' ')); },
            .quit = [this] { asked.append(u"quit"_s); }};
  }

  InstanceInbox inbox;
  QStringList asked;
};

TEST_F(InstanceInboxTest, AsksAtOnceWhereSomebodyAnswers) {
  inbox.setRequests(noting());
  inbox.askToShow();
  inbox.askForCollections();
  inbox.askToSearch(u"a b"_s);
  inbox.askToOpen({u"x:1"_s, u"x:2"_s});
  inbox.askToQuit();
  EXPECT_THAT(asked, ElementsAre(u"show", u"collections", u"show", u"search a b", u"open x:1 x:2", u"quit"));
}

TEST_F(InstanceInboxTest, KeepsWhatComesTooEarlyAndAsksItOnce) {
  inbox.askToQuit();
  inbox.askForCollections();
  inbox.askToSearch(u"a"_s);
  inbox.askToShow();
  inbox.askToOpen({u"x:1"_s});
  inbox.askToOpen({u"x:2"_s});
  inbox.setRequests(noting());
  EXPECT_THAT(asked, ElementsAre(u"open x:1 x:2", u"show", u"search a", u"collections", u"quit"));
  inbox.setRequests(noting());
  EXPECT_EQ(asked.size(), 5);
}

TEST_F(InstanceInboxTest, KeepsWhatThoseWhoAnswerDoNotTakeUp) {
  InstanceRequests some;
  some.perform = [](const IntentCall&, const IntentAnswer&) {};
  inbox.setRequests(some);
  inbox.askToShow();
  inbox.setRequests(noting());
  EXPECT_THAT(asked, ElementsAre(u"show"));
}

TEST_F(InstanceInboxTest, KeepsUrlsButNotWithoutEnd) {
  qsizetype characters = 0;
  inbox.askToOpen({u"first"_s});
  for (int i = 0; i < 20; ++i)
    inbox.askToOpen({QString(1'000'000, u'x')});
  for (int i = 0; i < 1'000'000; ++i)
    inbox.askToOpen({QString()});
  QStringList opened;
  inbox.setRequests({.openUrls = [&](const QStringList& urls) { opened = urls; }});
  for (const QString& url : opened)
    characters += url.size() + InstanceInbox::kCostOfUrl;
  EXPECT_EQ(opened.value(0), u"first");
  EXPECT_LE(characters, InstanceInbox::kMaxUrls);
  // There is room again.
  opened.clear();
  inbox.askToOpen({QString(1'000'000, u'x')});
  EXPECT_EQ(opened.size(), 1);
}

}  // namespace
}  // namespace nimbrel
