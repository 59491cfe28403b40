#include "platform/linux/LibsecretStore.h"

#include <gmock/gmock.h>

#include <QCoreApplication>
#include <QProcess>

#include "storage/HistoryCipher.h"
#include "storage/RandomSource.h"
#include "support/LogRecorder.h"

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;

/// Against the real key store of the private desktop.
class LibsecretStoreTest : public ::testing::Test {
 protected:
  /// A name of its own for each test, since the key store lives as long as the desktop.
  SecretItem item{u"Nimbrel.test"_s,
                  QString::fromLatin1(::testing::UnitTest::GetInstance()->current_test_info()->name())};
  LibsecretStore store;
};

TEST_F(LibsecretStoreTest, TellsThatASecretDoesNotExist) {
  EXPECT_EQ(store.find(item).outcome, SecretLookup::Outcome::notFound);
}

TEST_F(LibsecretStoreTest, GivesBackTheBytesItWasGiven) {
  QByteArray bytes(32, '\0');
  for (int i = 0; i < 32; ++i)
    bytes[i] = static_cast<char>(i * 37);
  ASSERT_EQ(store.add(item, bytes), 0);
  const SecretLookup found = store.find(item);
  EXPECT_EQ(found.outcome, SecretLookup::Outcome::found);
  EXPECT_EQ(found.secret, bytes);
  EXPECT_EQ(store.find({item.service, u"otra cuenta"_s}).outcome, SecretLookup::Outcome::notFound);
}

TEST_F(LibsecretStoreTest, KeepsTheHistoryKeyForTheNextLaunch) {
  SystemRandom random;
  HistoryCipher first(store, random);
  const auto sealed = first.seal("secreto");
  ASSERT_TRUE(first.hasKey());
  LibsecretStore again;
  HistoryCipher second(again, random);
  EXPECT_EQ(second.open(*sealed), QByteArray("secreto"));
}

TEST_F(LibsecretStoreTest, TellsAnErrorFromAMissingSecret) {
  testing::LogRecorder log;
  // A bus without anybody behind it.
  QProcess child;
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  environment.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, u"unix:path=/nonexistent"_s);
  environment.insert(u"NIMBREL_TEST_WITHOUT_BUS"_s, u"1"_s);
  child.setProcessEnvironment(environment);
  child.start(QCoreApplication::applicationFilePath(), {u"--gtest_filter=LibsecretStoreWithoutBus.*"_s});
  ASSERT_TRUE(child.waitForFinished());
  EXPECT_EQ(child.exitCode(), 0) << child.readAllStandardOutput().toStdString();
}

TEST(LibsecretStoreWithoutBus, FailsInsteadOfFindingNothing) {
  // Runs in the process that the test above starts; here, with a bus, there is nothing to see.
  if (!qEnvironmentVariableIsSet("NIMBREL_TEST_WITHOUT_BUS")) return;
  LibsecretStore store;
  const SecretLookup lookup = store.find({u"Nimbrel.test"_s, u"x"_s});
  EXPECT_EQ(lookup.outcome, SecretLookup::Outcome::unavailable);
  EXPECT_NE(lookup.status, 0);
}

}  // namespace
}  // namespace nimbrel
