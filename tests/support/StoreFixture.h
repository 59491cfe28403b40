#pragma once

#include <gmock/gmock.h>

#include <QTemporaryDir>
#include <memory>

#include "capture/ClipboardStore.h"
#include "storage/HistoryCipher.h"
#include "storage/RandomSource.h"
#include "support/Fakes.h"
#include "support/LogRecorder.h"

namespace nimbrel::testing {

/// A text clip with everything that most tests do not care about filled in.
[[nodiscard]] ClipItem textClip(const QString& text, double secondsSince1970 = 1000);

/// The same clip as the history hands it around.
[[nodiscard]] ClipRef indexed(const ClipItem& clip);

/// A store on fake ports and a real database in a folder of its own.
class StoreFixture : public ::testing::Test {
 protected:
  StoreFixture();
  ~StoreFixture() override;

  /// Makes the store; what must be there at its launch is prepared before.
  ClipboardStore& launch();
  /// Ends the store and its database, as a quit would.
  void quit();
  ClipboardStore& store() { return *store_; }
  ClipDatabase& database() { return *database_; }

  /// Copies in another program and lets the store see it.
  void copyText(const QString& text);
  /// The same with a text that is graded as a credential.
  void copySecret(const QString& text);
  /// Copies a picture with these bytes.
  void copyImage(const QByteArray& bytes);
  /// Copies a file.
  void copyFile(const QString& path);
  /// Copies a text with its RTF.
  void copyRtf(const QString& text, const QByteArray& rtf);
  [[nodiscard]] QStringList texts() const;
  [[nodiscard]] const ClipItem& clip(qsizetype row) const { return store_->items().at(row)->clip; }
  [[nodiscard]] QString path(const QString& name) const { return folder_.filePath(name); }

  LogRecorder log;
  SettingsValues settings;
  FakePasteboard pasteboard;
  FakeWorkspace workspace;
  ManualClock clock;
  FakeSecretStore secrets;
  SystemRandom random;
  FakeTextGrader grader;
  FakeSideFiles files;
  FakeImageCodec images;
  FakeImageTextQueue imageTexts;

 private:
  QTemporaryDir folder_;
  std::unique_ptr<HistoryCipher> cipher_;
  std::unique_ptr<ClipDatabase> database_;
  std::unique_ptr<ClipboardStore> store_;
};

}  // namespace nimbrel::testing
