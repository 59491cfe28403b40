#pragma once

#import <Foundation/Foundation.h>

#pragma clang assume_nonnull begin

@interface UTType : NSObject
@end

extern "C" {
extern UTType* const UTTypeApplicationBundle;
}

#pragma clang assume_nonnull end
