#import <Foundation/Foundation.h>
#include <sys/ptrace.h>
#include <sys/resource.h>

#include "platform/Platform.h"

namespace nimbrel {

void protectProcess() {
#ifdef NIMBREL_PROTECTED
  const rlimit none{0, 0};
  setrlimit(RLIMIT_CORE, &none);
  // The hardened runtime keeps debuggers away where the program is signed; this does where it is not.
  ptrace(PT_DENY_ATTACH, 0, nullptr, 0);
#endif
}

}  // namespace nimbrel
