#include "platform/common/LocalInstanceConnection.h"

#include <QLocalServer>

#include "unit/common/LocalInstanceFixture.h"

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;
using testing::kGenerous;
using testing::Stranger;

/// One connection, without the rest of the instance.
class LocalInstanceConnectionTest : public testing::LocalInstanceFixture {
 protected:
  LocalInstanceConnectionTest() { EXPECT_TRUE(server.listen(folder.socketPath())); }

  /// What the instance makes of somebody who connects.
  std::unique_ptr<LocalInstanceConnection> accepted(const InstancePatience& patience) {
    EXPECT_TRUE(QTest::qWaitFor([this] { return server.hasPendingConnections(); }, kGenerous));
    auto connection =
        std::make_unique<LocalInstanceConnection>(server.nextPendingConnection(), patience.unfinished);
    QObject::connect(connection.get(), &LocalInstanceConnection::requested, connection.get(),
                     [this](const InstanceRequest& request) { requests.append(request); });
    return connection;
  }

  QLocalServer server;
  QList<InstanceRequest> requests;
};

TEST_F(LocalInstanceConnectionTest, EndsWithWhoeverSaysNothing) {
  const Stranger stranger(folder);
  const auto connection = accepted(impatient());
  QSignalSpy ended(connection.get(), &LocalInstanceConnection::ended);
  EXPECT_TRUE(ended.wait(kGenerous));
}

TEST_F(LocalInstanceConnectionTest, EndsWithWhoeverStopsWithinAFrame) {
  const Stranger stranger(folder, instanceFrame(InstanceRequest()).chopped(1));
  const auto connection = accepted(impatient());
  QSignalSpy ended(connection.get(), &LocalInstanceConnection::ended);
  EXPECT_TRUE(ended.wait(kGenerous));
  EXPECT_TRUE(requests.isEmpty());
}

TEST_F(LocalInstanceConnectionTest, EndsWithWhoeverDoesNotTakeALongAnswer) {
  Stranger stranger(folder);
  stranger.socket.setReadBufferSize(1);
  stranger.say(instanceFrame(InstanceRequest()));
  InstancePatience some = impatient();
  some.unfinished = std::chrono::seconds(1);
  const auto connection = accepted(some);
  QSignalSpy ended(connection.get(), &LocalInstanceConnection::ended);
  ASSERT_TRUE(QTest::qWaitFor([this] { return !requests.isEmpty(); }, kGenerous));
  connection->answer({.texts = QStringList(20, QString(1'000'000, u'x'))});
  EXPECT_TRUE(ended.isEmpty());
  EXPECT_TRUE(ended.wait(kGenerous));
}

TEST_F(LocalInstanceConnectionTest, EndsWhenItHasAnswered) {
  Stranger stranger(folder, instanceFrame(InstanceRequest()));
  const auto connection = accepted(patient());
  ASSERT_TRUE(QTest::qWaitFor([this] { return !requests.isEmpty(); }, kGenerous));
  connection->answer({.message = u"hecho"_s});
  EXPECT_EQ(stranger.answer(), (IntentReply{.message = u"hecho"_s}));
  EXPECT_TRUE(stranger.isDropped());
}

TEST_F(LocalInstanceConnectionTest, EndsOnceAndTakesNoAnswerThen) {
  Stranger stranger(folder, instanceFrame(InstanceRequest()));
  const auto connection = accepted(patient());
  const QSignalSpy ended(connection.get(), &LocalInstanceConnection::ended);
  ASSERT_TRUE(QTest::qWaitFor([this] { return !requests.isEmpty(); }, kGenerous));
  stranger.socket.abort();
  ASSERT_TRUE(QTest::qWaitFor([&] { return !ended.isEmpty(); }, kGenerous));
  connection->answer({});
  EXPECT_EQ(ended.size(), 1);
}

TEST_F(LocalInstanceConnectionTest, MayGoWhileItIsConnected) {
  Stranger stranger(folder);
  accepted(patient()).reset();
  EXPECT_TRUE(stranger.isDropped());
}

}  // namespace
}  // namespace nimbrel
