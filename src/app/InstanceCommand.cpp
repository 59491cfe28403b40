#include "app/InstanceCommand.h"

#include <QCoreApplication>
#include <QHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include "intents/BrevinIntentError.h"

namespace nimbrel {
namespace {

using Kind = InstanceCommand::Kind;

struct Texts {
  Q_DECLARE_TR_FUNCTIONS(CommandLine)
};

std::optional<Kind> kindNamed(const QString& name) {
  static const QHash<QString, Kind> kinds{{QStringLiteral("copy-latest"), Kind::copyLatest},
                                          {QStringLiteral("search"), Kind::search},
                                          {QStringLiteral("toggle-capture"), Kind::toggleCapture},
                                          {QStringLiteral("paste-from"), Kind::pasteFrom},
                                          {QStringLiteral("collections"), Kind::collections},
                                          {QStringLiteral("show"), Kind::show},
                                          {QStringLiteral("quit"), Kind::quit}};
  const auto kind = kinds.find(name);
  if (kind == kinds.end()) return std::nullopt;
  return *kind;
}

bool hasOutput(Kind kind) {
  return kind == Kind::copyLatest || kind == Kind::search || kind == Kind::toggleCapture ||
         kind == Kind::collections;
}

/// Takes an option into a command; false when the command has no such option.
bool take(const QString& option, InstanceCommand& command) {
  if (option == u"--json" && hasOutput(command.kind))
    command.json = true;
  else if (option == u"--notify")
    command.notify = true;
  else if (option == u"--no-start")
    command.onlyRunning = true;
  else if (option == u"--collections" && command.kind == Kind::show)
    command.kind = Kind::showCollections;
  else
    return false;
  return true;
}

std::optional<QString> takeArgument(const QStringList& others, InstanceCommand& command) {
  // Words that were not quoted belong together.
  command.argument = others.join(u' ');
  const bool isEmpty = command.argument.trimmed().isEmpty();
  if (command.kind == Kind::search && isEmpty) return Texts::tr("falta el texto que buscar");
  if (command.kind == Kind::pasteFrom && isEmpty) return Texts::tr("falta el nombre de la colección");
  if (command.kind != Kind::search && command.kind != Kind::pasteFrom && !others.isEmpty())
    return Texts::tr("sobra «%1»").arg(printable(others.first()));
  return std::nullopt;
}

QString describe(const IntentReply& reply) {
  if (!reply.message.isEmpty()) return reply.message;
  if (reply.error == InstanceClient::kTooManyCalls) return Texts::tr("Demasiadas peticiones seguidas.");
  if (reply.error == InstanceClient::kNoAnswer) return Texts::tr("Nimbrel está en marcha, pero no contesta.");
  if (const auto error = brevinIntentErrorNamed(reply.error)) return localizedDescription(*error);
  return reply.error;
}

IntentReply ask(const InstanceCommand& command, InstanceClient& client) {
  if (command.onlyRunning && !client.isRunning()) return {.error = InstanceClient::kUnavailable.toString()};
  switch (command.kind) {
    case Kind::copyLatest:
      return client.perform({Intent::copyLatestClip, {}});
    case Kind::search:
      return client.perform({Intent::searchHistory, command.argument});
    case Kind::toggleCapture:
      return client.perform({Intent::toggleCapture, {}});
    case Kind::pasteFrom:
      return client.perform({Intent::pasteFromCollection, command.argument});
    case Kind::collections:
      return client.perform({Intent::listCollections, {}});
    case Kind::show:
    case Kind::showCollections:
      return client.show(command.kind == Kind::showCollections);
    case Kind::quit:
      return client.quit();
  }
  return {};
}

QByteArray jsonOf(const InstanceCommand& command, const IntentReply& reply) {
  QJsonObject object;
  if (!reply.message.isEmpty()) object.insert(QStringLiteral("message"), reply.message);
  if (command.kind == Kind::search)
    object.insert(QStringLiteral("texts"), QJsonArray::fromStringList(reply.texts));
  if (command.kind == Kind::collections)
    object.insert(QStringLiteral("collections"), QJsonArray::fromStringList(reply.texts));
  if (command.kind == Kind::toggleCapture) object.insert(QStringLiteral("paused"), reply.paused);
  return escapedJson(QJsonDocument(object).toJson(QJsonDocument::Compact)) + '\n';
}

/// The texts one after the other, or else what was done.
QByteArray plainOf(const InstanceCommand& command, const IntentReply& reply, bool isTerminal) {
  QString text;
  for (const QString& line : reply.texts)
    text += (isTerminal ? printableLines(line) : line) + u'\n';
  const bool gives = command.kind == Kind::search || command.kind == Kind::collections;
  if (!gives && !reply.message.isEmpty()) text = printableLines(reply.message) + u'\n';
  return text.toUtf8();
}

bool write(QIODevice& device, const QByteArray& bytes) {
  return device.write(bytes) == bytes.size();
}

}  // namespace

std::optional<std::variant<InstanceCommand, UsageError>> parseInstanceCommand(const QStringList& arguments) {
  const auto kind = kindNamed(arguments.value(0));
  if (!kind) return std::nullopt;
  InstanceCommand command{.kind = *kind};
  const CommandArguments given = sortedArguments(arguments.sliced(1));
  for (const QString& option : given.options) {
    if (!take(option, command))
      return UsageError{Texts::tr("%1 no conoce la opción «%2»").arg(arguments.first(), printable(option))};
  }
  if (const auto problem = takeArgument(given.others, command)) return UsageError{*problem};
  return command;
}

int exitStatusOf(const QString& error) {
  static const QHash<QString, int> statuses{{name(BrevinIntentError::unavailable), 3},
                                            {name(BrevinIntentError::emptyHistory), 4},
                                            {name(BrevinIntentError::emptyCollection), 5},
                                            {name(BrevinIntentError::authenticationFailed), 6},
                                            {name(BrevinIntentError::accessibilityRequired), 7},
                                            {InstanceClient::kTooManyCalls.toString(), 8},
                                            {InstanceClient::kNoAnswer.toString(), 9}};
  return error.isEmpty() ? 0 : statuses.value(error, 1);
}

int run(const InstanceCommand& command, InstanceClient& client, const CommandOutput& output) {
  const IntentReply reply = ask(command, client);
  const bool failed = !reply.error.isEmpty();
  const QString message = printableLines(failed ? describe(reply) : reply.message);
  if (command.notify && !message.isEmpty()) client.notify(QStringLiteral("Nimbrel"), message);
  if (failed) {
    static_cast<void>(write(output.errors, QStringLiteral("nimbrel: %1\n").arg(message).toUtf8()));
    return exitStatusOf(reply.error);
  }
  const QByteArray answer =
      command.json ? jsonOf(command, reply) : plainOf(command, reply, output.isTerminal);
  if (write(output.output, answer)) return 0;
  const QString why = Texts::tr("nimbrel: no se puede escribir el resultado: %1\n");
  static_cast<void>(write(output.errors, why.arg(output.output.errorString()).toUtf8()));
  return 1;
}

}  // namespace nimbrel
