#pragma once

#include <QTemporaryDir>
#include <memory>

#include "bench/BenchHistory.h"
#include "capture/ClipFiles.h"
#include "capture/ClipboardStore.h"
#include "capture/DetectingTextGrader.h"
#include "look/icons/InstalledIcons.h"
#include "platform/AccessibilityTrust.h"
#include "platform/ApplicationCatalog.h"
#include "platform/KeyReader.h"
#include "platform/Opener.h"
#include "platform/PasteboardTypes.h"
#include "storage/HistoryCipher.h"
#include "storage/RandomSource.h"

/// The history without a desktop.
namespace nimbrel::bench {

class OneKey final : public SecretStore {
 public:
  [[nodiscard]] SecretLookup find(const SecretItem&) override {
    return {SecretLookup::Outcome::found, QByteArray(32, 'k'), 0};
  }
  [[nodiscard]] int add(const SecretItem&, const QByteArray&) override { return -1; }
};

class QuietPasteboard final : public Pasteboard {
 public:
  [[nodiscard]] Access access() const override { return Access::alwaysAllow; }
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
  [[nodiscard]] std::optional<RunningApplication> frontmostOtherApplication() const override { return {}; }
};

class NoOpener final : public Opener {
 public:
  bool openUrl(const QUrl&) override { return false; }
  bool reveal(const QList<QUrl>&) override { return false; }
  bool openPrivacySettings() override { return false; }
  bool openKeyStore() override { return false; }
};

class NoApplications final : public ApplicationCatalog {
 public:
  [[nodiscard]] QList<InstalledApplication> applications() override { return {}; }
  [[nodiscard]] QIcon icon(const InstalledApplication&) const override { return {}; }
};

class FullTrust final : public AccessibilityTrust {
 public:
  [[nodiscard]] bool isTrusted() const override { return true; }
  bool request() override { return true; }
};

class NoKeys final : public KeyReader {
 public:
  [[nodiscard]] std::optional<PressedKey> read(const QKeyEvent&) const override { return {}; }
};

class NoImages final : public ImageCodec {
 public:
  [[nodiscard]] std::variant<Encoded, ImageError> encodePng(const QByteArray&, int,
                                                            const StopToken&) override {
    return ImageError{};
  }
  [[nodiscard]] std::variant<QImage, ImageError> thumbnail(const QByteArray&, int,
                                                           const StopToken&) override {
    return ImageError{};
  }
  [[nodiscard]] std::variant<QByteArray, ImageError> convert(const QByteArray&, Format,
                                                             const StopToken&) override {
    return ImageError{};
  }
};

class NoImageTexts final : public ImageTextQueue {
 public:
  void setHandler(Recognized) override {}
  void enqueue(const QUuid&, const QString&) override {}
  void cancel(const QUuid&) override {}
  void cancelAll() override {}
};

/// A database file with clips, and a store on it.
class Bench final {
 public:
  explicit Bench(int count) : Bench(makeClips(count)) {}
  explicit Bench(const QList<ClipItem>& clips) : cipher(secrets, random) {
    ClipDatabase filled(path, cipher);
    if (!filled.saveMany(clips)) std::abort();
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
  SettingsValues settings;
  QuietPasteboard pasteboard;
  NoWorkspace workspace;
  SystemClock clock;
  DetectingTextGrader grader;
  NoImages codec;
  BlobFiles blobs{folder.path(), cipher, clock};
  ClipFiles files{blobs, codec};
  NoImageTexts imageTexts;
  std::unique_ptr<ClipDatabase> database;
  std::unique_ptr<ClipboardStore> store;
};

}  // namespace nimbrel::bench
