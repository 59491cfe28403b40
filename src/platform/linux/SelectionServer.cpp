#include "platform/linux/SelectionServer.h"

#include <algorithm>
#include <cstring>
#include <utility>
#include <vector>

#include "platform/linux/PasteboardTargets.h"

namespace nimbrel {
namespace {

using namespace std::chrono_literals;

constexpr auto kStallTimeout = 5s;

/// Values above this go in pieces; well below the smallest limit on requests that servers have (256 KiB).
constexpr qsizetype kChunkBytes = 128 * 1024;

/// More requestors than this at once are not people pasting.
constexpr std::size_t kMaxTransfers = 64;
constexpr std::uint32_t kMaxMultiplePairs = 64;
constexpr qsizetype kMaxWaiting = 16;

/// Whether a request made at `time` belongs to an ownership that began at `since`. Server time wraps around.
bool isInTime(xcb_timestamp_t time, xcb_timestamp_t since) {
  return time == XCB_CURRENT_TIME || since == XCB_CURRENT_TIME ||
         static_cast<std::int32_t>(time - since) >= 0;
}

/// Programs older than ICCCM name no property and expect the target's name to be used.
xcb_atom_t propertyOf(const xcb_selection_request_event_t& request) {
  return request.property == XCB_ATOM_NONE ? request.target : request.property;
}

}  // namespace

SelectionServer::SelectionServer(xcb_connection_t* connection, AtomTable& atoms,
                                 ImageConversions& conversions)
    : connection_(connection), atoms_(atoms), conversions_(conversions) {}

void SelectionServer::offer(xcb_atom_t selection, const PasteboardContent& content, xcb_timestamp_t time) {
  const auto targets = offeredTargets(content);
  Offer offer{.values = {}, .since = time};
  for (auto it = targets.begin(); it != targets.end(); ++it)
    offer.values.insert(atoms_.atom(it.key()), it.value());
  const auto converted =
      conversions_.isPossible() ? convertedTargets(content) : decltype(convertedTargets({}))();
  for (auto it = converted.begin(); it != converted.end(); ++it)
    offer.conversions.insert(atoms_.atom(it.key()), it.value());
  offer.image = content.png.value_or(QByteArray());
  offers_.insert(selection, offer);
}

std::optional<xcb_timestamp_t> SelectionServer::offeredSince(xcb_atom_t selection) const {
  const auto found = offers_.constFind(selection);
  if (found == offers_.constEnd()) return std::nullopt;
  return found->since;
}

void SelectionServer::handle(const xcb_selection_request_event_t& event, TimePoint now) {
  const xcb_atom_t property = propertyOf(event);
  const auto offer = offers_.find(event.selection);
  const bool entitled = offer != offers_.end() && isInTime(event.time, offer->since);
  if (entitled && beginConversion(*offer, event)) return;
  const bool answered = entitled && answer(*offer, event.target, {event.requestor, property}, now);
  sendSelectionNotify(connection_, event, answered ? property : static_cast<xcb_atom_t>(XCB_ATOM_NONE));
}

bool SelectionServer::beginConversion(Offer& offer, const xcb_selection_request_event_t& request) {
  const auto format = offer.conversions.constFind(request.target);
  const bool converted = offer.values.contains(request.target);
  if (converted || format == offer.conversions.constEnd() || waiting_.size() >= kMaxWaiting) return false;
  const auto underWay = std::find_if(waiting_.begin(), waiting_.end(), [&](const Waiting& waiting) {
    return waiting.request.target == request.target && waiting.since == offer.since;
  });
  if (underWay != waiting_.end()) {
    waiting_.append({underWay->ticket, offer.since, request});
    return true;
  }
  waiting_.append({++lastTicket_, offer.since, request});
  conversions_.start(lastTicket_, offer.image, *format);
  return true;
}

void SelectionServer::takeConversions(TimePoint now) {
  const auto results = conversions_.takeResults();
  for (const ImageConversions::Result& result : results) {
    for (const Waiting& waiting : std::as_const(waiting_)) {
      if (waiting.ticket != result.ticket) continue;
      if (result.bytes)
        answerConverted(waiting, *result.bytes, now);
      else
        sendSelectionNotify(connection_, waiting.request, XCB_ATOM_NONE);
    }
    waiting_.removeIf([&](const Waiting& waiting) { return waiting.ticket == result.ticket; });
  }
}

void SelectionServer::answerConverted(const Waiting& waiting, const QByteArray& bytes, TimePoint now) {
  const auto& request = waiting.request;
  const xcb_atom_t property = propertyOf(request);
  Offer converted;
  converted.values.insert(request.target, bytes);
  // Who asks next has it at once, unless something else is offered by now.
  const auto current = offers_.find(request.selection);
  if (current != offers_.end() && current->since == waiting.since)
    current->values.insert(request.target, bytes);
  const bool answered = answer(converted, request.target, {request.requestor, property}, now);
  sendSelectionNotify(connection_, request, answered ? property : static_cast<xcb_atom_t>(XCB_ATOM_NONE));
}

bool SelectionServer::answer(const Offer& offer, xcb_atom_t target, Place place, TimePoint now) {
  // Who asks again at the same place has given up the transfer that was going there.
  transfers_.remove_if([&](const Transfer& transfer) { return transfer.place == place; });
  if (target == atoms_.atom(QStringLiteral("TARGETS"))) {
    sendTargets(offer, place);
    return true;
  }
  if (target == atoms_.atom(QStringLiteral("TIMESTAMP"))) {
    xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, place.requestor, place.property, XCB_ATOM_INTEGER,
                        32, 1, &offer.since);
    return true;
  }
  if (target == atoms_.atom(QStringLiteral("MULTIPLE"))) return answerMultiple(offer, place, now);
  return sendValue(offer, target, place, now);
}

void SelectionServer::sendTargets(const Offer& offer, Place place) {
  std::vector<xcb_atom_t> targets;
  for (const auto* name : {u"TARGETS", u"TIMESTAMP", u"MULTIPLE"})
    targets.push_back(atoms_.atom(QString::fromUtf16(name)));
  for (auto it = offer.values.begin(); it != offer.values.end(); ++it)
    targets.push_back(it.key());
  for (auto it = offer.conversions.begin(); it != offer.conversions.end(); ++it) {
    if (!offer.values.contains(it.key())) targets.push_back(it.key());
  }
  xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, place.requestor, place.property, XCB_ATOM_ATOM, 32,
                      static_cast<std::uint32_t>(targets.size()), targets.data());
}

bool SelectionServer::answerMultiple(const Offer& offer, Place place, TimePoint now) {
  const xcb_atom_t multiple = atoms_.atom(QStringLiteral("MULTIPLE"));
  const auto cookie = xcb_get_property(connection_, 0, place.requestor, place.property,
                                       XCB_GET_PROPERTY_TYPE_ANY, 0, kMaxMultiplePairs * 2);
  xcb_generic_error_t* error = nullptr;
  const XcbPointer<xcb_get_property_reply_t> reply(xcb_get_property_reply(connection_, cookie, &error));
  const XcbPointer<xcb_generic_error_t> owned(error);
  if (!reply || reply->format != 32) return false;
  const auto bytes = static_cast<std::size_t>(xcb_get_property_value_length(reply.get()));
  std::vector<xcb_atom_t> pairs(bytes / sizeof(xcb_atom_t) / 2 * 2);
  std::memcpy(pairs.data(), xcb_get_property_value(reply.get()), pairs.size() * sizeof(xcb_atom_t));
  for (std::size_t i = 0; i + 1 < pairs.size(); i += 2) {
    const bool nested = pairs[i] == multiple;
    const bool named = pairs[i + 1] != XCB_ATOM_NONE;
    if (nested || !named || !answer(offer, pairs[i], {place.requestor, pairs[i + 1]}, now))
      pairs[i + 1] = XCB_ATOM_NONE;
  }
  xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, place.requestor, place.property,
                      atoms_.atom(QStringLiteral("ATOM_PAIR")), 32, static_cast<std::uint32_t>(pairs.size()),
                      pairs.data());
  return true;
}

bool SelectionServer::sendValue(const Offer& offer, xcb_atom_t target, Place place, TimePoint now) {
  const auto found = offer.values.constFind(target);
  if (found == offer.values.constEnd()) return false;
  const QByteArray bytes = *found;
  if (bytes.size() <= kChunkBytes) {
    xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, place.requestor, place.property, typeFor(target),
                        8, static_cast<std::uint32_t>(bytes.size()), bytes.constData());
    return true;
  }
  if (transfers_.size() >= kMaxTransfers) return false;
  // Watching must begin before the requestor can delete the property for the first time.
  const std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY;
  xcb_change_window_attributes(connection_, place.requestor, XCB_CW_EVENT_MASK, &mask);
  const auto size = static_cast<std::uint32_t>(bytes.size());
  xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, place.requestor, place.property,
                      atoms_.atom(QStringLiteral("INCR")), 32, 1, &size);
  transfers_.push_back({place, typeFor(target), bytes, 0, now + kStallTimeout});
  return true;
}

void SelectionServer::handle(const xcb_property_notify_event_t& event, TimePoint now) {
  if (event.state != XCB_PROPERTY_DELETE) return;
  const auto transfer = std::find_if(transfers_.begin(), transfers_.end(), [&](const Transfer& candidate) {
    return candidate.place == Place{event.window, event.atom};
  });
  if (transfer == transfers_.end()) return;
  const bool complete = transfer->sent == transfer->bytes.size();
  sendNextChunk(*transfer, now);
  if (!complete) return;
  // The empty piece that says "that was all" has just gone out.
  const xcb_window_t requestor = transfer->place.requestor;
  transfers_.erase(transfer);
  stopWatching(requestor);
}

void SelectionServer::sendNextChunk(Transfer& transfer, TimePoint now) {
  const qsizetype length = std::min(kChunkBytes, transfer.bytes.size() - transfer.sent);
  xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, transfer.place.requestor, transfer.place.property,
                      transfer.type, 8, static_cast<std::uint32_t>(length),
                      transfer.bytes.constData() + transfer.sent);
  transfer.sent += length;
  transfer.deadline = now + kStallTimeout;
}

void SelectionServer::handle(const xcb_destroy_notify_event_t& event) {
  transfers_.remove_if([&](const Transfer& transfer) { return transfer.place.requestor == event.window; });
}

std::optional<SelectionServer::TimePoint> SelectionServer::deadline() const {
  const auto first =
      std::min_element(transfers_.begin(), transfers_.end(),
                       [](const Transfer& a, const Transfer& b) { return a.deadline < b.deadline; });
  if (first == transfers_.end()) return std::nullopt;
  return first->deadline;
}

void SelectionServer::expire(TimePoint now) {
  std::vector<xcb_window_t> stalled;
  transfers_.remove_if([&](const Transfer& transfer) {
    if (transfer.deadline > now) return false;
    stalled.push_back(transfer.place.requestor);
    return true;
  });
  for (const xcb_window_t requestor : stalled)
    stopWatching(requestor);
}

void SelectionServer::stopWatching(xcb_window_t requestor) {
  const bool stillNeeded = std::any_of(transfers_.begin(), transfers_.end(), [&](const Transfer& transfer) {
    return transfer.place.requestor == requestor;
  });
  const std::uint32_t mask = XCB_EVENT_MASK_NO_EVENT;
  if (!stillNeeded) xcb_change_window_attributes(connection_, requestor, XCB_CW_EVENT_MASK, &mask);
}

xcb_atom_t SelectionServer::typeFor(xcb_atom_t target) {
  // TEXT leaves the choice of encoding to the owner, which names it in the type.
  return target == atoms_.atom(QStringLiteral("TEXT")) ? atoms_.atom(QStringLiteral("UTF8_STRING")) : target;
}

}  // namespace nimbrel
