#pragma once

#include <gmock/gmock.h>

#include <QTest>
#include <memory>

#include "capture/CaptureDecision.h"
#include "integration/clients/SelectionOwner.h"
#include "integration/clients/SelectionRequestor.h"
#include "platform/linux/X11Pasteboard.h"
#include "support/Fakes.h"
#include "support/LogRecorder.h"

namespace nimbrel::testing {

/// The real pasteboard on a real X server.
class X11PasteboardFixture : public ::testing::Test {
 protected:
  X11PasteboardFixture() {
    // The owner of the test before is gone, but the server may not have noticed yet.
    EXPECT_TRUE(QTest::qWaitFor([this] { return !requestor.hasOwner(); }));
    pasteboard.setReadPolicy(captureReadPolicy(SettingsValues{}));
    pasteboard.setChangeHandler([this] { collect(); });
  }

  void collect() {
    // The count first: a change that arrives in between is then only looked for once more, and not skipped.
    const qint64 count = pasteboard.changeCount();
    seen += pasteboard.changesAfter(last);
    last = count;
  }
  /// Waits until a text has been captured.
  [[nodiscard]] bool captured(const QString& text) {
    return QTest::qWaitFor([&] {
      collect();
      return std::any_of(seen.begin(), seen.end(),
                         [&](const PasteboardSnapshot& snapshot) { return snapshot.text == text; });
    });
  }
  /// Waits until so many changes have been seen.
  [[nodiscard]] bool sawChanges(qsizetype count, int patience = 5000) {
    return QTest::qWaitFor(
        [&] {
          collect();
          return seen.size() >= count;
        },
        patience);
  }
  std::unique_ptr<SelectionOwner> copy(const QByteArray& utf8, Manners manners = Manners::honest) {
    return std::make_unique<SelectionOwner>(textContent(utf8), manners);
  }

  LogRecorder log;
  DesktopEntries entries{{}};
  FakeImageCodec codec;
  X11Pasteboard pasteboard{entries, &codec};
  SelectionRequestor requestor;
  qint64 last = 0;
  QList<PasteboardSnapshot> seen;
};

}  // namespace nimbrel::testing
