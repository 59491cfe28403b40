#pragma once

#include <optional>
#include <vector>

#include "capture/model/ClipItem.h"
#include "storage/HistoryCipher.h"
#include "storage/SQLValue.h"

struct sqlite3_stmt;

namespace nimbrel {

/// The version of the database that this program writes.
inline constexpr int kDatabaseSchema = 2;

/// The bindings of the upsert for a clip, its payload sealed; nothing when sealing fails.
[[nodiscard]] std::optional<std::vector<SQLValue>> rowOf(const ClipItem& clip, HistoryCipher& cipher);

/// Reads a row in the column order of the load query; nothing when its id or its payload cannot be read.
[[nodiscard]] std::optional<ClipItem> clipOf(sqlite3_stmt* row, HistoryCipher& cipher);

}  // namespace nimbrel
