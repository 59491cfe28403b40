#include <gmock/gmock.h>

#include <QTemporaryDir>

#include "platform/linux/JsonUserDefaults.h"
#include "platform/linux/XdgAutostart.h"
#include "support/Fakes.h"

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;
using namespace testing;

struct JsonSubject {
  QTemporaryDir folder;
  JsonUserDefaults port{folder.filePath(u"defaults.json"_s)};
};
struct FakeDefaultsSubject {
  FakeUserDefaults port;
};

/// What stored values promise, wherever they are stored.
template <typename Subject>
class UserDefaultsContract : public ::testing::Test {
 protected:
  Subject subject;
  UserDefaults& defaults = subject.port;
};
using DefaultsSubjects = ::testing::Types<FakeDefaultsSubject, JsonSubject>;
TYPED_TEST_SUITE(UserDefaultsContract, DefaultsSubjects);

TYPED_TEST(UserDefaultsContract, HasWhatWasSetWithItsType) {
  const QList<DefaultsValue> values{true, qint64{-1}, u"texto"_s, QByteArray("\0bytes", 6)};
  EXPECT_EQ(this->defaults.value(u"clave"_s), std::nullopt);
  for (const DefaultsValue& value : values) {
    this->defaults.set(u"clave"_s, value);
    EXPECT_EQ(this->defaults.value(u"clave"_s), value);
  }
  EXPECT_EQ(this->defaults.data(u"clave"_s), QByteArray("\0bytes", 6));
  this->defaults.set(u"clave"_s, u"texto"_s);
  EXPECT_EQ(this->defaults.data(u"clave"_s), std::nullopt);
}

TYPED_TEST(UserDefaultsContract, RemovesAKeyAndNothingElse) {
  this->defaults.set(u"a"_s, true);
  this->defaults.set(u"b"_s, true);
  EXPECT_TRUE(this->defaults.remove(u"a"_s));
  EXPECT_TRUE(this->defaults.remove(u"desconocida"_s));
  EXPECT_EQ(this->defaults.value(u"a"_s), std::nullopt);
  EXPECT_EQ(this->defaults.value(u"b"_s), DefaultsValue(true));
}

TYPED_TEST(UserDefaultsContract, IsIntactUntilSomethingIsFoundDamaged) {
  EXPECT_TRUE(this->defaults.isIntact());
  this->defaults.markDamaged();
  EXPECT_FALSE(this->defaults.isIntact());
}

struct AutostartSubject {
  QTemporaryDir folder;
  XdgAutostart port{folder.path(), {}, u"/usr/bin/nimbrel"_s};
};
struct FakeLoginSubject {
  FakeLoginItem port;
};

/// What a start with the session promises, whoever sees to it.
template <typename Subject>
class LoginItemContract : public ::testing::Test {
 protected:
  Subject subject;
  LoginItem& login = subject.port;
};
using LoginSubjects = ::testing::Types<FakeLoginSubject, AutostartSubject>;
TYPED_TEST_SUITE(LoginItemContract, LoginSubjects);

TYPED_TEST(LoginItemContract, IsOffAtFirstAndAsItWasSwitchedThen) {
  EXPECT_FALSE(this->login.isEnabled());
  for (const bool enabled : {true, true, false, false, true}) {
    EXPECT_EQ(this->login.setEnabled(enabled), std::nullopt);
    EXPECT_EQ(this->login.isEnabled(), enabled);
  }
}

}  // namespace
}  // namespace nimbrel
