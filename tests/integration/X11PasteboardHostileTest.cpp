#include <gmock/gmock.h>

#include <QFile>

#include "integration/X11PasteboardFixture.h"

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;
using testing::Manners;
using testing::SelectionOwner;

/// Programs that behave badly. Whatever they do, the next honest copy is captured, by events alone: no test
/// here waits for a deadline unless it says so.
class HostilePasteboard : public testing::X11PasteboardFixture {
 protected:
  /// Lets the bad owner have its way until it has been asked for something, then copies honestly.
  void expectNextCopyCaptured(const SelectionOwner& bad, int requests = 1) {
    ASSERT_TRUE(QTest::qWaitFor([&] { return bad.requests() >= requests; }));
    const auto honest = copy("honesto");
    EXPECT_TRUE(captured(u"honesto"_s));
    EXPECT_EQ(pasteboard.currentText(), u"honesto"_s);
  }
  /// The process's memory in use, in KiB.
  static qint64 residentKilobytes() {
    QFile status(u"/proc/self/status"_s);
    if (!status.open(QIODevice::ReadOnly)) return 0;
    for (const QByteArray& line : status.readAll().split('\n')) {
      if (line.startsWith("VmRSS:")) return line.simplified().split(' ').value(1).toLongLong();
    }
    return 0;
  }
};

TEST_F(HostilePasteboard, AnOwnerThatNeverAnswersHoldsNobodyUp) {
  const auto silent = copy("x", Manners::silent);
  expectNextCopyCaptured(*silent);
}

TEST_F(HostilePasteboard, AnOwnerThatNeverAnswersIsGivenUp) {
  const auto silent = copy("x", Manners::silent);
  // Waits for the deadline of a second.
  ASSERT_TRUE(sawChanges(1));
  EXPECT_TRUE(seen.at(0).types.isEmpty());
  EXPECT_TRUE(log.has(u"No se pudo leer lo copiado"_s));
}

TEST_F(HostilePasteboard, AnOwnerThatFallsSilentAfterItsTargetsHoldsNobodyUp) {
  const auto silent = copy("x", Manners::silentAfterTargets);
  expectNextCopyCaptured(*silent, 2);
}

TEST_F(HostilePasteboard, AnOwnerThatStallsInATransferHoldsNobodyUp) {
  const auto stalling = copy(QByteArray(500'000, 'x'), Manners::stallsInTransfer);
  expectNextCopyCaptured(*stalling, 2);
}

TEST_F(HostilePasteboard, AnOwnerThatStallsInATransferIsGivenUp) {
  const auto stalling = copy(QByteArray(500'000, 'x'), Manners::stallsInTransfer);
  ASSERT_TRUE(sawChanges(1));
  EXPECT_FALSE(seen.at(0).text);
}

TEST_F(HostilePasteboard, AnOwnerThatAnnouncesTwoGigabytesIsRefusedAtOnce) {
  const auto boasting = copy("x", Manners::announcesTwoGigabytes);
  ASSERT_TRUE(sawChanges(1));
  EXPECT_TRUE(seen.at(0).oversized.contains(u"public.utf8-plain-text"_s));
  EXPECT_FALSE(seen.at(0).text);
  expectNextCopyCaptured(*boasting, 2);
}

TEST_F(HostilePasteboard, AnOwnerThatNeverStopsSendingIsRefusedAtTheBudget) {
  const qint64 before = residentKilobytes();
  const auto endless = copy("x", Manners::endlessTransfer);
  ASSERT_TRUE(sawChanges(1));
  EXPECT_TRUE(seen.at(0).oversized.contains(u"public.utf8-plain-text"_s));
  // A million bytes of text, and some slack for the allocator.
  EXPECT_LT(residentKilobytes() - before, 16 * 1024);
  expectNextCopyCaptured(*endless, 2);
}

TEST_F(HostilePasteboard, AnOwnerThatLiesAboutItsTargetsGivesNothing) {
  const SelectionOwner lying({{u"UTF8_STRING"_s, "x"}, {u"image/png"_s, "x"}, {u"text/uri-list"_s, "x"}},
                             Manners::lies);
  ASSERT_TRUE(sawChanges(1));
  EXPECT_FALSE(seen.at(0).text || seen.at(0).image);
  expectNextCopyCaptured(lying);
}

TEST_F(HostilePasteboard, AnOwnerWithTooManyTargetsIsNotRead) {
  const auto crowded = copy("x", Manners::manyTargets);
  ASSERT_TRUE(sawChanges(1));
  // A mark among them could not be seen, so nothing is asked for.
  EXPECT_EQ(crowded->contentRequests(), 0);
  EXPECT_TRUE(log.has(u"No se pudo leer lo copiado"_s));
  expectNextCopyCaptured(*crowded);
}

TEST_F(HostilePasteboard, AnOwnerThatDiesWhileItIsReadGivesNothing) {
  const auto dying = copy("x", Manners::dies);
  ASSERT_TRUE(sawChanges(1));
  EXPECT_FALSE(seen.at(0).text);
  const auto honest = copy("honesto");
  EXPECT_TRUE(captured(u"honesto"_s));
}

TEST_F(HostilePasteboard, InvalidTextIsReadAsFarAsItIsText) {
  const auto owner = copy(
      "a\xff\xfe\xc3"
      "b");
  ASSERT_TRUE(sawChanges(1));
  ASSERT_TRUE(seen.at(0).text);
  EXPECT_TRUE(seen.at(0).text->startsWith(u'a') && seen.at(0).text->endsWith(u'b'));
}

TEST_F(HostilePasteboard, AThousandChangesInASecondDoNotKeepTheLastOneOut) {
  xcb_connection_t* const x = requestor.connection();
  AtomTable atoms(x);
  const xcb_window_t window = xcb_generate_id(x);
  xcb_create_window(x, XCB_COPY_FROM_PARENT, window, rootWindow(x), 0, 0, 1, 1, 0,
                    XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
  for (int i = 0; i < 1000; ++i)
    xcb_set_selection_owner(x, window, atoms.atom(u"CLIPBOARD"_s), XCB_CURRENT_TIME);
  xcb_flush(x);
  const auto honest = copy("honesto");
  EXPECT_TRUE(captured(u"honesto"_s));
}

TEST_F(HostilePasteboard, ARequestorThatNeverTakesItsPiecesHoldsNobodyUp) {
  const QByteArray png(5'000'000, 'p');
  ASSERT_TRUE(pasteboard.write({.fileUrls = {}, .text = u"a"_s, .png = png}));
  testing::SelectionRequestor forgetful;
  for (int i = 0; i < 100; ++i)
    forgetful.askAndForget(u"image/png"_s);
  EXPECT_EQ(requestor.paste(u"UTF8_STRING"_s), QByteArray("a"));
  const auto honest = copy("honesto");
  EXPECT_TRUE(captured(u"honesto"_s));
}

TEST_F(HostilePasteboard, ARequestorThatDiesInATransferHoldsNobodyUp) {
  const QByteArray png(5'000'000, 'p');
  ASSERT_TRUE(pasteboard.write({.fileUrls = {}, .png = png}));
  {
    testing::SelectionRequestor dying;
    dying.askAndForget(u"image/png"_s);
  }
  EXPECT_TRUE(requestor.paste(u"image/png"_s) == png);
}

}  // namespace
}  // namespace nimbrel
