#pragma once

#include <Availability.h>
#import <Foundation/Foundation.h>
#include <stdint.h>

// In Objective-C the objects of dispatch are counted like any other.
@protocol OS_dispatch_object <NSObject>
@end
@protocol OS_dispatch_queue <OS_dispatch_object>
@end
@protocol OS_dispatch_semaphore <OS_dispatch_object>
@end
@protocol OS_dispatch_source <OS_dispatch_object>
@end

typedef NSObject<OS_dispatch_object>* dispatch_object_t;
typedef NSObject<OS_dispatch_queue>* dispatch_queue_t;
typedef NSObject<OS_dispatch_source>* dispatch_source_t;
typedef NSObject<OS_dispatch_semaphore>* dispatch_semaphore_t;
typedef void (^dispatch_block_t)(void);
typedef uint64_t dispatch_time_t;
typedef const struct dispatch_source_type_s* dispatch_source_type_t;

enum { QOS_CLASS_UTILITY = 0x11 };

#define NSEC_PER_SEC 1000000000ull
#define DISPATCH_TIME_NOW (0ull)

extern "C" {
extern const struct dispatch_source_type_s _dispatch_source_type_signal;
#define DISPATCH_SOURCE_TYPE_SIGNAL (&_dispatch_source_type_signal)

dispatch_queue_t dispatch_get_main_queue(void);
dispatch_queue_t dispatch_get_global_queue(intptr_t identifier, uintptr_t flags);
dispatch_semaphore_t dispatch_semaphore_create(intptr_t value) __attribute__((ns_returns_retained));
intptr_t dispatch_semaphore_wait(dispatch_semaphore_t semaphore, dispatch_time_t timeout);
intptr_t dispatch_semaphore_signal(dispatch_semaphore_t semaphore);
void dispatch_after(dispatch_time_t when, dispatch_queue_t queue, dispatch_block_t block);
dispatch_time_t dispatch_time(dispatch_time_t when, int64_t delta);
dispatch_source_t dispatch_source_create(dispatch_source_type_t type, uintptr_t handle, uintptr_t mask,
                                         dispatch_queue_t queue) __attribute__((ns_returns_retained));
void dispatch_source_set_event_handler(dispatch_source_t source, dispatch_block_t handler);
void dispatch_source_cancel(dispatch_source_t source);
void dispatch_activate(dispatch_object_t object);
}
