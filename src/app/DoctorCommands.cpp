#include "app/DoctorCommands.h"

#include <QCoreApplication>
#include <QDir>
#include <QEventLoop>
#include <QFileInfo>
#include <algorithm>
#include <chrono>
#include <future>
#include <thread>

#include "app/Doctor.h"
#include "app/ExclusiveHistory.h"
#include "settings/model/AppSettings.h"
#include "storage/HistoryRepair.h"
#include "storage/StorageDirectory.h"

namespace nimbrel {
namespace {

using namespace std::chrono_literals;

struct Texts {
  Q_DECLARE_TR_FUNCTIONS(CommandLine)
};

/// How long the key store may take before it counts as one that does not answer.
constexpr auto kKeyStorePatience = 10s;

/// Whether the key store has the key; nothing when it does not answer in time.
std::optional<SecretLookup::Outcome> keyStoreOutcome(const std::shared_ptr<SecretStore>& secrets) {
  auto answer = std::make_shared<std::promise<SecretLookup::Outcome>>();
  auto future = answer->get_future();
  // Left behind if need be: the process ends soon.
  std::thread([answer, secrets] {
    SecretLookup lookup = secrets->find(historyKeyItem());
    const bool isKey = lookup.secret.size() == AesGcm::kKeyBytes;
    wipe(lookup.secret);
    const bool isOther = lookup.outcome == SecretLookup::Outcome::found && !isKey;
    answer->set_value(isOther ? SecretLookup::Outcome::failed : lookup.outcome);
  }).detach();
  if (future.wait_for(kKeyStorePatience) == std::future_status::timeout) return std::nullopt;
  return future.get();
}

std::optional<QString> lockObstacle(DeviceAuthenticator& authenticator) {
  QEventLoop loop;
  std::optional<std::optional<QString>> answer;
  authenticator.canAuthenticate([&](const std::optional<QString>& obstacle) {
    answer = obstacle;
    loop.quit();
  });
  if (!answer) loop.exec();
  return answer.value_or(std::nullopt);
}

DoctorFacts examine(const HistoryCommandParts& parts) {
  DoctorFacts facts;
  facts.settings = loadSettings(*parts.platform.defaults);
  const auto probe = [](const HotKeyCombo& combo) { return HotKeyProbe{combo.keyCode, combo.modifiers}; };
  facts.desktop = parts.examineDesktop({probe(facts.settings.hotKey), probe(facts.settings.nextHotKey)});
  facts.isRunning = parts.platform.client->isRunning();
  facts.storageDirectory = makeStorageDirectory(parts.dataFolder);
  facts.canWriteStorage = QFileInfo(facts.storageDirectory).isWritable();
  facts.keyStore = keyStoreOutcome(parts.platform.secrets);
  HistoryCipher cipher(*parts.platform.secrets, parts.random);
  // Without a key, asking the cipher would make one.
  const bool hasKey = facts.keyStore == SecretLookup::Outcome::found;
  facts.database = examineDatabase(databasePath(facts.storageDirectory), hasKey ? &cipher : nullptr);
  facts.setAside = damagedDatabases(facts.storageDirectory);
  facts.lockObstacle = lockObstacle(*parts.platform.authenticator);
  return facts;
}

}  // namespace

CommandReport examineAll(const HistoryCommandParts& parts) {
  const auto findings = diagnose(examine(parts));
  const bool fails = std::any_of(findings.begin(), findings.end(), [](const Finding& finding) {
    return finding.grade == Finding::Grade::fails;
  });
  return {printableLines(report(findings)), fails ? 1 : 0};
}

CommandResult repairHistory(const HistoryCommandParts& parts) {
  const QString folder = makeStorageDirectory(parts.dataFolder);
  const QString path = databasePath(folder);
  const ExclusiveHistory exclusive(parts, folder);
  if (!exclusive.isHeld()) return ExclusiveHistory::whyNot();
  const DatabaseHealth health = examineDatabase(path, nullptr);
  switch (health.state) {
    case DatabaseHealth::State::missing:
      return CommandReport{Texts::tr("Aún no hay historial que reparar.") + u'\n'};
    case DatabaseHealth::State::sound:
      return CommandReport{Texts::tr("La base de datos está bien; no hay nada que reparar.") + u'\n'};
    case DatabaseHealth::State::untouchable:
      return CommandFailure{Texts::tr("la base de datos no se puede abrir: %1").arg(health.detail)};
    case DatabaseHealth::State::damaged:
      break;
  }
  const RepairOutcome outcome = repairDatabase(path, parts.clock);
  if (outcome.failure) return CommandFailure{Texts::tr("no se pudo reparar: %1").arg(*outcome.failure)};
  return CommandReport{
      Texts::tr("%n elemento(s) salvado(s).", nullptr, static_cast<int>(outcome.salvaged)) + u'\n' +
      Texts::tr("La base de datos dañada queda como %1.").arg(QDir(folder).filePath(outcome.setAside)) +
      u'\n'};
}

}  // namespace nimbrel
