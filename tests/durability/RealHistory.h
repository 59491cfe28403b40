#pragma once

#include <memory>

#include "capture/ClipFiles.h"
#include "capture/ClipboardStore.h"
#include "capture/DetectingTextGrader.h"
#include "storage/BlobFiles.h"
#include "storage/ClipDatabase.h"
#include "storage/HistoryCipher.h"
#include "storage/RandomSource.h"
#include "storage/StorageDirectory.h"
#include "support/Fakes.h"

namespace nimbrel::testing {

/// A key store with the same key at every start.
class FixedSecretStore final : public SecretStore {
 public:
  [[nodiscard]] SecretLookup find(const SecretItem&) override {
    return {SecretLookup::Outcome::found, QByteArray(32, 'k'), 0};
  }
  [[nodiscard]] int add(const SecretItem&, const QByteArray&) override { return -1; }
};

/// The history as the program has it, on a real disk and with the real clock; only the desktop is missing.
class RealHistory final {
 public:
  explicit RealHistory(const QString& dataFolder)
      : directory(makeStorageDirectory(dataFolder)),
        cipher(secrets, random),
        blobs(directory, cipher, clock),
        files(std::make_unique<ClipFiles>(blobs, codec)),
        database(std::make_unique<ClipDatabase>(databasePath(directory), cipher)),
        store(std::make_unique<ClipboardStore>(ClipboardStoreParts{.settings = settings,
                                                                   .pasteboard = pasteboard,
                                                                   .workspace = workspace,
                                                                   .clock = clock,
                                                                   .database = *database,
                                                                   .grader = grader,
                                                                   .files = *files,
                                                                   .images = codec,
                                                                   .imageTexts = imageTexts,
                                                                   .makeId = &QUuid::createUuid})) {}

  QString directory;
  FixedSecretStore secrets;
  SystemRandom random;
  SystemClock clock;
  HistoryCipher cipher;
  SettingsValues settings;
  FakePasteboard pasteboard;
  FakeWorkspace workspace;
  DetectingTextGrader grader;
  FakeImageCodec codec;
  FakeImageTextQueue imageTexts;
  BlobFiles blobs;
  std::unique_ptr<ClipFiles> files;
  std::unique_ptr<ClipDatabase> database;
  std::unique_ptr<ClipboardStore> store;
};

}  // namespace nimbrel::testing
