#include "panel/PanelTheme.h"

#include <gmock/gmock.h>

#include <QFontMetrics>
#include <cmath>
#include <string_view>

#include "look/Tones.h"
#include "panel/HintLine.h"

namespace nimbrel {
namespace {

/// The relative luminance and the contrast ratio of the Web Content Accessibility Guidelines 2.1.
double luminance(const QColor& color) {
  const auto linear = [](double part) {
    return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

double contrast(const QColor& a, const QColor& b) {
  const double first = luminance(a);
  const double second = luminance(b);
  return (std::max(first, second) + 0.05) / (std::min(first, second) + 0.05);
}

QColor laidOn(const QColor& surface, const QColor& over) {
  return blend(QColor(over.red(), over.green(), over.blue()), surface, over.alphaF());
}

class PanelThemeTest : public ::testing::TestWithParam<bool> {
 protected:
  PanelTheme theme = panelTheme(GetParam() ? QPalette(QColor(0x30, 0x30, 0x30), QColor(0x20, 0x20, 0x20))
                                           : QPalette(QColor(0xe0, 0xe0, 0xe0), QColor(0xff, 0xff, 0xff)));
};

constexpr double kLegible = 4.5;

TEST_P(PanelThemeTest, WritesLegiblyOnEverySurface) {
  const QColor plain = theme.background;
  for (const QColor& surface : {plain, laidOn(plain, theme.selection), laidOn(plain, theme.field),
                                laidOn(laidOn(plain, theme.selection), theme.badge)}) {
    EXPECT_GE(contrast(theme.text, surface), kLegible);
    EXPECT_GE(contrast(theme.secondaryText, surface), kLegible) << surface.name().toStdString();
  }
  for (const QColor& surface : {plain, laidOn(plain, theme.selection), laidOn(plain, theme.field)})
    EXPECT_GE(contrast(theme.accent, surface), kLegible) << surface.name().toStdString();
  EXPECT_GE(contrast(theme.placeholder, laidOn(plain, theme.field)), kLegible);
  EXPECT_GE(contrast(theme.text, theme.segment), kLegible);
  EXPECT_GE(contrast(theme.chipText, laidOn(plain, theme.chip)), kLegible);
  EXPECT_GE(contrast(theme.chipText, laidOn(theme.sheet, theme.chip)), kLegible);
  for (const QColor& text : {theme.text, theme.secondaryText, theme.danger})
    EXPECT_GE(contrast(text, theme.sheet), kLegible);
  for (const BannerTones& banner : {theme.notice, theme.alarm})
    EXPECT_GE(contrast(banner.text, banner.background), kLegible);
}

TEST_P(PanelThemeTest, ShowsWhereTheKeyboardIs) {
  // Three to one is what an outline needs to be seen.
  EXPECT_GE(contrast(theme.accent, theme.background), 3.0);
  EXPECT_GE(contrast(theme.accent, theme.segment), 3.0);
}

INSTANTIATE_TEST_SUITE_P(LightAndDark, PanelThemeTest, ::testing::Bool());

TEST(PanelTiles, AreDarkEnoughForWhiteLetters) {
  for (const QRgb tile : kTileColors)
    EXPECT_GE(contrast(Qt::white, QColor::fromRgb(tile)), kLegible) << QColor(tile).name().toStdString();
}

TEST(PanelFonts, HaveTheGlyphsOfTheHints) {
  const QFontMetrics metrics(panelFont(11));
  for (const char32_t glyph : std::u32string_view(U"⌘⌫↩␣⌥↑↓–…•"))
    EXPECT_TRUE(metrics.inFontUcs4(glyph)) << std::hex << static_cast<unsigned>(glyph);
}

}  // namespace
}  // namespace nimbrel
