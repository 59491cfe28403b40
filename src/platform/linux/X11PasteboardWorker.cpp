#include "platform/linux/X11PasteboardWorker.h"

#include <poll.h>
#include <unistd.h>
#include <xcb/xfixes.h>

#include <QLoggingCategory>
#include <algorithm>
#include <vector>

namespace nimbrel {
namespace {

using namespace std::chrono_literals;

Q_LOGGING_CATEGORY(pasteboardLog, "clipboard")

/// Why a read ended before its owner had answered, as the log says it.
constexpr const char* kPastedFirst = "se pegó un elemento antes";
constexpr const char* kCopiedFirst = "se copió otra cosa antes de que contestara";

/// What may wait for the main thread; far more than it ever leaves waiting.
constexpr std::size_t kMaxReadySnapshots = 4096;
constexpr qint64 kMaxReadyBytes = 128 * 1024 * 1024;

qint64 sizeOf(const PasteboardSnapshot& snapshot) {
  const auto bytes = [](const std::optional<QByteArray>& data) { return data ? data->size() : 0; };
  // A URL is a few hundred bytes in memory, however short it is.
  qint64 names = snapshot.fileUrls.size() * 512;
  for (const QString& type : snapshot.types)
    names += type.size() * 2;
  return names + (snapshot.text ? snapshot.text->size() * 2 : 0) + bytes(snapshot.rtf) +
         bytes(snapshot.html) + bytes(snapshot.image);
}

}  // namespace

X11Pasteboard::Worker::Worker(X11Pasteboard& owner, const QByteArray& display)
    : owner_(owner),
      connection_(xcb_connect(display.isEmpty() ? nullptr : display.constData(), nullptr)),
      atoms_(connection_.get()),
      conversions_(owner.codec_, [&owner] { owner.wakeWorker(); }),
      server_(connection_.get(), atoms_, conversions_),
      activeApplication_(connection_.get(), atoms_, owner.entries_) {
  connected_ = prepare();
}

bool X11Pasteboard::Worker::prepare() {
  xcb_connection_t* const x = connection_.get();
  if (xcb_connection_has_error(x)) return false;
  const auto* const extension = xcb_get_extension_data(x, &xcb_xfixes_id);
  if (!extension || !extension->present) return false;
  const XcbPointer<xcb_xfixes_query_version_reply_t> version(
      xcb_xfixes_query_version_reply(x, xcb_xfixes_query_version(x, 1, 0), nullptr));
  if (!version) return false;
  selectionEvent_ = extension->first_event + XCB_XFIXES_SELECTION_NOTIFY;
  window_ = xcb_generate_id(x);
  const std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
  xcb_create_window(x, XCB_COPY_FROM_PARENT, window_, rootWindow(x), 0, 0, 1, 1, 0,
                    XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &mask);
  clipboard_ = atoms_.atom(QStringLiteral("CLIPBOARD"));
  return clipboard_ != XCB_ATOM_NONE;
}

void X11Pasteboard::Worker::watchSelection() {
  xcb_connection_t* const x = connection_.get();
  const std::uint32_t selectionMask = XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                      XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                                      XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE;
  xcb_xfixes_select_selection_input(x, window_, clipboard_, selectionMask);
  // A round trip, so that from here on no change can escape.
  const XcbPointer<xcb_get_input_focus_reply_t> synced(
      xcb_get_input_focus_reply(x, xcb_get_input_focus(x), nullptr));
}

void X11Pasteboard::Worker::run() {
  readInitialContent();
  while (!xcb_connection_has_error(connection_.get()) && !isStopping()) {
    takeWishes();
    const auto now = std::chrono::steady_clock::now();
    if (read_) read_->expire(now);
    settleRead();
    server_.expire(now);
    server_.takeConversions(now);
    // Sending can read events into the library's queue, where poll does not see them: they are looked for
    // after it, and nothing is sent between that look and the wait.
    xcb_flush(connection_.get());
    if (!handleEvents()) waitForWork();
  }
  read_.reset();
  const std::lock_guard lock(owner_.shared_.mutex);
  owner_.shared_.connected = false;
  owner_.shared_.written.notify_all();
}

bool X11Pasteboard::Worker::isStopping() const {
  const std::lock_guard lock(owner_.shared_.mutex);
  return owner_.shared_.stopping;
}

bool X11Pasteboard::Worker::handleEvents() {
  // A batch at a time, so that a flood of events keeps neither the main thread's wishes nor the end waiting.
  constexpr std::size_t kBatch = 64;
  std::vector<XcbPointer<xcb_generic_event_t>> events;
  while (events.size() < kBatch) {
    XcbPointer<xcb_generic_event_t> event(xcb_poll_for_event(connection_.get()));
    if (!event) break;
    events.push_back(std::move(event));
  }
  const auto isOwnerChange = [this](const auto& event) { return eventType(*event) == selectionEvent_; };
  const auto lastChange = std::find_if(events.rbegin(), events.rend(), isOwnerChange);
  for (const auto& event : events) {
    // Of several owners in one batch only the last can still be asked.
    if (isOwnerChange(event) && event != *lastChange) {
      noteSuperseded(*event);
      continue;
    }
    dispatch(*event);
  }
  return !events.empty();
}

void X11Pasteboard::Worker::readInitialContent() {
  const auto cookie = xcb_get_selection_owner(connection_.get(), clipboard_);
  const XcbPointer<xcb_get_selection_owner_reply_t> owner(
      xcb_get_selection_owner_reply(connection_.get(), cookie, nullptr));
  if (!owner || owner->owner == XCB_WINDOW_NONE) return;
  readingInitial_ = true;
  beginRead(XCB_CURRENT_TIME);
}

std::optional<X11Pasteboard::Worker::TimePoint> X11Pasteboard::Worker::nextDeadline() const {
  std::optional<TimePoint> next;
  const auto consider = [&](std::optional<TimePoint> deadline) {
    if (deadline && (!next || *deadline < *next)) next = deadline;
  };
  if (read_) consider(read_->deadline());
  consider(server_.deadline());
  return next;
}

void X11Pasteboard::Worker::waitForWork() {
  int timeout = -1;
  if (const auto deadline = nextDeadline()) {
    const auto left =
        std::chrono::ceil<std::chrono::milliseconds>(*deadline - std::chrono::steady_clock::now());
    timeout = static_cast<int>(std::max<qint64>(0, left.count()));
  }
  pollfd descriptors[] = {{xcb_get_file_descriptor(connection_.get()), POLLIN, 0},
                          {owner_.wakeDescriptor_, POLLIN, 0}};
  poll(descriptors, 2, timeout);
  std::uint64_t wakes = 0;
  [[maybe_unused]] const auto count = read(owner_.wakeDescriptor_, &wakes, sizeof wakes);
}

void X11Pasteboard::Worker::takeWishes() {
  std::optional<PasteboardContent> content;
  bool clear = false;
  bool primary = false;
  {
    const std::lock_guard lock(owner_.shared_.mutex);
    content = std::exchange(owner_.shared_.pendingWrite, std::nullopt);
    clear = std::exchange(owner_.shared_.pendingClear, false);
    primary = std::exchange(owner_.shared_.pendingPrimary, false);
    heardTicket_ = owner_.shared_.askedTicket;
  }
  if (clear) clearSelection();
  if (content) {
    abandonRead(kPastedFirst);
    content_ = std::move(*content);
    ownChange_ = {.clipboard = true, .primary = false};
    askServerTime();
  }
  if (!primary) return;
  ownChange_.primary = contentIsOurs_ || ownChange_.clipboard;
  if (ownChange_.primary)
    askServerTime();
  else
    reportDone(false);
}

void X11Pasteboard::Worker::reportDone(bool primaryIsOurs) {
  const std::lock_guard lock(owner_.shared_.mutex);
  owner_.shared_.doneTicket = heardTicket_;
  owner_.shared_.primaryIsOurs = primaryIsOurs;
  owner_.shared_.written.notify_all();
}

void X11Pasteboard::Worker::askServerTime() {
  // Changing a property, even by nothing, makes the server tell its time (ICCCM 2.1).
  xcb_change_property(connection_.get(), XCB_PROP_MODE_APPEND, window_, XCB_ATOM_WM_NAME, XCB_ATOM_STRING, 8,
                      0, nullptr);
}

void X11Pasteboard::Worker::applyOwnChange(xcb_timestamp_t time) {
  const OwnChange change = std::exchange(ownChange_, {});
  xcb_connection_t* const x = connection_.get();
  if (change.clipboard) {
    abandonRead(kPastedFirst);
    // What was lent for the paste before this one is over.
    withdrawPrimary();
    server_.offer(clipboard_, content_, time);
    xcb_set_selection_owner(x, window_, clipboard_, time);
    ownerTime_ = time;
    contentIsOurs_ = owns(clipboard_);
    if (!contentIsOurs_) server_.withdraw(clipboard_);
  }
  bool primaryIsOurs = false;
  if (change.primary && contentIsOurs_) {
    server_.offer(XCB_ATOM_PRIMARY, content_, time);
    xcb_set_selection_owner(x, window_, XCB_ATOM_PRIMARY, time);
    primaryIsOurs = owns(XCB_ATOM_PRIMARY);
    if (!primaryIsOurs) server_.withdraw(XCB_ATOM_PRIMARY);
  }
  reportDone(primaryIsOurs);
}

bool X11Pasteboard::Worker::owns(xcb_atom_t selection) {
  const auto cookie = xcb_get_selection_owner(connection_.get(), selection);
  const XcbPointer<xcb_get_selection_owner_reply_t> owner(
      xcb_get_selection_owner_reply(connection_.get(), cookie, nullptr));
  return owner && owner->owner == window_;
}

void X11Pasteboard::Worker::clearSelection() {
  // A write that has not been carried out yet is called off.
  ownChange_ = {};
  content_ = {};
  withdrawPrimary();
  // With the time at which the known owner took it, the request has no effect on anybody who took it later.
  const bool somebodyNewer = read_ && !readingInitial_;
  if (somebodyNewer) return;
  xcb_set_selection_owner(connection_.get(), XCB_WINDOW_NONE, clipboard_, ownerTime_);
}

void X11Pasteboard::Worker::withdrawPrimary() {
  const auto since = server_.offeredSince(XCB_ATOM_PRIMARY);
  if (!since) return;
  xcb_set_selection_owner(connection_.get(), XCB_WINDOW_NONE, XCB_ATOM_PRIMARY, *since);
  server_.withdraw(XCB_ATOM_PRIMARY);
}

void X11Pasteboard::Worker::dispatch(const xcb_generic_event_t& event) {
  const auto now = std::chrono::steady_clock::now();
  const int type = eventType(event);
  if (type == selectionEvent_) return ownerChanged(event);
  switch (type) {
    case XCB_SELECTION_NOTIFY: {
      const auto& notify = eventAs<xcb_selection_notify_event_t>(event);
      if (read_ && notify.requestor == read_->window()) read_->handle(notify, now);
      return settleRead();
    }
    case XCB_PROPERTY_NOTIFY: {
      const auto& notify = eventAs<xcb_property_notify_event_t>(event);
      if (notify.window == window_) {
        if (notify.atom == XCB_ATOM_WM_NAME && (ownChange_.clipboard || ownChange_.primary))
          applyOwnChange(notify.time);
        return;
      }
      if (read_ && notify.window == read_->window()) {
        read_->handle(notify, now);
        return settleRead();
      }
      return server_.handle(notify, now);
    }
    case XCB_SELECTION_REQUEST:
      return server_.handle(eventAs<xcb_selection_request_event_t>(event), now);
    case XCB_SELECTION_CLEAR:
      return server_.withdraw(eventAs<xcb_selection_clear_event_t>(event).selection);
    case XCB_DESTROY_NOTIFY:
      return server_.handle(eventAs<xcb_destroy_notify_event_t>(event));
    default:
      return;
  }
}

void X11Pasteboard::Worker::ownerChanged(const xcb_generic_event_t& event) {
  const auto& notify = eventAs<xcb_xfixes_selection_notify_event_t>(event);
  if (notify.owner == window_) {
    // The server's word on the order of things: whatever was noticed before came before.
    contentIsOurs_ = true;
    ownerTime_ = notify.selection_timestamp;
    return abandonRead(kPastedFirst);
  }
  abandonRead(kCopiedFirst);
  contentIsOurs_ = false;
  if (!ownChange_.clipboard) content_ = {};
  withdrawPrimary();
  ownerTime_ = notify.selection_timestamp;
  frontAtChange_ = activeApplication_.current();
  changedAt_ = std::chrono::steady_clock::now();
  const bool taken =
      notify.subtype == XCB_XFIXES_SELECTION_EVENT_SET_SELECTION_OWNER && notify.owner != XCB_WINDOW_NONE;
  if (taken) return beginRead(notify.selection_timestamp);
  publish({});
}

void X11Pasteboard::Worker::noteSuperseded(const xcb_generic_event_t& event) {
  const auto& notify = eventAs<xcb_xfixes_selection_notify_event_t>(event);
  abandonRead(kCopiedFirst);
  if (notify.owner != window_ && notify.owner != XCB_WINDOW_NONE)
    qCWarning(pasteboardLog, "No se pudo leer lo copiado: se copió otra cosa enseguida");
}

void X11Pasteboard::Worker::abandonRead(const char* reason) {
  if (!read_) return;
  const bool initial = std::exchange(readingInitial_, false);
  PasteboardSnapshot snapshot = read_->snapshot();
  const bool hasContent = read_->hasContent();
  read_.reset();
  if (initial) return;
  if (!hasContent) {
    qCWarning(pasteboardLog, "No se pudo leer lo copiado: %s", reason);
    return;
  }
  publish(std::move(snapshot));
}

void X11Pasteboard::Worker::beginRead(xcb_timestamp_t time) {
  PasteboardReadPolicy policy;
  {
    const std::lock_guard lock(owner_.shared_.mutex);
    policy = owner_.shared_.policy;
  }
  read_ = std::make_unique<SelectionRead>(connection_.get(), atoms_, policy, time,
                                          std::chrono::steady_clock::now());
}

void X11Pasteboard::Worker::settleRead() {
  if (!read_ || read_->state() == SelectionRead::State::reading) return;
  const bool failed = read_->state() == SelectionRead::State::failed;
  PasteboardSnapshot snapshot = failed ? PasteboardSnapshot{} : read_->snapshot();
  read_.reset();
  if (std::exchange(readingInitial_, false)) {
    const std::lock_guard lock(owner_.shared_.mutex);
    if (owner_.shared_.changeCount == 0) owner_.shared_.text = snapshot.text;
    return;
  }
  if (failed)
    qCWarning(pasteboardLog, "No se pudo leer lo copiado: %s no contestó a tiempo",
              qUtf8Printable(frontAtChange_ ? frontAtChange_->name : QStringLiteral("la aplicación")));
  publish(std::move(snapshot));
}

void X11Pasteboard::Worker::publish(PasteboardSnapshot snapshot) {
  snapshot.frontApplication = frontAtChange_;
  snapshot.changedAt = changedAt_;
  {
    const std::lock_guard lock(owner_.shared_.mutex);
    auto& shared = owner_.shared_;
    snapshot.changeCount = ++shared.changeCount;
    // A write of ours that is under way comes later than this change, whatever their numbers say.
    if (!ownChange_.clipboard && !shared.pendingWrite) shared.text = snapshot.text;
    shared.readyBytes += sizeOf(snapshot);
    shared.ready.push_back(std::move(snapshot));
    while (shared.ready.size() > kMaxReadySnapshots || shared.readyBytes > kMaxReadyBytes) {
      shared.readyBytes -= sizeOf(shared.ready.front());
      shared.ready.pop_front();
      qCCritical(pasteboardLog, "Demasiadas copias a la vez: se descarta la más antigua");
    }
  }
  owner_.announce();
}

}  // namespace nimbrel
