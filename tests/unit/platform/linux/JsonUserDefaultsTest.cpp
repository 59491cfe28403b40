#include "platform/linux/JsonUserDefaults.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QTemporaryDir>
#include <limits>

#include "support/LogRecorder.h"

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
  [[nodiscard]] QByteArray content() const { return contentOf(u"defaults.json"_s); }
  [[nodiscard]] QByteArray contentOf(const QString& name) const {
    QFile file(folder.filePath(name));
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
  EXPECT_FALSE(defaults.value(u"a"_s));
  EXPECT_FALSE(defaults.isIntact());
  EXPECT_TRUE(defaults.remove(u"a"_s));
  EXPECT_EQ(content(), "not json");
}

TEST_F(JsonUserDefaultsTest, GivesEachValueBackWithItsType) {
  {
    JsonUserDefaults defaults(path);
    defaults.set(u"entero"_s, std::numeric_limits<qint64>::max());
    defaults.set(u"lógico"_s, false);
    defaults.set(u"texto"_s, u"5"_s);
    defaults.set(u"bytes"_s, QByteArray("\0\xff", 2));
    defaults.synchronize();
  }
  const JsonUserDefaults defaults(path);
  EXPECT_EQ(defaults.value(u"entero"_s), DefaultsValue(std::numeric_limits<qint64>::max()));
  EXPECT_EQ(defaults.value(u"lógico"_s), DefaultsValue(false));
  EXPECT_EQ(defaults.value(u"texto"_s), DefaultsValue(u"5"_s));
  EXPECT_EQ(defaults.value(u"bytes"_s), DefaultsValue(QByteArray("\0\xff", 2)));
  EXPECT_EQ(defaults.value(u"nada"_s), std::nullopt);
  EXPECT_TRUE(defaults.isIntact());
  EXPECT_EQ(QFileInfo(path).permissions() & (QFile::ReadGroup | QFile::ReadOther | QFile::WriteGroup), 0);
}

TEST_F(JsonUserDefaultsTest, TellsValuesOfOtherTypes) {
  write(R"({"a": 1.5, "b": null, "c": [], "d": {}, "e": 1e300, "f": 300.0})");
  const JsonUserDefaults defaults(path);
  for (const auto* const key : {u"a", u"b", u"c", u"d", u"e"})
    EXPECT_EQ(defaults.value(QString::fromUtf16(key)), DefaultsValue(ForeignDefault()));
  EXPECT_EQ(defaults.value(u"f"_s), DefaultsValue(qint64{300}));
}

TEST_F(JsonUserDefaultsTest, KeepsValuesThatItDoesNotKnow) {
  write(R"({"future": [1, 2], "a": 1})");
  {
    JsonUserDefaults defaults(path);
    defaults.set(u"a"_s, qint64{2});
    defaults.synchronize();
  }
  EXPECT_EQ(QJsonDocument::fromJson(content()), QJsonDocument::fromJson(R"({"future": [1, 2], "a": 2})"));
}

TEST_F(JsonUserDefaultsTest, KeepsAnUnreadableFileBesideTheNewOne) {
  for (const char* bytes : {"{\"maxUnpinned\": 5", "[1]", "\xff\xfe"}) {
    write(bytes);
    {
      JsonUserDefaults defaults(path);
      EXPECT_FALSE(defaults.isIntact());
      defaults.set(u"a"_s, true);
      defaults.synchronize();
      defaults.set(u"b"_s, true);
      defaults.synchronize();
    }
    EXPECT_TRUE(JsonUserDefaults(path).isIntact());
    EXPECT_EQ(JsonUserDefaults(path).value(u"b"_s), DefaultsValue(true));
  }
  EXPECT_EQ(contentOf(u"defaults.json.damaged"_s), "{\"maxUnpinned\": 5");
  EXPECT_EQ(contentOf(u"defaults.json.damaged-2"_s), "[1]");
  EXPECT_EQ(contentOf(u"defaults.json.damaged-3"_s), "\xff\xfe");
  EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files).size(), 4);
}

TEST_F(JsonUserDefaultsTest, KeepsAFileWithAValueThatWasNotUnderstood) {
  write(R"({"maxUnpinned": "cien"})");
  {
    JsonUserDefaults defaults(path);
    EXPECT_TRUE(defaults.isIntact());
    defaults.markDamaged();
    EXPECT_FALSE(defaults.isIntact());
    defaults.set(u"maxUnpinned"_s, qint64{100});
    defaults.synchronize();
  }
  EXPECT_EQ(contentOf(u"defaults.json.damaged"_s), R"({"maxUnpinned": "cien"})");
  EXPECT_EQ(JsonUserDefaults(path).value(u"maxUnpinned"_s), DefaultsValue(qint64{100}));
}

TEST_F(JsonUserDefaultsTest, MovesAFolderInItsPlaceAside) {
  ASSERT_TRUE(QDir().mkpath(path + u"/mine"_s));
  {
    JsonUserDefaults defaults(path);
    EXPECT_FALSE(defaults.value(u"a"_s));
    EXPECT_FALSE(defaults.isIntact());
    EXPECT_TRUE(QFileInfo(path).isDir());
    defaults.set(u"a"_s, true);
    defaults.synchronize();
  }
  EXPECT_EQ(JsonUserDefaults(path).value(u"a"_s), DefaultsValue(true));
  EXPECT_TRUE(QFileInfo(path + u".damaged/mine"_s).isDir());
}

TEST_F(JsonUserDefaultsTest, DoesNotWaitForAPipeInItsPlace) {
  ASSERT_EQ(::mkfifo(qPrintable(path), 0600), 0);
  {
    JsonUserDefaults defaults(path);
    EXPECT_FALSE(defaults.value(u"a"_s));
    defaults.set(u"a"_s, true);
    defaults.synchronize();
  }
  EXPECT_EQ(JsonUserDefaults(path).value(u"a"_s), DefaultsValue(true));
}

TEST_F(JsonUserDefaultsTest, ADamagedFileBehindALinkIsKeptToo) {
  ASSERT_TRUE(QDir().mkpath(folder.filePath(u"dotfiles"_s)));
  path = folder.filePath(u"dotfiles/nimbrel.json"_s);
  write("broken");
  const QString link = folder.filePath(u"link.json"_s);
  ASSERT_TRUE(QFile::link(path, folder.filePath(u"dotfiles/hop"_s)));
  ASSERT_TRUE(QFile::link(folder.filePath(u"dotfiles/hop"_s), link));
  {
    JsonUserDefaults defaults(link);
    EXPECT_FALSE(defaults.isIntact());
    defaults.set(u"a"_s, true);
    defaults.synchronize();
  }
  EXPECT_TRUE(QFileInfo(link).isSymLink());
  EXPECT_EQ(JsonUserDefaults(path).value(u"a"_s), DefaultsValue(true));
  EXPECT_EQ(contentOf(u"dotfiles/nimbrel.json.damaged"_s), "broken");
}

TEST_F(JsonUserDefaultsTest, ALinkToNothingIsFilled) {
  const QString link = folder.filePath(u"link.json"_s);
  ASSERT_TRUE(QFile::link(folder.filePath(u"new/nimbrel.json"_s), link));
  {
    JsonUserDefaults defaults(link);
    EXPECT_TRUE(defaults.isIntact());
    defaults.set(u"a"_s, true);
    defaults.synchronize();
  }
  EXPECT_EQ(JsonUserDefaults(link).value(u"a"_s), DefaultsValue(true));
  EXPECT_TRUE(QFileInfo(link).isSymLink());
}

TEST_F(JsonUserDefaultsTest, RemovingAKeyForGoodLeavesNoCopyOfIt) {
  write(R"({"secret": {"data": "aG9sYQ=="}, "maxUnpinned": "cien"})");
  {
    JsonUserDefaults defaults(path);
    defaults.markDamaged();
    EXPECT_TRUE(defaults.remove(u"secret"_s));
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files).size(), 1);
    EXPECT_FALSE(defaults.isIntact());
    EXPECT_EQ(QJsonDocument::fromJson(content()), QJsonDocument::fromJson(R"({"maxUnpinned": "cien"})"));
    defaults.set(u"maxUnpinned"_s, qint64{50});
    defaults.synchronize();
  }
  EXPECT_EQ(QJsonDocument::fromJson(contentOf(u"defaults.json.damaged"_s)),
            QJsonDocument::fromJson(R"({"maxUnpinned": "cien"})"));
}

TEST_F(JsonUserDefaultsTest, AnEmptyFileIsDamagedToo) {
  write("");
  EXPECT_FALSE(JsonUserDefaults(path).isIntact());
}

TEST_F(JsonUserDefaultsTest, RemovingAKeyKeepsWhatSomebodyElseWroteMeanwhile) {
  write(R"({"a": 1, "gone": 2})");
  {
    JsonUserDefaults defaults(path);
    EXPECT_TRUE(defaults.isIntact());
    write(R"({"a": 1, "gone": 2, "mine": true})");
    EXPECT_TRUE(defaults.remove(u"gone"_s));
    EXPECT_EQ(QJsonDocument::fromJson(content()), QJsonDocument::fromJson(R"({"a": 1, "mine": true})"));
    defaults.set(u"a"_s, qint64{2});
    defaults.synchronize();
  }
  EXPECT_EQ(QJsonDocument::fromJson(contentOf(u"defaults.json.damaged"_s)),
            QJsonDocument::fromJson(R"({"a": 1, "mine": true})"));
}

TEST_F(JsonUserDefaultsTest, DamageIsLoggedOnce) {
  testing::LogRecorder log;
  write("broken");
  JsonUserDefaults defaults(path);
  defaults.markDamaged();
  EXPECT_FALSE(defaults.value(u"a"_s));
  EXPECT_EQ(log.lines(), QStringList{u"Los ajustes guardados no se entienden: valen los de fábrica"_s});
  write("{}");
  JsonUserDefaults others(path);
  others.markDamaged();
  others.markDamaged();
  EXPECT_EQ(log.lines().size(), 2);
}

TEST_F(JsonUserDefaultsTest, WhatSomebodyElseWroteMeanwhileIsKeptBeside) {
  write(R"({"a": 1})");
  JsonUserDefaults defaults(path);
  EXPECT_TRUE(defaults.isIntact());
  write(R"({"a": 1, "mine": true})");
  defaults.set(u"a"_s, qint64{2});
  defaults.synchronize();
  // Waits for the write.
  EXPECT_TRUE(defaults.remove(u"nothing"_s));
  defaults.set(u"b"_s, qint64{3});
  EXPECT_TRUE(defaults.remove(u"b"_s));
  EXPECT_EQ(contentOf(u"defaults.json.damaged"_s), R"({"a": 1, "mine": true})");
  EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files).size(), 2);
}

TEST_F(JsonUserDefaultsTest, SaysInTheLogWhatCannotBeWritten) {
  testing::LogRecorder log;
  path = folder.filePath(u"file/defaults.json"_s);
  QFile file(folder.filePath(u"file"_s));
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  {
    JsonUserDefaults defaults(path);
    defaults.set(u"a"_s, true);
    defaults.synchronize();
    EXPECT_FALSE(defaults.remove(u"a"_s));
  }
  EXPECT_TRUE(log.has(u"No se pudieron guardar los ajustes: "_s));
}

}  // namespace
}  // namespace nimbrel
