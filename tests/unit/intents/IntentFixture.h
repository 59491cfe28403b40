#pragma once

#include <QTest>
#include <optional>

#include "intents/IntentServices.h"
#include "panel/lock/Lock.h"
#include "support/StoreFixture.h"

namespace nimbrel::testing {

/// The real store, lock and permission on fake ports.
class IntentFixture : public StoreFixture {
 protected:
  /// What an intent came to; empty while it is under way.
  template <typename T>
  struct Outcome {
    std::optional<IntentResult<T>> result;

    [[nodiscard]] IntentDone<T> taker() {
      return [this](const IntentResult<T>& given) { result = given; };
    }
    /// Waits for it.
    const T& value() {
      EXPECT_TRUE(QTest::qWaitFor([this] { return result.has_value(); }));
      return std::get<T>(*result);
    }
    [[nodiscard]] std::optional<BrevinIntentError> error() const {
      if (!result || !std::holds_alternative<BrevinIntentError>(*result)) return std::nullopt;
      return std::get<BrevinIntentError>(*result);
    }
  };

  void collect(qsizetype row, const QString& name) { store().setCollection(clip(row).id, name); }

  ClipboardStore& launched = launch();
  FakeAccessibilityTrust trust;
  FakeOpener opener;
  FakeDeviceAuthenticator authenticator;
  Lock lock{authenticator, clock};
  PermissionState permission{trust, pasteboard, opener};
  QStringList pasted;
  std::optional<BrevinIntentError> pasteFailure;
  IntentServices services{.store = launched,
                          .settings = settings,
                          .lock = lock,
                          .permission = permission,
                          .clock = clock,
                          .pasteClipNow = [this](const ClipItem& clip) {
                            if (!pasteFailure) pasted.append(clip.text);
                            return pasteFailure;
                          }};
};

}  // namespace nimbrel::testing
