#pragma once

#include <chrono>
#include <memory>
#include <optional>

#include "platform/linux/ActiveApplication.h"
#include "platform/linux/SelectionRead.h"
#include "platform/linux/SelectionServer.h"
#include "platform/linux/X11Pasteboard.h"
#include "platform/linux/Xcb.h"

namespace nimbrel {

/// The pasteboard's thread: waits for X events, for the main thread's wishes and for deadlines, and for
/// nothing else.
class X11Pasteboard::Worker final {
 public:
  Worker(X11Pasteboard& owner, const QByteArray& display);

  /// Whether the X server has been reached and can report selection changes.
  [[nodiscard]] bool isConnected() const { return connected_; }

  /// Asks the X server to tell of every change from now on; before `run`.
  void watchSelection();

  /// Runs until the owner asks for the end or the connection breaks.
  void run();

 private:
  using TimePoint = std::chrono::steady_clock::time_point;

  /// A change that the program makes itself; it waits for the X server's time.
  struct OwnChange {
    bool clipboard = false;
    bool primary = false;
  };

  [[nodiscard]] bool prepare();
  void readInitialContent();
  [[nodiscard]] bool isStopping() const;
  /// Handles some of what has arrived; whether there was anything.
  [[nodiscard]] bool handleEvents();
  void waitForWork();
  void takeWishes();
  void dispatch(const xcb_generic_event_t& event);
  void ownerChanged(const xcb_generic_event_t& event);
  void noteSuperseded(const xcb_generic_event_t& event);
  void beginRead(xcb_timestamp_t time);
  void settleRead();
  /// Ends a read whose source is gone; what it has got by then is kept.
  void abandonRead(const char* reason);
  [[nodiscard]] bool owns(xcb_atom_t selection);
  void publish(PasteboardSnapshot snapshot);
  void askServerTime();
  void applyOwnChange(xcb_timestamp_t time);
  /// Tells the main thread that its wishes so far have been carried out.
  void reportDone(bool primaryIsOurs);
  void clearSelection();
  /// What was lent to PRIMARY for one paste goes when the pasteboard moves on.
  void withdrawPrimary();
  [[nodiscard]] std::optional<TimePoint> nextDeadline() const;

  X11Pasteboard& owner_;
  XcbConnection connection_;
  AtomTable atoms_;
  ImageConversions conversions_;
  SelectionServer server_;
  ActiveApplication activeApplication_;
  bool connected_ = false;
  int selectionEvent_ = 0;
  xcb_window_t window_ = XCB_WINDOW_NONE;
  std::unique_ptr<SelectionRead> read_;
  std::optional<RunningApplication> frontAtChange_;
  TimePoint changedAt_;
  /// The read looks at what was there before the program started, which is no change.
  bool readingInitial_ = false;
  xcb_timestamp_t ownerTime_ = XCB_CURRENT_TIME;
  PasteboardContent content_;
  OwnChange ownChange_;
  bool contentIsOurs_ = false;
  xcb_atom_t clipboard_ = XCB_ATOM_NONE;
  /// The number of the main thread's latest wish that has been heard.
  quint64 heardTicket_ = 0;
};

}  // namespace nimbrel
