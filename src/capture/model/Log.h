#pragma once

#include <QLoggingCategory>
#include <QString>

namespace nimbrel {

/// The program's one log category, "clipboard". Nothing that the user copied may ever be written to it.
Q_DECLARE_LOGGING_CATEGORY(clipboardLog)

/// Writes "message: description" at error level. Any thread.
void logFailure(const char* message, const QString& description);

}  // namespace nimbrel
