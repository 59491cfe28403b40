#include "integration/clients/SelectionRequestor.h"

#include <poll.h>

#include <algorithm>
#include <cstring>
#include <vector>

namespace nimbrel::testing {

SelectionRequestor::SelectionRequestor()
    : connection_(xcb_connect(nullptr, nullptr)),
      atoms_(connection_.get()),
      window_(xcb_generate_id(connection_.get())) {
  const std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
  xcb_create_window(connection_.get(), XCB_COPY_FROM_PARENT, window_, rootWindow(connection_.get()), 0, 0, 1,
                    1, 0, XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &mask);
}

XcbPointer<xcb_generic_event_t> SelectionRequestor::waitFor(int type,
                                                            std::chrono::steady_clock::time_point deadline) {
  xcb_flush(connection_.get());
  while (std::chrono::steady_clock::now() < deadline) {
    while (XcbPointer<xcb_generic_event_t> event{xcb_poll_for_event(connection_.get())}) {
      if (eventType(*event) == type) return event;
    }
    pollfd descriptor{xcb_get_file_descriptor(connection_.get()), POLLIN, 0};
    poll(&descriptor, 1, 5);
  }
  return nullptr;
}

std::optional<SelectionRequestor::Property> SelectionRequestor::take(xcb_atom_t property) {
  const auto cookie =
      xcb_get_property(connection_.get(), 1, window_, property, XCB_GET_PROPERTY_TYPE_ANY, 0, 0x1fffffff);
  const XcbPointer<xcb_get_property_reply_t> reply(
      xcb_get_property_reply(connection_.get(), cookie, nullptr));
  if (!reply || reply->type == XCB_ATOM_NONE) return std::nullopt;
  return Property{reply->type, QByteArray(static_cast<const char*>(xcb_get_property_value(reply.get())),
                                          xcb_get_property_value_length(reply.get()))};
}

std::optional<QByteArray> SelectionRequestor::collect(xcb_atom_t property,
                                                      std::chrono::steady_clock::time_point deadline) {
  const auto first = take(property);
  if (!first || first->type != atoms_.atom(QStringLiteral("INCR")))
    return first ? std::optional(first->bytes) : std::nullopt;
  QByteArray collected;
  while (const auto event = waitFor(XCB_PROPERTY_NOTIFY, deadline)) {
    const auto& notify = eventAs<xcb_property_notify_event_t>(*event);
    if (notify.atom != property || notify.state != XCB_PROPERTY_NEW_VALUE) continue;
    const auto piece = take(property);
    if (!piece) continue;
    if (piece->bytes.isEmpty()) return collected;
    collected += piece->bytes;
  }
  return std::nullopt;
}

std::optional<QByteArray> SelectionRequestor::paste(const QString& target, const QString& selection,
                                                    std::chrono::milliseconds patience) {
  const auto deadline = std::chrono::steady_clock::now() + patience;
  const xcb_atom_t property = atoms_.atom(QStringLiteral("TEST_PASTE"));
  xcb_convert_selection(connection_.get(), window_, atoms_.atom(selection), atoms_.atom(target), property,
                        XCB_CURRENT_TIME);
  const auto event = waitFor(XCB_SELECTION_NOTIFY, deadline);
  if (!event || eventAs<xcb_selection_notify_event_t>(*event).property == XCB_ATOM_NONE) return std::nullopt;
  return collect(property, deadline);
}

QStringList SelectionRequestor::targets() {
  const auto bytes = paste(QStringLiteral("TARGETS")).value_or(QByteArray());
  std::vector<xcb_atom_t> atoms(static_cast<std::size_t>(bytes.size()) / sizeof(xcb_atom_t));
  std::memcpy(atoms.data(), bytes.constData(), atoms.size() * sizeof(xcb_atom_t));
  return atoms_.names(atoms);
}

QList<QByteArray> SelectionRequestor::pasteMultiple(const QStringList& targets) {
  const xcb_atom_t list = atoms_.atom(QStringLiteral("TEST_MULTIPLE"));
  std::vector<xcb_atom_t> pairs;
  for (const QString& target : targets) {
    pairs.push_back(atoms_.atom(target));
    pairs.push_back(atoms_.atom(QStringLiteral("TEST_") + target));
  }
  xcb_change_property(connection_.get(), XCB_PROP_MODE_REPLACE, window_, list,
                      atoms_.atom(QStringLiteral("ATOM_PAIR")), 32, static_cast<std::uint32_t>(pairs.size()),
                      pairs.data());
  xcb_convert_selection(connection_.get(), window_, atoms_.atom(QStringLiteral("CLIPBOARD")),
                        atoms_.atom(QStringLiteral("MULTIPLE")), list, XCB_CURRENT_TIME);
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(3);
  QList<QByteArray> answers;
  if (!waitFor(XCB_SELECTION_NOTIFY, deadline)) return answers;
  const QByteArray answered = take(list).value_or(Property{}).bytes;
  std::memcpy(pairs.data(), answered.constData(),
              std::min<std::size_t>(pairs.size() * 4, static_cast<std::size_t>(answered.size())));
  for (std::size_t i = 1; i < pairs.size(); i += 2)
    answers.append(pairs[i] == XCB_ATOM_NONE ? QByteArray()
                                             : collect(pairs[i], deadline).value_or(QByteArray()));
  return answers;
}

void SelectionRequestor::askAndForget(const QString& target) {
  xcb_convert_selection(connection_.get(), window_, atoms_.atom(QStringLiteral("CLIPBOARD")),
                        atoms_.atom(target), atoms_.atom(QStringLiteral("TEST_FORGOTTEN")), XCB_CURRENT_TIME);
  xcb_flush(connection_.get());
}

bool SelectionRequestor::hasOwner(const QString& selection) {
  const auto cookie = xcb_get_selection_owner(connection_.get(), atoms_.atom(selection));
  const XcbPointer<xcb_get_selection_owner_reply_t> reply(
      xcb_get_selection_owner_reply(connection_.get(), cookie, nullptr));
  return reply && reply->owner != XCB_WINDOW_NONE;
}

}  // namespace nimbrel::testing
