#include "platform/macos/values/ApplicationBundles.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace nimbrel::macos {
namespace {

using namespace Qt::StringLiterals;

TEST(ApplicationBundles, AreFoundInFoldersAndTheFoldersInThem) {
  const QTemporaryDir folder;
  const QDir root(folder.path());
  for (const QString& path : {u"Editor.app/Contents"_s, u"Utilities/Term.app"_s, u"Utilities/Deep/Far.app"_s,
                              u"Editor.app/Contents/Helper.app"_s, u"Empty"_s, u"UPPER.APP"_s}) {
    ASSERT_TRUE(root.mkpath(path));
  }
  QFile file(root.filePath(u"NoBundle.app"_s));
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  EXPECT_EQ(applicationBundles({folder.path(), folder.path()}),
            (QStringList{root.filePath(u"Editor.app"_s), root.filePath(u"UPPER.APP"_s),
                         root.filePath(u"Utilities/Term.app"_s)}));
}

TEST(ApplicationBundles, AreNoneWhereThereIsNoFolder) {
  EXPECT_TRUE(applicationBundles({u"/nonexistent/folder"_s}).isEmpty());
}

TEST(ApplicationBundles, AreLookedForWhereApplicationsAreInstalled) {
  EXPECT_EQ(applicationFolders().first(), u"/Applications"_s);
  EXPECT_TRUE(applicationFolders().contains(QDir::homePath() + u"/Applications"_s));
}

}  // namespace
}  // namespace nimbrel::macos
