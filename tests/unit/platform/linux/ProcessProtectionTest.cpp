#include <gmock/gmock.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/Platform.h"

namespace nimbrel {
namespace {

#ifdef NIMBREL_PROTECTED
/// What the process would say of itself once it is protected; in another process, this one goes on being
/// tested.
bool isProtectedAfterwards() {
  const pid_t child = fork();
  if (child == 0) {
    protectProcess();
    rlimit core{};
    getrlimit(RLIMIT_CORE, &core);
    _exit(prctl(PR_GET_DUMPABLE) == 0 && core.rlim_max == 0 ? 0 : 1);
  }
  int status = -1;
  waitpid(child, &status, 0);
  return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

TEST(ProcessProtection, ForbidsCoreDumpsAndDebuggers) {
  EXPECT_TRUE(isProtectedAfterwards());
}
#endif

}  // namespace
}  // namespace nimbrel
