#include <benchmark/benchmark.h>

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <fstream>
#include <sstream>
#include <string>

#include "bench/BenchStore.h"
#include "capture/LegacyImport.h"
#include "storage/ContentHash.h"

/// Each operation on the history at sizes a hundred times apart, so that growth shows.
namespace nimbrel::bench {
namespace {

constexpr int kSmall = 1'000;
constexpr int kMiddle = 10'000;
constexpr int kLarge = 100'000;

void sizes(benchmark::internal::Benchmark* bench) {
  bench->Arg(kSmall)->Arg(kMiddle)->Arg(kLarge)->Unit(benchmark::kMicrosecond);
}

/// Waits for the disk and the index outside of the measured time.
void settle(benchmark::State& state, Bench& bench) {
  state.PauseTiming();
  bench.database->flush();
  state.ResumeTiming();
}

std::unique_ptr<Bench> launched(benchmark::State& state) {
  auto bench = std::make_unique<Bench>(static_cast<int>(state.range(0)));
  bench->launch();
  bench->database->flush();
  return bench;
}

void insertion(benchmark::State& state) {
  const auto bench = launched(state);
  int number = 0;
  for (auto _ : state) {
    bench->pasteboard.copy(QStringLiteral("copia nueva %1").arg(number++));
    bench->store->tick();
    settle(state, *bench);
  }
}
BENCHMARK(insertion)->Apply(sizes)->Iterations(300);

/// A text in the middle of the history, copied again: found by its hash and moved to the top.
void duplicate(benchmark::State& state) {
  const auto bench = launched(state);
  for (auto _ : state) {
    state.PauseTiming();
    bench->database->flush();
    const auto& items = bench->store->items();
    bench->pasteboard.copy(items.at(items.size() / 2)->clip.text);
    state.ResumeTiming();
    bench->store->tick();
  }
}
BENCHMARK(duplicate)->Apply(sizes)->Iterations(300);

void pin(benchmark::State& state) {
  const auto bench = launched(state);
  const QUuid id = bench->store->items().at(bench->store->items().size() / 2)->clip.id;
  for (auto _ : state) {
    bench->store->togglePin(id);
    settle(state, *bench);
  }
}
BENCHMARK(pin)->Apply(sizes)->Iterations(300);

void collect(benchmark::State& state) {
  const auto bench = launched(state);
  const QUuid id = bench->store->items().at(bench->store->items().size() / 2)->clip.id;
  int number = 0;
  for (auto _ : state) {
    bench->store->setCollection(id, QStringLiteral("colección %1").arg(number++ % 2));
    settle(state, *bench);
  }
}
BENCHMARK(collect)->Apply(sizes)->Iterations(300);

void removal(benchmark::State& state) {
  const auto bench = launched(state);
  for (auto _ : state) {
    const auto& items = bench->store->items();
    bench->store->removeClip(items.at(items.size() / 2)->clip.id);
    settle(state, *bench);
  }
}
BENCHMARK(removal)->Apply(sizes)->Iterations(300);

/// A full history: every new clip pushes the oldest one out.
void trim(benchmark::State& state) {
  QList<ClipItem> clips = makeClips(static_cast<int>(state.range(0)));
  for (ClipItem& clip : clips)
    clip.pinned = false;
  Bench bench(clips);
  bench.settings.maxUnpinned = static_cast<int>(clips.size());
  bench.launch();
  bench.database->flush();
  int number = 0;
  for (auto _ : state) {
    bench.pasteboard.copy(QStringLiteral("copia nueva %1").arg(number++));
    bench.store->tick();
    settle(state, bench);
  }
}
BENCHMARK(trim)->Apply(sizes)->Iterations(300);

void clear(benchmark::State& state) {
  QList<ClipItem> clips = makeClips(static_cast<int>(state.range(0)));
  for (ClipItem& clip : clips)
    clip.pinned = false;
  for (auto _ : state) {
    state.PauseTiming();
    Bench bench(clips);
    bench.settings.maxUnpinned = static_cast<int>(clips.size());
    bench.launch();
    bench.database->flush();
    state.ResumeTiming();
    bench.store->clearHistory();
    state.PauseTiming();
    bench.database->flush();
    bench.quit();
    state.ResumeTiming();
  }
}
BENCHMARK(clear)->Apply(sizes)->Iterations(3);

void searchFor(benchmark::State& state, Bench& bench, const QString& query) {
  bench.launch();
  bench.database->flush();
  qsizetype found = 0;
  for (auto _ : state) {
    state.PauseTiming();
    // Something else changes, so that no cache has the answer.
    bench.store->setCollection(bench.store->items().at(0)->clip.id, QStringLiteral("x"));
    bench.database->flush();
    state.ResumeTiming();
    found = bench.store->search(query).size();
  }
  state.counters["found"] = static_cast<double>(found);
}

void search(benchmark::State& state, const QString& query) {
  Bench bench(static_cast<int>(state.range(0)));
  searchFor(state, bench, query);
}
BENCHMARK_CAPTURE(search, long_rare, QStringLiteral("9999"))->Apply(sizes)->Iterations(30);
BENCHMARK_CAPTURE(search, long_common, QStringLiteral("factura"))->Apply(sizes)->Iterations(30);
BENCHMARK_CAPTURE(search, short_one, QStringLiteral("c"))->Apply(sizes)->Iterations(30);
BENCHMARK_CAPTURE(search, short_two, QStringLiteral("ño"))->Apply(sizes)->Iterations(30);
BENCHMARK_CAPTURE(search, mixed, QStringLiteral("factura c 99"))->Apply(sizes)->Iterations(30);
BENCHMARK_CAPTURE(search, no_match, QStringLiteral("zzzz"))->Apply(sizes)->Iterations(30);
BENCHMARK_CAPTURE(search, no_match_short, QStringLiteral("ÿ"))->Apply(sizes)->Iterations(30);
BENCHMARK_CAPTURE(search, accents, QStringLiteral("CANCIÓN Árbol"))->Apply(sizes)->Iterations(30);

/// Clips of mixed sizes: most of 200 bytes, one in a hundred of 10 kB, one in a thousand of a megabyte.
QList<ClipItem> mixedClips(int count) {
  QList<ClipItem> clips = makeClips(count);
  for (int i = 0; i < count; ++i) {
    const qsizetype size = i % 1000 == 500 ? 990'000 : i % 100 == 50 ? 10'000 : 0;
    if (size == 0) continue;
    QString& text = clips[i].text;
    text = text.repeated(size / text.size() + 1).first(size);
    clips[i].textHash = sha256Hex(text.toUtf8());
  }
  return clips;
}

void searchMixedSizes(benchmark::State& state, const QString& query) {
  Bench bench(mixedClips(static_cast<int>(state.range(0))));
  searchFor(state, bench, query);
}
BENCHMARK_CAPTURE(searchMixedSizes, one_letter, QStringLiteral("c"))->Apply(sizes)->Iterations(20);
BENCHMARK_CAPTURE(searchMixedSizes, one_rare_letter, QStringLiteral("ÿ"))->Apply(sizes)->Iterations(20);

void import(benchmark::State& state) {
  QJsonArray array;
  for (const ClipItem& clip : makeClips(static_cast<int>(state.range(0))))
    array.append(clipToJson(clip));
  const QByteArray json = QJsonDocument(array).toJson(QJsonDocument::Compact);
  class NoDefaults final : public UserDefaults {
   public:
    [[nodiscard]] std::optional<DefaultsValue> value(const QString&) const override { return {}; }
    void set(const QString&, const DefaultsValue&) override {}
    void synchronize() override {}
    [[nodiscard]] bool remove(const QString&) override { return true; }
    [[nodiscard]] bool isIntact() const override { return true; }
    void markDamaged() override {}
  } defaults;
  for (auto _ : state) {
    state.PauseTiming();
    Bench bench(QList<ClipItem>{});
    ClipDatabase database(bench.path, bench.cipher);
    QFile file(bench.folder.filePath(QStringLiteral("history.json")));
    if (!file.open(QIODevice::WriteOnly) || file.write(json) != json.size()) std::abort();
    file.close();
    state.ResumeTiming();
    LegacyImport({database, bench.cipher, defaults, bench.clock, bench.settings, bench.blobs},
                 bench.folder.path())
        .run();
    state.PauseTiming();
    if (database.count() != state.range(0)) std::abort();
    state.ResumeTiming();
  }
  state.counters["bytes"] = static_cast<double>(json.size());
}
BENCHMARK(import)->Apply(sizes)->Iterations(3);

/// Proportional set size in kilobytes.
double processKilobytes() {
  std::ifstream rollup("/proc/self/smaps_rollup");
  for (std::string line; std::getline(rollup, line);) {
    std::istringstream words(line);
    std::string name;
    double kilobytes = 0;
    if (words >> name >> kilobytes && name == "Pss:") return kilobytes;
  }
  return 0;
}

void memoryOfClips(benchmark::State& state) {
  Bench bench(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    const double before = processKilobytes();
    bench.launch();
    bench.database->flush();
    state.counters["kilobytes"] = processKilobytes() - before;
  }
}
BENCHMARK(memoryOfClips)->Apply(sizes)->Iterations(1);

}  // namespace
}  // namespace nimbrel::bench
