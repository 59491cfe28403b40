#include "platform/linux/SelectionReadPlan.h"

#include <gmock/gmock.h>

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;

class SelectionReadPlanTest : public ::testing::Test {
 protected:
  [[nodiscard]] QString next() const {
    const auto step = plan.nextStep();
    return step ? step->target : QString();
  }

  PasteboardReadPolicy policy{.ignoredTypes = {u"org.nspasteboard.ConcealedType"_s},
                              .maxTextBytes = 100,
                              .maxImageBytes = 200,
                              .maxRichBytes = 50,
                              .wantsRichText = true};
  SelectionReadPlan plan{policy};
};

TEST_F(SelectionReadPlanTest, ReadsNothingOfConcealedContent) {
  plan.setTargets(QStringList{u"UTF8_STRING"_s, u"x-kde-passwordManagerHint"_s});
  EXPECT_FALSE(plan.nextStep());
  EXPECT_TRUE(plan.snapshot().types.contains(u"org.nspasteboard.ConcealedType"_s));
  EXPECT_FALSE(plan.snapshot().text);
}

TEST_F(SelectionReadPlanTest, EndsWithTheFirstFormatThatHasContent) {
  plan.setTargets(QStringList{u"UTF8_STRING"_s, u"text/uri-list"_s, u"image/png"_s});
  EXPECT_EQ(next(), u"text/uri-list"_s);
  plan.accept("file:///a\r\n");
  EXPECT_FALSE(plan.nextStep());
  EXPECT_EQ(plan.snapshot().fileUrls.size(), 1);
}

TEST_F(SelectionReadPlanTest, GoesOnToTextWhenTheUrlsAreNoFiles) {
  plan.setTargets(QStringList{u"UTF8_STRING"_s, u"text/uri-list"_s});
  plan.accept("https://example.org\r\n");
  EXPECT_EQ(next(), u"UTF8_STRING"_s);
  EXPECT_TRUE(plan.snapshot().fileUrls.isEmpty());
}

TEST_F(SelectionReadPlanTest, TakesOneRichFormWithTheText) {
  plan.setTargets(QStringList{u"UTF8_STRING"_s, u"text/html"_s, u"text/rtf"_s, u"image/png"_s});
  plan.accept("hola");
  EXPECT_EQ(next(), u"text/rtf"_s);
  EXPECT_EQ(plan.nextStep()->budget, 50);
  plan.accept("{\\rtf1}");
  EXPECT_FALSE(plan.nextStep());
  EXPECT_FALSE(plan.snapshot().html);
}

TEST_F(SelectionReadPlanTest, TakesTheHtmlWhenTheRtfIsTooLarge) {
  plan.setTargets(QStringList{u"UTF8_STRING"_s, u"text/html"_s, u"text/rtf"_s});
  plan.accept("hola");
  plan.reportOversized();
  EXPECT_EQ(next(), u"text/html"_s);
  plan.accept("<b>hola</b>");
  EXPECT_FALSE(plan.nextStep());
  EXPECT_EQ(plan.snapshot().html, QByteArray("<b>hola</b>"));
}

TEST_F(SelectionReadPlanTest, TakesNoRichFormWhenNobodyWantsIt) {
  policy.wantsRichText = false;
  SelectionReadPlan plain(policy);
  plain.setTargets(QStringList{u"UTF8_STRING"_s, u"text/rtf"_s});
  plain.accept("hola");
  EXPECT_FALSE(plain.nextStep());
}

TEST_F(SelectionReadPlanTest, TakesTheImageBesideBlankText) {
  plan.setTargets(QStringList{u"UTF8_STRING"_s, u"image/tiff"_s});
  plan.accept(" \n");
  EXPECT_EQ(next(), u"image/tiff"_s);
  EXPECT_EQ(plan.nextStep()->budget, 200);
  EXPECT_FALSE(plan.hasContent());
  plan.accept("tiff");
  EXPECT_TRUE(plan.hasContent());
}

TEST_F(SelectionReadPlanTest, DoesNotTakeThePictureOfATextThatIsTooLarge) {
  plan.setTargets(QStringList{u"UTF8_STRING"_s, u"image/png"_s});
  plan.reportOversized();
  EXPECT_FALSE(plan.nextStep());
  EXPECT_EQ(plan.snapshot().oversized, QSet<QString>{u"public.utf8-plain-text"_s});
}

TEST_F(SelectionReadPlanTest, TriesTheNextTargetWhenTheOwnerLiedAboutOne) {
  plan.setTargets(QStringList{u"UTF8_STRING"_s, u"STRING"_s, u"image/png"_s});
  plan.refuse();
  EXPECT_EQ(next(), u"STRING"_s);
  plan.refuse();
  EXPECT_EQ(next(), u"image/png"_s);
  plan.refuse();
  EXPECT_FALSE(plan.nextStep());
}

TEST_F(SelectionReadPlanTest, TriesTextWhenTheOwnerNamesNoTargets) {
  plan.setTargets(std::nullopt);
  EXPECT_EQ(next(), u"UTF8_STRING"_s);
  EXPECT_TRUE(plan.snapshot().types.isEmpty());
  plan.refuse();
  EXPECT_EQ(next(), u"STRING"_s);
  plan.accept("a\xf1o");
  EXPECT_EQ(plan.snapshot().text, u"año"_s);
  EXPECT_EQ(plan.snapshot().types, QStringList{u"public.utf8-plain-text"_s});
}

TEST_F(SelectionReadPlanTest, HasNothingToReadOfStrangeTargetsOnly) {
  plan.setTargets(QStringList{u"TARGETS"_s, u"application/x-novelty"_s});
  EXPECT_FALSE(plan.nextStep());
  EXPECT_EQ(plan.snapshot().types.size(), 2);
}

}  // namespace
}  // namespace nimbrel
