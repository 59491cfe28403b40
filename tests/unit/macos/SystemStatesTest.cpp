#include "platform/macos/values/SystemStates.h"

#include <gtest/gtest.h>

namespace nimbrel::macos {
namespace {

using namespace Qt::StringLiterals;
using Access = Pasteboard::Access;
using Outcome = AuthenticationReply::Outcome;

TEST(SystemStates, KnowWhoMayReadThePasteboard) {
  EXPECT_EQ(pasteboardAccess(0), Access::standard);
  EXPECT_EQ(pasteboardAccess(1), Access::ask);
  EXPECT_EQ(pasteboardAccess(2), Access::alwaysAllow);
  EXPECT_EQ(pasteboardAccess(3), Access::alwaysDeny);
  EXPECT_EQ(pasteboardAccess(4), Access::standard);
  EXPECT_EQ(pasteboardAccess(-1), Access::standard);
}

TEST(SystemStates, BelieveTheLoginItemServiceByWhatItSaysAfterwards) {
  EXPECT_FALSE(loginItemObstacle(LoginItemStatus::enabled, true));
  EXPECT_FALSE(loginItemObstacle(LoginItemStatus::notRegistered, false));
  EXPECT_FALSE(loginItemObstacle(LoginItemStatus::notFound, false));
  EXPECT_FALSE(loginItemObstacle(LoginItemStatus::requiresApproval, false));
  EXPECT_TRUE(loginItemObstacle(LoginItemStatus::requiresApproval, true));
  EXPECT_TRUE(loginItemObstacle(LoginItemStatus::notFound, true));
  EXPECT_TRUE(loginItemObstacle(LoginItemStatus::enabled, false));
  EXPECT_NE(loginItemObstacle(LoginItemStatus::requiresApproval, true),
            loginItemObstacle(LoginItemStatus::notRegistered, true));
}

TEST(SystemStates, TakeASuccessfulReplyForProof) {
  EXPECT_EQ(kDeviceOwnerPolicy, 2);
  EXPECT_EQ(authenticationReply(true, 0, {}).outcome, Outcome::proven);
}

TEST(SystemStates, TakeAUserWhoDoesNotProveForRefusing) {
  // Authentication failed, cancelled by the user, by the system, by the program; too many attempts; no
  // reason.
  for (const qint64 code : {-1, -2, -3, -4, -8, -9, 0}) {
    const AuthenticationReply reply = authenticationReply(false, code, u"texto"_s);
    EXPECT_EQ(reply.outcome, Outcome::refused) << code;
    EXPECT_TRUE(reply.detail.isEmpty()) << code;
  }
}

TEST(SystemStates, TellWhenNobodyCouldBeAsked) {
  for (const qint64 code : {-5, -6, -7, -10, -1004}) {
    const AuthenticationReply reply = authenticationReply(false, code, u"sin contraseña"_s);
    EXPECT_EQ(reply.outcome, Outcome::unavailable) << code;
    EXPECT_EQ(reply.detail, u"sin contraseña"_s) << code;
  }
}

}  // namespace
}  // namespace nimbrel::macos
