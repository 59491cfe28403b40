#include "capture/model/Log.h"

namespace nimbrel {

Q_LOGGING_CATEGORY(clipboardLog, "clipboard")

void logFailure(const char* message, const QString& description) {
  qCCritical(clipboardLog, "%s: %s", message, qUtf8Printable(description));
}

}  // namespace nimbrel
