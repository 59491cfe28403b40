#pragma once

#include <QStringList>
#include <mutex>

namespace nimbrel::testing {

/// Collects the program's log lines, from any thread, while it lives. One at a time.
class LogRecorder final {
 public:
  LogRecorder();
  ~LogRecorder();
  LogRecorder(const LogRecorder&) = delete;
  LogRecorder& operator=(const LogRecorder&) = delete;

  [[nodiscard]] QStringList lines() const;
  /// Whether a line begins with this text.
  [[nodiscard]] bool has(const QString& start) const;

 private:
  static void handle(QtMsgType type, const QMessageLogContext& context, const QString& message);

  QtMessageHandler previous_;
  mutable std::mutex mutex_;
  QStringList lines_;
};

}  // namespace nimbrel::testing
