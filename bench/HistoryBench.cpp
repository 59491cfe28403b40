#include <benchmark/benchmark.h>

#include <QApplication>
#include <QImage>
#include <QPainter>
#include <QTemporaryDir>

#include "bench/BenchHistory.h"
#include "capture/ClipFiles.h"
#include "capture/ClipboardStore.h"
#include "panel/ContentView.h"
#include "platform/PasteboardTypes.h"
#include "storage/HistoryCipher.h"
#include "storage/RandomSource.h"

/// The history without a desktop: what a capture, a search and a launch cost by themselves.
namespace nimbrel::bench {
namespace {

class OneKey final : public SecretStore {
 public:
  [[nodiscard]] SecretLookup find(const SecretItem&) override {
    return {SecretLookup::Outcome::found, QByteArray(32, 'k'), 0};
  }
  [[nodiscard]] int add(const SecretItem&, const QByteArray&) override { return -1; }
};

class QuietPasteboard final : public Pasteboard {
 public:
  void setReadPolicy(const PasteboardReadPolicy&) override {}
  [[nodiscard]] qint64 changeCount() const override { return count; }
  [[nodiscard]] QList<PasteboardSnapshot> changesAfter(qint64) override { return std::exchange(ready, {}); }
  [[nodiscard]] std::optional<QString> currentText() const override { return {}; }
  std::optional<qint64> write(const PasteboardContent&) override { return ++count; }
  std::optional<qint64> clearIfUnchanged(qint64) override { return {}; }
  void setChangeHandler(std::function<void()>) override {}

  void copy(const QString& text) {
    PasteboardSnapshot snapshot;
    snapshot.changeCount = ++count;
    snapshot.types = {pasteboardType::plainText.toString()};
    snapshot.text = text;
    ready.append(snapshot);
  }

  qint64 count = 0;
  QList<PasteboardSnapshot> ready;
};

class NoWorkspace final : public Workspace {
 public:
  [[nodiscard]] std::optional<RunningApplication> frontmostApplication() const override { return {}; }
};

class NoImages final : public ImageCodec {
 public:
  [[nodiscard]] std::variant<Encoded, ImageError> encodePng(const QByteArray&, int) override {
    return ImageError{};
  }
  [[nodiscard]] std::variant<QImage, ImageError> thumbnail(const QByteArray&, int) override {
    return ImageError{};
  }
  [[nodiscard]] std::variant<QByteArray, ImageError> convert(const QByteArray&, Format) override {
    return ImageError{};
  }
};

class NoImageTexts final : public ImageTextQueue {
 public:
  void setHandler(Recognized) override {}
  void enqueue(const QUuid&, const QString&) override {}
  void cancel(const QUuid&) override {}
};

/// A database file with so many clips, and a store on it.
class Bench {
 public:
  explicit Bench(int count) : cipher(secrets, random) {
    ClipDatabase filled(path, cipher);
    if (!filled.saveMany(makeClips(count))) std::abort();
  }

  void launch() {
    database = std::make_unique<ClipDatabase>(path, cipher);
    store = std::make_unique<ClipboardStore>(ClipboardStoreParts{.settings = settings,
                                                                 .pasteboard = pasteboard,
                                                                 .workspace = workspace,
                                                                 .clock = clock,
                                                                 .database = *database,
                                                                 .grader = grader,
                                                                 .files = files,
                                                                 .images = codec,
                                                                 .imageTexts = imageTexts,
                                                                 .makeId = &QUuid::createUuid});
  }
  void quit() {
    store.reset();
    database.reset();
  }

  QTemporaryDir folder;
  QString path = folder.filePath(QStringLiteral("brevin.sqlite"));
  OneKey secrets;
  SystemRandom random;
  HistoryCipher cipher;
  AppSettings settings;
  QuietPasteboard pasteboard;
  NoWorkspace workspace;
  SystemClock clock;
  NoTextGrader grader;
  NoImages codec;
  BlobFiles blobs{folder.path(), cipher, clock};
  ClipFiles files{blobs, codec};
  NoImageTexts imageTexts;
  std::unique_ptr<ClipDatabase> database;
  std::unique_ptr<ClipboardStore> store;
};

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
  ContentView view(*bench.store, bench.clock, nullptr);
  view.resize(480, 440);
  auto* const field = view.findChild<QLineEdit*>(QStringLiteral("searchField"));
  QImage canvas(view.size(), QImage::Format_ARGB32_Premultiplied);
  view.render(&canvas);
  for (auto _ : state) {
    state.PauseTiming();
    field->setText(query.chopped(1));
    // A capture of something else, so that no cache has the answer.
    bench.pasteboard.copy(QStringLiteral("x %1").arg(bench.pasteboard.count));
    bench.store->tick();
    bench.database->flush();
    view.render(&canvas);
    state.ResumeTiming();
    field->setText(query);
    view.render(&canvas);
  }
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
