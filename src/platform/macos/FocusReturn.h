#pragma once

#include <QTimer>
#include <functional>
#include <memory>

namespace nimbrel::macos {

class NotificationObserver;

/// Waits until another application has the keyboard, when this one gives it up. Main thread.
class FocusReturn final {
 public:
  FocusReturn();
  ~FocusReturn();

  /// Tells whether it has, as soon as it has, or after 300 ms. Who waited before is not told any more.
  void await(std::function<void(bool)> done);
  void forget();

 private:
  void finish();

  QTimer limit_;
  std::unique_ptr<NotificationObserver> resigned_;
  std::function<void(bool)> done_;
};

/// Hides the program where it is the active one and has no window left to be seen: an application without a
/// Dock icon would stay active, and nobody would have the keyboard. Main thread.
void yieldUnlessSeen();

}  // namespace nimbrel::macos
