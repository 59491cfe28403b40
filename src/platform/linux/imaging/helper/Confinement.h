#pragma once

namespace nimbrel {

/// What a confined process may use.
struct ConfinementLimits final {
  /// The process that it belongs to and dies with.
  int parent = 0;
  /// Bytes of address space.
  unsigned long long memory = 0;
  /// Seconds of processor time in its whole life.
  unsigned long long processorSeconds = 0;
};

/// Shuts the calling process in for good: from now on it can use the memory and the descriptors that it has,
/// and nothing else. No files (Landlock, where the kernel has it, and the filter of system calls), no
/// network, no other processes, no new programs, no core dumps; it dies with the thread of its parent that
/// started it. False when the kernel does not filter system calls; then the process must not look at anything
/// that it was not sure of before.
[[nodiscard]] bool confineThisProcess(const ConfinementLimits& limits);

}  // namespace nimbrel
