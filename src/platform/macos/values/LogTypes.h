#pragma once

#include <QtGlobal>

/// The unified log's levels and names.
namespace nimbrel::macos {

/// The program's identifier.
inline constexpr const char* kLogSubsystem = "app.nimbrel.Nimbrel";

/// OS_LOG_TYPE_DEFAULT and so on.
inline constexpr quint8 kLogDefault = 0x00;
inline constexpr quint8 kLogInfo = 0x01;
inline constexpr quint8 kLogDebug = 0x02;
inline constexpr quint8 kLogError = 0x10;
inline constexpr quint8 kLogFault = 0x11;

/// The level of a message: failures that the program absorbs are errors.
[[nodiscard]] constexpr quint8 logType(QtMsgType type) {
  switch (type) {
    case QtDebugMsg:
      return kLogDebug;
    case QtInfoMsg:
      return kLogInfo;
    case QtWarningMsg:
      return kLogDefault;
    case QtCriticalMsg:
      return kLogError;
    case QtFatalMsg:
      return kLogFault;
  }
  return kLogDefault;
}

}  // namespace nimbrel::macos
