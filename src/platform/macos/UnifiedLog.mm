#include "platform/macos/UnifiedLog.h"

#import <os/log.h>
#include <unistd.h>

#include <QString>
#include <cstdio>

#include "platform/macos/values/LogTypes.h"

namespace nimbrel::macos {
namespace {

static_assert(kLogDebug == OS_LOG_TYPE_DEBUG);
static_assert(kLogInfo == OS_LOG_TYPE_INFO);
static_assert(kLogDefault == OS_LOG_TYPE_DEFAULT);
static_assert(kLogError == OS_LOG_TYPE_ERROR);
static_assert(kLogFault == OS_LOG_TYPE_FAULT);

void log(QtMsgType type, const QMessageLogContext& context, const QString& message) {
  // The system keeps the log of each name, and gives the same again.
  os_log_t const category = os_log_create(kLogSubsystem, context.category ? context.category : "default");
  const QByteArray text = message.toUtf8();
  // The program never logs what the user copied: nothing here need be hidden.
  os_log_with_type(category, static_cast<os_log_type_t>(logType(type)), "%{public}s", text.constData());
  if (isatty(STDERR_FILENO)) std::fprintf(stderr, "%s\n", text.constData());
}

}  // namespace

void installUnifiedLog() {
  qInstallMessageHandler(log);
}

}  // namespace nimbrel::macos
