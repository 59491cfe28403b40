#include "app/ArchiveCommands.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include "app/ExclusiveHistory.h"
#include "app/HistoryOpening.h"
#include "capture/archive/HistoryExport.h"
#include "capture/archive/HistoryImport.h"
#include "intents/BrevinIntentError.h"
#include "panel/lock/Lock.h"
#include "settings/model/AppSettings.h"
#include "storage/DatabaseHealth.h"
#include "storage/StorageDirectory.h"

namespace nimbrel {
namespace {

struct Texts {
  Q_DECLARE_TR_FUNCTIONS(CommandLine)
};

/// The history of a user, opened without the application.
struct OpenedHistory {
  HistoryCipher cipher;
  QString directory;
  SettingsValues settings;
  std::unique_ptr<ClipDatabase> database;

  explicit OpenedHistory(const HistoryCommandParts& parts)
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

QString exported(const ExportCount& count, int unreadable) {
  QString text = Texts::tr("%n elemento(s) exportado(s).", nullptr, static_cast<int>(count.clips)) + u'\n';
  if (count.secrets > 0)
    text += Texts::tr("%n secreto(s) quedan fuera; --secrets los incluye.", nullptr,
                      static_cast<int>(count.secrets)) +
            u'\n';
  if (unreadable > 0) text += Texts::tr("%n elemento(s) no se pudieron leer.", nullptr, unreadable) + u'\n';
  return text;
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

}  // namespace

CommandResult exportTo(const ExportCommand& command, const HistoryCommandParts& parts) {
  // Whatever else is there is somebody's.
  const auto taken = [&] {
    return CommandFailure{Texts::tr("«%1» ya existe").arg(printable(command.archive))};
  };
  if (QFileInfo::exists(command.archive)) return taken();
  OpenedHistory history(parts);
  const QString path = databasePath(history.directory);
  if (!QFileInfo::exists(path)) return CommandFailure{Texts::tr("aún no hay historial")};
  if (!isUnlocked(parts, history.settings))
    return CommandFailure{localizedDescription(BrevinIntentError::authenticationFailed), 6};
  if (history.cipher.keyState() == HistoryCipher::KeyState::unreadable)
    return CommandFailure{unreadableKey()};
  auto passphrase = parts.readPassphrase(command.passphraseFile, PassphraseUse::make);
  if (const auto* const why = std::get_if<QString>(&passphrase)) return CommandFailure{*why};
  history.database = std::make_unique<ClipDatabase>(path, history.cipher);
  const LoadedHistory loaded = history.database->loadAll();
  if (!loaded.complete) return CommandFailure{unreadableHistory()};
  if (loaded.unreadableCount > 0 && !history.cipher.hasKey()) return CommandFailure{unreadableKey()};
  QSaveFile file(command.archive);
  const auto failed = [&] {
    const QString why = file.error() == QFile::NoError ? Texts::tr("falta memoria") : file.errorString();
    return CommandFailure{Texts::tr("no se puede escribir «%1»: %2").arg(printable(command.archive), why)};
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
  const auto unreadable = static_cast<int>(count->unreadable + loaded.unreadableCount);
  return CommandReport{exported(*count, unreadable), unreadable > 0 ? 1 : 0};
}

CommandResult importFrom(const ImportCommand& command, const HistoryCommandParts& parts) {
  QFile file(command.archive);
  // Opening anything but a regular file could wait for ever.
  if (!QFileInfo(command.archive).isFile() || !file.open(QIODevice::ReadOnly))
    return CommandFailure{Texts::tr("no se puede leer «%1»").arg(printable(command.archive))};
  // Before the user is asked for anything.
  if (parts.platform.client->isRunning()) return ExclusiveHistory::whyNot();
  auto passphrase = parts.readPassphrase(command.passphraseFile, PassphraseUse::know);
  if (const auto* const why = std::get_if<QString>(&passphrase)) return CommandFailure{*why};
  ArchiveReader archive(file);
  if (const auto error = archive.begin(std::get<WipedBytes>(passphrase).bytes()))
    return CommandFailure{describe(*error)};
  OpenedHistory history(parts);
  // What is known already tells what there is.
  if (!isUnlocked(parts, history.settings))
    return CommandFailure{localizedDescription(BrevinIntentError::authenticationFailed), 6};
  const ExclusiveHistory exclusive(parts, history.directory);
  if (!exclusive.isHeld()) return ExclusiveHistory::whyNot();
  if (history.cipher.keyState() == HistoryCipher::KeyState::unreadable)
    return CommandFailure{unreadableKey()};
  // Without its key what is there cannot be told from what is new, and would be joined by plain text.
  const QString path = databasePath(history.directory);
  if (!history.cipher.hasKey() && examineDatabase(path, nullptr).unreadable > 0)
    return CommandFailure{unreadableKey()};
  history.database = openHistory(history.directory, history.cipher, *parts.platform.defaults, parts.clock);
  BlobFiles files(history.directory, history.cipher, parts.clock);
  const auto outcome =
      HistoryImport(
          {.database = *history.database, .files = files, .clock = parts.clock, .settings = history.settings})
          .run(archive);
  if (const auto* const error = std::get_if<ArchiveError>(&outcome)) return CommandFailure{describe(*error)};
  if (std::holds_alternative<ImportError>(outcome))
    return CommandFailure{Texts::tr("el historial no se puede leer o escribir; no se ha importado nada")};
  const auto& count = std::get<ImportCount>(outcome);
  return CommandReport{describe(count, history.settings), count.failed > 0 ? 1 : 0};
}

}  // namespace nimbrel
