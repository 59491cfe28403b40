#pragma once

#include <QByteArray>
#include <atomic>
#include <memory>
#include <mutex>
#include <optional>

#include "capture/model/ClipItem.h"

namespace nimbrel {

/// The text that search sees of a clip: the first 50,000 characters of its text and of its recognised text,
/// each if not empty, joined with a line feed and folded. Nothing for a sensitive clip and for one without
/// any text.
[[nodiscard]] std::optional<QByteArray> searchBody(const ClipItem& clip);

/// What a row shows of a clip that takes a look at its whole text.
struct ClipTraits final {
  qsizetype characters = 0;
  bool isLink = false;
  bool isTemplate = false;
};

/// An immutable clip together with what is derived from its text, computed once, by whichever thread asks
/// first.
class IndexedClip final {
 public:
  explicit IndexedClip(ClipItem value) : value_(std::move(value)) {}
  /// The same clip with another value: what was derived from a text that is still the same is taken over.
  IndexedClip(ClipItem value, const IndexedClip& before);
  /// A secret is overwritten in memory when nobody holds it any more.
  ~IndexedClip();
  IndexedClip(const IndexedClip&) = delete;
  IndexedClip& operator=(const IndexedClip&) = delete;

  /// Any thread.
  [[nodiscard]] const std::optional<QByteArray>& body() const;

  /// Any thread; takes its time over a long text.
  [[nodiscard]] const ClipTraits& traits() const;

  /// The traits if they are there or cost next to nothing; null for a long text that nobody has looked at
  /// yet. For painting.
  [[nodiscard]] const ClipTraits* readyTraits() const;

  /// Asks the processor for what search reads of a clip, first of the clip and, once that has come, of its
  /// body; a hint, which changes nothing. Any thread.
  void fetch() const;
  void fetchBody() const;

  const ClipItem& clip = value_;

 private:
  ClipItem value_;
  mutable std::once_flag folded_;
  mutable std::optional<QByteArray> body_;
  mutable std::once_flag examined_;
  mutable ClipTraits traits_;
  mutable std::atomic<bool> hasTraits_ = false;
  /// Whether the body is there, and not only being made.
  mutable std::atomic<bool> hasBody_ = false;
};

/// How the history hands clips around: cheap to copy, safe to read on any thread.
using ClipRef = std::shared_ptr<const IndexedClip>;

}  // namespace nimbrel
