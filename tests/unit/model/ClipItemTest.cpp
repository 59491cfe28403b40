#include "capture/model/ClipItem.h"

#include <gmock/gmock.h>

#include <QJsonArray>

#include "capture/model/ClipKind.h"
#include "capture/model/ClipSource.h"

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;

ClipItem fullClip() {
  ClipItem clip;
  clip.id = QUuid::createUuid();
  clip.text = u"texto"_s;
  clip.date = timestampFromUnixSeconds(1773500966.5);
  clip.pinned = true;
  clip.imageFile = u"A.png"_s;
  clip.imageHash = u"ab"_s;
  clip.expiresAt = timestampFromUnixSeconds(1773501266.5);
  clip.sensitive = false;
  clip.ocrText = u"ocr"_s;
  clip.textHash = u"cd"_s;
  clip.sourceBundleID = u"org.example"_s;
  clip.sourceName = u"Ejemplo"_s;
  clip.richFile = u"B.rtf"_s;
  clip.richHash = u"ef"_s;
  clip.collection = u"Trabajo"_s;
  clip.fileURLString = u"file:///a"_s;
  clip.remoteDevice = RemoteDeviceType::iPad;
  return clip;
}

TEST(ClipItem, SerialisesExactlyItsSeventeenFields) {
  const QStringList keys{u"collection"_s, u"date"_s,           u"expiresAt"_s,  u"fileURLString"_s,
                         u"id"_s,         u"imageFile"_s,      u"imageHash"_s,  u"ocrText"_s,
                         u"pinned"_s,     u"remoteDevice"_s,   u"richFile"_s,   u"richHash"_s,
                         u"sensitive"_s,  u"sourceBundleID"_s, u"sourceName"_s, u"text"_s,
                         u"textHash"_s};
  EXPECT_EQ(clipToJson(fullClip()).keys(), keys);
}

TEST(ClipItem, ComesBackFromItsSerialisedFormUnchanged) {
  const ClipItem clip = fullClip();
  EXPECT_EQ(clipFromJson(clipToJson(clip)), clip);
  ClipItem bare;
  bare.id = QUuid::createUuid();
  EXPECT_EQ(clipFromJson(clipToJson(bare)), bare);
}

TEST(ClipItem, LeavesAbsentOptionalsOut) {
  ClipItem bare;
  bare.id = QUuid::createUuid();
  EXPECT_EQ(clipToJson(bare).keys(), (QStringList{u"date"_s, u"id"_s, u"pinned"_s, u"text"_s}));
}

TEST(ClipItem, CountsDatesFrom2001) {
  ClipItem clip;
  clip.id = QUuid::createUuid();
  clip.date = timestampFromUnixSeconds(978307200 + 12.5);
  EXPECT_EQ(clipToJson(clip).value(u"date"_s).toDouble(), 12.5);
}

TEST(ClipItem, RefusesMissingRequiredKeysAndWrongTypes) {
  const QJsonObject good = clipToJson(fullClip());
  for (const QString& key : {u"id"_s, u"text"_s, u"date"_s, u"pinned"_s}) {
    QJsonObject lacking = good;
    lacking.remove(key);
    EXPECT_FALSE(clipFromJson(lacking)) << key.toStdString();
  }
  const auto keys = good.keys();
  for (const QString& key : keys) {
    QJsonObject wrong = good;
    wrong.insert(key, QJsonArray());
    EXPECT_FALSE(clipFromJson(wrong)) << key.toStdString();
  }
  QJsonObject unknownDevice = good;
  unknownDevice.insert(u"remoteDevice"_s, u"watch"_s);
  EXPECT_FALSE(clipFromJson(unknownDevice));
}

TEST(ClipItem, IgnoresUnknownKeysAndTakesNullForAbsent) {
  QJsonObject object = clipToJson(fullClip());
  object.insert(u"novelty"_s, 1);
  object.insert(u"collection"_s, QJsonValue::Null);
  const auto clip = clipFromJson(object);
  ASSERT_TRUE(clip);
  EXPECT_FALSE(clip->collection);
}

TEST(ClipItem, WritesIdsInUpperCaseAndReadsOnlyCanonicalOnes) {
  const QUuid id(u"{0f8fad5b-d9cb-469f-a165-70867728950e}"_s);
  EXPECT_EQ(clipIdText(id), u"0F8FAD5B-D9CB-469F-A165-70867728950E"_s);
  EXPECT_EQ(clipIdFromText(u"0f8fad5b-d9cb-469f-a165-70867728950e"_s), id);
  EXPECT_FALSE(clipIdFromText(u"{0F8FAD5B-D9CB-469F-A165-70867728950E}"_s));
  EXPECT_FALSE(clipIdFromText(u"0F8FAD5B-D9CB-469F-A165-70867728950"_s));
  EXPECT_FALSE(clipIdFromText(u"no es un identificador en absoluto.."_s));
  EXPECT_FALSE(clipIdFromText({}));
}

TEST(ClipItem, IsEqualOnlyWhenEveryFieldIs) {
  const ClipItem clip = fullClip();
  ClipItem changed = clip;
  changed.collection = u"Casa"_s;
  EXPECT_NE(clip, changed);
  changed = clip;
  changed.sensitive.reset();
  EXPECT_NE(clip, changed);
}

TEST(ClipItem, OnlyTrueMeansSensitive) {
  ClipItem clip;
  EXPECT_FALSE(clip.isSensitive());
  clip.sensitive = false;
  EXPECT_FALSE(clip.isSensitive());
  clip.sensitive = true;
  EXPECT_TRUE(clip.isSensitive());
}

TEST(ClipKind, TellsTextImagesFilesAndPinnedClipsApart) {
  ClipItem text;
  ClipItem image;
  image.imageFile = u"a.png"_s;
  ClipItem file;
  file.fileURLString = u"file:///a"_s;
  ClipItem pinnedImage = image;
  pinnedImage.pinned = true;
  EXPECT_TRUE(passesKind(text, ClipKind::all) && passesKind(image, ClipKind::all));
  EXPECT_TRUE(passesKind(text, ClipKind::text) && !passesKind(image, ClipKind::text) &&
              !passesKind(file, ClipKind::text));
  EXPECT_TRUE(passesKind(image, ClipKind::image) && !passesKind(text, ClipKind::image));
  EXPECT_TRUE(passesKind(file, ClipKind::files) && !passesKind(text, ClipKind::files));
  EXPECT_TRUE(passesKind(pinnedImage, ClipKind::pinned) && !passesKind(image, ClipKind::pinned));
}

TEST(RemoteSource, OfAMacWithoutANameIsCalledMac) {
  const ClipSource source = remoteSource(RemoteDeviceType::mac);
  EXPECT_EQ(source.bundleID, u"com.apple.continuity.mac"_s);
  EXPECT_EQ(source.name, u"Mac"_s);
  EXPECT_EQ(source.remoteDevice, RemoteDeviceType::mac);
}

TEST(RemoteSource, HasAnIdentifierAndADefaultNameForEachDevice) {
  EXPECT_EQ(remoteSource(RemoteDeviceType::iPhone).bundleID, u"com.apple.continuity.iphone"_s);
  EXPECT_EQ(remoteSource(RemoteDeviceType::iPad).bundleID, u"com.apple.continuity.ipad"_s);
  EXPECT_EQ(remoteSource(RemoteDeviceType::universal).bundleID, u"com.apple.continuity.universal"_s);
  EXPECT_EQ(remoteSource(RemoteDeviceType::universal).name, u"Continuidad"_s);
  EXPECT_EQ(remoteSource(RemoteDeviceType::iPad, u"iPad de Ana"_s).name, u"iPad de Ana"_s);
  EXPECT_TRUE(isRemoteSourceID(u"com.apple.continuity.ipad"_s));
  EXPECT_FALSE(isRemoteSourceID(u"com.apple.Notes"_s));
}

TEST(RemoteDeviceType, IsStoredByItsRawValue) {
  for (const auto device :
       {RemoteDeviceType::iPhone, RemoteDeviceType::iPad, RemoteDeviceType::mac, RemoteDeviceType::universal})
    EXPECT_EQ(remoteDeviceFromRaw(remoteDeviceRaw(device)), device);
  EXPECT_EQ(remoteDeviceRaw(RemoteDeviceType::iPhone), u"iPhone"_s);
  EXPECT_FALSE(remoteDeviceFromRaw(u"IPHONE"_s));
}

}  // namespace
}  // namespace nimbrel
