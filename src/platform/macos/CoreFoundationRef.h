#pragma once

#include <CoreFoundation/CoreFoundation.h>

#include <utility>

namespace nimbrel::macos {

/// Owns one reference to a Core Foundation object, from a function that creates or copies it. May be empty.
template <class Ref>
class CoreFoundationRef final {
 public:
  explicit CoreFoundationRef(Ref CF_CONSUMED object = nullptr) : object_(object) {}
  ~CoreFoundationRef() {
    if (object_) CFRelease(object_);
  }
  CoreFoundationRef(CoreFoundationRef&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
  CoreFoundationRef& operator=(CoreFoundationRef&& other) noexcept {
    std::swap(object_, other.object_);
    return *this;
  }
  CoreFoundationRef(const CoreFoundationRef&) = delete;
  CoreFoundationRef& operator=(const CoreFoundationRef&) = delete;

  [[nodiscard]] Ref get() const { return object_; }
  explicit operator bool() const { return object_ != nullptr; }

 private:
  Ref object_;
};

}  // namespace nimbrel::macos
