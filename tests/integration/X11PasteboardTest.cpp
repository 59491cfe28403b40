#include <gmock/gmock.h>

#include "integration/X11PasteboardFixture.h"

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;
using testing::SelectionOwner;

class X11PasteboardTest : public testing::X11PasteboardFixture {};

TEST_F(X11PasteboardTest, ReadsATextThatIsCopied) {
  const auto owner = copy("canci\xc3\xb3n");
  ASSERT_TRUE(captured(u"canción"_s));
  EXPECT_TRUE(seen.last().types.contains(u"public.utf8-plain-text"_s));
  EXPECT_EQ(pasteboard.currentText(), u"canción"_s);
}

TEST_F(X11PasteboardTest, ReadsAnIncrementalTransfer) {
  const auto owner = copy(QByteArray(900'000, 'x'));
  EXPECT_TRUE(captured(QString(900'000, u'x')));
}

TEST_F(X11PasteboardTest, TakesAMillionBytesAndNotOneMore) {
  const auto exact = copy(QByteArray(1'000'000, 'x'));
  EXPECT_TRUE(captured(QString(1'000'000, u'x')));
  const auto over = copy(QByteArray(1'000'001, 'x'));
  ASSERT_TRUE(sawChanges(2));
  EXPECT_FALSE(seen.at(1).text);
  EXPECT_TRUE(seen.at(1).oversized.contains(u"public.utf8-plain-text"_s));
}

TEST_F(X11PasteboardTest, ReadsLatinTextOfOldPrograms) {
  const SelectionOwner owner({{u"STRING"_s, "a\xf1o"}}, testing::Manners::withoutTargets);
  EXPECT_TRUE(captured(u"año"_s));
}

TEST_F(X11PasteboardTest, ReadsFilesBeforeText) {
  const SelectionOwner owner({{u"text/uri-list"_s, "file:///tmp/a\r\n"}, {u"UTF8_STRING"_s, "/tmp/a"}});
  ASSERT_TRUE(sawChanges(1));
  EXPECT_EQ(seen.at(0).fileUrls, QList<QUrl>{QUrl(u"file:///tmp/a"_s)});
  EXPECT_FALSE(seen.at(0).text);
}

TEST_F(X11PasteboardTest, ReadsTextWithItsRtf) {
  const SelectionOwner owner(
      {{u"UTF8_STRING"_s, "a"}, {u"text/rtf"_s, "{\\rtf1 a}"}, {u"image/png"_s, "png"}});
  ASSERT_TRUE(sawChanges(1));
  EXPECT_EQ(seen.at(0).text, u"a"_s);
  EXPECT_EQ(seen.at(0).rtf, QByteArray("{\\rtf1 a}"));
  EXPECT_FALSE(seen.at(0).image);
}

TEST_F(X11PasteboardTest, ReadsAnImage) {
  const SelectionOwner owner({{u"image/png"_s, QByteArray(3'000'000, 'p')}});
  ASSERT_TRUE(sawChanges(1));
  EXPECT_EQ(seen.at(0).image->size(), 3'000'000);
}

TEST_F(X11PasteboardTest, DoesNotEvenAskForConcealedContent) {
  const SelectionOwner owner({{u"UTF8_STRING"_s, "secreto"}, {u"x-kde-passwordManagerHint"_s, "secret"}});
  ASSERT_TRUE(sawChanges(1));
  EXPECT_TRUE(seen.at(0).types.contains(u"org.nspasteboard.ConcealedType"_s));
  EXPECT_FALSE(seen.at(0).text);
  EXPECT_EQ(owner.contentRequests(), 0);
}

TEST_F(X11PasteboardTest, DoesNotReportWhatWasThereBefore) {
  const auto owner = copy("de antes");
  ASSERT_TRUE(captured(u"de antes"_s));
  DesktopEntries none{{}};
  X11Pasteboard later(none);
  later.setReadPolicy(captureReadPolicy(SettingsValues{}));
  ASSERT_TRUE(QTest::qWaitFor([&] { return later.currentText() == u"de antes"_s; }));
  EXPECT_EQ(later.changeCount(), 0);
  EXPECT_TRUE(later.changesAfter(0).isEmpty());
}

TEST_F(X11PasteboardTest, SeesThatASelectionWasCleared) {
  {
    const auto owner = copy("fugaz");
    ASSERT_TRUE(captured(u"fugaz"_s));
  }
  ASSERT_TRUE(sawChanges(2));
  EXPECT_TRUE(seen.at(1).types.isEmpty());
  EXPECT_FALSE(pasteboard.currentText());
  EXPECT_FALSE(requestor.hasOwner());
}

TEST_F(X11PasteboardTest, KeepsAHundredCopiesInTheirOrder) {
  std::vector<std::unique_ptr<SelectionOwner>> owners;
  for (int i = 0; i < 100; ++i) {
    owners.push_back(copy(QByteArray::number(i)));
    // As quick as copies can be while each is still there to be read.
    ASSERT_TRUE(sawChanges(i + 1));
  }
  for (int i = 0; i < 100; ++i)
    EXPECT_EQ(seen.at(i).text, QString::number(i));
}

TEST_F(X11PasteboardTest, ServesWhatItWrites) {
  const auto count = pasteboard.write({.fileUrls = {}, .text = u"año"_s, .html = "<b>a</b>"});
  ASSERT_TRUE(count);
  EXPECT_EQ(pasteboard.changeCount(), *count);
  EXPECT_EQ(requestor.paste(u"UTF8_STRING"_s), QByteArray("a\xc3\xb1o"));
  EXPECT_EQ(requestor.paste(u"STRING"_s), QByteArray("a\xf1o"));
  EXPECT_EQ(requestor.paste(u"text/html"_s), QByteArray("<b>a</b>"));
  EXPECT_FALSE(requestor.paste(u"image/png"_s));
  const QStringList targets = requestor.targets();
  for (const auto* target : {u"TARGETS", u"TIMESTAMP", u"MULTIPLE", u"UTF8_STRING", u"text/html"})
    EXPECT_TRUE(targets.contains(QString::fromUtf16(target)));
}

TEST_F(X11PasteboardTest, TellsSinceWhenItOwnsTheSelection) {
  ASSERT_TRUE(pasteboard.write({.fileUrls = {}, .text = u"a"_s}));
  const auto time = requestor.paste(u"TIMESTAMP"_s);
  ASSERT_TRUE(time);
  ASSERT_EQ(time->size(), 4);
  EXPECT_NE(*time, QByteArray(4, '\0'));
}

TEST_F(X11PasteboardTest, ServesSeveralTargetsAtOnce) {
  ASSERT_TRUE(pasteboard.write({.fileUrls = {}, .text = u"a"_s, .html = "<b>a</b>"}));
  EXPECT_EQ(requestor.pasteMultiple({u"UTF8_STRING"_s, u"image/png"_s, u"text/html"_s}),
            (QList<QByteArray>{"a", "", "<b>a</b>"}));
}

TEST_F(X11PasteboardTest, ServesLargeContentInPieces) {
  const QByteArray png(10'000'000, 'p');
  ASSERT_TRUE(pasteboard.write({.fileUrls = {}, .png = png}));
  EXPECT_TRUE(requestor.paste(u"image/png"_s) == png);
}

TEST_F(X11PasteboardTest, OffersAnImageInTheFormatsThatProgramsAskFor) {
  ASSERT_TRUE(pasteboard.write({.fileUrls = {}, .png = "picture"}));
  const QStringList targets = requestor.targets();
  for (const auto* target : {u"image/png", u"image/tiff", u"image/bmp", u"image/jpeg"}) {
    EXPECT_TRUE(targets.contains(QString::fromUtf16(target)));
    EXPECT_EQ(requestor.paste(QString::fromUtf16(target)), "picture");
  }
}

TEST_F(X11PasteboardTest, RefusesAnImageThatCannotBeConvertedAndStillHasTheOriginal) {
  codec.error = u"rota"_s;
  ASSERT_TRUE(pasteboard.write({.fileUrls = {}, .png = "picture"}));
  EXPECT_FALSE(requestor.paste(u"image/tiff"_s));
  EXPECT_EQ(requestor.paste(u"image/png"_s), "picture");
}

TEST_F(X11PasteboardTest, EndsInTheMiddleOfAConversion) {
  ASSERT_TRUE(pasteboard.write({.fileUrls = {}, .png = "picture"}));
  for (int i = 0; i < 100; ++i)
    requestor.askAndForget(u"image/bmp"_s);
}

TEST_F(X11PasteboardTest, DoesNotReportItsOwnWrites) {
  const auto count = pasteboard.write({.fileUrls = {}, .text = u"propio"_s});
  EXPECT_EQ(requestor.paste(u"UTF8_STRING"_s), QByteArray("propio"));
  const auto owner = copy("ajeno");
  ASSERT_TRUE(captured(u"ajeno"_s));
  EXPECT_EQ(seen.size(), 1);
  EXPECT_GT(seen.at(0).changeCount, *count);
}

TEST_F(X11PasteboardTest, ClearsTheContentOfAnotherProgram) {
  const auto owner = copy("secreto");
  ASSERT_TRUE(captured(u"secreto"_s));
  EXPECT_TRUE(pasteboard.clearIfUnchanged(pasteboard.changeCount()));
  EXPECT_TRUE(QTest::qWaitFor([&] { return !requestor.hasOwner(); }));
  EXPECT_FALSE(pasteboard.currentText());
}

TEST_F(X11PasteboardTest, ClearsItsOwnContentAlsoWhereItWasLentTo) {
  ASSERT_TRUE(pasteboard.write({.fileUrls = {}, .text = u"secreto"_s}));
  ASSERT_TRUE(pasteboard.offerAsPrimary());
  EXPECT_EQ(requestor.paste(u"UTF8_STRING"_s, u"PRIMARY"_s), QByteArray("secreto"));
  EXPECT_TRUE(pasteboard.clearIfUnchanged(pasteboard.changeCount()));
  EXPECT_TRUE(QTest::qWaitFor([&] { return !requestor.hasOwner() && !requestor.hasOwner(u"PRIMARY"_s); }));
}

TEST_F(X11PasteboardTest, DoesNotClearWhatCameLater) {
  const auto first = copy("secreto");
  ASSERT_TRUE(captured(u"secreto"_s));
  const qint64 count = pasteboard.changeCount();
  const auto second = copy("otro");
  EXPECT_TRUE(captured(u"otro"_s));
  EXPECT_FALSE(pasteboard.clearIfUnchanged(count));
  EXPECT_TRUE(second->stillOwns());
}

TEST_F(X11PasteboardTest, DoesNotClearACopyThatIsStillBeingRead) {
  const auto first = copy("secreto");
  ASSERT_TRUE(captured(u"secreto"_s));
  const auto slow = copy("lento", testing::Manners::silent);
  ASSERT_TRUE(QTest::qWaitFor([&] { return slow->requests() > 0; }));
  // The number has not changed yet, so the wish is accepted, but it takes nothing from the new owner.
  pasteboard.clearIfUnchanged(pasteboard.changeCount());
  QTest::qWait(50);
  EXPECT_TRUE(slow->stillOwns());
}

TEST_F(X11PasteboardTest, WithdrawsFromPrimaryWhenThePasteboardMovesOn) {
  ASSERT_TRUE(pasteboard.write({.fileUrls = {}, .text = u"a"_s}));
  ASSERT_TRUE(pasteboard.offerAsPrimary());
  ASSERT_TRUE(requestor.hasOwner(u"PRIMARY"_s));
  const auto owner = copy("b");
  ASSERT_TRUE(captured(u"b"_s));
  EXPECT_TRUE(QTest::qWaitFor([&] { return !requestor.hasOwner(u"PRIMARY"_s); }));
}

TEST_F(X11PasteboardTest, WithdrawsFromPrimaryAtTheNextWrite) {
  ASSERT_TRUE(pasteboard.write({.fileUrls = {}, .text = u"secreto"_s}));
  ASSERT_TRUE(pasteboard.offerAsPrimary());
  ASSERT_TRUE(pasteboard.write({.fileUrls = {}, .text = u"otro"_s}));
  EXPECT_TRUE(QTest::qWaitFor([&] { return !requestor.hasOwner(u"PRIMARY"_s); }));
}

TEST_F(X11PasteboardTest, DoesNotLendWhatIsSomebodyElses) {
  ASSERT_TRUE(pasteboard.write({.fileUrls = {}, .text = u"propio"_s}));
  const auto owner = copy("ajeno");
  ASSERT_TRUE(captured(u"ajeno"_s));
  EXPECT_FALSE(pasteboard.offerAsPrimary());
  EXPECT_FALSE(requestor.hasOwner(u"PRIMARY"_s));
}

TEST(X11PasteboardWithoutServer, WritesNothingAndSaysSo) {
  DesktopEntries none{{}};
  X11Pasteboard pasteboard(none, nullptr, ":9999");
  EXPECT_FALSE(pasteboard.write({.fileUrls = {}, .text = u"a"_s}));
  EXPECT_FALSE(pasteboard.clearIfUnchanged(0));
  EXPECT_FALSE(pasteboard.offerAsPrimary());
  EXPECT_EQ(pasteboard.changeCount(), 0);
}

}  // namespace
}  // namespace nimbrel
