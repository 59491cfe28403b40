#include <sys/prctl.h>
#include <sys/resource.h>

#include "platform/Platform.h"

namespace nimbrel {

void protectProcess() {
#ifdef NIMBREL_PROTECTED
  const rlimit none{0, 0};
  static_cast<void>(setrlimit(RLIMIT_CORE, &none));
  // Also where a program takes the place of the core file, as crash reporters do.
  static_cast<void>(prctl(PR_SET_DUMPABLE, 0));
#endif
}

}  // namespace nimbrel
