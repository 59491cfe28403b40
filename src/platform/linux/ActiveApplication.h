#pragma once

#include <optional>

#include "platform/RunningApplication.h"
#include "platform/linux/AtomTable.h"
#include "platform/linux/DesktopEntries.h"
#include "platform/linux/Xcb.h"

namespace nimbrel {

/// Tells which application a window belongs to. Asks the X server only. Belongs to the thread of its
/// connection.
class ActiveApplication final {
 public:
  /// All must outlive this.
  ActiveApplication(xcb_connection_t* connection, AtomTable& atoms, DesktopEntries& entries)
      : connection_(connection), atoms_(atoms), entries_(entries) {}

  /// The application of the window that the window manager calls active (_NET_ACTIVE_WINDOW).
  [[nodiscard]] std::optional<RunningApplication> current();

  /// The application of the topmost window (_NET_CLIENT_LIST_STACKING) that the user works in, those of a
  /// process left out; the active window comes first, wherever it is in the stack.
  [[nodiscard]] std::optional<RunningApplication> topmostBut(qint64 processId);

  /// The active window itself; XCB_WINDOW_NONE when there is none.
  [[nodiscard]] xcb_window_t activeWindow();

  /// The application that shows a window, by its application id, else its class; nothing when it has neither.
  [[nodiscard]] std::optional<RunningApplication> applicationOf(xcb_window_t window);

 private:
  [[nodiscard]] QList<std::uint32_t> list(xcb_window_t window, const QString& property);
  /// Whether the user can see it, as a window and not as a part of the desktop.
  [[nodiscard]] bool isForWork(xcb_window_t window);

  xcb_connection_t* connection_;
  AtomTable& atoms_;
  DesktopEntries& entries_;
};

}  // namespace nimbrel
