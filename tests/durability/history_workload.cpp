#include <QCoreApplication>
#include <QGuiApplication>
#include <QRandomGenerator>
#include <QThread>
#include <chrono>
#include <cstdio>

#include "durability/RealHistory.h"
#include "platform/PasteboardTypes.h"

/// Works on a history until it is killed, and tells what is in it afterwards.
///
///   history_workload work FOLDER SEED   random copies, pins and deletions; says on its output, with the
///   seconds
///                                       of the monotonic clock, which clips have come ("+"), may go ("~")
///                                       and have gone ("-")
///   history_workload check FOLDER       lists the clips of the database, and what is wrong
namespace nimbrel::testing {
namespace {

using namespace Qt::StringLiterals;

double monotonicSeconds() {
  return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

void say(char sign, const ClipItem& clip) {
  std::printf("%c %s %.6f\n", sign, qUtf8Printable(clipIdText(clip.id)), monotonicSeconds());
  std::fflush(stdout);
}

class Workload {
 public:
  Workload(RealHistory& history, quint32 seed) : history_(history), random_(seed) {
    ClipboardStore& store = *history_.store;
    QObject::connect(&store, &ClipboardStore::clipInserted, &store,
                     [&store](qsizetype row) { say('+', store.items().at(row)->clip); });
    QObject::connect(&store, &ClipboardStore::clipsRemoved, &store, [](const auto&, const auto& clips) {
      for (const ClipRef& clip : clips)
        say('-', clip->clip);
    });
  }

  [[noreturn]] void run() {
    for (;;) {
      step();
      QCoreApplication::processEvents();
      QThread::usleep(random_.bounded(2000));
    }
  }

 private:
  void step() {
    switch (random_.bounded(12)) {
      case 0:
      case 1:
        return copyImage();
      case 2:
      case 3:
        return copyFormatted();
      case 4:
        return history_.store->togglePin(someId());
      case 5:
        return remove();
      case 6:
        if (random_.bounded(40) == 0) clear();
        return;
      default:
        return copyText();
    }
  }

  [[nodiscard]] QUuid someId() {
    const auto& items = history_.store->items();
    return items.isEmpty() ? QUuid() : items.at(random_.bounded(static_cast<int>(items.size())))->clip.id;
  }

  [[nodiscard]] QString someText() {
    return u"texto %1 "_s.arg(random_.bounded(500)).repeated(1 + random_.bounded(200));
  }

  void remove() {
    const auto row = history_.store->items().rowOf(someId());
    if (!row) return;
    const ClipItem clip = history_.store->items().at(*row)->clip;
    say('~', clip);
    history_.store->removeClip(clip.id);
  }

  void clear() {
    sayOldest(history_.store->items().size());
    history_.store->clearHistory();
  }

  /// What may be gone before anybody could say so.
  void sayOldest(qsizetype count) {
    const auto& items = history_.store->items();
    for (qsizetype row = items.size() - 1; row >= 0 && count > 0; --row) {
      if (items.at(row)->clip.pinned) continue;
      say('~', items.at(row)->clip);
      --count;
    }
  }

  void copy(const PasteboardSnapshot& snapshot) {
    if (history_.store->items().size() >= history_.settings.maxUnpinned - 3) sayOldest(3);
    history_.pasteboard.copy(snapshot);
    history_.store->tick();
  }

  void copyText() {
    PasteboardSnapshot snapshot;
    snapshot.types = {pasteboardType::plainText.toString()};
    snapshot.text = someText();
    copy(snapshot);
  }

  void copyFormatted() {
    PasteboardSnapshot snapshot;
    snapshot.types = {pasteboardType::plainText.toString(), pasteboardType::rtf.toString()};
    snapshot.text = someText();
    snapshot.rtf = QByteArray(random_.bounded(200'000), 'r') + QByteArray::number(random_.generate());
    copy(snapshot);
  }

  void copyImage() {
    PasteboardSnapshot snapshot;
    snapshot.types = {pasteboardType::png.toString()};
    snapshot.image = QByteArray(1 + random_.bounded(500'000), 'p') + QByteArray::number(random_.generate());
    copy(snapshot);
  }

  RealHistory& history_;
  QRandomGenerator random_;
};

int check(RealHistory& history) {
  const auto loaded = history.database->loadAll();
  int problems = 0;
  const auto complain = [&problems](const QString& what) {
    ++problems;
    std::printf("! %s\n", qUtf8Printable(what));
  };
  if (loaded.unreadableCount > 0) complain(u"unreadable rows: %1"_s.arg(loaded.unreadableCount));
  for (const ClipRef& ref : loaded.clips) {
    const ClipItem& clip = ref->clip;
    std::printf("= %s\n", qUtf8Printable(clipIdText(clip.id)));
    if (clip.imageFile && !history.blobs.loadImageData(*clip.imageFile))
      complain(u"image "_s + *clip.imageFile);
    if (clip.richFile && !history.blobs.loadRichData(*clip.richFile)) complain(u"format "_s + *clip.richFile);
  }
  return problems == 0 ? 0 : 1;
}

}  // namespace
}  // namespace nimbrel::testing

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  const QStringList arguments = QCoreApplication::arguments();
  if (arguments.size() < 3) return 2;
  nimbrel::testing::RealHistory history(arguments.at(2));
  if (arguments.at(1) == u"check") return nimbrel::testing::check(history);
  history.settings.maxUnpinned = 200;
  nimbrel::testing::Workload(history, arguments.value(3).toUInt()).run();
}
