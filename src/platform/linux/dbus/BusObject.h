#pragma once

#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QStringList>
#include <atomic>
#include <functional>

#include "platform/Clock.h"
#include "platform/linux/dbus/CallBudget.h"

namespace nimbrel {

/// A call that may be answered.
struct BusCall final {
  QString interface;
  QString member;
  QVariantList arguments;
  /// To be answered with a reply made of it.
  QDBusMessage message;
};

/// The program's objects on the session bus. It lives in a thread of its own, which looks at every call
/// first: what is misspelt, too long or comes too fast is answered there, and never reaches the main thread,
/// however much of it there is.
class BusObject final : public QDBusVirtualObject {
  Q_OBJECT

 public:
  /// What of calls may wait for the main thread, in UTF-16 units.
  static constexpr qint64 kMaxWaiting = 16'000'000;
  /// More than any URL that is not refused.
  static constexpr qint64 kMaxUrls = 8'000'000;

  /// `accepted` is called in the object's thread; the clock outlives the object.
  BusObject(const Clock& clock, std::function<void(const BusCall&)> accepted);

  /// What one property says. Any thread.
  void setCapturePaused(bool paused) { capturePaused_ = paused; }
  /// An accepted call does not wait any more. Any thread.
  void settle(const BusCall& call);

  [[nodiscard]] QString introspect(const QString& path) const override;
  bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

 private:
  [[nodiscard]] bool answerProperties(const QDBusMessage& message, const QDBusConnection& connection) const;
  [[nodiscard]] bool hasRoomFor(qint64 size);

  CallBudget budget_;
  const std::function<void(const BusCall&)> accepted_;
  std::atomic<bool> capturePaused_ = false;
  std::atomic<qint64> waiting_ = 0;
};

}  // namespace nimbrel
