#pragma once

#include <QString>
#include <QStringList>
#include <functional>
#include <optional>
#include <variant>

#include "app/CommandArguments.h"
#include "app/InstanceCommand.h"
#include "app/Passphrase.h"
#include "platform/Clock.h"
#include "platform/Platform.h"
#include "storage/RandomSource.h"

namespace nimbrel {

/// "nimbrel export …": the history in an archive.
struct ExportCommand final {
  QString archive;
  bool withSecrets = false;
  /// Empty for the terminal.
  QString passphraseFile;

  bool operator==(const ExportCommand&) const = default;
};

/// "nimbrel import …": an archive into the history.
struct ImportCommand final {
  QString archive;
  QString passphraseFile;

  bool operator==(const ImportCommand&) const = default;
};

/// "nimbrel doctor": what works and what does not; or a repair.
struct DoctorCommand final {
  bool repair = false;

  bool operator==(const DoctorCommand&) const = default;
};

/// What is asked of the history itself, without the application.
using HistoryCommand = std::variant<ExportCommand, ImportCommand, DoctorCommand>;

/// Reads "export", "import" or "doctor" and what follows; nothing when the first argument is none of them.
[[nodiscard]] std::optional<std::variant<HistoryCommand, UsageError>> parseHistoryCommand(
    const QStringList& arguments);

/// What these commands work with; everything outlives them.
struct HistoryCommandParts final {
  HeadlessPlatform& platform;
  RandomSource& random;
  const Clock& clock;
  /// Where user data are kept.
  QString dataFolder;
  std::function<std::variant<WipedBytes, QString>(const QString& file, PassphraseUse use)> readPassphrase;
  std::function<DesktopFacts(const QList<HotKeyProbe>&)> examineDesktop;
};

/// Does it, *waiting* for disk, key store and user, and writes what came of it. Gives the exit status: 0; 1
/// when it failed, or for the doctor when something does not work; 6 when the history was not unlocked. An
/// application object must exist.
[[nodiscard]] int run(const HistoryCommand& command, const HistoryCommandParts& parts,
                      const CommandOutput& output);

}  // namespace nimbrel
