#include "platform/linux/AtomTable.h"

#include <set>
#include <vector>

namespace nimbrel {

xcb_atom_t AtomTable::atom(const QString& name) {
  if (const auto known = atoms_.constFind(name); known != atoms_.constEnd()) return *known;
  const QByteArray utf8 = name.toUtf8();
  const auto cookie =
      xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(utf8.size()), utf8.constData());
  const XcbPointer<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(connection_, cookie, nullptr));
  if (!reply) return XCB_ATOM_NONE;
  atoms_.insert(name, reply->atom);
  return reply->atom;
}

QStringList AtomTable::names(std::span<const xcb_atom_t> atoms) {
  std::vector<std::pair<xcb_atom_t, xcb_get_atom_name_cookie_t>> asked;
  QHash<xcb_atom_t, QString> answered;
  std::set<xcb_atom_t> seen;
  for (const xcb_atom_t atom : atoms) {
    if (names_.contains(atom) || !seen.insert(atom).second) continue;
    asked.emplace_back(atom, xcb_get_atom_name(connection_, atom));
  }
  for (const auto& [atom, cookie] : asked) {
    xcb_generic_error_t* error = nullptr;
    const XcbPointer<xcb_get_atom_name_reply_t> reply(xcb_get_atom_name_reply(connection_, cookie, &error));
    const XcbPointer<xcb_generic_error_t> owned(error);
    if (!reply) continue;
    const QByteArray raw(xcb_get_atom_name_name(reply.get()), xcb_get_atom_name_name_length(reply.get()));
    const QString name = QString::fromUtf8(raw);
    // No format has a longer name, and one that does not survive the decoding could pass for another.
    if (raw.size() > kMaxNameBytes || name.toUtf8() != raw) continue;
    answered.insert(atom, name);
    if (names_.size() < kMaxRemembered) names_.insert(atom, name);
  }
  QStringList names;
  for (const xcb_atom_t atom : atoms) {
    const QString name = names_.contains(atom) ? names_.value(atom) : answered.value(atom);
    if (!name.isEmpty()) names.append(name);
  }
  return names;
}

}  // namespace nimbrel
