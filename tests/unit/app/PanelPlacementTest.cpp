#include "app/PanelPlacement.h"

#include <gmock/gmock.h>

namespace nimbrel {
namespace {

constexpr QSize kPanel(480, 440);
// A bar of 30 points at the top of the first screen, a dock of 50 at the left of the second.
const QList<ScreenFrame> kScreens{{QRect(0, 0, 1920, 1080), QRect(0, 30, 1920, 1050)},
                                  {QRect(1920, 0, 1280, 800), QRect(1970, 0, 1230, 800)}};

QPoint origin(int x, int y) {
  return panelOrigin(kPanel, QPoint(x, y), kScreens);
}

TEST(PanelPlacement, HangsCentredJustUnderThePointer) {
  EXPECT_EQ(origin(900, 300), QPoint(660, 310));
}

TEST(PanelPlacement, AtTheTopLeftKeepsTheMarginsOfTheVisibleFrame) {
  EXPECT_EQ(origin(0, 0), QPoint(8, 38));
}

TEST(PanelPlacement, AtTheBottomRightKeepsTheMarginsOfTheVisibleFrame) {
  EXPECT_EQ(origin(1919, 1079), QPoint(1920 - 480 - 8, 1080 - 440 - 8));
}

TEST(PanelPlacement, StaysOnTheScreenOfThePointer) {
  EXPECT_EQ(origin(1920, 100), QPoint(1978, 110));
  EXPECT_EQ(origin(3199, 799), QPoint(3200 - 480 - 8, 800 - 440 - 8));
}

TEST(PanelPlacement, OutsideOfEveryScreenIsNotKeptIn) {
  EXPECT_EQ(origin(5000, 5000), QPoint(4760, 5010));
  EXPECT_EQ(panelOrigin(kPanel, QPoint(10, 10), {}), QPoint(-230, 20));
}

TEST(PanelPlacement, OfAPanelTooLargeEndsAtTheRightAndTopMargins) {
  const QList<ScreenFrame> small{{QRect(0, 0, 400, 300), QRect(0, 0, 400, 300)}};
  EXPECT_EQ(panelOrigin(kPanel, QPoint(200, 150), small), QPoint(400 - 480 - 8, 8));
}

TEST(PanelPlacement, TakesTheFirstOfOverlappingScreens) {
  const QList<ScreenFrame> mirrored{{QRect(0, 0, 1920, 1080), QRect(0, 0, 1920, 1080)},
                                    {QRect(0, 0, 800, 600), QRect(0, 0, 800, 600)}};
  EXPECT_EQ(panelOrigin(kPanel, QPoint(700, 500), mirrored), QPoint(460, 510));
}

TEST(CentredOrigin, IsInTheMiddleOfTheVisibleFrameOfTheScreenWithThePointer) {
  const QList<ScreenFrame> screens{{{0, 0, 1000, 800}, {0, 30, 1000, 770}},
                                   {{1000, 0, 600, 600}, {1000, 0, 600, 560}}};
  EXPECT_EQ(centredOrigin({200, 100}, {10, 10}, screens), QPoint(400, 365));
  EXPECT_EQ(centredOrigin({200, 100}, {1300, 10}, screens), QPoint(1200, 230));
  EXPECT_EQ(centredOrigin({200, 100}, {5000, 10}, screens), QPoint(400, 365));
  EXPECT_EQ(centredOrigin({200, 100}, {10, 10}, {}), QPoint());
}

}  // namespace
}  // namespace nimbrel
