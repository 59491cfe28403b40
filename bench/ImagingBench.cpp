#include <benchmark/benchmark.h>

#include <QGuiApplication>

#include "platform/linux/imaging/ConfinedImaging.h"
#include "support/Pictures.h"

/// Images through the confined helper, its process and its pipe included.
namespace nimbrel::bench {
namespace {

using namespace testing;

constexpr QSize k4K(3840, 2160);
constexpr int kThumbnail = 256;

QString helperProgram() {
  return QStringLiteral(NIMBREL_IMAGING);
}

/// A copied screenshot becomes what is stored of it, with its thumbnail.
void store4KScreenshot(benchmark::State& state) {
  ConfinedImageCodec codec(helperProgram());
  const QByteArray png = encoded(screenshotPicture(k4K), "png");
  qsizetype stored = 0;
  for (auto _ : state) {
    const auto outcome = codec.encodePng(png, kThumbnail, {});
    if (const auto* const result = std::get_if<ImageCodec::Encoded>(&outcome)) stored = result->png.size();
  }
  state.counters["copied"] = static_cast<double>(png.size());
  state.counters["stored"] = static_cast<double>(stored);
}
BENCHMARK(store4KScreenshot)->Unit(benchmark::kMillisecond)->Iterations(10)->UseRealTime();

/// The same with pixels that hardly compress, as a photo's.
void storeNoise(benchmark::State& state) {
  ConfinedImageCodec codec(helperProgram());
  const QByteArray png = encoded(noisePicture({1920, 1080}), "png");
  for (auto _ : state)
    benchmark::DoNotOptimize(codec.encodePng(png, kThumbnail, {}));
}
BENCHMARK(storeNoise)->Unit(benchmark::kMillisecond)->Iterations(5)->UseRealTime();

void thumbnailOf4KScreenshot(benchmark::State& state) {
  ConfinedImageCodec codec(helperProgram());
  const QByteArray png = encoded(screenshotPicture(k4K), "png");
  for (auto _ : state)
    benchmark::DoNotOptimize(codec.thumbnail(png, kThumbnail, {}));
}
BENCHMARK(thumbnailOf4KScreenshot)->Unit(benchmark::kMillisecond)->Iterations(10)->UseRealTime();

void startHelper(benchmark::State& state) {
  ConfinedImageCodec codec(helperProgram());
  const QByteArray png = encoded(noisePicture({8, 8}), "png");
  for (auto _ : state) {
    benchmark::DoNotOptimize(codec.thumbnail(png, kThumbnail, {}));
    state.PauseTiming();
    codec.helper().end();
    state.ResumeTiming();
  }
}
BENCHMARK(startHelper)->Unit(benchmark::kMillisecond)->Iterations(10)->UseRealTime();

/// Reading a page, in so many pixels a letter; counts the words that were read right.
void readText(benchmark::State& state, const QString& family, bool dark) {
  ConfinedTextRecognizer recognizer(helperProgram());
  const QStringList lines{
      QStringLiteral("El historial guarda lo que copias durante el día"),
      QStringLiteral("The quick brown fox jumps over the lazy dog"),
      QStringLiteral("Mañana la reunión será en la habitación número 47"),
      QStringLiteral("Please review the attached invoice before Friday"),
      QStringLiteral("Camión, árbol, pingüino, corazón, después, también"),
      QStringLiteral("Total 1.234,50 EUR pagado el 14/03/2026 a las 15:09"),
  };
  const TextStyle style{.family = family,
                        .pixelSize = static_cast<int>(state.range(0)),
                        .ink = dark ? QColor(0xe6e6e6) : QColor(0x1a1a1a),
                        .paper = dark ? QColor(0x202124) : QColor(Qt::white)};
  const QByteArray png = encoded(pictureOf(lines, style), "png");
  QStringList read;
  for (auto _ : state) {
    const auto outcome = recognizer.recognizeText(png, {});
    read.clear();
    if (const auto* const found = std::get_if<QList<RecognizedLine>>(&outcome)) {
      for (const RecognizedLine& line : *found)
        read.append(line.text);
    }
  }
  state.counters["words"] = shareOfWords(lines.join(u' ').split(u' '), read.join(u' '));
}
BENCHMARK_CAPTURE(readText, sans_light, QStringLiteral("DejaVu Sans"), false)
    ->Arg(11)
    ->Arg(13)
    ->Arg(16)
    ->Arg(32)
    ->Arg(64)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(3)
    ->UseRealTime();
BENCHMARK_CAPTURE(readText, sans_dark, QStringLiteral("DejaVu Sans"), true)
    ->Arg(11)
    ->Arg(13)
    ->Arg(16)
    ->Arg(32)
    ->Arg(64)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(3)
    ->UseRealTime();
BENCHMARK_CAPTURE(readText, inter_light, QStringLiteral("Inter"), false)
    ->Arg(13)
    ->Arg(16)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(3)
    ->UseRealTime();
BENCHMARK_CAPTURE(readText, serif_light, QStringLiteral("DejaVu Serif"), false)
    ->Arg(13)
    ->Arg(16)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(3)
    ->UseRealTime();
BENCHMARK_CAPTURE(readText, mono_dark, QStringLiteral("DejaVu Sans Mono"), true)
    ->Arg(13)
    ->Arg(16)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(3)
    ->UseRealTime();

void readText4KScreenshot(benchmark::State& state) {
  ConfinedTextRecognizer recognizer(helperProgram());
  const QByteArray png = encoded(screenshotPicture(k4K), "png");
  for (auto _ : state)
    benchmark::DoNotOptimize(recognizer.recognizeText(png, {}));
}
BENCHMARK(readText4KScreenshot)->Unit(benchmark::kMillisecond)->Iterations(1)->UseRealTime();

}  // namespace
}  // namespace nimbrel::bench

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QGuiApplication application(argc, argv);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
