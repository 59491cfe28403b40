#pragma once

#include <QString>
#include <array>
#include <optional>

namespace nimbrel {

/// Why an intent was not carried out. In this order, whose numbers other parts of the program rely on.
enum class BrevinIntentError {
  /// The history is not there, since the program is still starting, say.
  unavailable,
  emptyHistory,
  emptyCollection,
  authenticationFailed,
  accessibilityRequired,
};

inline constexpr std::array kBrevinIntentErrors{
    BrevinIntentError::unavailable, BrevinIntentError::emptyHistory, BrevinIntentError::emptyCollection,
    BrevinIntentError::authenticationFailed, BrevinIntentError::accessibilityRequired};

/// What the user is told, in the interface's language.
[[nodiscard]] QString localizedDescription(BrevinIntentError error);

/// The name that programs know it by, the same in every language: "emptyHistory".
[[nodiscard]] QString name(BrevinIntentError error);
/// The inverse; nothing for any other name.
[[nodiscard]] std::optional<BrevinIntentError> brevinIntentErrorNamed(const QString& name);

}  // namespace nimbrel
