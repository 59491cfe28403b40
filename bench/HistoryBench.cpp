#include <benchmark/benchmark.h>

#include <QApplication>
#include <QImage>
#include <QLineEdit>
#include <QPainter>
#include <algorithm>
#include <chrono>

#include "bench/BenchStore.h"
#include "panel/ContentView.h"

/// The history without a desktop: what a capture, a search and a launch cost by themselves.
namespace nimbrel::bench {
namespace {

void launchStore(benchmark::State& state) {
  Bench bench(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    bench.launch();
    state.PauseTiming();
    bench.quit();
    state.ResumeTiming();
  }
}
BENCHMARK(launchStore)->Arg(0)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);

void captureText(benchmark::State& state) {
  Bench bench(static_cast<int>(state.range(0)));
  bench.launch();
  bench.database->flush();
  int number = 0;
  for (auto _ : state) {
    bench.pasteboard.copy(QStringLiteral("copia nueva %1").arg(number++));
    bench.store->tick();
  }
}
BENCHMARK(captureText)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMicrosecond)->Iterations(200);

/// One key typed in the search field, until the list is painted.
void typeKey(benchmark::State& state, const QString& query) {
  Bench bench(static_cast<int>(state.range(0)));
  bench.launch();
  bench.database->flush();
  NoOpener opener;
  FullTrust trust;
  NoKeys keys;
  NoApplications applications;
  InstalledIcons icons(applications, kRowIconSize);
  PermissionState permission(trust, bench.pasteboard, opener);
  ContentView view({.store = *bench.store,
                    .permission = permission,
                    .opener = opener,
                    .settings = bench.settings,
                    .clock = bench.clock,
                    .keys = keys,
                    .keyState = [] { return HistoryCipher::KeyState::ready; },
                    .authenticate = {},
                    .icons = icons},
                   nullptr);
  const auto settle = [&bench] {
    while (bench.store->backgroundSearch().isRunning())
      QApplication::processEvents(QEventLoop::WaitForMoreEvents);
  };
  view.resize(480, 440);
  auto* const field = view.findChild<QLineEdit*>(QStringLiteral("searchField"));
  std::chrono::steady_clock::duration longest{};
  QImage canvas(view.size(), QImage::Format_ARGB32_Premultiplied);
  view.render(&canvas);
  for (auto _ : state) {
    state.PauseTiming();
    field->setText(query.chopped(1));
    settle();
    // A capture of something else, so that no cache has the answer.
    bench.pasteboard.copy(QStringLiteral("x %1").arg(bench.pasteboard.count));
    bench.store->tick();
    bench.database->flush();
    view.render(&canvas);
    state.ResumeTiming();
    const auto begin = std::chrono::steady_clock::now();
    field->setText(query);
    // What the main thread does before it is free for the next key.
    const auto free = std::chrono::steady_clock::now();
    longest = std::max(longest, free - begin);
    settle();
    view.render(&canvas);
  }
  state.counters["longest_block_ms"] = std::chrono::duration<double, std::milli>(longest).count();
}
BENCHMARK_CAPTURE(typeKey, first_letter, QStringLiteral("c"))
    ->Arg(10'000)
    ->Arg(100'000)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(20);
BENCHMARK_CAPTURE(typeKey, third_letter_common, QStringLiteral("can"))
    ->Arg(10'000)
    ->Arg(100'000)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(20);
BENCHMARK_CAPTURE(typeKey, rare_word, QStringLiteral("9999"))
    ->Arg(10'000)
    ->Arg(100'000)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(20);
BENCHMARK_CAPTURE(typeKey, two_words, QStringLiteral("cancion factura"))
    ->Arg(10'000)
    ->Arg(100'000)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(20);

}  // namespace
}  // namespace nimbrel::bench

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
