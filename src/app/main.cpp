#include <unistd.h>

#include <QApplication>
#include <QEventLoop>
#include <QLocale>
#include <QLockFile>
#include <QSessionManager>
#include <QThread>
#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <functional>
#include <future>
#include <memory>
#include <new>
#include <optional>
#include <thread>
#include <variant>

#include "app/AppDelegate.h"
#include "app/CommandLine.h"
#include "app/DescriptorDevice.h"
#include "app/HistoryOpening.h"
#include "app/Localization.h"
#include "intents/IntentService.h"
#include "platform/Platform.h"
#include "storage/HistoryCipher.h"
#include "storage/RandomSource.h"
#include "storage/StorageDirectory.h"

namespace nimbrel {
namespace {

struct Texts {
  Q_DECLARE_TR_FUNCTIONS(CommandLine)
};

QStringList argumentsOf(int argc, char** argv) {
  QStringList arguments;
  for (int i = 1; i < argc; ++i)
    arguments.append(QString::fromLocal8Bit(argv[i]));
  return arguments;
}

int execute(const PrintCommand& command) {
  DescriptorDevice output(command.exitStatus == 0 ? STDOUT_FILENO : STDERR_FILENO, QIODevice::WriteOnly);
  const QByteArray text = command.output.toUtf8();
  return output.write(text) == text.size() ? command.exitStatus : std::max(command.exitStatus, 1);
}

int execute(const TextCommand& command) {
  DescriptorDevice input(STDIN_FILENO, QIODevice::ReadOnly);
  DescriptorDevice output(STDOUT_FILENO, QIODevice::WriteOnly);
  DescriptorDevice errors(STDERR_FILENO, QIODevice::WriteOnly);
  try {
    return run(command, input, output, errors);
  } catch (const std::bad_alloc&) {
    static_cast<void>(errors.write(Texts::tr("nimbrel: no hay memoria para este texto\n").toUtf8()));
    return 1;
  }
}

int execute(const InstanceCommand& command) {
  DescriptorDevice output(STDOUT_FILENO, QIODevice::WriteOnly);
  DescriptorDevice errors(STDERR_FILENO, QIODevice::WriteOnly);
  const auto client = makeInstanceClient();
  return run(command, *client,
             {.output = output, .errors = errors, .isTerminal = isatty(STDOUT_FILENO) == 1});
}

int execute(const HistoryCommand& command) {
  DescriptorDevice output(STDOUT_FILENO, QIODevice::WriteOnly);
  DescriptorDevice errors(STDERR_FILENO, QIODevice::WriteOnly);
  HeadlessPlatform platform = makeHeadlessPlatform();
  SystemRandom random;
  const SystemClock clock;
  try {
    return run(command,
               {.platform = platform,
                .random = random,
                .clock = clock,
                .dataFolder = userDataFolder(),
                .readPassphrase = &readPassphrase,
                .examineDesktop = &examineDesktop},
               {.output = output, .errors = errors});
  } catch (const std::bad_alloc&) {
    static_cast<void>(errors.write(Texts::tr("nimbrel: no hay memoria para esto\n").toUtf8()));
    return 1;
  }
}

/// Runs something on another thread while the event loop goes on here. False when the program is told to end
/// meanwhile.
bool inBackground(TerminationSignal& termination, const std::function<void()>& task) {
  QEventLoop loop;
  bool finished = false;
  const std::unique_ptr<QThread> thread(QThread::create(task));
  QObject::connect(thread.get(), &QThread::finished, &loop, [&] {
    finished = true;
    loop.quit();
  });
  termination.setHandler([&loop] { loop.quit(); });
  thread->start();
  loop.exec();
  termination.setHandler({});
  // Whatever else ends the loop, the desktop's own way of quitting for one, ends the program.
  const bool ended = !finished;
  // A key store that never answers must not keep the session from ending.
  if (ended && thread->isRunning()) std::_Exit(0);
  thread->wait();
  return !ended;
}

/// Does what the arguments say without a desktop, or tells that they ask for the application itself.
std::variant<int, RunCommand> runCommand(const QStringList& arguments, int argc, char** argv) {
  if (arguments.isEmpty()) return RunCommand{};
  const QCoreApplication application(argc, argv);
  const Localization localization(interfaceLanguage(QLocale::system().uiLanguages()));
  const CommandLine command = parseCommandLine(arguments, QStringLiteral(NIMBREL_VERSION));
  if (const auto* const print = std::get_if<PrintCommand>(&command)) return execute(*print);
  if (const auto* const text = std::get_if<TextCommand>(&command)) return execute(*text);
  if (const auto* const asked = std::get_if<InstanceCommand>(&command)) return execute(*asked);
  if (const auto* const asked = std::get_if<HistoryCommand>(&command)) return execute(*asked);
  return std::get<RunCommand>(command);
}

/// The desktop starts the program with the session; a session that is restored must not start it once more,
/// with arguments of its own.
void leaveRestartToTheDesktop(QGuiApplication& application) {
  const auto refuse = [](QSessionManager& manager) { manager.setRestartHint(QSessionManager::RestartNever); };
  QObject::connect(&application, &QGuiApplication::saveStateRequest, &application, refuse,
                   Qt::DirectConnection);
  QObject::connect(&application, &QGuiApplication::commitDataRequest, &application, refuse,
                   Qt::DirectConnection);
}

/// Ends the process when it does not end by itself: a file on a network that has gone must not keep the
/// session from ending. By then everything that matters is on the disk.
void endSoon() {
  static constexpr std::chrono::seconds kPatience(20);
  std::thread([] {
    std::this_thread::sleep_for(kPatience);
    std::_Exit(0);
  }).detach();
}

int withoutDesktop(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  const Localization localization(interfaceLanguage(QLocale::system().uiLanguages()));
  return execute(PrintCommand{Texts::tr("nimbrel: no hay ningún escritorio X11 a la vista\n"), 1});
}

/// What of other programs' requests concerns the history.
InstanceRequests intentRequests(IntentService& intents) {
  InstanceRequests requests;
  requests.perform = [&intents](const IntentCall& call, const IntentAnswer& answer) {
    intents.perform(call, answer);
  };
  requests.suggest = [&intents](const QStringList& terms, const auto& found) {
    intents.suggest(terms, found);
  };
  requests.describe = [&intents](const QStringList& ids) { return intents.describe(ids); };
  requests.choose = [&intents](const QString& id) { intents.choose(id); };
  return requests;
}

int runApplication(int argc, char** argv, const RunCommand& command) {
  if (!preparePlatform()) return withoutDesktop(argc, argv);
  QApplication application(argc, argv);
  QApplication::setApplicationName(QStringLiteral("Nimbrel"));
  QApplication::setDesktopFileName(QStringLiteral("app.nimbrel.Nimbrel"));
  QApplication::setQuitOnLastWindowClosed(false);
  leaveRestartToTheDesktop(application);
  const Localization localization(interfaceLanguage(QLocale::system().uiLanguages()));
  Platform platform = makePlatform();
  switch (platform.instance->claim(command.urls)) {
    case InstanceHost::Claim::handedOver:
      return 0;
    case InstanceHost::Claim::unanswered:
      return execute(PrintCommand{Texts::tr("nimbrel: ya está en marcha, pero no contesta\n"), 1});
    case InstanceHost::Claim::first:
    case InstanceHost::Claim::unavailable:
      break;
  }
  // Until there is a history, whoever asks for something of it is told so.
  IntentService intents;
  platform.instance->setRequests(intentRequests(intents));
  SystemRandom random;
  HistoryCipher cipher(*platform.secrets, random);
  const SystemClock clock;
  const QString directory = makeStorageDirectory(userDataFolder());
  // For those who repair it, or add to it, from another session.
  QLockFile lock(lockPath(directory));
  lock.setStaleLockTime(0);
  static_cast<void>(lock.tryLock());
  std::unique_ptr<ClipDatabase> database;
  // The key store may ask the user to unlock it, and an older history may be large.
  const bool opened = inBackground(*platform.termination, [&] {
    // Before the first copy is captured: which application it comes from decides whether it is kept.
    const auto known = std::async(std::launch::async, [&] { return platform.applications->applications(); });
    database = openHistory(directory, cipher, *platform.defaults, clock);
  });
  if (!opened) return 0;
  AppDelegate delegate(platform, cipher, std::move(database), directory);
  platform.termination->setHandler([] { QApplication::quit(); });
  platform.termination->setLastHandler([&delegate] { delegate.applicationWillTerminate(); });
  QObject::connect(&application, &QCoreApplication::aboutToQuit, &delegate,
                   &AppDelegate::applicationWillTerminate);
  QObject::connect(&application, &QCoreApplication::aboutToQuit, &application, endSoon);
  delegate.applicationDidFinishLaunching();
  delegate.openUrls(command.urls);
  if (command.showPanel) delegate.showPanel();
  intents.setServices(&delegate.intentServices());
  InstanceRequests requests = intentRequests(intents);
  requests.show = [&delegate] { delegate.showPanel(); };
  requests.showCollections = [&delegate] { delegate.showCollections(); };
  requests.showSearch = [&delegate](const QString& text) { delegate.showSearch(text); };
  requests.openUrls = [&delegate](const QStringList& urls) { delegate.openUrls(urls); };
  // Also when it was asked for while the program started: before the event loop nobody hears of an end.
  requests.quit = [] { QMetaObject::invokeMethod(qApp, &QCoreApplication::quit, Qt::QueuedConnection); };
  platform.instance->setRequests(requests);
  const int status = QApplication::exec();
  platform.instance->setRequests({});
  platform.termination->setLastHandler({});
  return status;
}

}  // namespace
}  // namespace nimbrel

int main(int argc, char** argv) {
  using namespace nimbrel;
  protectProcess();
  const auto outcome = runCommand(argumentsOf(argc, argv), argc, argv);
  // All is written. The bus's own thread must not find the process half taken down, and complain.
  if (const auto* const status = std::get_if<int>(&outcome)) std::_Exit(*status);
  return runApplication(argc, argv, std::get<RunCommand>(outcome));
}
