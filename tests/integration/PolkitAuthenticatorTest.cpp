#include "platform/linux/PolkitAuthenticator.h"

#include <gmock/gmock.h>

#include <QProcess>
#include <QTest>

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using Outcome = AuthenticationReply::Outcome;

/// Against an authority that does what its mode says.
class PolkitAuthenticatorTest : public ::testing::Test {
 protected:
  ~PolkitAuthenticatorTest() override {
    authority.kill();
    authority.waitForFinished();
  }

  void start(const QString& mode) {
    authority.start(QStringLiteral(NIMBREL_POLKIT_MOCK), {mode});
    ASSERT_TRUE(waitForLine(u"ready"_s));
  }
  bool waitForLine(const QString& line) {
    return QTest::qWaitFor([&] {
      output += QString::fromUtf8(authority.readAllStandardOutput());
      return output.contains(line);
    });
  }
  std::optional<QString> obstacle() {
    std::optional<std::optional<QString>> answer;
    authenticator.canAuthenticate([&](const std::optional<QString>& given) { answer = given; });
    EXPECT_TRUE(QTest::qWaitFor([&] { return answer.has_value(); }));
    return answer.value_or(u"no answer"_s);
  }
  AuthenticationReply ask() {
    std::optional<AuthenticationReply> answer;
    authenticator.authenticate({u"reveal-clip"_s, {}},
                               [&](const AuthenticationReply& given) { answer = given; });
    EXPECT_TRUE(QTest::qWaitFor([&] { return answer.has_value(); }));
    return answer.value_or(AuthenticationReply{});
  }

  PolkitAuthenticator authenticator{{.answer = 1000ms, .user = 1000ms}};
  QProcess authority;
  QString output;
};

TEST_F(PolkitAuthenticatorTest, WithoutPolkitSaysSo) {
  EXPECT_TRUE(obstacle());
}

TEST_F(PolkitAuthenticatorTest, AsksForTheActionOfTheReason) {
  start(u"yes"_s);
  EXPECT_EQ(obstacle(), std::nullopt);
  EXPECT_EQ(ask().outcome, Outcome::proven);
  EXPECT_TRUE(waitForLine(u"app.nimbrel.Nimbrel.reveal-clip"_s));
}

TEST_F(PolkitAuthenticatorTest, AWrongPasswordIsARefusal) {
  start(u"no"_s);
  EXPECT_EQ(ask().outcome, Outcome::refused);
}

TEST_F(PolkitAuthenticatorTest, ACancelledPromptIsARefusal) {
  start(u"dismissed"_s);
  EXPECT_EQ(ask().outcome, Outcome::refused);
}

TEST_F(PolkitAuthenticatorTest, WithoutAnAgentNobodyCanBeAsked) {
  start(u"agentless"_s);
  const AuthenticationReply reply = ask();
  EXPECT_EQ(reply.outcome, Outcome::unavailable);
  EXPECT_EQ(reply.detail, u"no hay agente de autenticación de polkit");
}

TEST_F(PolkitAuthenticatorTest, AnActionThatIsNotInstalledCannotBeAskedFor) {
  start(u"unknown"_s);
  const AuthenticationReply reply = ask();
  EXPECT_EQ(reply.outcome, Outcome::unavailable);
  EXPECT_EQ(reply.detail, u"Action is not registered");
}

TEST_F(PolkitAuthenticatorTest, AnAnswerThatIsNoneIsNoProof) {
  start(u"nonsense"_s);
  const AuthenticationReply reply = ask();
  EXPECT_EQ(reply.outcome, Outcome::refused);
  EXPECT_FALSE(reply.detail.isEmpty());
}

TEST_F(PolkitAuthenticatorTest, AnAuthorityThatDiesDoesNotKeepAnybodyWaiting) {
  start(u"dies"_s);
  const AuthenticationReply reply = ask();
  // The user may have been asked.
  EXPECT_EQ(reply.outcome, Outcome::refused);
  EXPECT_FALSE(reply.detail.isEmpty());
}

TEST_F(PolkitAuthenticatorTest, APromptThatNeverEndsIsCancelled) {
  start(u"mute"_s);
  EXPECT_EQ(obstacle(), std::nullopt);
  const AuthenticationReply reply = ask();
  EXPECT_EQ(reply.outcome, Outcome::refused);
  EXPECT_TRUE(reply.detail.isEmpty());
  EXPECT_TRUE(waitForLine(u"cancelled"_s));
}

TEST_F(PolkitAuthenticatorTest, AnAuthorityThatNeverAnswersIsGivenUp) {
  start(u"deaf"_s);
  EXPECT_EQ(obstacle(), u"polkit no contesta"_s);
}

TEST_F(PolkitAuthenticatorTest, AnAnswerThatComesAfterItsEndIsHeardByNobody) {
  start(u"mute"_s);
  bool heard = false;
  {
    PolkitAuthenticator mortal({.answer = 50ms, .user = 50ms});
    mortal.canAuthenticate([&](const auto&) { heard = true; });
    mortal.authenticate({u"reveal-clip"_s, {}}, [&](const auto&) { heard = true; });
  }
  QTest::qWait(200);
  EXPECT_FALSE(heard);
}

}  // namespace
}  // namespace nimbrel
