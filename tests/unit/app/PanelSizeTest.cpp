#include "app/PanelSize.h"

#include <gmock/gmock.h>

#include <QTest>

#include "app/FloatingPanel.h"
#include "support/Fakes.h"

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;

constexpr QSize kStandard(480, 440);

TEST(PanelSize, IsTheStandardUntilTheUserHasGivenAnother) {
  testing::FakeUserDefaults defaults;
  EXPECT_EQ(storedPanelSize(defaults, kStandard), kStandard);
  storePanelSize(defaults, {500, 600});
  EXPECT_EQ(storedPanelSize(defaults, kStandard), QSize(500, 600));
  EXPECT_TRUE(defaults.stored.contains(u"panelWidth"_s));
}

TEST(PanelSize, StaysWithinItsLimitsWhateverIsStored) {
  testing::FakeUserDefaults defaults;
  storePanelSize(defaults, {1, 100'000});
  EXPECT_EQ(storedPanelSize(defaults, kStandard), QSize(340, 640));
  defaults.set(u"panelWidth"_s, std::numeric_limits<qint64>::max());
  defaults.set(u"panelHeight"_s, u"alto"_s);
  EXPECT_EQ(storedPanelSize(defaults, kStandard), QSize(640, 440));
}

TEST(ResizeHandles, DrawThePanelLargerAndSmallerWithinItsLimits) {
  using Backdrop = PanelWindow::Backdrop;
  for (const Backdrop backdrop : {Backdrop::opaque, Backdrop::translucent, Backdrop::shadowed}) {
    FloatingPanel panel;
    panel.setBackdrop(backdrop);
    panel.resizePanel(kStandard);
    panel.show();
    int told = 0;
    QObject::connect(&panel, &FloatingPanel::resizedByUser, &panel, [&] { ++told; });
    const int margin = (panel.width() - kStandard.width()) / 2;
    const auto draw = [&](const QPoint& from, const QPoint& by) {
      QWidget* const handle = panel.childAt(from);
      ASSERT_TRUE(handle);
      const QPoint at = handle->mapFrom(&panel, from);
      QTest::mousePress(handle, Qt::LeftButton, {}, at);
      QMouseEvent move(QEvent::MouseMove, QPointF(at + by), QPointF(handle->mapToGlobal(at) + by),
                       Qt::LeftButton, Qt::LeftButton, {});
      QCoreApplication::sendEvent(handle, &move);
      QTest::mouseRelease(handle, Qt::LeftButton);
    };
    const QPoint corner(margin + kStandard.width() - 5, margin + kStandard.height() - 5);
    draw(corner, {30, 20});
    EXPECT_EQ(panel.panelSize(), kStandard + QSize(30, 20));
    draw(corner + QPoint(30, 20), {-1000, -1000});
    EXPECT_EQ(panel.panelSize(), FloatingPanel::kMinimumSize);
    const QPoint before = panel.pos();
    draw({margin + 1, panel.height() / 2}, {-40, 0});
    EXPECT_EQ(panel.panelSize().width(), FloatingPanel::kMinimumSize.width() + 40);
    EXPECT_EQ(panel.pos(), before - QPoint(40, 0));
    EXPECT_EQ(told, 3);
  }
}

/// One that moves a panel in its own way.
class HostWindow final : public PanelWindow {
 public:
  [[nodiscard]] Backdrop backdrop() override { return Backdrop::shadowed; }
  [[nodiscard]] QRect frame() const override { return frame_; }
  void setFrame(const QRect& frame) override { frame_ = frame; }
  void setPanelArea(const QRect&) override {}
  void present() override {}
  void dismiss(bool) override {}
  void whenFocusReturned(std::function<void(bool)>) override {}
  void stepBack() override {}
  void comeForward() override {}
  void setResignHandler(std::function<void()>) override {}

 private:
  QRect frame_{7, 9, 480, 440};
};

TEST(FloatingPanel, LeavesWhereItIsToItsWindow) {
  FloatingPanel panel;
  HostWindow window;
  const QPoint own = panel.pos();
  panel.setWindow(&window);
  panel.setBackdrop(window.backdrop());
  panel.movePanel({100, 200});
  EXPECT_EQ(window.frame(), QRect(100, 200, 480, 440));
  panel.resizePanel({400, 500});
  EXPECT_EQ(window.frame(), QRect(100, 200, 400, 500));
  EXPECT_EQ(panel.panelArea().topLeft(), QPoint(100, 200));
  EXPECT_EQ(panel.pos(), own);
}

}  // namespace
}  // namespace nimbrel
