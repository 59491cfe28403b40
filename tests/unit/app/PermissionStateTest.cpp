#include "app/permission/PermissionState.h"

#include <gmock/gmock.h>

#include "support/Fakes.h"

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;
using namespace testing;

class PermissionStateTest : public ::testing::Test {
 protected:
  FakeAccessibilityTrust trust;
  FakePasteboard pasteboard;
  FakeOpener opener;
};

TEST_F(PermissionStateTest, KnowsAtOnceWhatIsGranted) {
  trust.trusted = false;
  pasteboard.given = Pasteboard::Access::alwaysDeny;
  const PermissionState permission(trust, pasteboard, opener);
  EXPECT_FALSE(permission.accessibilityGranted());
  EXPECT_TRUE(permission.pasteboardBlocked());
  EXPECT_EQ(trust.requests, 0);
}

TEST_F(PermissionStateTest, AsksTheUserWhetherOrNotTrustIsGiven) {
  PermissionState permission(trust, pasteboard, opener);
  for (const bool trusted : {false, true}) {
    trust.trusted = trusted;
    const int before = trust.requests;
    EXPECT_TRUE(permission.requestAccessibility());
    EXPECT_EQ(trust.requests, before + 1);
  }
}

TEST_F(PermissionStateTest, SeesWhatTheUserHasChangedAtTheNextCheck) {
  PermissionState permission(trust, pasteboard, opener);
  int changes = 0;
  QObject::connect(&permission, &PermissionState::changed, [&] { ++changes; });
  pasteboard.given = Pasteboard::Access::alwaysDeny;
  EXPECT_FALSE(permission.pasteboardBlocked());
  permission.recheck();
  EXPECT_TRUE(permission.pasteboardBlocked());
  trust.trusted = false;
  permission.recheck();
  EXPECT_FALSE(permission.accessibilityGranted());
  permission.recheck();
  EXPECT_EQ(changes, 2);
}

TEST_F(PermissionStateTest, OpensTheSettingsAboutPrivacyWhereThereAreSome) {
  PermissionState permission(trust, pasteboard, opener);
  EXPECT_TRUE(permission.openPrivacySettings());
  EXPECT_EQ(opener.opened, QStringList{u"privacy"_s});
  opener.bare = true;
  EXPECT_FALSE(permission.openPrivacySettings());
}

}  // namespace
}  // namespace nimbrel
