#include "capture/HistoryList.h"

#include <gmock/gmock.h>

#include "support/StoreFixture.h"

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;
using testing::textClip;

ClipRef ref(const ClipItem& clip) {
  return std::make_shared<const IndexedClip>(clip);
}

QStringList textsOf(const HistoryList& list) {
  QStringList texts;
  for (qsizetype row = 0; row < list.size(); ++row)
    texts.append(list.at(row)->clip.text);
  return texts;
}

ClipItem pinnedClip(const QString& text) {
  ClipItem clip = textClip(text);
  clip.pinned = true;
  return clip;
}

ClipItem expiringClip(const QString& text, double at) {
  ClipItem clip = textClip(text);
  clip.expiresAt = timestampFromUnixSeconds(at);
  return clip;
}

TEST(HistoryList, PutsTheNewestFirst) {
  HistoryList list;
  for (const auto* text : {u"a", u"b", u"c"})
    list.insertAtTop(ref(textClip(QString::fromUtf16(text))));
  EXPECT_EQ(textsOf(list), (QStringList{u"c"_s, u"b"_s, u"a"_s}));
}

TEST(HistoryList, HoldsEachIdOnce) {
  const ClipItem clip = textClip(u"a"_s);
  EXPECT_EQ(HistoryList({ref(clip), ref(clip)}).size(), 1);
}

TEST(HistoryList, FindsTextsByHashAndOldOnesByContent) {
  ClipItem old = textClip(u"viejo"_s);
  old.textHash.reset();
  ClipItem file = textClip(u"nuevo"_s);
  file.fileURLString = u"file:///nuevo"_s;
  HistoryList list({ref(file), ref(textClip(u"nuevo"_s)), ref(old)});
  EXPECT_EQ(list.rowOfText(u"nuevo"_s, *textClip(u"nuevo"_s).textHash), 1);
  EXPECT_EQ(list.rowOfText(u"viejo"_s, *textClip(u"viejo"_s).textHash), 2);
  EXPECT_FALSE(list.rowOfText(u"otro"_s, *textClip(u"otro"_s).textHash));
  EXPECT_EQ(list.rowOfFiles(u"file:///nuevo"_s, *file.textHash), 0);
  list.removeAt(2);
  EXPECT_FALSE(list.rowOfText(u"viejo"_s, *textClip(u"viejo"_s).textHash));
}

TEST(HistoryList, FindsImagesByHash) {
  ClipItem image = textClip(QString());
  image.imageFile = u"A.png"_s;
  image.imageHash = u"abc"_s;
  HistoryList list({ref(textClip(u"a"_s)), ref(image)});
  EXPECT_EQ(list.rowOfImage(u"abc"_s), 1);
  list.removeAt(1);
  EXPECT_FALSE(list.rowOfImage(u"abc"_s));
}

TEST(HistoryList, NamesTheOldestUnpinnedClipsBeyondTheCapacity) {
  const HistoryList list({ref(textClip(u"0"_s)), ref(pinnedClip(u"1"_s)), ref(textClip(u"2"_s)),
                          ref(textClip(u"3"_s)), ref(pinnedClip(u"4"_s))});
  EXPECT_TRUE(list.rowsBeyond(3).isEmpty());
  EXPECT_EQ(list.rowsBeyond(1), (QList<qsizetype>{3, 2}));
  EXPECT_EQ(list.rowsBeyond(0), (QList<qsizetype>{3, 2, 0}));
}

TEST(HistoryList, NamesTheUnpinnedClipsWhoseTimeHasCome) {
  ClipItem pinned = expiringClip(u"1"_s, 5);
  pinned.pinned = true;
  HistoryList list(
      {ref(expiringClip(u"0"_s, 10)), ref(pinned), ref(expiringClip(u"2"_s, 20)), ref(textClip(u"3"_s))});
  EXPECT_TRUE(list.rowsExpiredAt(timestampFromUnixSeconds(9.75)).isEmpty());
  EXPECT_EQ(list.rowsExpiredAt(timestampFromUnixSeconds(10)), QList<qsizetype>{0});
  EXPECT_EQ(list.rowsExpiredAt(timestampFromUnixSeconds(20)), (QList<qsizetype>{2, 0}));
}

TEST(HistoryList, KeepsItsCountsThroughReplacements) {
  const ClipItem clip = textClip(u"a"_s);
  HistoryList list({ref(clip), ref(textClip(u"b"_s))});
  ClipItem pinned = clip;
  pinned.pinned = true;
  list.replace(0, ref(pinned));
  EXPECT_EQ(list.rowsBeyond(0), QList<qsizetype>{1});
  list.replaceAtTop(1, list.at(1));
  EXPECT_EQ(textsOf(list), (QStringList{u"b"_s, u"a"_s}));
  list.replace(1, ref(clip));
  EXPECT_EQ(list.rowsBeyond(0), (QList<qsizetype>{1, 0}));
}

}  // namespace
}  // namespace nimbrel
