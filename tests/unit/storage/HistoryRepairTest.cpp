#include "storage/HistoryRepair.h"

#include <gmock/gmock.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "storage/ClipDatabase.h"
#include "storage/DatabaseHealth.h"
#include "storage/SQLiteConnection.h"
#include "support/Fakes.h"
#include "support/LogRecorder.h"
#include "support/StoreFixture.h"

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;
using State = DatabaseHealth::State;

constexpr int kPageBytes = 4096;

class HistoryRepairTest : public ::testing::Test {
 protected:
  /// A history of so many clips with texts of some length, all in the file.
  void fill(int clips, qsizetype length = 300) {
    ClipDatabase database(path, cipher);
    QList<ClipItem> items;
    for (int i = 0; i < clips; ++i)
      items.append(testing::textClip(u"texto %1 "_s.arg(i) + QString(length, u'x'), 1000 + i));
    ASSERT_TRUE(database.saveMany(items));
    ASSERT_TRUE(database.checkpoint());
  }
  /// Overwrites pages, counted from 0, as a failing disk does.
  void damage(qint64 first, qint64 last) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    for (qint64 page = first; page <= last; ++page) {
      file.seek(page * kPageBytes);
      file.write(QByteArray(kPageBytes, '\xa5'));
    }
  }
  [[nodiscard]] qint64 pages() const { return QFileInfo(path).size() / kPageBytes; }
  [[nodiscard]] qsizetype readable() {
    ClipDatabase database(path, cipher);
    return database.loadAll().clips.size();
  }
  [[nodiscard]] static QByteArray bytesOf(const QString& file) {
    QFile opened(file);
    return opened.open(QIODevice::ReadOnly) ? opened.readAll() : QByteArray();
  }

  testing::LogRecorder log;
  QTemporaryDir folder;
  QString path = folder.filePath(u"brevin.sqlite"_s);
  testing::ManualClock clock;
  testing::FakeSecretStore secrets;
  SystemRandom random;
  HistoryCipher cipher{secrets, random};
};

TEST_F(HistoryRepairTest, ASoundHistoryIsSound) {
  EXPECT_EQ(examineDatabase(path, &cipher).state, State::missing);
  EXPECT_FALSE(QFile::exists(path));
  fill(5);
  const DatabaseHealth health = examineDatabase(path, &cipher);
  EXPECT_EQ(health.state, State::sound);
  EXPECT_EQ(health.rows, 5);
  EXPECT_EQ(health.unreadable, 0);
}

TEST_F(HistoryRepairTest, CountsTheRowsThatCannotBeOpened) {
  fill(5);
  testing::FakeSecretStore others;
  HistoryCipher another(others, random);
  EXPECT_EQ(examineDatabase(path, &another).unreadable, 5);
}

TEST_F(HistoryRepairTest, LookingChangesNothingAlsoWhileTheProgramRuns) {
  fill(5);
  ClipDatabase running(path, cipher);
  running.save(testing::indexed(testing::textClip(u"nuevo"_s)));
  running.flush();
  const QByteArray journal = bytesOf(path + u"-wal"_s);
  ASSERT_FALSE(journal.isEmpty());
  EXPECT_EQ(examineDatabase(path, &cipher).rows, 6);
  EXPECT_EQ(bytesOf(path + u"-wal"_s), journal);
}

TEST_F(HistoryRepairTest, WithoutAKeyCountsWhatIsSealed) {
  fill(5);
  EXPECT_EQ(examineDatabase(path, nullptr).unreadable, 5);
}

TEST_F(HistoryRepairTest, AnOlderVersionsHistoryIsSound) {
  {
    SQLiteConnection old(path.toUtf8());
    old.execute(
        "CREATE TABLE clips(id TEXT PRIMARY KEY NOT NULL, date REAL NOT NULL, pinned INTEGER NOT NULL "
        "DEFAULT 0,"
        " image_file TEXT, image_hash TEXT, expires_at REAL, sensitive INTEGER, payload BLOB NOT NULL);"
        "INSERT INTO clips(id, date, payload) VALUES('6281928A-246C-46E3-8FA6-EF0F95AE3E8F', 1, "
        "'{\"text\":\"a\"}');"
        "PRAGMA user_version = 1");
  }
  const DatabaseHealth health = examineDatabase(path, &cipher);
  EXPECT_EQ(health.state, State::sound);
  EXPECT_EQ(health.unreadable, 0);
}

TEST_F(HistoryRepairTest, AnEmptyFileWithALogIsDamagedAndKeepsIt) {
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.close();
  QFile journal(path + u"-wal"_s);
  ASSERT_TRUE(journal.open(QIODevice::WriteOnly));
  journal.write("lo último");
  journal.close();
  EXPECT_EQ(examineDatabase(path, nullptr).state, State::damaged);
  EXPECT_EQ(bytesOf(path + u"-wal"_s), "lo último"_ba);
}

TEST_F(HistoryRepairTest, FindsRowsWithHighNumbersWithoutTheIndexes) {
  fill(2000);
  {
    SQLiteConnection database(path.toUtf8());
    database.execute(
        "UPDATE clips SET rowid = rowid + 5000000; DROP INDEX clips_date; DROP INDEX clips_image_hash");
    database.execute("PRAGMA wal_checkpoint(TRUNCATE)");
  }
  damage(pages() / 2, pages() / 2);
  EXPECT_GT(repairDatabase(path, clock).salvaged, 1500);
}

TEST_F(HistoryRepairTest, SalvagesAFileThatWasCutShort) {
  fill(2000);
  ASSERT_TRUE(QFile::resize(path, pages() * 3 / 4 * kPageBytes));
  ASSERT_EQ(examineDatabase(path, nullptr).state, State::damaged);
  EXPECT_GT(repairDatabase(path, clock).salvaged, 1000);
}

TEST_F(HistoryRepairTest, SalvagesAFileWithoutItsFirstPage) {
  fill(2000);
  damage(0, 0);
  ASSERT_EQ(examineDatabase(path, nullptr).state, State::damaged);
  EXPECT_EQ(repairDatabase(path, clock).salvaged, 2000);
  EXPECT_EQ(readable(), 2000);
}

TEST_F(HistoryRepairTest, AWrongVersionNumberIsDamage) {
  fill(10);
  SQLiteConnection(path.toUtf8()).execute("PRAGMA user_version = 0");
  ASSERT_EQ(examineDatabase(path, nullptr).state, State::damaged);
  EXPECT_EQ(repairDatabase(path, clock).salvaged, 10);
}

TEST_F(HistoryRepairTest, TakesUpTheLogThatAStoppedRepairHadTakenAway) {
  fill(100);
  damage(pages() / 2, pages() / 2);
  QFile journal(path + u"-wal.aside"_s);
  ASSERT_TRUE(journal.open(QIODevice::WriteOnly));
  journal.write("un diario");
  journal.close();
  const RepairOutcome outcome = repairDatabase(path, clock);
  EXPECT_EQ(outcome.failure, std::nullopt);
  EXPECT_EQ(bytesOf(folder.filePath(outcome.setAside) + u"-wal"_s), "un diario"_ba);
  EXPECT_FALSE(QFile::exists(path + u"-wal.aside"_s));
}

TEST_F(HistoryRepairTest, WhatWasSetAsideBeforeStays) {
  const QString earlier = folder.filePath(u"brevin.damaged-1773500966.sqlite"_s);
  QFile file(earlier);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write("de antes");
  file.close();
  fill(100);
  damage(pages() / 2, pages() / 2);
  EXPECT_EQ(repairDatabase(path, clock).setAside, u"brevin.damaged-1773500967.sqlite");
  EXPECT_EQ(bytesOf(earlier), "de antes"_ba);
}

TEST_F(HistoryRepairTest, WhatIsSetAsideIsKnown) {
  EXPECT_TRUE(damagedDatabases(folder.path()).isEmpty());
  fill(100);
  damage(pages() / 2, pages() / 2);
  const RepairOutcome outcome = repairDatabase(path, clock);
  EXPECT_EQ(damagedDatabases(folder.path()), QStringList{outcome.setAside});
}

TEST_F(HistoryRepairTest, LeavesANewerVersionsHistoryAlone) {
  fill(1);
  SQLiteConnection(path.toUtf8()).execute("PRAGMA user_version = 9");
  EXPECT_EQ(examineDatabase(path, &cipher).state, State::untouchable);
}

TEST_F(HistoryRepairTest, SalvagesWhatIsOnBothSidesOfTheDamage) {
  fill(2000);
  const qint64 middle = pages() / 2;
  damage(middle, middle + 3);
  ASSERT_EQ(examineDatabase(path, nullptr).state, State::damaged);
  const QByteArray before = bytesOf(path);
  const RepairOutcome outcome = repairDatabase(path, clock);
  EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), (QStringList{outcome.setAside, u"brevin.sqlite"_s}));
  EXPECT_EQ(outcome.failure, std::nullopt);
  // At most the rows of the pages that are gone, and of one inner page, whatever those held.
  EXPECT_GT(outcome.salvaged, 1900);
  EXPECT_LT(outcome.salvaged, 2000);
  EXPECT_EQ(readable(), outcome.salvaged);
  EXPECT_EQ(examineDatabase(path, &cipher).state, State::sound);
  EXPECT_EQ(bytesOf(folder.filePath(outcome.setAside)), before);
  EXPECT_EQ(outcome.setAside, u"brevin.damaged-1773500966.sqlite");
}

TEST_F(HistoryRepairTest, SalvagesWhatIsOnlyInTheLog) {
  fill(500);
  ClipDatabase running(path, cipher);
  running.save(testing::indexed(testing::textClip(u"reciente"_s)));
  running.flush();
  // As the files are when the computer stops.
  QDir(folder.path()).mkdir(u"parado"_s);
  const QString stopped = folder.filePath(u"parado/brevin.sqlite"_s);
  ASSERT_TRUE(QFile::copy(path, stopped));
  ASSERT_TRUE(QFile::copy(path + u"-wal"_s, stopped + u"-wal"_s));
  path = stopped;
  damage(pages() / 2, pages() / 2);
  const RepairOutcome outcome = repairDatabase(path, clock);
  EXPECT_EQ(outcome.failure, std::nullopt);
  ClipDatabase repaired(path, cipher);
  const auto clips = repaired.loadAll().clips;
  EXPECT_TRUE(std::any_of(clips.begin(), clips.end(),
                          [](const ClipRef& clip) { return clip->clip.text == u"reciente"; }));
}

TEST_F(HistoryRepairTest, KeepsRowsThatOnlyAnotherKeyOpens) {
  fill(50);
  SQLiteConnection(path.toUtf8()).execute("UPDATE clips SET payload = x'4252564e3141' WHERE rowid < 11");
  damage(pages() - 1, pages() - 1);
  const RepairOutcome outcome = repairDatabase(path, clock);
  EXPECT_GE(outcome.salvaged, 10);
  EXPECT_EQ(
      SQLiteConnection(path.toUtf8()).integer("SELECT COUNT(*) FROM clips WHERE payload = x'4252564e3141'"),
      10);
}

TEST_F(HistoryRepairTest, WhatIsNoDatabaseAtAllIsSetAsideForAnEmptyOne) {
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write(QByteArray(10'000, 'x'));
  file.close();
  ASSERT_EQ(examineDatabase(path, nullptr).state, State::damaged);
  const RepairOutcome outcome = repairDatabase(path, clock);
  EXPECT_EQ(outcome.failure, std::nullopt);
  EXPECT_EQ(outcome.salvaged, 0);
  EXPECT_EQ(readable(), 0);
  EXPECT_EQ(bytesOf(folder.filePath(outcome.setAside)), QByteArray(10'000, 'x'));
}

TEST_F(HistoryRepairTest, TheRepairedHistoryIsForItsOwnerAlone) {
  fill(100);
  damage(pages() / 2, pages() / 2);
  const RepairOutcome outcome = repairDatabase(path, clock);
  const auto owner = QFile::ReadOwner | QFile::WriteOwner | QFile::ReadUser | QFile::WriteUser;
  EXPECT_EQ(QFile::permissions(path), owner);
  EXPECT_EQ(QFile::permissions(folder.filePath(outcome.setAside)), owner);
}

TEST_F(HistoryRepairTest, WhereNoNewOneCanBeMadeNothingIsTouched) {
  fill(100);
  damage(pages() / 2, pages() / 2);
  const QByteArray before = bytesOf(path);
  // Where the new one would be made there is something already.
  ASSERT_TRUE(QDir(folder.path()).mkdir(u"brevin.repaired.sqlite"_s));
  EXPECT_TRUE(repairDatabase(path, clock).failure.has_value());
  EXPECT_EQ(bytesOf(path), before);
  EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList{u"brevin.sqlite"_s});
}

}  // namespace
}  // namespace nimbrel
