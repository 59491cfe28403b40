#include "platform/macos/values/WindowValues.h"

#include <gtest/gtest.h>

#include "platform/macos/values/ImageTypes.h"
#include "platform/macos/values/LogTypes.h"
#include "platform/macos/values/SettingsUrls.h"

namespace nimbrel::macos {
namespace {

TEST(WindowValues, AreThoseThatAFloatingPanelHas) {
  EXPECT_EQ(kPanelStyleMask, 128);
  EXPECT_EQ(kPanelBacking, 2);
  EXPECT_EQ(kPanelLevel, 3);
  EXPECT_EQ(kPanelCollectionBehavior, 0x101);
}

TEST(WindowValues, AreThoseOfAnApplicationInTheMenuBar) {
  EXPECT_EQ(kActivationPolicy, 1);
  EXPECT_EQ(kStatusItemLength, -2.0);
  EXPECT_EQ(kTitledStatusItemLength, -1.0);
}

TEST(WindowValues, AreThoseOfAWindowWithATitleAndACloseButton) {
  EXPECT_EQ(kSettingsStyleMask, 3);
  EXPECT_EQ(kSettingsCollectionBehavior, 2);
}

TEST(SettingsUrls, OpenThePrivacyPaneAndItsAccessibilityPart) {
  EXPECT_EQ(kPrivacySettings, u"x-apple.systempreferences:com.apple.preference.security");
  EXPECT_EQ(kAccessibilitySettings, kPrivacySettings.toString() + QStringLiteral("?Privacy_Accessibility"));
}

TEST(ImageTypes, LetRasterImagesThroughAndNoDocuments) {
  for (const char* const type : {"public.png", "public.jpeg", "public.tiff", "public.heic"}) {
    EXPECT_TRUE(isDecodable(QLatin1String(type))) << type;
  }
  for (const char* const type : {"com.adobe.pdf", "public.svg-image", "com.adobe.raw-image", ""}) {
    EXPECT_FALSE(isDecodable(QLatin1String(type))) << type;
  }
}

TEST(LogTypes, LogAbsorbedFailuresAsErrors) {
  EXPECT_EQ(logType(QtCriticalMsg), 0x10);
  EXPECT_EQ(logType(QtWarningMsg), 0x00);
  EXPECT_EQ(logType(QtInfoMsg), 0x01);
  EXPECT_EQ(logType(QtDebugMsg), 0x02);
  EXPECT_EQ(logType(QtFatalMsg), 0x11);
}

}  // namespace
}  // namespace nimbrel::macos
