#pragma once

#include <QUrl>
#include <optional>

namespace nimbrel {

/// What the preview shows: one file or none.
struct SinglePreviewDataSource final {
  std::optional<QUrl> url;

  [[nodiscard]] int numberOfPreviewItems() const { return url ? 1 : 0; }
  /// The file, whatever the index.
  [[nodiscard]] std::optional<QUrl> previewItemAt(int) const { return url; }
};

}  // namespace nimbrel
