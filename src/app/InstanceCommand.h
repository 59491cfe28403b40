#pragma once

#include <QIODevice>
#include <QString>
#include <QStringList>
#include <optional>
#include <variant>

#include "app/CommandArguments.h"
#include "platform/InstanceClient.h"

namespace nimbrel {

/// What a script, or an entry of the desktop's menu, asks of the running instance.
struct InstanceCommand final {
  enum class Kind { copyLatest, search, toggleCapture, pasteFrom, collections, show, showCollections, quit };

  Kind kind = Kind::show;
  /// The text to look for or the name of the collection.
  QString argument;
  /// The answer is for a program.
  bool json = false;
  /// There is no terminal: what came of it is shown by the desktop.
  bool notify = false;
  /// Only of an instance that is running: none is started for it.
  bool onlyRunning = false;

  bool operator==(const InstanceCommand&) const = default;
};

/// Reads "copy-latest", "search TEXT", "toggle-capture", "paste-from COLLECTION", "collections", "show" or
/// "quit" with their options; nothing when the first argument is none of them.
[[nodiscard]] std::optional<std::variant<InstanceCommand, UsageError>> parseInstanceCommand(
    const QStringList& arguments);

/// Where a command's answer goes.
struct CommandOutput final {
  QIODevice& output;
  QIODevice& errors;
  /// Whether the output is a terminal, which must not be told to do things by what was copied once.
  bool isTerminal = false;
};

/// The exit status for an error as an `IntentReply` has it: 3 unavailable, 4 emptyHistory, 5 emptyCollection,
/// 6 authenticationFailed, 7 accessibilityRequired, 8 tooManyCalls, 9 noAnswer, 1 anything else, 0 for none.
[[nodiscard]] int exitStatusOf(const QString& error);

/// Has the instance do it, *waiting* for it, and writes the answer. Gives the exit status.
[[nodiscard]] int run(const InstanceCommand& command, InstanceClient& client, const CommandOutput& output);

}  // namespace nimbrel
