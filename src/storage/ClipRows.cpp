#include "storage/ClipRows.h"

#include <sqlite3.h>

#include "capture/model/ClipPayload.h"
#include "memory/Wipe.h"

namespace nimbrel {
namespace {

enum Column { id, date, pinned, imageFile, imageHash, expiresAt, sensitive, payload, richFile };

bool isNull(sqlite3_stmt* row, int column) {
  return sqlite3_column_type(row, column) == SQLITE_NULL;
}

QString text(sqlite3_stmt* row, int column) {
  const auto* const bytes = reinterpret_cast<const char*>(sqlite3_column_text(row, column));
  return QString::fromUtf8(bytes, sqlite3_column_bytes(row, column));
}

std::optional<QString> optionalText(sqlite3_stmt* row, int column) {
  if (isNull(row, column)) return std::nullopt;
  return text(row, column);
}

QByteArray bytes(sqlite3_stmt* row, int column) {
  const auto* const data = static_cast<const char*>(sqlite3_column_blob(row, column));
  return {data, data ? sqlite3_column_bytes(row, column) : 0};
}

}  // namespace

std::optional<std::vector<SQLValue>> rowOf(const ClipItem& clip, HistoryCipher& cipher) {
  const WipedBytes json(encodePayload(payloadOf(clip)));
  auto sealed = cipher.seal(json.bytes());
  if (!sealed) return std::nullopt;
  return std::vector<SQLValue>{
      sqlText(clipIdText(clip.id)),
      unixSeconds(clip.date),
      sqlBool(clip.pinned),
      sqlText(clip.imageFile),
      sqlText(clip.imageHash),
      clip.expiresAt ? SQLValue{unixSeconds(*clip.expiresAt)} : SQLValue{SQLNull{}},
      clip.sensitive ? sqlBool(*clip.sensitive) : SQLValue{SQLNull{}},
      SQLBlob{std::move(*sealed)},
      sqlText(clip.richFile),
  };
}

std::optional<ClipItem> clipOf(sqlite3_stmt* row, HistoryCipher& cipher) {
  const auto uuid = clipIdFromText(text(row, Column::id));
  if (!uuid) return std::nullopt;
  auto opened = cipher.open(bytes(row, Column::payload));
  if (!opened) return std::nullopt;
  WipedBytes json(std::move(*opened));
  auto decoded = decodePayloadInPlace(json.bytes());
  if (!decoded) return std::nullopt;
  ClipItem clip;
  clip.id = *uuid;
  applyPayload(std::move(*decoded), clip);
  clip.date = timestampFromUnixSeconds(sqlite3_column_double(row, Column::date));
  clip.pinned = sqlite3_column_int64(row, Column::pinned) != 0;
  clip.imageFile = optionalText(row, Column::imageFile);
  clip.imageHash = optionalText(row, Column::imageHash);
  if (!isNull(row, Column::expiresAt))
    clip.expiresAt = timestampFromUnixSeconds(sqlite3_column_double(row, Column::expiresAt));
  if (!isNull(row, Column::sensitive)) clip.sensitive = sqlite3_column_int64(row, Column::sensitive) != 0;
  clip.richFile = optionalText(row, Column::richFile);
  return clip;
}

}  // namespace nimbrel
