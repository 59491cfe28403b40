#pragma once

#include <QByteArray>
#include <QString>
#include <cstring>
#include <utility>

namespace nimbrel {

/// Overwrites memory in a way that no optimizer leaves out.
inline void wipe(void* memory, std::size_t bytes) {
  if (bytes == 0) return;
  std::memset(memory, 0, bytes);
  // Whatever comes next might read it, as far as the compiler knows.
  asm volatile("" : : "r"(memory) : "memory");
}

/// Overwrites and empties what nobody else holds; what is shared is only let go of, and its last holder has
/// to see to it.
inline void wipe(QByteArray& bytes) {
  if (bytes.isDetached()) wipe(bytes.data(), static_cast<std::size_t>(bytes.size()));
  bytes.clear();
}
inline void wipe(QString& text) {
  if (text.isDetached()) wipe(text.data(), static_cast<std::size_t>(text.size()) * sizeof(QChar));
  text.clear();
}

/// Bytes that are overwritten when they go: keys, and what was sealed and has been opened.
class WipedBytes final {
 public:
  explicit WipedBytes(QByteArray bytes) : bytes_(std::move(bytes)) {}
  WipedBytes(WipedBytes&&) = default;
  WipedBytes& operator=(WipedBytes&& other) noexcept {
    bytes_.swap(other.bytes_);
    return *this;
  }
  ~WipedBytes() { wipe(bytes_); }

  /// A copy shares the bytes and keeps them from being overwritten.
  [[nodiscard]] const QByteArray& bytes() const { return bytes_; }
  [[nodiscard]] QByteArray& bytes() { return bytes_; }

 private:
  QByteArray bytes_;
};

}  // namespace nimbrel
