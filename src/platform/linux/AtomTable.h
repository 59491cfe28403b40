#pragma once

#include <QHash>
#include <QString>
#include <QStringList>
#include <span>

#include "platform/linux/Xcb.h"

namespace nimbrel {

/// Translates between atoms and their names, remembering each. Asks only the X server, never another client.
/// Belongs to the thread of its connection.
class AtomTable final {
 public:
  explicit AtomTable(xcb_connection_t* connection) : connection_(connection) {}

  /// The atom of a name, made if there is none yet; XCB_ATOM_NONE when the server does not answer.
  [[nodiscard]] xcb_atom_t atom(const QString& name);

  /// The atoms' names, asked for in one go; unknown atoms and names over 255 bytes are left out.
  [[nodiscard]] QStringList names(std::span<const xcb_atom_t> atoms);

 private:
  /// Names beyond this many are looked up each time, so that a hostile client cannot fill the memory.
  static constexpr qsizetype kMaxRemembered = 4096;
  static constexpr qsizetype kMaxNameBytes = 255;

  xcb_connection_t* connection_;
  /// Only names that the program itself asked for; what other clients call their atoms never gets in here.
  QHash<QString, xcb_atom_t> atoms_;
  QHash<xcb_atom_t, QString> names_;
};

}  // namespace nimbrel
