#include "app/HistoryCommand.h"

#include <QCoreApplication>

#include "app/ArchiveCommands.h"
#include "app/DoctorCommands.h"

namespace nimbrel {
namespace {

struct Texts {
  Q_DECLARE_TR_FUNCTIONS(CommandLine)
};

std::variant<HistoryCommand, UsageError> misused(const QString& command, const QString& option) {
  return UsageError{Texts::tr("%1 no conoce la opción «%2»").arg(command, printable(option))};
}

template <typename Command>
std::variant<HistoryCommand, UsageError> parseArchive(const QString& name, const QStringList& given) {
  constexpr QStringView kFile = u"--passphrase-file=";
  const CommandArguments arguments = sortedArguments(withJoinedValue(given, u"--passphrase-file"));
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

int tell(const CommandResult& result, const CommandOutput& output) {
  if (const auto* const failure = std::get_if<CommandFailure>(&result)) {
    static_cast<void>(output.errors.write(QStringLiteral("nimbrel: %1\n").arg(failure->message).toUtf8()));
    return failure->status;
  }
  const auto& [text, status] = std::get<CommandReport>(result);
  const QByteArray bytes = text.toUtf8();
  return output.output.write(bytes) == bytes.size() ? status : 1;
}

CommandResult carryOut(const ExportCommand& command, const HistoryCommandParts& parts) {
  return exportTo(command, parts);
}
CommandResult carryOut(const ImportCommand& command, const HistoryCommandParts& parts) {
  return importFrom(command, parts);
}
CommandResult carryOut(const DoctorCommand& command, const HistoryCommandParts& parts) {
  if (command.repair) return repairHistory(parts);
  return examineAll(parts);
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
  return tell(std::visit([&](const auto& wanted) { return carryOut(wanted, parts); }, command), output);
}

}  // namespace nimbrel
