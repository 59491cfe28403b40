#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>
#include <atomic>
#include <functional>
#include <thread>

#include "platform/linux/AtomTable.h"
#include "platform/linux/Xcb.h"

namespace nimbrel::testing {

/// How an owner of the selection treats those who ask it.
enum class Manners {
  honest,
  /// Never answers anything.
  silent,
  /// Tells its targets and then falls silent.
  silentAfterTargets,
  /// Sends one piece of an incremental transfer and stops.
  stallsInTransfer,
  /// Answers every conversion with the start of an incremental transfer of two gigabytes.
  announcesTwoGigabytes,
  /// Goes on sending pieces for ever.
  endlessTransfer,
  /// Names targets that it then refuses.
  lies,
  /// Claims a hundred thousand targets.
  manyTargets,
  /// Breaks its connection when it is asked for the text.
  dies,
  /// Names no targets at all, as programs older than the convention.
  withoutTargets,
};

/// A program that copies: it owns the CLIPBOARD selection on a connection and thread of its own.
class SelectionOwner final {
 public:
  SelectionOwner(QHash<QString, QByteArray> content, Manners manners = Manners::honest);
  ~SelectionOwner();
  SelectionOwner(const SelectionOwner&) = delete;
  SelectionOwner& operator=(const SelectionOwner&) = delete;

  /// Pieces larger than this go incrementally.
  static constexpr qsizetype kPiece = 60'000;

  /// How many conversions it was asked for.
  [[nodiscard]] int requests() const { return requests_; }
  /// How many of them were for more than its targets.
  [[nodiscard]] int contentRequests() const { return contentRequests_; }
  [[nodiscard]] bool stillOwns() const { return owns_; }

 private:
  void run();
  void answer(const xcb_selection_request_event_t& request);
  void notify(const xcb_selection_request_event_t& request, xcb_atom_t property);
  void sendNext(xcb_window_t requestor, xcb_atom_t property);

  QHash<QString, QByteArray> content_;
  Manners manners_;
  XcbConnection connection_;
  AtomTable atoms_;
  xcb_window_t window_ = XCB_WINDOW_NONE;
  QByteArray transfer_;
  xcb_atom_t transferType_ = XCB_ATOM_NONE;
  std::atomic<int> requests_ = 0;
  std::atomic<int> contentRequests_ = 0;
  std::atomic<bool> owns_ = true;
  std::atomic<bool> stopping_ = false;
  std::thread thread_;
};

/// The content of a copied text.
[[nodiscard]] QHash<QString, QByteArray> textContent(const QByteArray& utf8);

}  // namespace nimbrel::testing
