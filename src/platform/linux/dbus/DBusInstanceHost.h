#pragma once

#include <QDBusMessage>
#include <QObject>
#include <QStringList>
#include <QThread>
#include <memory>

#include "platform/Clock.h"
#include "platform/InstanceHost.h"
#include "platform/common/InstanceInbox.h"
#include "platform/linux/dbus/BusObject.h"

namespace nimbrel {

/// The instance that owns the session bus name "app.nimbrel.Nimbrel"; others talk to it there, and GNOME
/// Shell searches there.
class DBusInstanceHost final : public QObject, public InstanceHost {
  Q_OBJECT

 public:
  DBusInstanceHost();
  ~DBusInstanceHost() override;

  [[nodiscard]] Claim claim(const QStringList& urls) override;
  void setRequests(const InstanceRequests& requests) override;
  void announceCapture(bool paused) override;

 private:
  [[nodiscard]] static QDBusMessage handOver(const QStringList& given);
  void reply(const BusCall& call, const QVariantList& values = {});
  void replyError(const BusCall& call, const QString& error, const QString& text);
  bool registerObject();
  void unregisterObject();
  void answer(const BusCall& call);
  [[nodiscard]] bool answerAtOnce(const BusCall& call);
  [[nodiscard]] bool answerIntent(const BusCall& call);
  void answerSearch(const BusCall& call);
  void suggest(const BusCall& call, const QStringList& terms);

  SystemClock clock_;
  InstanceInbox inbox_;
  std::unique_ptr<BusObject> object_;
  // Last member, first to go: nothing comes from the bus any more once it has ended.
  QThread thread_;
};

}  // namespace nimbrel
