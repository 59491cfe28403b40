#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

#include "capture/model/ClipItem.h"

namespace nimbrel {

/// The part of a clip that is stored sealed: everything that has no database column of its own.
struct ClipPayload final {
  QString text;
  std::optional<QString> ocr;
  std::optional<QString> textHash;
  std::optional<QString> sourceBundleID;
  std::optional<QString> sourceName;
  std::optional<QString> richHash;
  std::optional<QString> collection;
  std::optional<QString> fileURLString;

  bool operator==(const ClipPayload&) const = default;
};

[[nodiscard]] ClipPayload payloadOf(const ClipItem& clip);

/// Fills the payload's fields of a clip; the other fields are left as they are.
void applyPayload(ClipPayload payload, ClipItem& clip);

/// UTF-8 JSON with the keys in declaration order; absent optionals are left out. Lone surrogates, which UTF-8
/// cannot hold, become replacement characters.
[[nodiscard]] QByteArray encodePayload(const ClipPayload& payload);

/// Accepts any key order and ignores unknown keys. Nothing when the bytes are no JSON object in valid UTF-8,
/// when "text" is missing, or when a known key holds something other than a string (a null counts as absent).
[[nodiscard]] std::optional<ClipPayload> decodePayload(QByteArray json);

/// The same, working in the bytes themselves, so that nothing of them is left anywhere else; what they hold
/// afterwards is good for nothing but to be wiped.
[[nodiscard]] std::optional<ClipPayload> decodePayloadInPlace(QByteArray& json);

}  // namespace nimbrel
