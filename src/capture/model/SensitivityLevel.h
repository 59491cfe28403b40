#pragma once

#include <cstdint>

namespace nimbrel {

/// How secret a text looks: nothing found, a one-time code, or a credential.
enum class SensitivityLevel : std::uint8_t { none = 0, soft = 1, hard = 2 };

}  // namespace nimbrel
