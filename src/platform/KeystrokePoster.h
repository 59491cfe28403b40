#pragma once

namespace nimbrel {

/// Synthetic keystrokes. Main thread; nothing here waits.
class KeystrokePoster {
 public:
  virtual ~KeystrokePoster() = default;

  /// Sends the paste command of the application that has the keyboard, with no modifier but its own, whatever
  /// the user still holds. Nothing is sent while the keyboard belongs to the program itself.
  virtual void postPaste() = 0;
};

}  // namespace nimbrel
