#include "app/HistoryCommand.h"

#include <gmock/gmock.h>

#include <QBuffer>
#include <QDir>
#include <QLockFile>
#include <QTemporaryDir>

#include "app/CommandLine.h"
#include "storage/ClipDatabase.h"
#include "storage/StorageDirectory.h"
#include "support/Fakes.h"
#include "support/LogRecorder.h"
#include "support/StoreFixture.h"

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;
using testing::textClip;

TEST(ParseHistoryCommand, ReadsThemAll) {
  const auto parsed = [](const QStringList& arguments) {
    return std::get<HistoryCommand>(parseCommandLine(arguments, u"1"_s));
  };
  EXPECT_EQ(parsed({u"export"_s, u"a"_s}), HistoryCommand(ExportCommand{.archive = u"a"_s}));
  EXPECT_EQ(parsed({u"export"_s, u"--secrets"_s, u"a"_s, u"--passphrase-file"_s, u"b"_s}),
            HistoryCommand(ExportCommand{.archive = u"a"_s, .withSecrets = true, .passphraseFile = u"b"_s}));
  EXPECT_EQ(parsed({u"import"_s, u"--passphrase-file=-"_s, u"a"_s}),
            HistoryCommand(ImportCommand{.archive = u"a"_s, .passphraseFile = u"-"_s}));
  EXPECT_EQ(parsed({u"import"_s, u"--"_s, u"--a"_s}), HistoryCommand(ImportCommand{.archive = u"--a"_s}));
  EXPECT_EQ(parsed({u"doctor"_s}), HistoryCommand(DoctorCommand{}));
  EXPECT_EQ(parsed({u"doctor"_s, u"--repair"_s}), HistoryCommand(DoctorCommand{.repair = true}));
}

TEST(ParseHistoryCommand, RefusesWhatMakesNoSense) {
  for (const QStringList& arguments :
       {QStringList{u"export"_s}, QStringList{u"export"_s, u""_s}, QStringList{u"export"_s, u"a"_s, u"b"_s},
        QStringList{u"import"_s, u"--secrets"_s, u"a"_s},
        QStringList{u"import"_s, u"a"_s, u"--passphrase-file"_s},
        QStringList{u"import"_s, u"a"_s, u"--passphrase-file="_s}, QStringList{u"doctor"_s, u"x"_s}})
    EXPECT_EQ(std::get<PrintCommand>(parseCommandLine(arguments, u"1"_s)).exitStatus, 2)
        << qPrintable(arguments.join(u' '));
}

class AbsentInstance final : public InstanceClient {
 public:
  [[nodiscard]] IntentReply perform(const IntentCall&) override { return {}; }
  [[nodiscard]] IntentReply show(bool) override { return {}; }
  [[nodiscard]] IntentReply quit() override { return {}; }
  [[nodiscard]] bool isRunning() override { return running; }
  void notify(const QString&, const QString&) override {}

  bool running = false;
};

class HistoryCommandTest : public ::testing::Test {
 protected:
  HistoryCommandTest() {
    platform.instance = std::make_unique<testing::FakeInstanceHost>();
    keep(platform.client, client);
    keep(platform.secrets, secrets);
    keep(platform.defaults, defaults);
    keep(platform.authenticator, authenticator);
    output.open(QIODevice::WriteOnly);
    errors.open(QIODevice::WriteOnly);
  }

  /// A history with these texts, sealed under a key of the key store.
  void fill(const QStringList& texts) {
    HistoryCipher cipher(*secrets, random);
    ClipDatabase database(databasePath(makeStorageDirectory(home.path())), cipher);
    QList<ClipItem> clips;
    for (const QString& text : texts)
      clips.append(textClip(text));
    ASSERT_TRUE(database.saveMany(clips));
  }
  int runCommand(const HistoryCommand& command) {
    for (QBuffer* const buffer : {&output, &errors}) {
      buffer->buffer().clear();
      buffer->seek(0);
    }
    const HistoryCommandParts parts{
        .platform = platform,
        .random = random,
        .clock = clock,
        .dataFolder = home.path(),
        .readPassphrase = [this](const QString&, PassphraseUse) -> std::variant<WipedBytes, QString> {
          ++passphrasesRead;
          return WipedBytes("palabra larga"_ba);
        },
        .examineDesktop = [](const QList<HotKeyProbe>&) { return DesktopFacts(); }};
    return run(command, parts, {.output = output, .errors = errors});
  }
  int exportTo(const QString& name) { return runCommand(ExportCommand{.archive = home.filePath(name)}); }
  int importFrom(const QString& name) { return runCommand(ImportCommand{.archive = home.filePath(name)}); }

  testing::LogRecorder log;
  QTemporaryDir home;
  HeadlessPlatform platform;
  AbsentInstance* client = nullptr;
  testing::FakeSecretStore* secrets = nullptr;
  testing::FakeUserDefaults* defaults = nullptr;
  testing::FakeDeviceAuthenticator* authenticator = nullptr;
  SystemRandom random;
  testing::ManualClock clock;
  QBuffer output;
  QBuffer errors;
  int passphrasesRead = 0;

 private:
  template <typename Port, typename Fake>
  static void keep(Port& port, Fake*& fake) {
    auto made = std::make_unique<Fake>();
    fake = made.get();
    port = std::move(made);
  }
};

TEST_F(HistoryCommandTest, ExportsAndImports) {
  fill({u"uno"_s, u"dos"_s});
  EXPECT_EQ(exportTo(u"a"_s), 0) << errors.data().constData();
  QDir(home.filePath(u"Nimbrel"_s)).removeRecursively();
  EXPECT_EQ(importFrom(u"a"_s), 0) << errors.data().constData();
  EXPECT_TRUE(output.data().startsWith("2 "));
  EXPECT_EQ(importFrom(u"a"_s), 0);
  EXPECT_TRUE(output.data().startsWith("0 "));
}

TEST_F(HistoryCommandTest, NeverWritesOverAFile) {
  fill({u"uno"_s});
  EXPECT_EQ(exportTo(u"a"_s), 0);
  EXPECT_EQ(exportTo(u"a"_s), 1);
  EXPECT_EQ(passphrasesRead, 1);
}

TEST_F(HistoryCommandTest, WhileTheProgramRunsNothingIsImportedOrRepaired) {
  fill({u"uno"_s});
  ASSERT_EQ(exportTo(u"a"_s), 0);
  client->running = true;
  EXPECT_EQ(importFrom(u"a"_s), 1);
  EXPECT_EQ(runCommand(DoctorCommand{.repair = true}), 1);
  client->running = false;
  // In another session it keeps the folder locked.
  QLockFile lock(lockPath(home.filePath(u"Nimbrel"_s)));
  ASSERT_TRUE(lock.tryLock());
  EXPECT_EQ(importFrom(u"a"_s), 1);
  EXPECT_EQ(runCommand(DoctorCommand{.repair = true}), 1);
}

TEST_F(HistoryCommandTest, TheLockGuardsTheExport) {
  fill({u"uno"_s});
  defaults->set(u"lockMode"_s, u"sensitiveOnly"_s);
  authenticator->obstacle = u"no hay agente"_s;
  EXPECT_EQ(exportTo(u"a"_s), 6);
  EXPECT_EQ(passphrasesRead, 0);
  EXPECT_FALSE(QFile::exists(home.filePath(u"a"_s)));
}

TEST_F(HistoryCommandTest, WithoutItsKeyAHistoryIsNeitherExportedNorAddedTo) {
  fill({u"uno"_s});
  ASSERT_EQ(exportTo(u"a"_s), 0);
  secrets->isThere = false;
  EXPECT_EQ(exportTo(u"b"_s), 1);
  EXPECT_FALSE(QFile::exists(home.filePath(u"b"_s)));
  EXPECT_EQ(importFrom(u"a"_s), 1);
}

TEST_F(HistoryCommandTest, ADamagedHistoryIsNotExportedAsIfItWereWhole) {
  fill({u"uno"_s});
  QFile file(databasePath(home.filePath(u"Nimbrel"_s)));
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write(QByteArray(10'000, 'x'));
  file.close();
  EXPECT_EQ(exportTo(u"a"_s), 1);
  EXPECT_FALSE(QFile::exists(home.filePath(u"a"_s)));
}

TEST_F(HistoryCommandTest, SaysThatThereIsNothingYet) {
  EXPECT_EQ(exportTo(u"a"_s), 1);
  EXPECT_EQ(importFrom(u"nada"_s), 1);
  EXPECT_EQ(runCommand(DoctorCommand{.repair = true}), 0);
}

TEST_F(HistoryCommandTest, LookingMakesNoKey) {
  EXPECT_EQ(runCommand(DoctorCommand{}), 1);
  EXPECT_FALSE(output.data().isEmpty());
  EXPECT_EQ(secrets->adds, 0);
}

TEST(ReadPassphrase, TakesTheFirstLineOfAFile) {
  QTemporaryDir folder;
  const auto read = [&](const QByteArray& content, PassphraseUse use) {
    QFile file(folder.filePath(u"p"_s));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(content);
    file.close();
    auto passphrase = readPassphrase(file.fileName(), use);
    const auto* const bytes = std::get_if<WipedBytes>(&passphrase);
    return bytes ? bytes->bytes() : "!"_ba;
  };
  EXPECT_EQ(read("una clave\r\notra", PassphraseUse::make), "una clave");
  EXPECT_EQ(read("n\xcc\x83", PassphraseUse::know), "\xc3\xb1");
  EXPECT_EQ(read("corta", PassphraseUse::know), "corta");
  EXPECT_EQ(read("corta", PassphraseUse::make), "!");
  EXPECT_EQ(read("", PassphraseUse::know), "!");
  EXPECT_EQ(read("\xff\xfe y más cosas", PassphraseUse::know), "!");
  EXPECT_EQ(read(QByteArray(5000, 'x'), PassphraseUse::know), "!");
  EXPECT_TRUE(std::holds_alternative<QString>(readPassphrase(u"/no/hay"_s, PassphraseUse::know)));
}

}  // namespace
}  // namespace nimbrel
