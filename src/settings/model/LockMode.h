#pragma once

namespace nimbrel {

/// What is hidden until the user has authenticated: the secrets, everything (retired: it is read back as the
/// secrets), or nothing.
enum class LockMode { sensitiveOnly, entirePanel, disabled };

}  // namespace nimbrel
