#include "capture/model/ClipItem.h"

#include <QJsonValue>

namespace nimbrel {
namespace {

// 2001-01-01 00:00 UTC in seconds since 1970.
constexpr double kReferenceDate = 978307200.0;

using namespace Qt::StringLiterals;

template <typename Value>
void put(QJsonObject& object, const QString& key, const std::optional<Value>& value) {
  if (value) object.insert(key, QJsonValue(*value));
}

QJsonValue dateToJson(Timestamp date) {
  return unixSeconds(date) - kReferenceDate;
}

/// Reads one object key by key and remembers whether any of them held something else than its type.
class FieldReader final {
 public:
  explicit FieldReader(const QJsonObject& object) : object_(object) {}

  std::optional<QString> string(const QString& key) {
    const QJsonValue value = take(key);
    if (value.isUndefined()) return std::nullopt;
    valid_ = valid_ && value.isString();
    return value.toString();
  }

  std::optional<bool> boolean(const QString& key) {
    const QJsonValue value = take(key);
    if (value.isUndefined()) return std::nullopt;
    valid_ = valid_ && value.isBool();
    return value.toBool();
  }

  std::optional<Timestamp> date(const QString& key) {
    const QJsonValue value = take(key);
    if (value.isUndefined()) return std::nullopt;
    valid_ = valid_ && value.isDouble();
    return timestampFromUnixSeconds(value.toDouble() + kReferenceDate);
  }

  template <typename Value>
  Value required(const std::optional<Value>& value) {
    valid_ = valid_ && value.has_value();
    return value.value_or(Value{});
  }

  void fail() { valid_ = false; }
  [[nodiscard]] bool valid() const { return valid_; }

 private:
  QJsonValue take(const QString& key) const {
    const QJsonValue value = object_.value(key);
    return value.isNull() ? QJsonValue(QJsonValue::Undefined) : value;
  }

  const QJsonObject& object_;
  bool valid_ = true;
};

std::optional<RemoteDeviceType> readDevice(FieldReader& fields) {
  const auto raw = fields.string(u"remoteDevice"_s);
  if (!raw) return std::nullopt;
  const auto device = remoteDeviceFromRaw(*raw);
  if (!device) fields.fail();
  return device;
}

}  // namespace

QString clipIdText(const QUuid& id) {
  return id.toString(QUuid::WithoutBraces).toUpper();
}

std::optional<QUuid> clipIdFromText(const QString& text) {
  // QUuid also reads braces and some malformed texts; only the canonical 36 characters are an id.
  if (text.size() != 36 || text.front() == u'{') return std::nullopt;
  const QUuid id = QUuid::fromString(text);
  if (id.isNull() && text != u"00000000-0000-0000-0000-000000000000") return std::nullopt;
  return id;
}

QJsonObject clipToJson(const ClipItem& clip) {
  QJsonObject object;
  object.insert(u"id"_s, clipIdText(clip.id));
  object.insert(u"text"_s, clip.text);
  object.insert(u"date"_s, dateToJson(clip.date));
  object.insert(u"pinned"_s, clip.pinned);
  put(object, u"imageFile"_s, clip.imageFile);
  put(object, u"imageHash"_s, clip.imageHash);
  if (clip.expiresAt) object.insert(u"expiresAt"_s, dateToJson(*clip.expiresAt));
  put(object, u"sensitive"_s, clip.sensitive);
  put(object, u"ocrText"_s, clip.ocrText);
  put(object, u"textHash"_s, clip.textHash);
  put(object, u"sourceBundleID"_s, clip.sourceBundleID);
  put(object, u"sourceName"_s, clip.sourceName);
  put(object, u"richFile"_s, clip.richFile);
  put(object, u"richHash"_s, clip.richHash);
  put(object, u"collection"_s, clip.collection);
  put(object, u"fileURLString"_s, clip.fileURLString);
  if (clip.remoteDevice) object.insert(u"remoteDevice"_s, remoteDeviceRaw(*clip.remoteDevice));
  return object;
}

std::optional<ClipItem> clipFromJson(const QJsonObject& object) {
  FieldReader fields(object);
  ClipItem clip;
  const auto id = clipIdFromText(fields.required(fields.string(u"id"_s)));
  if (!id) return std::nullopt;
  clip.id = *id;
  clip.text = fields.required(fields.string(u"text"_s));
  clip.date = fields.required(fields.date(u"date"_s));
  clip.pinned = fields.required(fields.boolean(u"pinned"_s));
  clip.imageFile = fields.string(u"imageFile"_s);
  clip.imageHash = fields.string(u"imageHash"_s);
  clip.expiresAt = fields.date(u"expiresAt"_s);
  clip.sensitive = fields.boolean(u"sensitive"_s);
  clip.ocrText = fields.string(u"ocrText"_s);
  clip.textHash = fields.string(u"textHash"_s);
  clip.sourceBundleID = fields.string(u"sourceBundleID"_s);
  clip.sourceName = fields.string(u"sourceName"_s);
  clip.richFile = fields.string(u"richFile"_s);
  clip.richHash = fields.string(u"richHash"_s);
  clip.collection = fields.string(u"collection"_s);
  clip.fileURLString = fields.string(u"fileURLString"_s);
  clip.remoteDevice = readDevice(fields);
  if (!fields.valid()) return std::nullopt;
  return clip;
}

}  // namespace nimbrel
