#include "platform/common/LocalInstanceHost.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QFileOpenEvent>
#include <QLocalServer>
#include <QLockFile>
#include <QProcess>
#include <QUrl>
#include <atomic>
#include <cstring>
#include <vector>

#include "platform/InstanceClient.h"
#include "platform/common/NimbrelIntents.h"
#include "unit/common/LocalInstanceFixture.h"

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using Claim = InstanceHost::Claim;
using Kind = InstanceRequest::Kind;
using Outcome = InstanceAnswer::Outcome;
using testing::answering;
using testing::elsewhere;
using testing::keeping;
using testing::kGenerous;
using testing::performRequest;
using testing::Stranger;

class LocalInstanceHostTest : public testing::LocalInstanceFixture {
 protected:
  /// The instance.
  std::unique_ptr<LocalInstanceHost> first(const InstancePatience& patience = patient()) const {
    auto host = makeHost(patience);
    EXPECT_EQ(host->claim({}), Claim::first);
    return host;
  }
  /// What a second start comes to.
  Claim claimElsewhere(const QStringList& urls = {}) const {
    return elsewhere([&] { return makeHost()->claim(urls); });
  }
  /// What another process is answered.
  IntentReply ask(const InstanceRequest& request) const {
    const InstanceAnswer answer = elsewhere([&] { return askInstance(folder, request, 60s); });
    EXPECT_EQ(answer.outcome, Outcome::answered);
    return answer.reply;
  }
};

/// Leaves a socket behind that nobody listens at, as a process does that is killed.
void leaveSocket(const QString& path) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  const QByteArray name = QFile::encodeName(path);
  ASSERT_LT(static_cast<std::size_t>(name.size()), sizeof(address.sun_path));
  std::memcpy(address.sun_path, name.constData(), static_cast<std::size_t>(name.size()));
  const int descriptor = ::socket(AF_UNIX, SOCK_STREAM, 0);
  ASSERT_EQ(::bind(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof(address)), 0);
  ::close(descriptor);
  ASSERT_TRUE(QFileInfo::exists(path));
}

/// Leaves a lock behind whose process has gone.
void leaveLock(const QString& path) {
  QLockFile lock(path);
  ASSERT_TRUE(lock.tryLock());
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  QByteArrayList lines = file.readAll().split('\n');
  file.close();
  lock.unlock();
  QProcess gone;
  gone.start(u"true"_s, QStringList());
  ASSERT_TRUE(gone.waitForStarted());
  lines[0] = QByteArray::number(gone.processId());
  ASSERT_TRUE(gone.waitForFinished());
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write(lines.join('\n'));
}

TEST_F(LocalInstanceHostTest, IsTheFirstAndShowsWhenAsked) {
  const auto host = first();
  int shown = 0;
  host->setRequests({.show = [&] { ++shown; }});
  EXPECT_EQ(ask({.kind = Kind::show}), IntentReply());
  EXPECT_TRUE(QTest::qWaitFor([&] { return shown == 1; }, kGenerous));
}

TEST_F(LocalInstanceHostTest, IsAskedByASecondStartToShow) {
  const auto host = first();
  int shown = 0;
  host->setRequests({.show = [&] { ++shown; }});
  EXPECT_EQ(claimElsewhere(), Claim::handedOver);
  EXPECT_TRUE(QTest::qWaitFor([&] { return shown == 1; }, kGenerous));
}

TEST_F(LocalInstanceHostTest, IsGivenTheUrlsOfASecondStart) {
  const auto host = first();
  QStringList opened;
  int shown = 0;
  host->setRequests({.show = [&] { ++shown; }, .openUrls = [&](const QStringList& urls) { opened += urls; }});
  const QStringList urls{u"nimbrel://add?text=a"_s, u"nimbrel://add?text=b"_s};
  EXPECT_EQ(claimElsewhere(urls), Claim::handedOver);
  EXPECT_TRUE(QTest::qWaitFor([&] { return opened == urls; }, kGenerous));
  // One that no request has room for is left out, and does not show the panel instead.
  EXPECT_EQ(claimElsewhere({QString(kMaxInstanceRequest, u'x')}), Claim::handedOver);
  EXPECT_EQ(opened, urls);
  EXPECT_EQ(shown, 0);
}

TEST_F(LocalInstanceHostTest, ASecondStartDoesNotWaitForeverForOneThatHangs) {
  const auto host = first();
  // Nobody answers as long as this thread waits.
  EXPECT_EQ(makeHost(impatient())->claim({}), Claim::unanswered);
  // What has been asked is taken up later all the same.
  int shown = 0;
  host->setRequests({.show = [&] { ++shown; }});
  EXPECT_TRUE(QTest::qWaitFor([&] { return shown == 1; }, kGenerous));
}

TEST_F(LocalInstanceHostTest, ASecondStartTakesOverFromOneThatGoes) {
  auto leaving = std::make_unique<QLockFile>(folder.lockPath());
  ASSERT_TRUE(leaving->tryLock());
  QLocalServer server;
  ASSERT_TRUE(server.listen(folder.socketPath()));
  QObject::connect(&server, &QLocalServer::newConnection, &server, [&] {
    server.close();
    leaving.reset();
  });
  EXPECT_EQ(claimElsewhere(), Claim::first);
}

TEST_F(LocalInstanceHostTest, ASecondStartDoesNotRunBesideOneThatDoesNotListen) {
  QLockFile lock(folder.lockPath());
  ASSERT_TRUE(lock.tryLock());
  EXPECT_EQ(makeHost(impatient())->claim({}), Claim::unanswered);
}

TEST_F(LocalInstanceHostTest, GivesItsPlaceBackWhenItGoes) {
  first().reset();
  EXPECT_FALSE(QFileInfo::exists(folder.socketPath()));
  EXPECT_FALSE(isInstanceListening(folder));
  first();
}

TEST_F(LocalInstanceHostTest, ReplacesTheSocketAndTheLockOfACrash) {
  leaveSocket(folder.socketPath());
  leaveLock(folder.lockPath());
  const auto host = first();
  EXPECT_EQ(claimElsewhere(), Claim::handedOver);
}

TEST_F(LocalInstanceHostTest, ReplacesALockThatNamesNobody) {
  QFile lock(folder.lockPath());
  ASSERT_TRUE(lock.open(QIODevice::WriteOnly));
  lock.close();
  first(impatient());
}

TEST_F(LocalInstanceHostTest, OfManyThatStartAtOnceOneIsTheFirst) {
  constexpr int kStarts = 6;
  std::atomic<int> firsts = 0;
  std::atomic<int> handedOver = 0;
  const auto isOver = [&] { return firsts + handedOver == kStarts; };
  std::vector<std::unique_ptr<QThread>> starts;
  for (int i = 0; i < kStarts; ++i) {
    starts.emplace_back(QThread::create([&] {
      const auto host = makeHost();
      const Claim claim = host->claim({});
      if (claim == Claim::handedOver) ++handedOver;
      if (claim != Claim::first) return;
      ++firsts;
      EXPECT_TRUE(QTest::qWaitFor(isOver, kGenerous));
    }));
  }
  for (const auto& start : starts)
    start->start();
  for (const auto& start : starts)
    EXPECT_TRUE(start->wait(kGenerous));
  EXPECT_EQ(firsts, 1);
  EXPECT_EQ(handedOver, kStarts - 1);
}

TEST_F(LocalInstanceHostTest, IsUnavailableWhereTheFolderCannotBeUsed) {
  EXPECT_EQ(LocalInstanceHost(path() + u"/missing/folder"_s).claim({}), Claim::unavailable);
  ASSERT_TRUE(QFile::setPermissions(path(), QFileInfo(path()).permissions() | QFile::WriteOther));
  EXPECT_EQ(makeHost()->claim({}), Claim::unavailable);
}

TEST_F(LocalInstanceHostTest, IsUnavailableWhereThePathIsTooLong) {
  const QString deep = path() + u'/' + QString(120, u'x');
  EXPECT_EQ(LocalInstanceHost(deep).claim({}), Claim::unavailable);
  EXPECT_TRUE(QDir(deep).isEmpty());
}

TEST_F(LocalInstanceHostTest, NobodyElseMayConnect) {
  const auto host = first();
  const auto others = QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther;
  EXPECT_FALSE(QFileInfo(folder.socketPath()).permissions() & others);
}

TEST_F(LocalInstanceHostTest, KeepsRequestsThatComeTooEarly) {
  const auto host = first();
  EXPECT_EQ(ask({.kind = Kind::show}), IntentReply());
  EXPECT_EQ(ask({.kind = Kind::showCollections}), IntentReply());
  EXPECT_EQ(ask({.kind = Kind::openUrls, .urls = {u"nimbrel://add?text=a"_s}}), IntentReply());
  EXPECT_EQ(ask({.kind = Kind::quit}), IntentReply());
  QStringList asked;
  host->setRequests({.show = [&] { asked.append(u"show"_s); },
                     .showCollections = [&] { asked.append(u"collections"_s); },
                     .openUrls = [&](const QStringList& urls) { asked += urls; },
                     .quit = [&] { asked.append(u"quit"_s); }});
  EXPECT_THAT(asked, ::testing::ElementsAre(u"nimbrel://add?text=a", u"show", u"collections", u"quit"));
}

TEST_F(LocalInstanceHostTest, CarriesIntentsAndTheirAnswers) {
  const auto host = first();
  QList<IntentCall> calls;
  const IntentReply reply{.message = u"hecho"_s, .texts = {u"a"_s, u"ñ"_s}, .paused = true};
  host->setRequests(answering(reply, &calls));
  EXPECT_EQ(ask(performRequest(Intent::searchHistory, u"x y"_s)), reply);
  EXPECT_EQ(ask(performRequest(Intent::toggleCapture)), reply);
  EXPECT_EQ(calls, (QList<IntentCall>{{Intent::searchHistory, u"x y"_s}, {Intent::toggleCapture, {}}}));
  const IntentReply error{.error = u"emptyHistory"_s, .message = u"No hay."_s};
  host->setRequests(answering(error));
  EXPECT_EQ(ask(performRequest(Intent::copyLatestClip)), error);
}

TEST_F(LocalInstanceHostTest, CarriesAllTheTextsOfASearch) {
  const auto host = first();
  const IntentReply reply{.texts = QStringList(20, QString(1'000'000, u'x'))};
  host->setRequests(answering(reply));
  EXPECT_EQ(ask(performRequest(Intent::searchHistory, u"x"_s)), reply);
}

TEST_F(LocalInstanceHostTest, IsUnavailableWhileNobodyCarriesIntentsOut) {
  const auto host = first();
  EXPECT_EQ(ask(performRequest(Intent::copyLatestClip)).error, InstanceClient::kUnavailable);
}

TEST_F(LocalInstanceHostTest, AnswersLateAndInAnyOrder) {
  const auto host = first();
  QList<IntentAnswer> waiting;
  host->setRequests(keeping(waiting));
  Stranger one(folder, instanceFrame(performRequest(Intent::copyLatestClip)));
  ASSERT_TRUE(QTest::qWaitFor([&] { return waiting.size() == 1; }, kGenerous));
  Stranger other(folder, instanceFrame(performRequest(Intent::copyLatestClip)));
  ASSERT_TRUE(QTest::qWaitFor([&] { return waiting.size() == 2; }, kGenerous));
  waiting.at(1)({.message = u"2"_s});
  EXPECT_EQ(other.answer(), (IntentReply{.message = u"2"_s}));
  EXPECT_EQ(one.socket.state(), QLocalSocket::ConnectedState);
  waiting.at(0)({.message = u"1"_s});
  EXPECT_EQ(one.answer(), (IntentReply{.message = u"1"_s}));
}

TEST_F(LocalInstanceHostTest, AnIntentThatNobodyAnswersAnyMoreIsUnavailable) {
  const auto host = first();
  QList<IntentAnswer> waiting;
  host->setRequests(keeping(waiting));
  Stranger stranger(folder, instanceFrame(performRequest(Intent::copyLatestClip)));
  ASSERT_TRUE(QTest::qWaitFor([&] { return waiting.size() == 1; }, kGenerous));
  waiting.clear();
  EXPECT_EQ(stranger.answer(), (IntentReply{.error = InstanceClient::kUnavailable.toString()}));
}

TEST_F(LocalInstanceHostTest, WhoHasGoneBeforeTheAnswerIsNotAnswered) {
  const auto host = first();
  QList<IntentAnswer> waiting;
  host->setRequests(keeping(waiting));
  {
    const Stranger stranger(folder, instanceFrame(performRequest(Intent::copyLatestClip)));
    ASSERT_TRUE(QTest::qWaitFor([&] { return waiting.size() == 1; }, kGenerous));
  }
  ASSERT_TRUE(
      QTest::qWaitFor([&] { return host->findChildren<LocalInstanceConnection*>().isEmpty(); }, kGenerous));
  waiting.first()({.message = u"1"_s});
  host->setRequests(answering({.message = u"2"_s}));
  EXPECT_EQ(ask(performRequest(Intent::copyLatestClip)).message, u"2");
}

TEST_F(LocalInstanceHostTest, MayGoWhileRequestsAreWithoutAnAnswer) {
  auto host = first();
  QList<IntentAnswer> waiting;
  host->setRequests(keeping(waiting));
  Stranger stranger(folder, instanceFrame(performRequest(Intent::copyLatestClip)));
  ASSERT_TRUE(QTest::qWaitFor([&] { return waiting.size() == 1; }, kGenerous));
  host.reset();
  EXPECT_EQ(stranger.answer(), std::nullopt);
  waiting.first()({.message = u"1"_s});
}

TEST_F(LocalInstanceHostTest, AnswersWhoeverSpeaksSlowly) {
  const auto host = first();
  const QByteArray frame = instanceFrame(InstanceRequest{.kind = Kind::show});
  Stranger stranger(folder);
  for (const char byte : frame) {
    stranger.say(QByteArray(1, byte));
    QCoreApplication::processEvents();
  }
  EXPECT_EQ(stranger.answer(), IntentReply());
}

TEST_F(LocalInstanceHostTest, DropsWhoeverSaysWhatIsNoRequest) {
  const auto host = first();
  QList<IntentCall> calls;
  host->setRequests(answering({}, &calls));
  QByteArray otherVersion = instanceFrame(performRequest(Intent::copyLatestClip));
  otherVersion[4] = 2;
  const QByteArrayList lies{"GET / HTTP/1.1\r\n\r\n", QByteArray(100'000, '\xff'), QByteArray(4, '\0'),
                            QByteArray("\x05\0\0\0xxxxx", 9), otherVersion};
  for (const QByteArray& lie : lies)
    EXPECT_EQ(Stranger(folder, lie).answer(), std::nullopt) << lie.left(20).toHex().toStdString();
  EXPECT_TRUE(calls.isEmpty());
  EXPECT_EQ(ask(performRequest(Intent::copyLatestClip)), IntentReply());
}

TEST_F(LocalInstanceHostTest, DropsWhoeverAsksTwice) {
  const auto host = first();
  QList<IntentAnswer> waiting;
  host->setRequests(keeping(waiting));
  const QByteArray frame = instanceFrame(performRequest(Intent::copyLatestClip));
  EXPECT_TRUE(Stranger(folder, frame + frame).isDropped());
  const qsizetype before = waiting.size();
  Stranger stranger(folder, frame);
  ASSERT_TRUE(QTest::qWaitFor([&] { return waiting.size() > before; }, kGenerous));
  stranger.say("x");
  EXPECT_TRUE(stranger.isDropped());
}

TEST_F(LocalInstanceHostTest, DropsWhoeverStallsAndServesOthersMeanwhile) {
  InstancePatience some = patient();
  some.unfinished = 500ms;
  const auto host = first(some);
  std::vector<std::unique_ptr<Stranger>> strangers;
  for (int i = 0; i < LocalInstanceHost::kMaxConnections / 2; ++i)
    strangers.push_back(std::make_unique<Stranger>(folder, QByteArray("\x10\0\0", 3)));
  EXPECT_EQ(claimElsewhere(), Claim::handedOver);
  for (const auto& stranger : strangers)
    EXPECT_TRUE(stranger->isDropped());
}

TEST_F(LocalInstanceHostTest, TurnsAwayMoreThanMayBeConnected) {
  const auto host = first();
  std::vector<std::unique_ptr<Stranger>> strangers;
  for (int i = 0; i < LocalInstanceHost::kMaxConnections; ++i)
    strangers.push_back(std::make_unique<Stranger>(folder));
  const IntentReply refusal{.error = InstanceClient::kTooManyCalls.toString()};
  EXPECT_EQ(Stranger(folder).answer(), refusal);
  EXPECT_EQ(ask({.kind = Kind::show}), refusal) << "also who says first what they want";
  strangers.pop_back();
  ASSERT_TRUE(QTest::qWaitFor(
      [&] {
        return host->findChildren<LocalInstanceConnection*>().size() < LocalInstanceHost::kMaxConnections;
      },
      kGenerous));
  EXPECT_EQ(ask({.kind = Kind::show}), IntentReply());
}

TEST_F(LocalInstanceHostTest, WhoeverFloodsWithIntentsGetsErrorsAndThePanelStillShows) {
  const auto host = first();
  QList<IntentCall> calls;
  host->setRequests(answering({}, &calls));
  const int refused = elsewhere([this] {
    int count = 0;
    for (int i = 0; i < 100; ++i) {
      const auto answer = askInstance(folder, performRequest(Intent::copyLatestClip), 60s);
      count += answer.reply.error == InstanceClient::kTooManyCalls ? 1 : 0;
    }
    return count;
  });
  EXPECT_EQ(refused, 60);
  EXPECT_EQ(calls.size(), 40);
  EXPECT_EQ(ask({.kind = Kind::show}), IntentReply());
  clock->advance(1s);
  EXPECT_EQ(ask(performRequest(Intent::copyLatestClip)), IntentReply());
}

TEST_F(LocalInstanceHostTest, TakesUpTheUrlsThatTheSystemOpensAlsoTooEarly) {
  const auto host = makeHost();
  host->takeUpSystemRequests(*QCoreApplication::instance());
  const auto open = [](const QString& url) {
    QFileOpenEvent event{QUrl(url)};
    QCoreApplication::sendEvent(QCoreApplication::instance(), &event);
  };
  open(u"nimbrel://add?text=a"_s);
  QStringList opened;
  host->setRequests({.openUrls = [&](const QStringList& urls) { opened += urls; }});
  EXPECT_THAT(opened, ::testing::ElementsAre(u"nimbrel://add?text=a"));
  open(u"nimbrel://add?text=b"_s);
  EXPECT_THAT(opened, ::testing::ElementsAre(u"nimbrel://add?text=a", u"nimbrel://add?text=b"));
}

TEST_F(LocalInstanceHostTest, TakesUpTheIntentsThatTheSystemAsksFor) {
  auto host = makeHost();
  host->takeUpSystemRequests(*QCoreApplication::instance());
  QStringList errors;
  const auto perform = [&errors] {
    nimbrel_perform_intent(NimbrelIntentToggleCapture, nullptr, &errors,
                           [](void* context, const NimbrelIntentReply* reply) {
                             static_cast<QStringList*>(context)->append(QString::fromUtf8(reply->error));
                           });
  };
  perform();
  host->setRequests(answering({}));
  perform();
  QList<IntentAnswer> waiting;
  host->setRequests(keeping(waiting));
  perform();
  EXPECT_THAT(errors, ::testing::ElementsAre(u"unavailable", u""));
  host.reset();
  EXPECT_THAT(errors, ::testing::ElementsAre(u"unavailable", u"", u"unavailable"));
  waiting.clear();
  EXPECT_EQ(errors.size(), 3);
}

}  // namespace
}  // namespace nimbrel
