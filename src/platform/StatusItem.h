#pragma once

#include <QString>
#include <functional>

namespace nimbrel {

/// What the status item shows.
struct StatusItemState final {
  /// A symbol's name.
  QString symbol;
  /// Read by screen readers and shown as the tool tip.
  QString description;
  /// Stands beside the symbol; may be empty.
  QString title;

  bool operator==(const StatusItemState&) const = default;
};

/// The program's item in the menu bar or tray. Main thread.
class StatusItem {
 public:
  virtual ~StatusItem() = default;

  virtual void show(const StatusItemState& state) = 0;

  /// Called on the main thread when the user clicks the item.
  virtual void setActivationHandler(std::function<void()> handler) = 0;
};

}  // namespace nimbrel
