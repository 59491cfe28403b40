#include <gmock/gmock.h>

#include <QTest>
#include <memory>

#include "capture/CaptureDecision.h"
#include "integration/clients/SelectionOwner.h"
#include "platform/linux/X11Pasteboard.h"
#include "support/Fakes.h"

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;

/// A pasteboard and somebody else who copies to it.
class Subject {
 public:
  virtual ~Subject() = default;
  virtual Pasteboard& pasteboard() = 0;
  virtual void copyElsewhere(const QString& text) = 0;
};

class FakeSubject final : public Subject {
 public:
  Pasteboard& pasteboard() override { return fake_; }
  void copyElsewhere(const QString& text) override {
    fake_.copyText(text);
    if (fake_.handler) fake_.handler();
  }

 private:
  testing::FakePasteboard fake_;
};

class X11Subject final : public Subject {
 public:
  Pasteboard& pasteboard() override { return real_; }
  void copyElsewhere(const QString& text) override {
    owner_ = std::make_unique<testing::SelectionOwner>(testing::textContent(text.toUtf8()));
  }

 private:
  DesktopEntries entries_{{}};
  X11Pasteboard real_{entries_};
  std::unique_ptr<testing::SelectionOwner> owner_;
};

/// What every pasteboard promises, whatever the desktop.
template <typename Kind>
class PasteboardContract : public ::testing::Test {
 protected:
  PasteboardContract() { pasteboard.setReadPolicy(captureReadPolicy(SettingsValues{})); }

  /// Copies elsewhere and waits until the pasteboard knows.
  void copy(const QString& text) {
    const qint64 before = pasteboard.changeCount();
    subject.copyElsewhere(text);
    ASSERT_TRUE(QTest::qWaitFor(
        [&] { return pasteboard.changeCount() > before && pasteboard.currentText() == text; }));
  }

  Kind subject;
  Pasteboard& pasteboard = subject.pasteboard();
};

using Subjects = ::testing::Types<FakeSubject, X11Subject>;
TYPED_TEST_SUITE(PasteboardContract, Subjects);

TYPED_TEST(PasteboardContract, ReportsEachChangeOfOthersOnceAndInOrder) {
  const qint64 start = this->pasteboard.changeCount();
  this->copy(u"uno"_s);
  this->copy(u"dos"_s);
  QStringList texts;
  qint64 last = start;
  const auto changes = this->pasteboard.changesAfter(start);
  for (const PasteboardSnapshot& change : changes) {
    EXPECT_GT(change.changeCount, last);
    last = change.changeCount;
    if (change.text) texts.append(*change.text);
  }
  EXPECT_EQ(texts, (QStringList{u"uno"_s, u"dos"_s}));
  EXPECT_TRUE(this->pasteboard.changesAfter(start).isEmpty());
}

TYPED_TEST(PasteboardContract, NumbersItsOwnWritesAndLeavesThemOut) {
  const qint64 start = this->pasteboard.changeCount();
  const auto count = this->pasteboard.write({.fileUrls = {}, .text = u"propio"_s});
  ASSERT_TRUE(count);
  EXPECT_GT(*count, start);
  EXPECT_EQ(this->pasteboard.changeCount(), *count);
  EXPECT_EQ(this->pasteboard.currentText(), u"propio"_s);
  EXPECT_TRUE(this->pasteboard.changesAfter(start).isEmpty());
}

TYPED_TEST(PasteboardContract, ClearsOnlyWhatIsStillThere) {
  this->copy(u"uno"_s);
  const qint64 first = this->pasteboard.changeCount();
  this->copy(u"dos"_s);
  EXPECT_FALSE(this->pasteboard.clearIfUnchanged(first));
  EXPECT_EQ(this->pasteboard.currentText(), u"dos"_s);
  const auto cleared = this->pasteboard.clearIfUnchanged(this->pasteboard.changeCount());
  ASSERT_TRUE(cleared);
  EXPECT_FALSE(this->pasteboard.currentText());
}

TYPED_TEST(PasteboardContract, AnnouncesChangesOnTheMainThread) {
  int announced = 0;
  this->pasteboard.setChangeHandler([&] {
    ++announced;
    EXPECT_EQ(QThread::currentThread(), QCoreApplication::instance()->thread());
  });
  this->copy(u"uno"_s);
  EXPECT_TRUE(QTest::qWaitFor([&] { return announced > 0; }));
  this->pasteboard.setChangeHandler({});
}

}  // namespace
}  // namespace nimbrel
