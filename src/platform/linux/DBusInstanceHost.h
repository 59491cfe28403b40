#pragma once

#include <QObject>

#include "platform/InstanceHost.h"

namespace nimbrel {

/// The instance that owns the session bus name "app.nimbrel.Nimbrel"; others ask it to show its panel.
class DBusInstanceHost final : public QObject, public InstanceHost {
  Q_OBJECT
  Q_CLASSINFO("D-Bus Interface", "app.nimbrel.Nimbrel")

 public:
  ~DBusInstanceHost() override;

  [[nodiscard]] Claim claim() override;
  void setShowHandler(std::function<void()> handler) override;

 public Q_SLOTS:
  /// The D-Bus method.
  Q_SCRIPTABLE void Show();

 private:
  [[nodiscard]] static bool askToShow();

  std::function<void()> showHandler_;
  /// A request that came before anybody could answer it.
  bool showRequested_ = false;
};

}  // namespace nimbrel
