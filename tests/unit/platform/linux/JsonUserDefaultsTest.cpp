#include "platform/linux/JsonUserDefaults.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;

class JsonUserDefaultsTest : public ::testing::Test {
 protected:
  void write(const QByteArray& bytes) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
  }
  [[nodiscard]] QByteArray content() const {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  }

  QTemporaryDir folder;
  QString path = folder.filePath(u"defaults.json"_s);
};

TEST_F(JsonUserDefaultsTest, TellsBytesFromOtherTypes) {
  write(R"({"a": {"data": "aG9sYQ=="}, "b": "aG9sYQ==", "c": {"data": 5}, "d": {"data": "!!"},
            "e": {"data": "aG9sYQ==", "more": 1}, "f": []})");
  const JsonUserDefaults defaults(path);
  EXPECT_EQ(defaults.data(u"a"_s), "hola");
  for (const auto* const key : {u"b", u"c", u"d", u"e", u"f", u"g"})
    EXPECT_FALSE(defaults.data(QString::fromUtf16(key)));
}

TEST_F(JsonUserDefaultsTest, RemovesOneKeyForGoodAndKeepsTheOthers) {
  write(R"({"a": {"data": "aG9sYQ=="}, "maxUnpinned": 50})");
  EXPECT_TRUE(JsonUserDefaults(path).remove(u"a"_s));
  EXPECT_FALSE(JsonUserDefaults(path).data(u"a"_s));
  EXPECT_TRUE(content().contains("maxUnpinned"));
  EXPECT_FALSE(QFileInfo(path).permissions() & (QFile::ReadGroup | QFile::ReadOther));
}

TEST_F(JsonUserDefaultsTest, LeavesAFileAloneThatItCannotRead) {
  write("not json");
  JsonUserDefaults defaults(path);
  EXPECT_FALSE(defaults.data(u"a"_s));
  EXPECT_TRUE(defaults.remove(u"a"_s));
  EXPECT_EQ(content(), "not json");
}

}  // namespace
}  // namespace nimbrel
