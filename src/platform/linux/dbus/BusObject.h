#pragma once

#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QStringList>
#include <atomic>
#include <functional>
#include <memory>

#include "platform/Clock.h"
#include "platform/common/CallBudget.h"
#include "platform/common/InstanceInbox.h"

namespace nimbrel {

/// A call that may be answered.
struct BusCall final {
  QString interface;
  QString member;
  QVariantList arguments;
  /// To be answered with a reply made of it.
  QDBusMessage message;
  /// The room that the call takes, as long as anybody holds it.
  std::shared_ptr<void> room;
};

/// The program's objects on the session bus. It lives in a thread of its own, which looks at every call
/// first: what is misspelt, too long or comes too fast is answered there, and never reaches the main thread,
/// however much of it there is.
class BusObject final : public QDBusVirtualObject {
  Q_OBJECT

 public:
  /// How many calls may be without an answer, and how much of them, in UTF-16 units.
  static constexpr int kMaxCalls = 32;
  static constexpr qint64 kMaxWaiting = 16'000'000;
  /// The most that URLs may have, more than any that is not refused, and all other arguments.
  static constexpr qint64 kMaxUrls = InstanceInbox::kMaxUrls;
  static constexpr qint64 kMaxArguments = 64'000;

  /// `accepted` is called in the object's thread; the clock outlives the object.
  BusObject(const Clock& clock, std::function<void(const BusCall&)> accepted);

  /// What one property says. Any thread.
  void setCapturePaused(bool paused) { capturePaused_ = paused; }
  /// Sends a reply from the object's thread: a long one takes its time. Any thread.
  void send(const QDBusMessage& reply);

  [[nodiscard]] QString introspect(const QString& path) const override;
  bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

 private:
  [[nodiscard]] bool answerProperties(const QDBusMessage& message, const QDBusConnection& connection) const;
  /// Null when there is none.
  [[nodiscard]] std::shared_ptr<void> roomFor(qint64 size);

  /// For what is asked of the history, and for what is asked of the program, such as to show itself.
  CallBudget budget_;
  CallBudget controlBudget_;
  const std::function<void(const BusCall&)> accepted_;
  std::atomic<bool> capturePaused_ = false;
  struct Waiting {
    std::atomic<int> calls = 0;
    std::atomic<qint64> size = 0;
  };
  /// Shared with the calls, whose last holder may outlive this.
  const std::shared_ptr<Waiting> waiting_ = std::make_shared<Waiting>();
};

}  // namespace nimbrel
