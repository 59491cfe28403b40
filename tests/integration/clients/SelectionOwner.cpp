#include "integration/clients/SelectionOwner.h"

#include <poll.h>
#include <sys/socket.h>

#include <vector>

namespace nimbrel::testing {

QHash<QString, QByteArray> textContent(const QByteArray& utf8) {
  return {{QStringLiteral("UTF8_STRING"), utf8}};
}

SelectionOwner::SelectionOwner(QHash<QString, QByteArray> content, Manners manners)
    : content_(std::move(content)),
      manners_(manners),
      connection_(xcb_connect(nullptr, nullptr)),
      atoms_(connection_.get()),
      window_(xcb_generate_id(connection_.get())) {
  xcb_connection_t* const x = connection_.get();
  xcb_create_window(x, XCB_COPY_FROM_PARENT, window_, rootWindow(x), 0, 0, 1, 1, 0,
                    XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
  xcb_set_selection_owner(x, window_, atoms_.atom(QStringLiteral("CLIPBOARD")), XCB_CURRENT_TIME);
  // The selection is this owner's when the constructor returns.
  free(xcb_get_input_focus_reply(x, xcb_get_input_focus(x), nullptr));
  thread_ = std::thread([this] { run(); });
}

SelectionOwner::~SelectionOwner() {
  stopping_ = true;
  thread_.join();
}

void SelectionOwner::run() {
  while (!stopping_) {
    while (const XcbPointer<xcb_generic_event_t> event{xcb_poll_for_event(connection_.get())}) {
      if (eventType(*event) == XCB_SELECTION_REQUEST) answer(eventAs<xcb_selection_request_event_t>(*event));
      if (eventType(*event) == XCB_SELECTION_CLEAR) owns_ = false;
      if (eventType(*event) == XCB_PROPERTY_NOTIFY) {
        const auto& notify = eventAs<xcb_property_notify_event_t>(*event);
        if (notify.state == XCB_PROPERTY_DELETE) sendNext(notify.window, notify.atom);
      }
    }
    xcb_flush(connection_.get());
    if (xcb_connection_has_error(connection_.get())) return;
    pollfd descriptor{xcb_get_file_descriptor(connection_.get()), POLLIN, 0};
    poll(&descriptor, 1, 5);
  }
}

void SelectionOwner::answer(const xcb_selection_request_event_t& request) {
  ++requests_;
  xcb_connection_t* const x = connection_.get();
  if (manners_ == Manners::silent) return;
  if (request.target == atoms_.atom(QStringLiteral("TARGETS"))) {
    if (manners_ == Manners::withoutTargets) return notify(request, XCB_ATOM_NONE);
    std::vector<xcb_atom_t> targets{atoms_.atom(QStringLiteral("TARGETS"))};
    for (auto it = content_.begin(); it != content_.end(); ++it)
      targets.push_back(atoms_.atom(it.key()));
    if (manners_ == Manners::manyTargets) targets.resize(60'000, XCB_ATOM_WM_NAME);
    xcb_change_property(x, XCB_PROP_MODE_REPLACE, request.requestor, request.property, XCB_ATOM_ATOM, 32,
                        static_cast<std::uint32_t>(targets.size()), targets.data());
    return notify(request, request.property);
  }
  ++contentRequests_;
  switch (manners_) {
    case Manners::silentAfterTargets:
      return;
    case Manners::dies:
      shutdown(xcb_get_file_descriptor(x), SHUT_RDWR);
      stopping_ = true;
      return;
    case Manners::lies:
      return notify(request, XCB_ATOM_NONE);
    default:
      break;
  }
  const QString target = atoms_.names(std::vector<xcb_atom_t>{request.target}).value(0);
  if (!content_.contains(target)) return notify(request, XCB_ATOM_NONE);
  const QByteArray bytes = content_.value(target);
  const bool incremental = bytes.size() > kPiece || manners_ == Manners::announcesTwoGigabytes ||
                           manners_ == Manners::stallsInTransfer || manners_ == Manners::endlessTransfer;
  if (!incremental) {
    xcb_change_property(x, XCB_PROP_MODE_REPLACE, request.requestor, request.property, request.target, 8,
                        static_cast<std::uint32_t>(bytes.size()), bytes.constData());
    return notify(request, request.property);
  }
  const std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
  xcb_change_window_attributes(x, request.requestor, XCB_CW_EVENT_MASK, &mask);
  const std::uint32_t size = manners_ == Manners::announcesTwoGigabytes ? 0x80000000U : 1U;
  transfer_ = bytes;
  transferType_ = request.target;
  xcb_change_property(x, XCB_PROP_MODE_REPLACE, request.requestor, request.property,
                      atoms_.atom(QStringLiteral("INCR")), 32, 1, &size);
  notify(request, request.property);
}

void SelectionOwner::sendNext(xcb_window_t requestor, xcb_atom_t property) {
  if (transferType_ == XCB_ATOM_NONE) return;
  QByteArray piece = transfer_.left(kPiece);
  if (manners_ == Manners::endlessTransfer) piece = QByteArray(kPiece, 'x');
  transfer_.remove(0, piece.size());
  xcb_change_property(connection_.get(), XCB_PROP_MODE_REPLACE, requestor, property, transferType_, 8,
                      static_cast<std::uint32_t>(piece.size()), piece.constData());
  if (piece.isEmpty() || manners_ == Manners::stallsInTransfer) transferType_ = XCB_ATOM_NONE;
}

void SelectionOwner::notify(const xcb_selection_request_event_t& request, xcb_atom_t property) {
  sendSelectionNotify(connection_.get(), request, property);
}

}  // namespace nimbrel::testing
