#pragma once

#include <atomic>

namespace nimbrel::testing {

/// Makes SQLite's file operations fail on demand, below everything that is tested: a VFS in front of the
/// system's own, the default one while this lives. Databases must be opened after it is made and closed
/// before it goes.
class FailingVfs final {
 public:
  FailingVfs();
  ~FailingVfs();
  FailingVfs(const FailingVfs&) = delete;
  FailingVfs& operator=(const FailingVfs&) = delete;

  /// Fail every write, respectively read, from now on until switched off.
  std::atomic<bool> failWrites = false;
  std::atomic<bool> failReads = false;
  /// Let this many writes pass before failing one and all after it; negative switches the counter off.
  std::atomic<int> writesBeforeFailure = -1;
  /// Files can only be opened for reading.
  std::atomic<bool> readOnly = false;
};

}  // namespace nimbrel::testing
