#pragma once

#include "platform/UserDefaults.h"

namespace nimbrel::macos {

/// The program's own domain of the user's defaults, with their native types. The system writes them by
/// itself.
class NativeUserDefaults final : public UserDefaults {
 public:
  [[nodiscard]] std::optional<DefaultsValue> value(const QString& key) const override;
  void set(const QString& key, const DefaultsValue& value) override;
  void synchronize() override {}
  [[nodiscard]] bool remove(const QString& key) override;
  [[nodiscard]] bool isIntact() const override { return !damaged_; }
  void markDamaged() override { damaged_ = true; }

 private:
  void keepDamaged();

  bool damaged_ = false;
};

}  // namespace nimbrel::macos
