#pragma once

#include <QByteArray>
#include <memory>
#include <mutex>
#include <optional>

#include "capture/model/ClipItem.h"

namespace nimbrel {

/// The text that search sees of a clip: the first 50,000 characters of its text and of its recognised text, each
/// if not empty, joined with a line feed and folded. Nothing for a sensitive clip and for one without any text.
[[nodiscard]] std::optional<QByteArray> searchBody(const ClipItem& clip);

/// An immutable clip together with its search body, which is computed once, by whichever thread asks first.
class IndexedClip final {
 public:
  explicit IndexedClip(ClipItem value) : clip(std::move(value)) {}

  /// Any thread.
  [[nodiscard]] const std::optional<QByteArray>& body() const;

  const ClipItem clip;

 private:
  mutable std::once_flag folded_;
  mutable std::optional<QByteArray> body_;
};

/// How the history hands clips around: cheap to copy, safe to read on any thread.
using ClipRef = std::shared_ptr<const IndexedClip>;

}  // namespace nimbrel
