#pragma once

#import <Foundation/Foundation.h>
#include <stdint.h>

@protocol OS_os_log <NSObject>
@end
typedef NSObject<OS_os_log>* os_log_t;
typedef uint8_t os_log_type_t;

enum : os_log_type_t {
  OS_LOG_TYPE_DEFAULT = 0x00,
  OS_LOG_TYPE_INFO = 0x01,
  OS_LOG_TYPE_DEBUG = 0x02,
  OS_LOG_TYPE_ERROR = 0x10,
  OS_LOG_TYPE_FAULT = 0x11,
};

extern "C" {
os_log_t os_log_create(const char* subsystem, const char* category) __attribute__((ns_returns_retained));
/// A macro that the compiler knows in the system's header; its format must be a literal.
void os_log_with_type(os_log_t log, os_log_type_t type, const char* format, ...);
}
