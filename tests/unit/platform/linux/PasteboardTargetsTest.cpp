#include "platform/linux/PasteboardTargets.h"

#include <gmock/gmock.h>

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;

TEST(PasteboardTargets, BecomeTypesEachOnce) {
  EXPECT_EQ(typesOfTargets({u"TARGETS"_s, u"UTF8_STRING"_s, u"STRING"_s, u"text/html"_s}),
            (QStringList{u"TARGETS"_s, u"public.utf8-plain-text"_s, u"public.html"_s}));
}

TEST(PasteboardTargets, OfAPasswordManagerBecomeTheConcealedMark) {
  EXPECT_EQ(typesOfTargets({u"x-kde-passwordManagerHint"_s}),
            QStringList{u"org.nspasteboard.ConcealedType"_s});
}

TEST(PasteboardTargets, KeepMarksThatComeUnderTheirOwnName) {
  EXPECT_EQ(typesOfTargets({u"org.nspasteboard.TransientType"_s}),
            QStringList{u"org.nspasteboard.TransientType"_s});
}

TEST(PasteboardTargets, AreTriedBestFirst) {
  const QStringList offered{u"STRING"_s, u"image/tiff"_s, u"text/plain"_s, u"UTF8_STRING"_s, u"image/png"_s};
  EXPECT_EQ(candidateTargets(PasteboardFormat::text, offered),
            (QStringList{u"UTF8_STRING"_s, u"text/plain"_s, u"STRING"_s}));
  EXPECT_EQ(candidateTargets(PasteboardFormat::image, offered),
            (QStringList{u"image/png"_s, u"image/tiff"_s}));
  EXPECT_TRUE(candidateTargets(PasteboardFormat::files, offered).isEmpty());
}

TEST(DecodeText, FollowsTheTargetsEncoding) {
  EXPECT_EQ(decodeText(u"UTF8_STRING"_s, "a\xc3\xb1o"), u"año"_s);
  EXPECT_EQ(decodeText(u"STRING"_s, "a\xf1o"), u"año"_s);
}

TEST(DecodeText, PutsAReplacementForInvalidBytes) {
  EXPECT_EQ(decodeText(u"UTF8_STRING"_s,
                       "a\xff"
                       "b"),
            u"a\ufffdb"_s);
}

TEST(DecodeText, LeavesClosingNulsOut) {
  EXPECT_EQ(decodeText(u"UTF8_STRING"_s, QByteArray("ab\0\0", 4)), u"ab"_s);
  EXPECT_EQ(decodeText(u"UTF8_STRING"_s, QByteArray("a\0b", 3)).size(), 3);
  EXPECT_TRUE(decodeText(u"STRING"_s, QByteArray("\0", 1)).isEmpty());
}

TEST(DecodeUrls, ReadsBothKindsOfLists) {
  EXPECT_EQ(decodeUrls("# comentario\r\nfile:///a%20b\r\nhttps://example.org/\r\n"),
            (QList<QUrl>{QUrl(u"file:///a%20b"_s), QUrl(u"https://example.org/"_s)}));
  EXPECT_EQ(decodeUrls("copy\nfile:///a\nfile:///b"),
            (QList<QUrl>{QUrl(u"file:///a"_s), QUrl(u"file:///b"_s)}));
  EXPECT_EQ(decodeUrls("cut\nfile:///a"), QList<QUrl>{QUrl(u"file:///a"_s)});
  EXPECT_TRUE(decodeUrls("ni una\nsola\nurl").isEmpty());
  EXPECT_TRUE(decodeUrls({}).isEmpty());
}

TEST(OfferedTargets, CarryTextInEveryEncodingThatProgramsAskFor) {
  const auto offer = offeredTargets({.fileUrls = {}, .text = u"año"_s});
  EXPECT_EQ(offer.value(u"UTF8_STRING"_s), "a\xc3\xb1o");
  EXPECT_EQ(offer.value(u"text/plain;charset=utf-8"_s), "a\xc3\xb1o");
  EXPECT_EQ(offer.value(u"STRING"_s), "a\xf1o");
  EXPECT_FALSE(offer.contains(u"text/html"_s));
}

TEST(OfferedTargets, CarryFilesForFileManagersAndEditors) {
  const auto offer = offeredTargets({.fileUrls = {QUrl(u"file:///a%20b"_s)}, .text = u"/a b"_s});
  EXPECT_EQ(offer.value(u"text/uri-list"_s), "file:///a%20b\r\n");
  EXPECT_EQ(offer.value(u"x-special/gnome-copied-files"_s), "copy\nfile:///a%20b");
  EXPECT_EQ(offer.value(u"UTF8_STRING"_s), "/a b");
}

TEST(OfferedTargets, CarryTheHintWithConcealedContent) {
  PasteboardContent content{.fileUrls = {}, .text = u"secreto"_s};
  content.concealed = true;
  EXPECT_EQ(offeredTargets(content).value(u"x-kde-passwordManagerHint"_s), "secret");
}

}  // namespace
}  // namespace nimbrel
