#pragma once

#include <QByteArray>
#include <QString>
#include <algorithm>
#include <chrono>
#include <optional>

#include "platform/linux/AtomTable.h"
#include "platform/linux/SelectionReadPlan.h"
#include "platform/linux/Xcb.h"

namespace nimbrel {

/// Reads one change of a selection from its owner without ever waiting for it: events drive it forward,
/// deadlines end it. It has a window of its own, which goes with it, so that a transfer that is broken off
/// leaves nothing behind, neither here nor in the X server. Belongs to the thread of its connection.
class SelectionRead final {
 public:
  using TimePoint = std::chrono::steady_clock::time_point;

  enum class State {
    reading,
    /// The snapshot is complete.
    finished,
    /// The owner fell silent, or gave nothing that could be read.
    failed,
  };

  /// Asks the owner for its targets. `time` is the moment of the change in X server time.
  SelectionRead(xcb_connection_t* connection, AtomTable& atoms, const PasteboardReadPolicy& policy,
                xcb_timestamp_t time, TimePoint now);
  ~SelectionRead();
  SelectionRead(const SelectionRead&) = delete;
  SelectionRead& operator=(const SelectionRead&) = delete;

  [[nodiscard]] xcb_window_t window() const { return window_; }
  [[nodiscard]] State state() const { return state_; }
  /// When `expire` has to be called, unless events come first.
  [[nodiscard]] TimePoint deadline() const { return std::min(progressDeadline_, totalDeadline_); }
  [[nodiscard]] const PasteboardSnapshot& snapshot() const { return plan_.snapshot(); }
  /// Whether the snapshot is worth keeping when the read ends here.
  [[nodiscard]] bool hasContent() const { return plan_.hasContent(); }

  /// Events of `window()`.
  void handle(const xcb_selection_notify_event_t& event, TimePoint now);
  void handle(const xcb_property_notify_event_t& event, TimePoint now);

  /// Gives up when a deadline has passed; what has been read by then is kept.
  void expire(TimePoint now);

 private:
  struct Property {
    xcb_atom_t type = XCB_ATOM_NONE;
    int format = 0;
    QByteArray bytes;
    bool exceedsBudget = false;
  };

  void convert(const QString& target);
  [[nodiscard]] bool isIncremental(const Property& property) const;
  void proceed();
  void end(State state) { state_ = state; }
  void takeTargets();
  void takeValue();
  void takeChunk();
  void beginIncremental(const QByteArray& announcedSize);
  [[nodiscard]] std::optional<Property> takeProperty(qint64 budget) const;

  xcb_connection_t* connection_;
  AtomTable& atoms_;
  xcb_timestamp_t time_;
  xcb_window_t window_;
  /// A fresh name for each conversion, so that a late answer to an earlier one is not taken for this one's.
  xcb_atom_t property_ = XCB_ATOM_NONE;
  xcb_atom_t target_ = XCB_ATOM_NONE;
  int conversions_ = 0;
  bool incremental_ = false;
  QByteArray collected_;
  SelectionReadPlan plan_;
  bool targetsAnswered_ = false;
  State state_ = State::reading;
  TimePoint progressDeadline_;
  TimePoint totalDeadline_;
};

}  // namespace nimbrel
