#include "platform/macos/values/KeychainStatus.h"

#include <gtest/gtest.h>

namespace nimbrel::macos {
namespace {

using Outcome = SecretLookup::Outcome;

TEST(KeychainStatus, TellsWhatIsNotThereFromWhatCannotBeRead) {
  EXPECT_EQ(secretLookup(-25300, std::nullopt).outcome, Outcome::notFound);
  constexpr qint32 kInteractionNotAllowed = -25308;
  const SecretLookup refused = secretLookup(kInteractionNotAllowed, std::nullopt);
  EXPECT_EQ(refused.outcome, Outcome::failed);
  EXPECT_EQ(refused.status, kInteractionNotAllowed);
}

TEST(KeychainStatus, TellsWhenThereIsNoKeychain) {
  for (const qint32 status : {kKeychainNotAvailable, kNoSuchKeychain, kNoDefaultKeychain}) {
    EXPECT_EQ(secretLookup(status, std::nullopt).outcome, Outcome::unavailable) << status;
  }
}

TEST(KeychainStatus, GivesWhatWasFound) {
  const SecretLookup found = secretLookup(0, QByteArray("sixteen bytes of"));
  EXPECT_EQ(found.outcome, Outcome::found);
  EXPECT_EQ(found.secret, "sixteen bytes of");
  EXPECT_EQ(found.status, 0);
}

TEST(KeychainStatus, FindsAnItemThatIsNoDataEmpty) {
  const SecretLookup found = secretLookup(0, std::nullopt);
  EXPECT_EQ(found.outcome, Outcome::found);
  EXPECT_TRUE(found.secret.isEmpty());
  EXPECT_EQ(found.status, 0);
}

TEST(KeychainStatus, IgnoresDataThatComesWithAnError) {
  EXPECT_TRUE(secretLookup(-50, QByteArray("x")).secret.isEmpty());
}

}  // namespace
}  // namespace nimbrel::macos
