#include "app/RemoteTexts.h"

#include <gmock/gmock.h>

#include "support/StoreFixture.h"

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

TEST(RemoteTextOf, ReadsTheTextAndTheDevice) {
  EXPECT_EQ(remoteTextOf(u"nimbrel://add?text=hola%20mundo&source=iPhone"_s),
            (RemoteText{u"hola mundo"_s, RemoteDeviceType::iPhone}));
  EXPECT_EQ(remoteTextOf(u"nimbrel://add?source=mac&text=ma%C3%B1ana"_s),
            (RemoteText{u"mañana"_s, RemoteDeviceType::mac}));
}

TEST(RemoteTextOf, ComparesSchemeAndHostWithoutCase) {
  EXPECT_EQ(remoteTextOf(u"NIMBREL://ADD?text=hola"_s), (RemoteText{u"hola"_s}));
}

TEST(RemoteTextOf, ComparesNamesExactly) {
  EXPECT_EQ(remoteTextOf(u"nimbrel://add?Text=hola"_s), std::nullopt);
  EXPECT_EQ(remoteTextOf(u"nimbrel://add?text=x&Source=ipad"_s), (RemoteText{u"x"_s}));
  EXPECT_EQ(remoteTextOf(u"nimbrel://add?te%78t=hola"_s), (RemoteText{u"hola"_s}));
}

TEST(RemoteTextOf, IgnoresABlankText) {
  for (const QString& url :
       {u"nimbrel://add?text=%20%0A"_s, u"nimbrel://add?text="_s, u"nimbrel://add?text"_s,
        u"nimbrel://add?"_s, u"nimbrel://add"_s, u"nimbrel://add?source=mac"_s})
    EXPECT_EQ(remoteTextOf(url), std::nullopt) << qPrintable(url);
}

TEST(RemoteTextOf, TrimsTheText) {
  EXPECT_EQ(remoteTextOf(u"nimbrel://add?text=%20%0Ahola%20mundo%0D%0A"_s), (RemoteText{u"hola mundo"_s}));
}

TEST(RemoteTextOf, TakesTheFirstOfSeveralItems) {
  EXPECT_EQ(remoteTextOf(u"nimbrel://add?text=uno&text=dos&source=ipad&source=mac"_s),
            (RemoteText{u"uno"_s, RemoteDeviceType::iPad}));
  EXPECT_EQ(remoteTextOf(u"nimbrel://add?text=&text=dos"_s), std::nullopt);
}

TEST(RemoteTextOf, KnowsTheDevicesWithoutCaseAndNoOthers) {
  const auto device = [](const QString& source) {
    return remoteTextOf(u"nimbrel://add?text=x&source="_s + source)->device;
  };
  EXPECT_EQ(device(u"IPAD"_s), RemoteDeviceType::iPad);
  EXPECT_EQ(device(u"Mac"_s), RemoteDeviceType::mac);
  EXPECT_EQ(device(u"watch"_s), RemoteDeviceType::universal);
  EXPECT_EQ(device(QString()), RemoteDeviceType::universal);
}

TEST(RemoteTextOf, IgnoresOtherUrls) {
  for (const QString& url :
       {u"https://add?text=x"_s, u"nimbrel://remove?text=x"_s, u"nimbrel:add?text=x"_s, u"nimbrel:?text=x"_s,
        u"//add?text=x"_s, u"nimbrel:///add?text=x"_s, u"add?text=x"_s, QString(), u"nimbrel://"_s})
    EXPECT_EQ(remoteTextOf(url), std::nullopt) << qPrintable(url);
}

TEST(RemoteTextOf, LeavesAPlusSignAPlusSign) {
  EXPECT_EQ(remoteTextOf(u"nimbrel://add?text=1+1%2B1"_s), (RemoteText{u"1+1+1"_s}));
}

TEST(RemoteTextOf, TakesWhatIsNoPartOfTheQueryForWhatItIs) {
  EXPECT_EQ(remoteTextOf(u"nimbrel://user@add:80/path?text=x#text=y"_s), (RemoteText{u"x"_s}));
  EXPECT_EQ(remoteTextOf(u"nimbrel://add?text=a=b&c"_s), (RemoteText{u"a=b"_s}));
}

TEST(RemoteTextOf, DoesNotReadAUrlThatIsLongerThanAnyText) {
  EXPECT_EQ(remoteTextOf(u"nimbrel://add?text="_s + QString(50'000'000, u'x')), std::nullopt);
}

class RemoteTextsTest : public testing::StoreFixture {
 protected:
  void open(int count, const QString& stem) {
    for (int i = 0; i < count; ++i)
      remote.openUrls({u"nimbrel://add?text=%1%2"_s.arg(stem).arg(i)});
  }

  RemoteTexts remote{launch(), clock};
};

TEST_F(RemoteTextsTest, AddsTheTextsOfSeveralUrlsInOrder) {
  remote.openUrls(
      {u"nimbrel://add?text=uno&source=iphone"_s, u"nimbrel://nada"_s, u"nimbrel://add?text=dos"_s});
  ASSERT_EQ(store().items().size(), 2);
  EXPECT_EQ(store().items().at(0)->clip.text, u"dos");
  EXPECT_EQ(store().items().at(1)->clip.text, u"uno");
  EXPECT_EQ(store().items().at(1)->clip.sourceName, u"iPhone"_s);
}

TEST_F(RemoteTextsTest, RefusesMoreThanTwentyInTenSecondsWithOneLine) {
  open(10'000, u"a"_s);
  EXPECT_EQ(store().items().size(), 20);
  EXPECT_EQ(log.lines().filter(u"No se añadió lo recibido por URL"_s).size(), 1);
}

TEST_F(RemoteTextsTest, RefusesAFloodInOneRequestToo) {
  QStringList urls;
  for (int i = 0; i < 10'000; ++i)
    urls.append(u"nimbrel://add?text=%1"_s.arg(i));
  remote.openUrls(urls);
  EXPECT_EQ(store().items().size(), 20);
}

TEST_F(RemoteTextsTest, AddsAgainAsTheTenSecondsPass) {
  open(10, u"a"_s);
  clock.advance(6s);
  open(15, u"b"_s);
  EXPECT_EQ(store().items().size(), 20);
  clock.advance(4s);
  open(15, u"c"_s);
  EXPECT_EQ(store().items().size(), 30);
  EXPECT_EQ(log.lines().filter(u"No se añadió lo recibido por URL"_s).size(), 2);
}

TEST_F(RemoteTextsTest, UrlsWithoutTextDoNotCount) {
  for (int i = 0; i < 100; ++i)
    remote.openUrls({u"nimbrel://add?text=%20"_s});
  open(20, u"a"_s);
  EXPECT_EQ(store().items().size(), 20);
  EXPECT_TRUE(log.lines().isEmpty());
}

TEST_F(RemoteTextsTest, LooksAtNoMoreThanItHasTimeFor) {
  const QString useless = u"nimbrel://add?Text="_s + QString(2'900'000, u'x');
  for (int i = 0; i < 10; ++i)
    remote.openUrls({useless});
  remote.openUrls({u"nimbrel://add?text="_s + QString(2'900'000, u'x')});
  EXPECT_TRUE(store().items().isEmpty());
  EXPECT_EQ(log.lines().size(), 1);
  clock.advance(10s);
  open(1, u"a"_s);
  EXPECT_EQ(store().items().size(), 1);
}

TEST_F(RemoteTextsTest, RefusesATextThatCaptureWouldRefuse) {
  remote.openUrls({u"nimbrel://add?text="_s + QString(1'000'001, u'x')});
  remote.openUrls({u"nimbrel://add?text="_s + u"%C3%B1"_s.repeated(500'001)});
  EXPECT_TRUE(store().items().isEmpty());
  remote.openUrls({u"nimbrel://add?text="_s + QString(1'000'000, u'x')});
  EXPECT_EQ(store().items().size(), 1);
}

}  // namespace
}  // namespace nimbrel
