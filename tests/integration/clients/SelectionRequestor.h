#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <chrono>
#include <optional>

#include "platform/linux/AtomTable.h"
#include "platform/linux/Xcb.h"

namespace nimbrel::testing {

/// A program that pastes, on a connection of its own; its calls wait for the owner.
class SelectionRequestor final {
 public:
  SelectionRequestor();

  /// The selection's bytes as a target; nothing when it is refused or not answered within the time.
  [[nodiscard]] std::optional<QByteArray> paste(const QString& target,
                                                const QString& selection = QStringLiteral("CLIPBOARD"),
                                                std::chrono::milliseconds patience = std::chrono::seconds(3));
  [[nodiscard]] QStringList targets();
  /// Several targets at once (MULTIPLE); empty bytes for a refused one.
  [[nodiscard]] QList<QByteArray> pasteMultiple(const QStringList& targets);
  /// Asks and never looks at the answer.
  void askAndForget(const QString& target);
  /// Whether anybody owns the selection.
  [[nodiscard]] bool hasOwner(const QString& selection = QStringLiteral("CLIPBOARD"));
  [[nodiscard]] xcb_connection_t* connection() const { return connection_.get(); }

 private:
  struct Property {
    xcb_atom_t type;
    QByteArray bytes;
  };

  [[nodiscard]] XcbPointer<xcb_generic_event_t> waitFor(int type,
                                                        std::chrono::steady_clock::time_point deadline);
  [[nodiscard]] std::optional<Property> take(xcb_atom_t property);
  [[nodiscard]] std::optional<QByteArray> collect(xcb_atom_t property,
                                                  std::chrono::steady_clock::time_point deadline);

  XcbConnection connection_;
  AtomTable atoms_;
  xcb_window_t window_;
};

}  // namespace nimbrel::testing
