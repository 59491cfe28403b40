#include <benchmark/benchmark.h>
#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>
#include <xcb/damage.h>
#include <xcb/xtest.h>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QTemporaryDir>
#include <array>
#include <atomic>
#include <chrono>
#include <cstring>
#include <optional>
#include <stop_token>
#include <string>
#include <thread>
#include <vector>

#include "bench/BenchHistory.h"
#include "platform/linux/LibsecretStore.h"
#include "platform/linux/Xcb.h"
#include "storage/ClipDatabase.h"
#include "storage/HistoryCipher.h"
#include "storage/RandomSource.h"
#include "storage/StorageDirectory.h"
#include "support/Pictures.h"

/// The program itself on a real X server, seen from outside: other clients' copies, keys and the server's
/// events.
namespace nimbrel::bench {
namespace {

using Clock = std::chrono::steady_clock;
using namespace std::chrono_literals;

constexpr xcb_keycode_t kShift = 50;
constexpr xcb_keycode_t kSuper = 133;
constexpr xcb_keycode_t kV = 55;
constexpr xcb_keycode_t kC = 54;
constexpr xcb_keycode_t kEscape = 9;

double seconds(Clock::duration time) {
  return std::chrono::duration<double>(time).count();
}

/// The observer: an X client of its own.
class Observer {
 public:
  Observer() : x(xcb_connect(nullptr, nullptr)), root(rootWindow(x.get())) {
    const std::uint32_t mask = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_change_window_attributes(x.get(), root, XCB_CW_EVENT_MASK, &mask);
    free(xcb_damage_query_version_reply(x.get(), xcb_damage_query_version(x.get(), 1, 1), nullptr));
    damageEvent = xcb_get_extension_data(x.get(), &xcb_damage_id)->first_event;
    window = xcb_generate_id(x.get());
    xcb_create_window(x.get(), XCB_COPY_FROM_PARENT, window, root, 0, 0, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                      XCB_COPY_FROM_PARENT, 0, nullptr);
    xcb_flush(x.get());
  }

  /// The next event within a time.
  XcbPointer<xcb_generic_event_t> next(Clock::duration patience) {
    xcb_flush(x.get());
    const auto deadline = Clock::now() + patience;
    while (true) {
      if (XcbPointer<xcb_generic_event_t> event{xcb_poll_for_event(x.get())}) return event;
      const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now()).count();
      if (left <= 0) return nullptr;
      pollfd descriptor{xcb_get_file_descriptor(x.get()), POLLIN, 0};
      poll(&descriptor, 1, static_cast<int>(left));
    }
  }
  void drain() {
    while (next(30ms)) {
    }
  }

  void key(xcb_keycode_t code, bool down) {
    xcb_test_fake_input(x.get(), down ? XCB_KEY_PRESS : XCB_KEY_RELEASE, code, 0, root, 0, 0, 0);
  }
  void tap(std::vector<xcb_keycode_t> codes) {
    for (const auto code : codes)
      key(code, true);
    for (auto code = codes.rbegin(); code != codes.rend(); ++code)
      key(*code, false);
    xcb_flush(x.get());
  }

  /// Whether somebody holds the hot key: the last thing that the program does at its start.
  bool hotKeyIsTaken() {
    // With the server to itself, so that the program never finds its hot key taken by this very question.
    xcb_grab_server(x.get());
    const auto cookie = xcb_grab_key_checked(x.get(), 0, root, XCB_MOD_MASK_SHIFT | XCB_MOD_MASK_4, kV,
                                             XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    const XcbPointer<xcb_generic_error_t> error(xcb_request_check(x.get(), cookie));
    if (!error) xcb_ungrab_key(x.get(), kV, root, XCB_MOD_MASK_SHIFT | XCB_MOD_MASK_4);
    xcb_ungrab_server(x.get());
    xcb_flush(x.get());
    return error != nullptr;
  }

  /// Waits until a window is no longer painted for a while, and gives the moment of the last painting.
  Clock::time_point lastPaint(xcb_window_t target, Clock::time_point from) {
    Clock::time_point last = from;
    while (const auto event = next(120ms)) {
      if (eventType(*event) == damageEvent + XCB_DAMAGE_NOTIFY &&
          eventAs<xcb_damage_notify_event_t>(*event).drawable == target)
        last = Clock::now();
    }
    return last;
  }

  XcbConnection x;
  xcb_window_t root;
  xcb_window_t window = 0;
  int damageEvent = 0;
};

/// The program with a history of so many clips.
class Program {
 public:
  explicit Program(int clips) {
    const QString storage = makeStorageDirectory(folder.path());
    path = databasePath(storage);
    LibsecretStore secrets;
    SystemRandom random;
    HistoryCipher cipher(secrets, random);
    ClipDatabase database(path, cipher);
    if (!database.saveMany(makeClips(clips))) std::abort();
    database.checkpoint();
  }
  ~Program() { stop(); }

  /// Starts it and waits until it is ready; gives the time that took.
  Clock::duration start(Observer& observer) {
    const auto begin = Clock::now();
    const std::string home = folder.path().toStdString();
    const std::string binary = QFileInfo(QGuiApplication::applicationDirPath() + QStringLiteral("/nimbrel"))
                                   .absoluteFilePath()
                                   .toStdString();
    process = fork();
    if (process == 0) {
      setenv("XDG_DATA_HOME", home.c_str(), 1);
      execl(binary.c_str(), binary.c_str(), nullptr);
      _exit(127);
    }
    while (!observer.hotKeyIsTaken())
      usleep(1000);
    return Clock::now() - begin;
  }
  void stop() {
    if (process <= 0) return;
    kill(process, SIGTERM);
    waitpid(process, nullptr, 0);
    process = 0;
  }

  [[nodiscard]] double pssMegabytes() const {
    QFile rollup(QStringLiteral("/proc/%1/smaps_rollup").arg(process));
    if (!rollup.open(QIODevice::ReadOnly)) return 0;
    for (const QByteArray& line : rollup.readAll().split('\n')) {
      if (line.startsWith("Pss:")) return line.simplified().split(' ').value(1).toDouble() / 1024;
    }
    return 0;
  }
  /// User and system time of the process in seconds.
  [[nodiscard]] double cpuSeconds() const {
    QFile stat(QStringLiteral("/proc/%1/stat").arg(process));
    if (!stat.open(QIODevice::ReadOnly)) return 0;
    const QList<QByteArray> fields = stat.readAll().split(' ');
    return (fields.value(13).toDouble() + fields.value(14).toDouble()) /
           static_cast<double>(sysconf(_SC_CLK_TCK));
  }

  QTemporaryDir folder;
  QString path;
  pid_t process = 0;
};

/// Opens the panel with the hot key; gives its window and the moments of mapping and of the last painting.
struct Opening {
  xcb_window_t panel = 0;
  Clock::time_point pressed;
  Clock::time_point mapped;
  Clock::time_point painted;
};

Opening openPanel(Observer& observer) {
  observer.drain();
  Opening opening;
  opening.pressed = Clock::now();
  observer.tap({kShift, kSuper, kV});
  while (const auto event = observer.next(2s)) {
    if (eventType(*event) != XCB_MAP_NOTIFY) continue;
    const auto& map = eventAs<xcb_map_notify_event_t>(*event);
    if (!map.override_redirect) continue;
    opening.mapped = Clock::now();
    opening.panel = map.window;
    break;
  }
  const xcb_damage_damage_t damage = xcb_generate_id(observer.x.get());
  xcb_damage_create(observer.x.get(), damage, opening.panel, XCB_DAMAGE_REPORT_LEVEL_RAW_RECTANGLES);
  opening.painted = observer.lastPaint(opening.panel, opening.mapped);
  xcb_damage_destroy(observer.x.get(), damage);
  return opening;
}

void closePanel(Observer& observer) {
  observer.tap({kEscape});
  usleep(300'000);
  observer.drain();
}

void start(benchmark::State& state) {
  Observer observer;
  Program program(static_cast<int>(state.range(0)));
  program.start(observer);
  program.stop();
  for (auto _ : state) {
    state.SetIterationTime(seconds(program.start(observer)));
    program.stop();
  }
}
BENCHMARK(start)
    ->Arg(0)
    ->Arg(10'000)
    ->Arg(100'000)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(7);

/// Other programs that ask for something as fast as the bus lets them.
class Flood final {
 public:
  explicit Flood(int callers) {
    for (int caller = 0; caller < callers; ++caller)
      threads_.emplace_back([this, caller](const std::stop_token& stop) { ask(caller, stop); });
  }
  [[nodiscard]] std::int64_t calls() const { return calls_; }

 private:
  void ask(int caller, const std::stop_token& stop) {
    const QString name = QStringLiteral("flood %1").arg(caller);
    auto bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, name);
    auto call = QDBusMessage::createMethodCall(
        QStringLiteral("app.nimbrel.Nimbrel"), QStringLiteral("/app/nimbrel/Nimbrel"),
        QStringLiteral("app.nimbrel.Nimbrel"), QStringLiteral("SearchHistory"));
    call << QStringLiteral("de");
    for (; !stop.stop_requested(); ++calls_)
      bus.call(call);
    QDBusConnection::disconnectFromBus(name);
  }

  std::atomic<std::int64_t> calls_ = 0;
  std::vector<std::jthread> threads_;
};

/// With a second argument, while so many other programs flood this one.
void hotKeyToMapped(benchmark::State& state) {
  Observer observer;
  Program program(static_cast<int>(state.range(0)));
  program.start(observer);
  const Flood flood(static_cast<int>(state.range(1)));
  openPanel(observer);
  closePanel(observer);
  double painted = 0;
  for (auto _ : state) {
    const Opening opening = openPanel(observer);
    state.SetIterationTime(seconds(opening.mapped - opening.pressed));
    painted += seconds(opening.painted - opening.pressed) * 1000;
    closePanel(observer);
  }
  state.counters["last_paint_ms"] = painted / static_cast<double>(state.iterations());
  state.counters["calls"] = static_cast<double>(flood.calls());
}
BENCHMARK(hotKeyToMapped)
    ->Args({10'000, 0})
    ->Args({100'000, 0})
    ->Args({10'000, 3})
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(10);

void keyToPainted(benchmark::State& state) {
  Observer observer;
  Program program(static_cast<int>(state.range(0)));
  program.start(observer);
  for (auto _ : state) {
    const Opening opening = openPanel(observer);
    const xcb_damage_damage_t damage = xcb_generate_id(observer.x.get());
    xcb_damage_create(observer.x.get(), damage, opening.panel, XCB_DAMAGE_REPORT_LEVEL_RAW_RECTANGLES);
    observer.drain();
    const auto pressed = Clock::now();
    observer.tap({kC});
    // The field is painted at once, the list when its answer has come; the blinking cursor half a second
    // later.
    state.SetIterationTime(seconds(observer.lastPaint(opening.panel, pressed) - pressed));
    xcb_damage_destroy(observer.x.get(), damage);
    closePanel(observer);
  }
}
BENCHMARK(keyToPainted)
    ->Arg(10'000)
    ->Arg(100'000)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(10);

/// From another program's taking the selection until the clip's row is in the write-ahead log.
class CopyingClient {
 public:
  explicit CopyingClient(Observer& observer) : observer_(observer) {
    for (const char* name : {"CLIPBOARD", "TARGETS", "UTF8_STRING", "image/png"})
      atoms_.push_back(intern(name));
  }
  void copy(const std::string& text) { own(atoms_[2], text); }
  void copyPicture(const QByteArray& png) { own(atoms_[3], png.toStdString()); }
  /// Answers requests for so long, or until `done`; gives whether it was.
  template <typename Done>
  bool serve(Clock::duration patience, Done&& done) {
    return serve(patience, done, [](const xcb_generic_event_t&) {});
  }
  /// The same, and hands on every other event.
  template <typename Done, typename Other>
  bool serve(Clock::duration patience, Done&& done, Other&& other) {
    const auto deadline = Clock::now() + patience;
    while (Clock::now() < deadline) {
      if (done()) return true;
      const auto event = observer_.next(200us);
      if (event && eventType(*event) == XCB_SELECTION_REQUEST)
        answer(eventAs<xcb_selection_request_event_t>(*event));
      else if (event)
        other(*event);
    }
    return false;
  }

 private:
  void own(xcb_atom_t target, const std::string& bytes) {
    target_ = target;
    text_ = bytes;
    xcb_set_selection_owner(observer_.x.get(), observer_.window, atoms_[0], XCB_CURRENT_TIME);
    xcb_flush(observer_.x.get());
  }
  xcb_atom_t intern(const char* name) {
    const auto cookie =
        xcb_intern_atom(observer_.x.get(), 0, static_cast<std::uint16_t>(std::strlen(name)), name);
    const XcbPointer<xcb_intern_atom_reply_t> reply(
        xcb_intern_atom_reply(observer_.x.get(), cookie, nullptr));
    return reply->atom;
  }
  void answer(const xcb_selection_request_event_t& request) {
    xcb_atom_t property = request.property;
    const std::array targets{atoms_[1], target_};
    if (request.target == atoms_[1])
      xcb_change_property(observer_.x.get(), XCB_PROP_MODE_REPLACE, request.requestor, property,
                          XCB_ATOM_ATOM, 32, targets.size(), targets.data());
    else if (request.target == target_)
      xcb_change_property(observer_.x.get(), XCB_PROP_MODE_REPLACE, request.requestor, property, target_, 8,
                          static_cast<std::uint32_t>(text_.size()), text_.data());
    else
      property = XCB_ATOM_NONE;
    sendSelectionNotify(observer_.x.get(), request, property);
    xcb_flush(observer_.x.get());
  }

  Observer& observer_;
  std::vector<xcb_atom_t> atoms_;
  xcb_atom_t target_ = XCB_ATOM_NONE;
  std::string text_;
};

qint64 rows(const QString& path) {
  SQLiteConnection connection(path.toUtf8());
  return connection.integer("SELECT COUNT(*) FROM clips");
}

void copyToDisk(benchmark::State& state) {
  Observer observer;
  Program program(static_cast<int>(state.range(0)));
  program.start(observer);
  usleep(1'500'000);
  CopyingClient client(observer);
  SQLiteConnection disk(program.path.toUtf8());
  int number = 0;
  for (auto _ : state) {
    const auto before = disk.integer("SELECT MAX(rowid) FROM clips");
    const auto begin = Clock::now();
    client.copy("copia de medida " + std::to_string(number++));
    if (!client.serve(2s, [&] { return disk.integer("SELECT MAX(rowid) FROM clips") > before; }))
      state.SkipWithError("lost");
    state.SetIterationTime(seconds(Clock::now() - begin));
    client.serve(20ms, [] { return false; });
  }
}
BENCHMARK(copyToDisk)->Arg(10'000)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(50);

/// The same while the owner before has never answered.
/// From the copy of a 4K screenshot until its row, which comes with its thumbnail, is painted in the open
/// panel.
void screenshotToRow(benchmark::State& state) {
  Observer observer;
  Program program(static_cast<int>(state.range(0)));
  program.start(observer);
  const Opening opening = openPanel(observer);
  const xcb_damage_damage_t damage = xcb_generate_id(observer.x.get());
  xcb_damage_create(observer.x.get(), damage, opening.panel, XCB_DAMAGE_REPORT_LEVEL_RAW_RECTANGLES);
  CopyingClient client(observer);
  QImage screenshot = testing::screenshotPicture({3840, 2160});
  int number = 0;
  for (auto _ : state) {
    screenshot.setPixel(number, 0, qRgb(255, 0, 0));
    ++number;
    const QByteArray png = testing::encoded(screenshot, "png");
    // The helper ends when idle; both kinds of copies happen.
    client.serve(3s, [] { return false; });
    const auto begin = Clock::now();
    client.copyPicture(png);
    bool painted = false;
    const auto look = [&](const xcb_generic_event_t& event) {
      if (eventType(event) != observer.damageEvent + XCB_DAMAGE_NOTIFY) return;
      // More than the blinking cursor.
      painted = painted || eventAs<xcb_damage_notify_event_t>(event).area.width > 200;
    };
    if (!client.serve(
            5s, [&] { return painted; }, look))
      state.SkipWithError("lost");
    state.SetIterationTime(seconds(Clock::now() - begin));
  }
}
BENCHMARK(screenshotToRow)->Arg(10'000)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(5);

void copyAfterMuteOwner(benchmark::State& state) {
  Observer observer;
  Observer mute;
  Program program(10'000);
  program.start(observer);
  usleep(1'500'000);
  CopyingClient client(observer);
  CopyingClient silent(mute);
  SQLiteConnection disk(program.path.toUtf8());
  int number = 0;
  for (auto _ : state) {
    silent.copy("nunca contesta");
    usleep(100'000);
    const auto before = disk.integer("SELECT MAX(rowid) FROM clips");
    const auto begin = Clock::now();
    client.copy("tras un dueño mudo " + std::to_string(number++));
    if (!client.serve(2s, [&] { return disk.integer("SELECT MAX(rowid) FROM clips") > before; }))
      state.SkipWithError("lost");
    state.SetIterationTime(seconds(Clock::now() - begin));
    client.serve(20ms, [] { return false; });
  }
}
BENCHMARK(copyAfterMuteOwner)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(20);

void quickCopies(benchmark::State& state) {
  Observer observer;
  Program program(10'000);
  program.start(observer);
  CopyingClient client(observer);
  double kept = 0;
  for (auto _ : state) {
    const qint64 before = rows(program.path);
    const auto begin = Clock::now();
    for (int i = 0; i < 100; ++i) {
      client.copy("rápida " + std::to_string(before) + " " + std::to_string(i));
      client.serve(std::chrono::milliseconds(state.range(0)), [] { return false; });
    }
    client.serve(500ms, [] { return false; });
    state.SetIterationTime(seconds(Clock::now() - begin));
    kept = static_cast<double>(rows(program.path) - before);
  }
  state.counters["kept_of_100"] = kept;
}
BENCHMARK(quickCopies)->Arg(50)->Arg(10)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(1);

void memory(benchmark::State& state) {
  Observer observer;
  Program program(static_cast<int>(state.range(0)));
  program.start(observer);
  openPanel(observer);
  closePanel(observer);
  usleep(2'000'000);
  for (auto _ : state)
    state.SetIterationTime(1);
  state.counters["pss_mb"] = program.pssMegabytes();
}
BENCHMARK(memory)->Arg(0)->Arg(10'000)->UseManualTime()->Iterations(1);

void idle(benchmark::State& state) {
  Observer observer;
  Program program(static_cast<int>(state.range(0)));
  program.start(observer);
  usleep(5'000'000);
  const double before = program.cpuSeconds();
  for (auto _ : state) {
    usleep(30'000'000);
    state.SetIterationTime(30);
  }
  state.counters["cpu_s_per_minute"] = (program.cpuSeconds() - before) * 2;
}
BENCHMARK(idle)->Arg(10'000)->UseManualTime()->Iterations(1);

}  // namespace
}  // namespace nimbrel::bench

int main(int argc, char** argv) {
  const QGuiApplication application(argc, argv);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
