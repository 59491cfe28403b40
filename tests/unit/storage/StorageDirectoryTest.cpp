#include "storage/StorageDirectory.h"

#include <gmock/gmock.h>

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include "storage/ContentHash.h"

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;

TEST(StorageDirectory, IsForItsOwnerAloneAndHoldsTheSideFolders) {
  QTemporaryDir home;
  const QString path = makeStorageDirectory(home.filePath(u"share"_s));
  EXPECT_EQ(path, home.filePath(u"share/Nimbrel"_s));
  for (const QString& folder : {path, path + u"/Images"_s, path + u"/Rich"_s}) {
    const QFileInfo info(folder);
    EXPECT_TRUE(info.isDir());
    EXPECT_FALSE(info.permissions() & (QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup |
                                       QFile::ReadOther | QFile::WriteOther | QFile::ExeOther));
  }
  EXPECT_EQ(databasePath(path), path + u"/brevin.sqlite"_s);
}

TEST(StorageDirectory, IsNoErrorWhenItCannotBeMade) {
  QTemporaryDir home;
  QFile blocker(home.filePath(u"share"_s));
  ASSERT_TRUE(blocker.open(QIODevice::WriteOnly));
  EXPECT_EQ(makeStorageDirectory(home.filePath(u"share"_s)), home.filePath(u"share/Nimbrel"_s));
}

TEST(ContentHash, IsSha256InLowerCaseHexadecimal) {
  // The example of FIPS 180-4 and the empty message.
  EXPECT_EQ(sha256Hex("abc"), u"ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad"_s);
  EXPECT_EQ(sha256Hex({}), u"e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855"_s);
}

}  // namespace
}  // namespace nimbrel
