#include "app/Localization.h"

#include <gmock/gmock.h>

#include <QCoreApplication>

#include "app/StatusItemState.h"
#include "capture/transforms/TextTransform.h"

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;

TEST(Localization, IsEnglishOnlyWhenThatIsTheUsersFirstLanguage) {
  EXPECT_EQ(interfaceLanguage({u"en-US"_s, u"en"_s}), u"en");
  EXPECT_EQ(interfaceLanguage({u"en_GB"_s}), u"en");
  EXPECT_EQ(interfaceLanguage({u"es-ES"_s, u"en-US"_s}), u"es");
  EXPECT_EQ(interfaceLanguage({u"ca-ES"_s, u"en-US"_s}), u"es");
  EXPECT_EQ(interfaceLanguage({u"enm"_s}), u"es");
  EXPECT_EQ(interfaceLanguage({u"C"_s}), u"es");
  EXPECT_EQ(interfaceLanguage({}), u"es");
}

TEST(Localization, LeavesTheSpanishTextsAsTheyAreAndInflectsCountedWords) {
  const Localization localization(u"es"_s);
  EXPECT_EQ(statusItemState(true, 0).description, u"Nimbrel en pausa");
  const auto items = [](int n) {
    return QCoreApplication::translate("nimbrel::GeneralSettingsTab", "%n elemento(s)", nullptr, n);
  };
  EXPECT_EQ(items(1), u"1 elemento");
  EXPECT_EQ(items(25), u"25 elementos");
  EXPECT_EQ(items(0), u"0 elementos");
}

TEST(Localization, SpeaksEnglish) {
  {
    const Localization localization(u"en"_s);
    EXPECT_EQ(statusItemState(false, 3).description, u"Nimbrel: 3 queued");
    EXPECT_EQ(label(TextTransform::uppercase), u"Upper case");
    EXPECT_EQ(QCoreApplication::translate("nimbrel::GeneralSettingsTab", "%n elemento(s)", nullptr, 1),
              u"1 item");
  }
  EXPECT_EQ(statusItemState(false, 3).description, u"Nimbrel: 3 en cola");
}

}  // namespace
}  // namespace nimbrel
