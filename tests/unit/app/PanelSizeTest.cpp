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
  for (const bool blended : {false, true}) {
    FloatingPanel panel;
    panel.setBlended(blended);
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

}  // namespace
}  // namespace nimbrel
