#include "app/HistoryCommand.h"

#include <QCoreApplication>
#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <QSaveFile>
#include <algorithm>
#include <chrono>
#include <future>
#include <thread>

#include "app/Doctor.h"
#include "app/HistoryOpening.h"
#include "capture/archive/HistoryExport.h"
#include "capture/archive/HistoryImport.h"
#include "intents/BrevinIntentError.h"
#include "panel/lock/Lock.h"
#include "settings/model/AppSettings.h"
#include "storage/StorageDirectory.h"

namespace nimbrel {
namespace {

using namespace std::chrono_literals;

struct Texts {
  Q_DECLARE_TR_FUNCTIONS(CommandLine)
};

/// A failure as the user reads it, and its exit status.
struct Failure {
  QString message;
  int status = 1;
};

/// What was done, as the user reads it, and the exit status.
struct Report {
  QString text;
  int status = 0;
};

using Result = std::variant<Report, Failure>;

/// How long the key store may take before it counts as one that does not answer.
constexpr auto kKeyStorePatience = 10s;

// Reading the arguments

std::variant<HistoryCommand, UsageError> misused(const QString& command, const QString& option) {
  return UsageError{Texts::tr("%1 no conoce la opción «%2»").arg(command, printable(option))};
}

/// Joins an option with the value that is an argument of its own.
QStringList withJoinedFile(QStringList arguments) {
  for (qsizetype i = 0; i + 1 < arguments.size() && arguments.at(i) != u"--"; ++i) {
    if (arguments.at(i) == u"--passphrase-file") arguments[i] += u'=' + arguments.takeAt(i + 1);
  }
  return arguments;
}

template <typename Command>
std::variant<HistoryCommand, UsageError> parseArchive(const QString& name, const QStringList& given) {
  constexpr QStringView kFile = u"--passphrase-file=";
  const CommandArguments arguments = sortedArguments(withJoinedFile(given));
  Command command;
  for (const QString& option : arguments.options) {
    if (option == kFile || option == kFile.chopped(1))
      return UsageError{Texts::tr("falta el archivo de --passphrase-file")};
    if (option.startsWith(kFile)) {
      command.passphraseFile = option.sliced(kFile.size());
      continue;
    }
    if constexpr (std::is_same_v<Command, ExportCommand>) {
      if (option == u"--secrets") {
        command.withSecrets = true;
        continue;
      }
    }
    return misused(name, option);
  }
  if (arguments.others.size() != 1 || arguments.others.first().isEmpty())
    return UsageError{Texts::tr("%1 necesita el nombre de un archivo").arg(name)};
  command.archive = arguments.others.first();
  return command;
}

std::variant<HistoryCommand, UsageError> parseDoctor(const QStringList& given) {
  DoctorCommand command;
  for (const QString& argument : given) {
    if (argument != u"--repair") return misused(QStringLiteral("doctor"), argument);
    command.repair = true;
  }
  return command;
}

// What the commands share

/// The history of a user, opened without the application.
struct OpenedHistory {
  HistoryCipher cipher;
  QString directory;
  SettingsValues settings;
  std::unique_ptr<ClipDatabase> database;

  OpenedHistory(const HistoryCommandParts& parts)
      : cipher(*parts.platform.secrets, parts.random),
        directory(makeStorageDirectory(parts.dataFolder)),
        settings(loadSettings(*parts.platform.defaults)) {}
};

QString unreadableHistory() {
  return Texts::tr("el historial no se puede leer entero; «nimbrel doctor» dice más");
}

QString unreadableKey() {
  return Texts::tr("no se puede leer la clave del historial; desbloquea el almacén de claves");
}

/// Has the user prove who they are where the settings protect the history.
bool isUnlocked(const HistoryCommandParts& parts, const SettingsValues& settings) {
  // Settings that cannot be read are no word of the user's.
  if (settings.lockMode == LockMode::disabled && parts.platform.defaults->isIntact()) return true;
  Lock lock(*parts.platform.authenticator, parts.clock);
  QEventLoop loop;
  bool proven = false;
  bool answered = false;
  lock.authenticate(Lock::Reason::history, [&](bool answer) {
    proven = answer;
    answered = true;
    loop.quit();
  });
  if (!answered) loop.exec();
  return proven;
}

Failure isRunning() {
  return {Texts::tr("Nimbrel está en marcha; termínalo con «nimbrel quit» y repite la orden")};
}

/// Makes sure that the application is not running, and does not start meanwhile; also one of another session.
std::optional<Failure> keepOthersOut(const HistoryCommandParts& parts, QLockFile& lock) {
  // Asked first: a claim would show the panel of a running one.
  if (parts.platform.client->isRunning()) return isRunning();
  const auto claim = parts.platform.instance->claim({});
  if (claim == InstanceHost::Claim::handedOver || claim == InstanceHost::Claim::unanswered)
    return isRunning();
  // Of a process that has gone it is nobody's, but never by its age.
  lock.setStaleLockTime(0);
  if (!lock.tryLock()) return isRunning();
  return std::nullopt;
}

QString describe(ArchiveError error) {
  switch (error) {
    case ArchiveError::noArchive:
      return Texts::tr("no es un archivo de Nimbrel, o es de una versión más reciente");
    case ArchiveError::wrongPassphrase:
      return Texts::tr("la contraseña no es correcta");
    case ArchiveError::damaged:
      return Texts::tr("el archivo está dañado o incompleto; no se ha importado nada");
    case ArchiveError::unreadable:
      return Texts::tr("el archivo no se puede leer");
    case ArchiveError::tooDear:
      return Texts::tr("abrir el archivo pide demasiada memoria");
  }
  return {};
}

// The commands

Result exportTo(const ExportCommand& command, const HistoryCommandParts& parts) {
  // Whatever else is there is somebody's.
  const auto taken = [&] { return Failure{Texts::tr("«%1» ya existe").arg(printable(command.archive))}; };
  if (QFileInfo::exists(command.archive)) return taken();
  OpenedHistory history(parts);
  const QString path = databasePath(history.directory);
  if (!QFileInfo::exists(path)) return Failure{Texts::tr("aún no hay historial")};
  if (!isUnlocked(parts, history.settings))
    return Failure{localizedDescription(BrevinIntentError::authenticationFailed), 6};
  if (history.cipher.keyState() == HistoryCipher::KeyState::unreadable) return Failure{unreadableKey()};
  auto passphrase = parts.readPassphrase(command.passphraseFile, PassphraseUse::make);
  if (const auto* const why = std::get_if<QString>(&passphrase)) return Failure{*why};
  history.database = std::make_unique<ClipDatabase>(path, history.cipher);
  const LoadedHistory loaded = history.database->loadAll();
  if (!loaded.complete) return Failure{unreadableHistory()};
  if (loaded.unreadableCount > 0 && !history.cipher.hasKey()) return Failure{unreadableKey()};
  QSaveFile file(command.archive);
  const auto failed = [&] {
    const QString why = file.error() == QFile::NoError ? Texts::tr("falta memoria") : file.errorString();
    return Failure{Texts::tr("no se puede escribir «%1»: %2").arg(printable(command.archive), why)};
  };
  if (!file.open(QIODevice::WriteOnly)) return failed();
  file.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
  ArchiveWriter archive(file, parts.random);
  if (!archive.begin(std::get<WipedBytes>(passphrase).bytes())) return failed();
  BlobFiles files(history.directory, history.cipher, parts.clock);
  const auto secrets = command.withSecrets ? ExportedSecrets::included : ExportedSecrets::leftOut;
  const auto count = exportHistory(loaded.clips, secrets, files, parts.clock, archive);
  if (!count) return failed();
  // Somebody may have put one there meanwhile.
  if (QFileInfo::exists(command.archive)) return taken();
  if (!file.commit()) return failed();
  QString text = Texts::tr("%n elemento(s) exportado(s).", nullptr, static_cast<int>(count->clips)) + u'\n';
  if (count->secrets > 0)
    text += Texts::tr("%n secreto(s) quedan fuera; --secrets los incluye.", nullptr,
                      static_cast<int>(count->secrets)) +
            u'\n';
  const auto unreadable = static_cast<int>(count->unreadable + loaded.unreadableCount);
  if (unreadable > 0) text += Texts::tr("%n elemento(s) no se pudieron leer.", nullptr, unreadable) + u'\n';
  return Report{text, unreadable > 0 ? 1 : 0};
}

QString describe(const ImportCount& count, const SettingsValues& settings) {
  QString text = Texts::tr("%n elemento(s) añadido(s).", nullptr, static_cast<int>(count.added)) + u'\n';
  const auto tell = [&](const QString& line, qsizetype number) {
    if (number > 0) text += line + u'\n';
  };
  tell(Texts::tr("%n elemento(s) ya estaban.", nullptr, static_cast<int>(count.known)), count.known);
  tell(Texts::tr("%n elemento(s) han caducado o no se guardan según los ajustes.", nullptr,
                 static_cast<int>(count.unwanted)),
       count.unwanted);
  tell(Texts::tr("%n elemento(s) no se pudieron importar.", nullptr, static_cast<int>(count.failed)),
       count.failed);
  if (count.unpinned > settings.maxUnpinned)
    text +=
        Texts::tr(
            "El historial guarda %1 elementos sin fijar y ahora hay %2: los más antiguos se borrarán con la "
            "próxima copia, si antes no subes el límite en los ajustes.")
            .arg(settings.maxUnpinned)
            .arg(count.unpinned) +
        u'\n';
  return text;
}

Result importFrom(const ImportCommand& command, const HistoryCommandParts& parts) {
  QFile file(command.archive);
  // Opening anything but a regular file could wait for ever.
  if (!QFileInfo(command.archive).isFile() || !file.open(QIODevice::ReadOnly))
    return Failure{Texts::tr("no se puede leer «%1»").arg(printable(command.archive))};
  // Before the user is asked for anything.
  if (parts.platform.client->isRunning()) return isRunning();
  auto passphrase = parts.readPassphrase(command.passphraseFile, PassphraseUse::know);
  if (const auto* const why = std::get_if<QString>(&passphrase)) return Failure{*why};
  ArchiveReader archive(file);
  if (const auto error = archive.begin(std::get<WipedBytes>(passphrase).bytes()))
    return Failure{describe(*error)};
  OpenedHistory history(parts);
  // What is known already tells what there is.
  if (!isUnlocked(parts, history.settings))
    return Failure{localizedDescription(BrevinIntentError::authenticationFailed), 6};
  QLockFile lock(lockPath(history.directory));
  if (auto failure = keepOthersOut(parts, lock)) return *failure;
  if (history.cipher.keyState() == HistoryCipher::KeyState::unreadable) return Failure{unreadableKey()};
  // Without its key what is there cannot be told from what is new, and would be joined by plain text.
  const QString path = databasePath(history.directory);
  if (!history.cipher.hasKey() && examineDatabase(path, nullptr).unreadable > 0)
    return Failure{unreadableKey()};
  history.database = openHistory(history.directory, history.cipher, *parts.platform.defaults, parts.clock);
  BlobFiles files(history.directory, history.cipher, parts.clock);
  const auto outcome =
      HistoryImport(
          {.database = *history.database, .files = files, .clock = parts.clock, .settings = history.settings})
          .run(archive);
  if (const auto* const error = std::get_if<ArchiveError>(&outcome)) return Failure{describe(*error)};
  if (std::holds_alternative<ImportError>(outcome))
    return Failure{Texts::tr("el historial no se puede leer o escribir; no se ha importado nada")};
  const auto& count = std::get<ImportCount>(outcome);
  return Report{describe(count, history.settings), count.failed > 0 ? 1 : 0};
}

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

Result repair(const HistoryCommandParts& parts) {
  const QString folder = makeStorageDirectory(parts.dataFolder);
  const QString path = databasePath(folder);
  QLockFile lock(lockPath(folder));
  if (auto failure = keepOthersOut(parts, lock)) return *failure;
  const DatabaseHealth health = examineDatabase(path, nullptr);
  switch (health.state) {
    case DatabaseHealth::State::missing:
      return Report{Texts::tr("Aún no hay historial que reparar.") + u'\n'};
    case DatabaseHealth::State::sound:
      return Report{Texts::tr("La base de datos está bien; no hay nada que reparar.") + u'\n'};
    case DatabaseHealth::State::untouchable:
      return Failure{Texts::tr("la base de datos no se puede abrir: %1").arg(health.detail)};
    case DatabaseHealth::State::damaged:
      break;
  }
  const RepairOutcome outcome = repairDatabase(path, parts.clock);
  if (outcome.failure) return Failure{Texts::tr("no se pudo reparar: %1").arg(*outcome.failure)};
  return Report{
      Texts::tr("%n elemento(s) salvado(s).", nullptr, static_cast<int>(outcome.salvaged)) + u'\n' +
      Texts::tr("La base de datos dañada queda como %1.").arg(QDir(folder).filePath(outcome.setAside)) +
      u'\n'};
}

int tell(const Result& result, const CommandOutput& output) {
  if (const auto* const failure = std::get_if<Failure>(&result)) {
    static_cast<void>(output.errors.write(QStringLiteral("nimbrel: %1\n").arg(failure->message).toUtf8()));
    return failure->status;
  }
  const auto& [text, status] = std::get<Report>(result);
  const QByteArray bytes = text.toUtf8();
  return output.output.write(bytes) == bytes.size() ? status : 1;
}

int runDoctor(const HistoryCommandParts& parts, const CommandOutput& output) {
  const auto findings = diagnose(examine(parts));
  const bool fails = std::any_of(findings.begin(), findings.end(), [](const Finding& finding) {
    return finding.grade == Finding::Grade::fails;
  });
  return tell(Report{printableLines(report(findings)), fails ? 1 : 0}, output);
}

}  // namespace

std::optional<std::variant<HistoryCommand, UsageError>> parseHistoryCommand(const QStringList& arguments) {
  const QString name = arguments.value(0);
  if (name == u"export") return parseArchive<ExportCommand>(name, arguments.sliced(1));
  if (name == u"import") return parseArchive<ImportCommand>(name, arguments.sliced(1));
  if (name == u"doctor") return parseDoctor(arguments.sliced(1));
  return std::nullopt;
}

int run(const HistoryCommand& command, const HistoryCommandParts& parts, const CommandOutput& output) {
  if (const auto* const wanted = std::get_if<ExportCommand>(&command))
    return tell(exportTo(*wanted, parts), output);
  if (const auto* const wanted = std::get_if<ImportCommand>(&command))
    return tell(importFrom(*wanted, parts), output);
  if (std::get<DoctorCommand>(command).repair) return tell(repair(parts), output);
  return runDoctor(parts, output);
}

}  // namespace nimbrel
