#pragma once

#include <QDBusMessage>
#include <QVariantList>
#include <chrono>

#include "platform/InstanceClient.h"

namespace nimbrel {

/// Talks to the instance over the session bus.
class DBusInstanceClient final : public InstanceClient {
 public:
  [[nodiscard]] IntentReply perform(const IntentCall& call) override;
  [[nodiscard]] IntentReply show(bool collections) override;
  [[nodiscard]] IntentReply quit() override;
  [[nodiscard]] bool isRunning() override;
  void notify(const QString& title, const QString& text) override;

 private:
  /// Calls until the instance has started.
  [[nodiscard]] static QDBusMessage call(const QString& method, std::chrono::milliseconds patience,
                                         const QVariantList& arguments = {});
};

}  // namespace nimbrel
