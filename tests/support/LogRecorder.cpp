#include "support/LogRecorder.h"

#include <algorithm>
#include <cstring>

namespace nimbrel::testing {
namespace {

LogRecorder* recorder = nullptr;

}  // namespace

LogRecorder::LogRecorder() {
  recorder = this;
  previous_ = qInstallMessageHandler(&LogRecorder::handle);
}

LogRecorder::~LogRecorder() {
  qInstallMessageHandler(previous_);
  recorder = nullptr;
}

void LogRecorder::handle(QtMsgType, const QMessageLogContext& context, const QString& message) {
  if (!context.category || std::strcmp(context.category, "clipboard") != 0) return;
  const std::lock_guard lock(recorder->mutex_);
  recorder->lines_.append(message);
}

QStringList LogRecorder::lines() const {
  const std::lock_guard lock(mutex_);
  return lines_;
}

bool LogRecorder::has(const QString& start) const {
  const QStringList all = lines();
  return std::any_of(all.begin(), all.end(), [&](const QString& line) { return line.startsWith(start); });
}

}  // namespace nimbrel::testing
