#pragma once

#include <QByteArray>
#include <QHash>
#include <chrono>
#include <list>
#include <memory>
#include <optional>

#include "platform/PasteboardContent.h"
#include "platform/linux/AtomTable.h"
#include "platform/linux/Xcb.h"

namespace nimbrel {

/// Gives content to the programs that ask for it, as ICCCM section 2 has it: TARGETS, TIMESTAMP, MULTIPLE, and large
/// values in pieces (INCR). A requestor that stalls or dies costs its own transfer and nothing else. Belongs to the
/// thread of its connection.
class SelectionServer final {
 public:
  using TimePoint = std::chrono::steady_clock::time_point;

  SelectionServer(xcb_connection_t* connection, AtomTable& atoms);

  /// From now on requests are answered with this content, owned since `time`.
  void offer(const PasteboardContent& content, xcb_timestamp_t time);
  /// From now on requests are refused; transfers under way go on with what they began with.
  void withdraw() { offer_.reset(); }
  [[nodiscard]] bool isOffering() const { return offer_ != nullptr; }
  [[nodiscard]] xcb_timestamp_t offeredSince() const { return since_; }

  void handle(const xcb_selection_request_event_t& event, TimePoint now);
  void handle(const xcb_property_notify_event_t& event, TimePoint now);
  void handle(const xcb_destroy_notify_event_t& event);

  /// When `expire` has to be called; nothing while no transfer is under way.
  [[nodiscard]] std::optional<TimePoint> deadline() const;
  void expire(TimePoint now);

 private:
  using Offer = QHash<xcb_atom_t, QByteArray>;
  struct Transfer {
    xcb_window_t requestor;
    xcb_atom_t property;
    xcb_atom_t type;
    QByteArray bytes;
    qsizetype sent = 0;
    TimePoint deadline;
  };

  [[nodiscard]] bool answer(xcb_window_t requestor, xcb_atom_t target, xcb_atom_t property, TimePoint now);
  [[nodiscard]] bool answerMultiple(xcb_window_t requestor, xcb_atom_t property, TimePoint now);
  [[nodiscard]] bool sendValue(xcb_window_t requestor, xcb_atom_t target, xcb_atom_t property, TimePoint now);
  void sendTargets(xcb_window_t requestor, xcb_atom_t property);
  void sendNextChunk(Transfer& transfer, TimePoint now);
  void stopWatching(xcb_window_t requestor);
  [[nodiscard]] xcb_atom_t typeFor(xcb_atom_t target);

  xcb_connection_t* connection_;
  AtomTable& atoms_;
  std::shared_ptr<const Offer> offer_;
  xcb_timestamp_t since_ = XCB_CURRENT_TIME;
  std::list<Transfer> transfers_;
};

}  // namespace nimbrel
