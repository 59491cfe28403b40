#include "capture/model/ClipPayload.h"

#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <array>

namespace nimbrel {
namespace {

struct OptionalField {
  const char* key;
  std::optional<QString> ClipPayload::*member;
};

constexpr std::array<OptionalField, 7> kOptionalFields{{
    {"ocr", &ClipPayload::ocr},
    {"textHash", &ClipPayload::textHash},
    {"sourceBundleID", &ClipPayload::sourceBundleID},
    {"sourceName", &ClipPayload::sourceName},
    {"richHash", &ClipPayload::richHash},
    {"collection", &ClipPayload::collection},
    {"fileURLString", &ClipPayload::fileURLString},
}};

using Writer = rapidjson::Writer<rapidjson::StringBuffer>;

void writeField(Writer& writer, const char* key, const QString& value) {
  const QByteArray utf8 = value.toUtf8();
  writer.Key(key);
  writer.String(utf8.constData(), static_cast<rapidjson::SizeType>(utf8.size()));
}

/// Three answers: a string, absent (missing or null), or of a wrong type.
enum class FieldState { present, absent, wrongType };

FieldState readField(const rapidjson::Document& document, const char* key, QString& out) {
  const auto member = document.FindMember(key);
  if (member == document.MemberEnd() || member->value.IsNull()) return FieldState::absent;
  if (!member->value.IsString()) return FieldState::wrongType;
  out = QString::fromUtf8(member->value.GetString(), static_cast<qsizetype>(member->value.GetStringLength()));
  return FieldState::present;
}

}  // namespace

ClipPayload payloadOf(const ClipItem& clip) {
  return {.text = clip.text,
          .ocr = clip.ocrText,
          .textHash = clip.textHash,
          .sourceBundleID = clip.sourceBundleID,
          .sourceName = clip.sourceName,
          .richHash = clip.richHash,
          .collection = clip.collection,
          .fileURLString = clip.fileURLString};
}

void applyPayload(ClipPayload payload, ClipItem& clip) {
  clip.text = std::move(payload.text);
  clip.ocrText = std::move(payload.ocr);
  clip.textHash = std::move(payload.textHash);
  clip.sourceBundleID = std::move(payload.sourceBundleID);
  clip.sourceName = std::move(payload.sourceName);
  clip.richHash = std::move(payload.richHash);
  clip.collection = std::move(payload.collection);
  clip.fileURLString = std::move(payload.fileURLString);
}

QByteArray encodePayload(const ClipPayload& payload) {
  rapidjson::StringBuffer buffer;
  Writer writer(buffer);
  writer.StartObject();
  writeField(writer, "text", payload.text);
  for (const auto& field : kOptionalFields) {
    const auto& value = payload.*field.member;
    if (value) writeField(writer, field.key, *value);
  }
  writer.EndObject();
  return {buffer.GetString(), static_cast<qsizetype>(buffer.GetSize())};
}

std::optional<ClipPayload> decodePayload(QByteArray json) {
  return decodePayloadInPlace(json);
}

std::optional<ClipPayload> decodePayloadInPlace(QByteArray& json) {
  // Iterative parsing: the bytes may come from a damaged file, and nesting must not eat the stack.
  constexpr unsigned kFlags = rapidjson::kParseIterativeFlag | rapidjson::kParseValidateEncodingFlag;
  rapidjson::Document document;
  // A string that ends in the middle of the bytes must not be taken for the end of what is there.
  if (json.contains('\0')) return std::nullopt;
  document.ParseInsitu<kFlags>(json.data());
  if (document.HasParseError() || !document.IsObject()) return std::nullopt;
  ClipPayload payload;
  if (readField(document, "text", payload.text) != FieldState::present) return std::nullopt;
  for (const auto& field : kOptionalFields) {
    QString value;
    switch (readField(document, field.key, value)) {
      case FieldState::present:
        payload.*field.member = std::move(value);
        break;
      case FieldState::absent:
        break;
      case FieldState::wrongType:
        return std::nullopt;
    }
  }
  return payload;
}

}  // namespace nimbrel
