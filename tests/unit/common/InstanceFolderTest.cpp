#include "platform/common/InstanceFolder.h"

#include <gmock/gmock.h>

#include <QFileInfo>
#include <QTemporaryDir>

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;

constexpr QFile::Permissions kOwner = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner;

class InstanceFolderTest : public ::testing::Test {
 protected:
  [[nodiscard]] QString pathOf(const QString& name) const { return directory.filePath(name); }

  const QTemporaryDir directory;
};

TEST_F(InstanceFolderTest, IsMadeForTheUserAlone) {
  const InstanceFolder folder(pathOf(u"new"_s));
  EXPECT_FALSE(folder.isOurs());
  ASSERT_TRUE(folder.prepare());
  const auto others = QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup | QFile::ReadOther |
                      QFile::WriteOther | QFile::ExeOther;
  EXPECT_FALSE(QFileInfo(pathOf(u"new"_s)).permissions() & others);
  EXPECT_TRUE(folder.prepare());
}

TEST_F(InstanceFolderTest, IsRefusedWhereOthersMayWriteInIt) {
  const InstanceFolder folder(directory.path());
  ASSERT_TRUE(folder.prepare());
  ASSERT_TRUE(QFile::setPermissions(directory.path(), kOwner | QFile::WriteOther | QFile::ExeOther));
  EXPECT_FALSE(folder.prepare());
  ASSERT_TRUE(QFile::setPermissions(directory.path(), kOwner | QFile::WriteGroup));
  EXPECT_FALSE(folder.isOurs());
}

TEST_F(InstanceFolderTest, IsRefusedWhereItIsNone) {
  QFile file(pathOf(u"file"_s));
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  EXPECT_FALSE(InstanceFolder(pathOf(u"file"_s)).prepare());
  EXPECT_FALSE(InstanceFolder(pathOf(u"missing/new"_s)).prepare());
  EXPECT_FALSE(InstanceFolder(u"relative"_s).isOurs());
  EXPECT_FALSE(InstanceFolder({}).prepare());
}

}  // namespace
}  // namespace nimbrel
