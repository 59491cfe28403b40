#pragma once

#include <QByteArray>
#include <QHash>
#include <QList>
#include <chrono>
#include <list>
#include <optional>

#include "platform/PasteboardContent.h"
#include "platform/linux/AtomTable.h"
#include "platform/linux/ImageConversions.h"
#include "platform/linux/Xcb.h"

namespace nimbrel {

/// Gives content to the programs that ask for it, as ICCCM section 2 has it: TARGETS, TIMESTAMP, MULTIPLE,
/// and large values in pieces (INCR). A requestor that stalls or dies costs its own transfer and nothing
/// else. Belongs to the thread of its connection.
class SelectionServer final {
 public:
  using TimePoint = std::chrono::steady_clock::time_point;

  /// The conversions outlive this.
  SelectionServer(xcb_connection_t* connection, AtomTable& atoms, ImageConversions& conversions);

  /// From now on requests for a selection are answered with this content, owned since `time`.
  void offer(xcb_atom_t selection, const PasteboardContent& content, xcb_timestamp_t time);
  /// From now on requests are refused; transfers under way go on with what they began with.
  void withdraw(xcb_atom_t selection) { offers_.remove(selection); }
  /// Since when a selection is offered; nothing when it is not.
  [[nodiscard]] std::optional<xcb_timestamp_t> offeredSince(xcb_atom_t selection) const;

  void handle(const xcb_selection_request_event_t& event, TimePoint now);
  void handle(const xcb_property_notify_event_t& event, TimePoint now);
  void handle(const xcb_destroy_notify_event_t& event);

  /// Answers those who waited for an image in another format.
  void takeConversions(TimePoint now);

  /// When `expire` has to be called; nothing while no transfer is under way.
  [[nodiscard]] std::optional<TimePoint> deadline() const;
  void expire(TimePoint now);

 private:
  struct Offer {
    QHash<xcb_atom_t, QByteArray> values;
    /// Encoded when somebody asks for them, from `image`.
    QHash<xcb_atom_t, ImageCodec::Format> conversions;
    QByteArray image;
    xcb_timestamp_t since = XCB_CURRENT_TIME;
  };
  /// A request that waits for a conversion.
  struct Waiting {
    quint64 ticket;
    xcb_timestamp_t since;
    xcb_selection_request_event_t request;
  };
  /// Who wants an answer, and where.
  struct Place {
    xcb_window_t requestor;
    xcb_atom_t property;
    bool operator==(const Place&) const = default;
  };
  struct Transfer {
    Place place;
    xcb_atom_t type;
    QByteArray bytes;
    qsizetype sent = 0;
    TimePoint deadline;
  };

  [[nodiscard]] bool answer(const Offer& offer, xcb_atom_t target, Place place, TimePoint now);
  [[nodiscard]] bool answerMultiple(const Offer& offer, Place place, TimePoint now);
  [[nodiscard]] bool sendValue(const Offer& offer, xcb_atom_t target, Place place, TimePoint now);
  void sendTargets(const Offer& offer, Place place);
  /// Has an image converted for a request; whether it has to wait for that.
  [[nodiscard]] bool beginConversion(Offer& offer, const xcb_selection_request_event_t& request);
  void answerConverted(const Waiting& waiting, const QByteArray& bytes, TimePoint now);
  void sendNextChunk(Transfer& transfer, TimePoint now);
  void stopWatching(xcb_window_t requestor);
  [[nodiscard]] xcb_atom_t typeFor(xcb_atom_t target);

  xcb_connection_t* connection_;
  AtomTable& atoms_;
  ImageConversions& conversions_;
  QHash<xcb_atom_t, Offer> offers_;
  QList<Waiting> waiting_;
  quint64 lastTicket_ = 0;
  std::list<Transfer> transfers_;
};

}  // namespace nimbrel
