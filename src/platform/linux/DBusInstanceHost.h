#pragma once

#include <QDBusMessage>
#include <QObject>
#include <QStringList>

#include "platform/InstanceHost.h"

namespace nimbrel {

/// The instance that owns the session bus name "app.nimbrel.Nimbrel"; others talk to it there.
class DBusInstanceHost final : public QObject, public InstanceHost {
  Q_OBJECT
  Q_CLASSINFO("D-Bus Interface", "app.nimbrel.Nimbrel")

 public:
  ~DBusInstanceHost() override;

  [[nodiscard]] Claim claim(const QStringList& urls) override;
  void setRequests(const InstanceRequests& requests) override;

 public Q_SLOTS:
  // The D-Bus methods. Each answers before it does what it was asked for: nobody need wait for that.
  Q_SCRIPTABLE void Show();
  Q_SCRIPTABLE void OpenUrls(const QStringList& urls);
  Q_SCRIPTABLE void Quit();

 private:
  [[nodiscard]] static QDBusMessage handOver(const QStringList& urls);
  void deliver();

  InstanceRequests requests_;
  // What was asked for and nobody has answered yet.
  bool showRequested_ = false;
  QStringList urls_;
  qsizetype urlCharacters_ = 0;
  bool quitRequested_ = false;
};

}  // namespace nimbrel
