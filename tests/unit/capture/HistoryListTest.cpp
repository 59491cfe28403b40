#include "capture/HistoryList.h"

#include <gmock/gmock.h>

#include "support/StoreFixture.h"

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;
using testing::indexed;
using testing::textClip;

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
    list.insert(indexed(textClip(QString::fromUtf16(text))), list.takePlace());
  EXPECT_EQ(textsOf(list), (QStringList{u"c"_s, u"b"_s, u"a"_s}));
}

TEST(HistoryList, PutsAClipThatTookLongerWhereItWasCopied) {
  HistoryList list({indexed(textClip(u"a"_s))});
  const auto place = list.takePlace();
  EXPECT_EQ(list.insert(indexed(textClip(u"c"_s)), list.takePlace()), 0);
  EXPECT_EQ(list.insert(indexed(textClip(u"b"_s)), place), 1);
  EXPECT_EQ(textsOf(list), (QStringList{u"c"_s, u"b"_s, u"a"_s}));
}

TEST(HistoryList, FindsEveryClipByItsIdThroughManyChanges) {
  HistoryList list;
  for (int i = 0; i < 50; ++i)
    list.insert(indexed(textClip(QString::number(i))), list.takePlace());
  for (int i = 0; i < 30; ++i) {
    list.move((i * 7) % list.size(), list.takePlace());
    if (i % 3 == 0) list.removeAt((i * 11) % list.size());
  }
  for (qsizetype row = 0; row < list.size(); ++row)
    EXPECT_EQ(list.rowOf(list.at(row)->clip.id), row);
  EXPECT_FALSE(list.rowOf(QUuid::createUuid()));
}

TEST(HistoryList, HoldsEachIdOnce) {
  const ClipItem clip = textClip(u"a"_s);
  EXPECT_EQ(HistoryList({indexed(clip), indexed(clip)}).size(), 1);
}

TEST(HistoryList, FindsTextsByHashAndOldOnesByContent) {
  ClipItem old = textClip(u"viejo"_s);
  old.textHash.reset();
  ClipItem file = textClip(u"nuevo"_s);
  file.fileURLString = u"file:///nuevo"_s;
  HistoryList list({indexed(file), indexed(textClip(u"nuevo"_s)), indexed(old)});
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
  HistoryList list({indexed(textClip(u"a"_s)), indexed(image)});
  EXPECT_EQ(list.rowOfImage(u"abc"_s), 1);
  list.removeAt(1);
  EXPECT_FALSE(list.rowOfImage(u"abc"_s));
}

TEST(HistoryList, NamesTheOldestUnpinnedClipsBeyondTheCapacity) {
  const HistoryList list({indexed(textClip(u"0"_s)), indexed(pinnedClip(u"1"_s)), indexed(textClip(u"2"_s)),
                          indexed(textClip(u"3"_s)), indexed(pinnedClip(u"4"_s))});
  EXPECT_TRUE(list.rowsBeyond(3).isEmpty());
  EXPECT_EQ(list.rowsBeyond(1), (QList<qsizetype>{3, 2}));
  EXPECT_EQ(list.rowsBeyond(0), (QList<qsizetype>{3, 2, 0}));
}

TEST(HistoryList, NamesTheUnpinnedClipsWhoseTimeHasCome) {
  ClipItem pinned = expiringClip(u"1"_s, 5);
  pinned.pinned = true;
  HistoryList list({indexed(expiringClip(u"0"_s, 10)), indexed(pinned), indexed(expiringClip(u"2"_s, 20)),
                    indexed(textClip(u"3"_s))});
  EXPECT_TRUE(list.rowsExpiredAt(timestampFromUnixSeconds(9.75)).isEmpty());
  EXPECT_EQ(list.rowsExpiredAt(timestampFromUnixSeconds(10)), QList<qsizetype>{0});
  EXPECT_EQ(list.rowsExpiredAt(timestampFromUnixSeconds(20)), (QList<qsizetype>{2, 0}));
}

TEST(HistoryList, KeepsItsCountsThroughReplacements) {
  const ClipItem clip = textClip(u"a"_s);
  HistoryList list({indexed(clip), indexed(textClip(u"b"_s))});
  ClipItem pinned = clip;
  pinned.pinned = true;
  list.replace(0, indexed(pinned));
  EXPECT_EQ(list.rowsBeyond(0), QList<qsizetype>{1});
  EXPECT_EQ(list.move(1, list.takePlace()), 0);
  EXPECT_EQ(textsOf(list), (QStringList{u"b"_s, u"a"_s}));
  list.replace(1, indexed(clip));
  EXPECT_EQ(list.rowsBeyond(0), (QList<qsizetype>{1, 0}));
}

}  // namespace
}  // namespace nimbrel
