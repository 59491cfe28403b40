#include "platform/common/LocalInstanceClient.h"

#include <QLocalServer>

#include "unit/common/LocalInstanceFixture.h"

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;
using testing::answering;
using testing::elsewhere;
using testing::kGenerous;

class LocalInstanceClientTest : public testing::LocalInstanceFixture {
 protected:
  [[nodiscard]] LocalInstanceClient makeClient(const InstancePatience& patience = patient()) const {
    return {path(), {}, patience};
  }
  [[nodiscard]] std::unique_ptr<LocalInstanceHost> first() const {
    auto host = makeHost();
    EXPECT_EQ(host->claim({}), InstanceHost::Claim::first);
    return host;
  }
  /// Somebody in the instance's place, who does with each connection what the test wants.
  void listen(std::function<void(QLocalSocket*)> connected = {}) {
    ASSERT_TRUE(server.listen(folder.socketPath()));
    QObject::connect(&server, &QLocalServer::newConnection, &server, [this, connected] {
      if (connected) connected(server.nextPendingConnection());
    });
  }

  QLocalServer server;
  const IntentReply unavailable{.error = InstanceClient::kUnavailable.toString()};
  const IntentReply noAnswer{.error = InstanceClient::kNoAnswer.toString()};
};

TEST_F(LocalInstanceClientTest, WithoutAnInstanceNothingIsAvailableAndTheEndIsDone) {
  auto client = makeClient();
  EXPECT_FALSE(client.isRunning());
  EXPECT_EQ(client.perform({Intent::copyLatestClip, {}}), unavailable);
  EXPECT_EQ(client.show(false), unavailable);
  EXPECT_EQ(client.quit(), IntentReply());
}

TEST_F(LocalInstanceClientTest, IsAnswered) {
  const auto host = first();
  const IntentReply reply{.message = u"hecho"_s, .texts = {u"a"_s}, .paused = true};
  QList<IntentCall> calls;
  host->setRequests(answering(reply, &calls));
  const IntentCall call{Intent::pasteFromCollection, u"niño"_s};
  EXPECT_EQ(elsewhere([&] { return makeClient().perform(call); }), reply);
  EXPECT_EQ(calls, QList<IntentCall>{call});
  EXPECT_TRUE(elsewhere([&] { return makeClient().isRunning(); }));
}

TEST_F(LocalInstanceClientTest, HasThePanelOrItsCollectionsShown) {
  const auto host = first();
  QStringList asked;
  host->setRequests(
      {.show = [&] { asked.append(u"show"_s); }, .showCollections = [&] { asked.append(u"collections"_s); }});
  EXPECT_EQ(elsewhere([&] { return makeClient().show(false); }), IntentReply());
  EXPECT_EQ(elsewhere([&] { return makeClient().show(true); }), IntentReply());
  EXPECT_THAT(asked, ::testing::ElementsAre(u"show", u"collections"));
}

TEST_F(LocalInstanceClientTest, WaitsForAnInstanceThatIsOnlyStarting) {
  const auto host = first();
  int asked = 0;
  InstanceRequests requests;
  requests.perform = [&](const IntentCall&, const IntentAnswer& answer) {
    answer(++asked < 3 ? unavailable : IntentReply{.message = u"hecho"_s});
  };
  host->setRequests(requests);
  const auto reply = elsewhere([&] { return makeClient().perform({Intent::listCollections, {}}); });
  EXPECT_EQ(reply.message, u"hecho");
  EXPECT_EQ(asked, 3);
}

TEST_F(LocalInstanceClientTest, DoesNotWaitForeverForAnInstanceToStart) {
  const auto host = first();
  InstancePatience hasty = patient();
  hasty.starting = impatient().starting;
  EXPECT_EQ(elsewhere([&] { return makeClient(hasty).perform({Intent::listCollections, {}}); }), unavailable);
}

TEST_F(LocalInstanceClientTest, DoesNotWaitForeverForOneThatHangs) {
  listen();
  // Nobody answers as long as this thread waits.
  auto client = makeClient(impatient());
  EXPECT_TRUE(client.isRunning());
  EXPECT_EQ(client.perform({Intent::copyLatestClip, {}}), noAnswer);
  EXPECT_EQ(client.perform({Intent::toggleCapture, {}}), noAnswer);
  EXPECT_EQ(client.show(true), noAnswer);
  EXPECT_EQ(client.quit(), noAnswer);
}

TEST_F(LocalInstanceClientTest, AnInstanceThatEndsTheConnectionGivesNoAnswer) {
  listen([](QLocalSocket* socket) { socket->abort(); });
  EXPECT_EQ(elsewhere([&] { return makeClient().show(false); }), noAnswer);
}

TEST_F(LocalInstanceClientTest, AnInstanceThatGoesWhileItIsAskedIsUnavailable) {
  listen([this](QLocalSocket* socket) {
    server.close();
    socket->abort();
  });
  EXPECT_EQ(elsewhere([&] { return makeClient().show(false); }), unavailable);
}

TEST_F(LocalInstanceClientTest, AnAnswerThatIsNoneIsNoAnswer) {
  const QByteArrayList lies{QByteArray("\xff\xff\xff\xff", 4), QByteArray("\x03\0\0\0abc", 7)};
  qsizetype next = 0;
  listen([&](QLocalSocket* socket) {
    // Only asked whether it is there.
    if (next < lies.size()) socket->write(lies.at(next++));
  });
  for (qsizetype i = 0; i < lies.size(); ++i) {
    next = i;
    EXPECT_EQ(elsewhere([&] { return makeClient().show(false); }), noAnswer);
  }
}

TEST_F(LocalInstanceClientTest, IsToldWhenItAsksTooOften) {
  const auto host = first();
  const auto last = elsewhere([&] {
    auto client = makeClient();
    IntentReply reply;
    for (int i = 0; i < 41; ++i)
      reply = client.show(false);
    return reply;
  });
  EXPECT_EQ(last, (IntentReply{.error = InstanceClient::kTooManyCalls.toString()}));
}

TEST_F(LocalInstanceClientTest, AnArgumentThatIsTooLongIsLeftToTheInstanceToRefuse) {
  const auto host = first();
  QList<IntentCall> calls;
  host->setRequests(answering({.error = kArgumentTooLong.toString()}, &calls));
  const QString longest(9'000'000, u'x');
  const auto reply = elsewhere([&] { return makeClient().perform({Intent::searchHistory, longest}); });
  EXPECT_EQ(reply.error, kArgumentTooLong);
  ASSERT_EQ(calls.size(), 1);
  EXPECT_GT(calls.first().argument.size(), 4096);
}

TEST_F(LocalInstanceClientTest, WaitsUntilTheInstanceHasGone) {
  auto host = first();
  host->setRequests({.quit = [&] {
    QMetaObject::invokeMethod(
        qApp, [&] { host.reset(); }, Qt::QueuedConnection);
  }});
  EXPECT_EQ(elsewhere([&] { return makeClient().quit(); }), IntentReply());
  EXPECT_FALSE(host);
}

TEST_F(LocalInstanceClientTest, AnInstanceThatDoesNotGoGivesNoAnswer) {
  const auto host = first();
  int asked = 0;
  host->setRequests({.quit = [&] { ++asked; }});
  InstancePatience hasty = patient();
  hasty.starting = std::chrono::seconds(2);
  EXPECT_EQ(elsewhere([&] { return makeClient(hasty).quit(); }), noAnswer);
  EXPECT_EQ(asked, 1);
}

TEST_F(LocalInstanceClientTest, AFolderThatOthersMayWriteInHasNoInstance) {
  listen();
  ASSERT_TRUE(QFile::setPermissions(path(), QFileInfo(path()).permissions() | QFile::WriteGroup));
  EXPECT_FALSE(makeClient().isRunning());
  EXPECT_EQ(makeClient().show(false), unavailable);
}

TEST_F(LocalInstanceClientTest, NotifiesInTheWayThatItIsGiven) {
  QStringList told;
  LocalInstanceClient client(path(), [&](const QString& title, const QString& text) {
    told += {title, text};
  });
  client.notify(u"Nimbrel"_s, u"hecho"_s);
  EXPECT_THAT(told, ::testing::ElementsAre(u"Nimbrel", u"hecho"));
  makeClient().notify(u"Nimbrel"_s, u"nadie lo oye"_s);
}

}  // namespace
}  // namespace nimbrel
