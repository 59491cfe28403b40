#include "panel/lock/Lock.h"

#include <gmock/gmock.h>

#include "support/Fakes.h"
#include "support/LogRecorder.h"

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using Outcome = AuthenticationReply::Outcome;

class LockTest : public ::testing::Test {
 protected:
  /// Asks, and gives the answer once there is one.
  void ask(Lock::Reason reason = Lock::Reason::clip) {
    answer.reset();
    lock.authenticate(reason, [this](bool proven) { answer = proven; });
  }
  [[nodiscard]] qsizetype prompts() const { return authenticator.asked.size(); }
  void unlock() {
    ask();
    authenticator.reply(Outcome::proven);
  }

  testing::LogRecorder log;
  testing::ManualClock clock;
  testing::FakeDeviceAuthenticator authenticator;
  Lock lock{authenticator, clock};
  std::optional<bool> answer;
};

TEST_F(LockTest, AsksTheUserAndTellsWhatCameOfIt) {
  ask();
  EXPECT_EQ(authenticator.asked, QStringList{u"ver la credencial guardada en Nimbrel"_s});
  EXPECT_EQ(answer, std::nullopt);
  authenticator.reply(Outcome::proven);
  EXPECT_EQ(answer, true);
}

TEST_F(LockTest, SaysWhatTheWholeHistoryIsAskedFor) {
  ask(Lock::Reason::history);
  EXPECT_EQ(authenticator.asked, QStringList{u"ver el historial del portapapeles"_s});
}

TEST_F(LockTest, TwoRequestsThirtySecondsApartAskOnce) {
  unlock();
  clock.advance(30s);
  ask(Lock::Reason::history);
  EXPECT_EQ(answer, true);
  EXPECT_EQ(prompts(), 1);
}

TEST_F(LockTest, TwoRequestsSixtyOneSecondsApartAskTwice) {
  unlock();
  clock.advance(61s);
  ask();
  EXPECT_EQ(answer, std::nullopt);
  EXPECT_EQ(prompts(), 2);
}

TEST_F(LockTest, TheGraceEndsAfterExactlyAMinuteAndDoesNotGrow) {
  unlock();
  clock.advance(59'999ms);
  ask();
  EXPECT_EQ(answer, true);
  clock.advance(1ms);
  ask();
  EXPECT_EQ(prompts(), 2);
}

TEST_F(LockTest, TheGraceEndsWithTheMinuteAlsoWhenAClockIsSetBack) {
  unlock();
  clock.advance(1s);
  clock.wall -= 1h;
  ask();
  EXPECT_EQ(answer, std::nullopt);
}

TEST_F(LockTest, TheGraceEndsWhileTheComputerSleeps) {
  unlock();
  clock.advance(1s);
  clock.wall += 2h;
  ask();
  EXPECT_EQ(answer, std::nullopt);
}

TEST_F(LockTest, ARefusalIsNoAndSaysNothing) {
  ask();
  authenticator.reply(Outcome::refused);
  EXPECT_EQ(answer, false);
  EXPECT_TRUE(log.lines().isEmpty());
}

TEST_F(LockTest, ASecondRequestWhileThePromptIsUpIsRefused) {
  ask();
  ask();
  EXPECT_EQ(answer, false);
  EXPECT_EQ(prompts(), 1);
  EXPECT_TRUE(log.lines().isEmpty());
}

TEST_F(LockTest, IsAuthenticatingWhileThePromptIsUpAndForSixTenthsOfASecondAfter) {
  EXPECT_FALSE(lock.isAuthenticating());
  ask();
  EXPECT_TRUE(lock.isAuthenticating());
  clock.advance(1min);
  authenticator.reply(Outcome::refused);
  EXPECT_TRUE(lock.isAuthenticating());
  clock.advance(599ms);
  EXPECT_TRUE(lock.isAuthenticating());
  clock.advance(1ms);
  EXPECT_FALSE(lock.isAuthenticating());
}

TEST_F(LockTest, ARequestShortlyAfterAFailedPromptIsRefusedWithoutOne) {
  ask();
  authenticator.reply(Outcome::refused);
  clock.advance(300ms);
  ask();
  EXPECT_EQ(answer, false);
  EXPECT_EQ(prompts(), 1);
  clock.advance(300ms);
  ask();
  EXPECT_EQ(prompts(), 2);
}

TEST_F(LockTest, WithoutAPasswordLogsItOnceAndRefuses) {
  authenticator.obstacle = u"no hay contraseña"_s;
  ask();
  EXPECT_EQ(answer, false);
  EXPECT_EQ(log.lines(), QStringList{u"Bloqueo: no se puede autenticar (no hay contraseña)"_s});
  EXPECT_FALSE(lock.isAuthenticating());
  EXPECT_EQ(prompts(), 0);
}

TEST_F(LockTest, AnObstacleWithoutAReasonIsLoggedAsSuch) {
  authenticator.obstacle = QString();
  ask();
  EXPECT_EQ(log.lines(), QStringList{u"Bloqueo: no se puede autenticar (sin detalle)"_s});
}

TEST_F(LockTest, APromptThatTheSystemGivesUpIsLoggedAndRefused) {
  ask();
  authenticator.reply(Outcome::unavailable, u"polkit se fue"_s);
  EXPECT_EQ(answer, false);
  EXPECT_EQ(log.lines(), QStringList{u"Bloqueo: no se puede autenticar (polkit se fue)"_s});
}

TEST_F(LockTest, AnAnswerThatGotLostIsARefusalAndIsLogged) {
  std::optional<Lock::Answer> told;
  lock.ask(Lock::Reason::history, [&](Lock::Answer given) { told = given; });
  authenticator.reply(Outcome::refused, u"se cortó"_s);
  EXPECT_EQ(told, Lock::Answer::refused);
  EXPECT_EQ(log.lines(), QStringList{u"Bloqueo: no se puede autenticar (se cortó)"_s});
}

TEST_F(LockTest, TellsWhereNobodyWasAsked) {
  QList<Lock::Reason> told;
  QObject::connect(&lock, &Lock::unavailable, [&](Lock::Reason reason) { told.append(reason); });
  ask(Lock::Reason::clip);
  authenticator.reply(Outcome::unavailable);
  EXPECT_EQ(told, QList<Lock::Reason>{Lock::Reason::clip});
  clock.advance(1s);
  ask(Lock::Reason::clip);
  authenticator.reply(Outcome::refused);
  EXPECT_EQ(told.size(), 1);
}

TEST_F(LockTest, AWithdrawnRequestBringsUpNoPrompt) {
  authenticator.slow = true;
  ask();
  lock.withdraw(Lock::Reason::clip);
  authenticator.answerWhetherItCan();
  EXPECT_EQ(answer, false);
  EXPECT_EQ(prompts(), 0);
  authenticator.slow = false;
  ask();
  EXPECT_EQ(prompts(), 1);
  // One that is up already stays.
  lock.withdraw(Lock::Reason::clip);
  authenticator.reply(Outcome::proven);
  EXPECT_EQ(answer, true);
}

TEST_F(LockTest, GivesTheKeyboardBackAfterEveryPromptBeforeItTells) {
  int hooks = 0;
  int opened = 0;
  lock.setAfterAuthentication([&] {
    ++hooks;
    EXPECT_EQ(answer, std::nullopt);
  });
  QObject::connect(&lock, &Lock::promptOpens, [&] { ++opened; });
  for (const Outcome outcome : {Outcome::refused, Outcome::unavailable, Outcome::proven}) {
    ask();
    authenticator.reply(outcome);
    clock.advance(1s);
  }
  EXPECT_EQ(hooks, 3);
  EXPECT_EQ(opened, 3);
  ask();
  EXPECT_EQ(hooks, 3);
}

TEST_F(LockTest, AnAnswerThatComesAfterItsEndIsHeardByNobody) {
  auto mortal = std::make_unique<Lock>(authenticator, clock);
  mortal->authenticate(Lock::Reason::clip, [this](bool proven) { answer = proven; });
  mortal.reset();
  authenticator.reply(Outcome::proven);
  EXPECT_EQ(answer, std::nullopt);
}

}  // namespace
}  // namespace nimbrel
