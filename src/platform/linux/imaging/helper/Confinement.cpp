#include "platform/linux/imaging/helper/Confinement.h"

#include <linux/landlock.h>
#include <sched.h>
#include <seccomp.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <memory>

namespace nimbrel {
namespace {

void limit(decltype(RLIMIT_AS) resource, rlim_t most) {
  const rlimit both{most, most};
  static_cast<void>(setrlimit(resource, &both));
}

void limitResources(const ConfinementLimits& limits) {
  limit(RLIMIT_CORE, 0);
  limit(RLIMIT_FSIZE, 0);
  limit(RLIMIT_CPU, limits.processorSeconds);
  limit(RLIMIT_AS, limits.memory);
}

/// Takes every file away that is not open yet. A second wall behind the filter of system calls; kernels
/// without it say so, and then the filter stands alone.
void forbidFiles() {
  landlock_ruleset_attr rights{};
  rights.handled_access_fs =
      LANDLOCK_ACCESS_FS_EXECUTE | LANDLOCK_ACCESS_FS_WRITE_FILE | LANDLOCK_ACCESS_FS_READ_FILE |
      LANDLOCK_ACCESS_FS_READ_DIR | LANDLOCK_ACCESS_FS_REMOVE_DIR | LANDLOCK_ACCESS_FS_REMOVE_FILE |
      LANDLOCK_ACCESS_FS_MAKE_CHAR | LANDLOCK_ACCESS_FS_MAKE_DIR | LANDLOCK_ACCESS_FS_MAKE_REG |
      LANDLOCK_ACCESS_FS_MAKE_SOCK | LANDLOCK_ACCESS_FS_MAKE_FIFO | LANDLOCK_ACCESS_FS_MAKE_BLOCK |
      LANDLOCK_ACCESS_FS_MAKE_SYM;
  const auto rules = static_cast<int>(syscall(SYS_landlock_create_ruleset, &rights, sizeof rights, 0));
  if (rules < 0) return;
  static_cast<void>(syscall(SYS_landlock_restrict_self, rules, 0));
  close(rules);
}

/// What computing on what is already there takes: memory, its own descriptors, threads, time, the end.
constexpr std::array kAllowedCalls{
    SCMP_SYS(read), SCMP_SYS(write), SCMP_SYS(readv), SCMP_SYS(writev), SCMP_SYS(recvfrom), SCMP_SYS(sendto),
    SCMP_SYS(poll), SCMP_SYS(ppoll), SCMP_SYS(close), SCMP_SYS(lseek), SCMP_SYS(fstat), SCMP_SYS(brk),
    SCMP_SYS(munmap), SCMP_SYS(mremap), SCMP_SYS(madvise), SCMP_SYS(futex), SCMP_SYS(sched_yield),
    SCMP_SYS(getrandom), SCMP_SYS(clock_gettime), SCMP_SYS(clock_nanosleep), SCMP_SYS(nanosleep),
    SCMP_SYS(gettimeofday), SCMP_SYS(times), SCMP_SYS(getrusage), SCMP_SYS(getpid), SCMP_SYS(gettid),
    SCMP_SYS(rt_sigreturn), SCMP_SYS(rt_sigprocmask), SCMP_SYS(rt_sigaction), SCMP_SYS(sigaltstack),
    SCMP_SYS(restart_syscall), SCMP_SYS(exit), SCMP_SYS(exit_group), SCMP_SYS(sched_getaffinity),
    SCMP_SYS(set_robust_list), SCMP_SYS(rseq), SCMP_SYS(sched_getparam), SCMP_SYS(sched_getscheduler),
    // Each of Qt's threads has a wake-up call of its own.
    SCMP_SYS(eventfd2)};

struct ReleaseFilter {
  void operator()(void* filter) const { seccomp_release(filter); }
};

/// An allowed call whose argument, under a mask, has a value.
struct ConditionalCall {
  int call;
  unsigned argument;
  scmp_datum_t mask;
  scmp_datum_t value;
};

bool allow(void* filter, const ConditionalCall& rule) {
  const auto condition = scmp_arg_cmp{rule.argument, SCMP_CMP_MASKED_EQ, rule.mask, rule.value};
  return seccomp_rule_add_array(filter, SCMP_ACT_ALLOW, rule.call, 1, &condition) == 0;
}

/// Everything that is not allowed fails like a file that is not ours.
bool filterSystemCalls() {
  const std::unique_ptr<void, ReleaseFilter> filter(seccomp_init(SCMP_ACT_ERRNO(EACCES)));
  if (!filter || seccomp_attr_set(filter.get(), SCMP_FLTATR_CTL_TSYNC, 1) != 0) return false;
  constexpr scmp_datum_t kExecutable = PROT_EXEC;
  constexpr scmp_datum_t kThread = CLONE_THREAD | CLONE_VM;
  constexpr scmp_datum_t kWhole = ~scmp_datum_t{0};
  const std::array conditional{
      // Code can be neither made nor changed.
      ConditionalCall{SCMP_SYS(mmap), 2, kExecutable, 0},
      ConditionalCall{SCMP_SYS(mprotect), 2, kExecutable, 0},
      // Threads, which Qt scales images with, but no processes.
      ConditionalCall{SCMP_SYS(clone), 0, kThread, kThread},
      ConditionalCall{SCMP_SYS(prctl), 0, kWhole, PR_SET_NAME},
      // Aborting is a signal to itself and to nobody else.
      ConditionalCall{SCMP_SYS(tgkill), 0, kWhole, static_cast<scmp_datum_t>(getpid())},
  };
  const bool complete =
      std::all_of(kAllowedCalls.begin(), kAllowedCalls.end(),
                  [&](int call) { return seccomp_rule_add(filter.get(), SCMP_ACT_ALLOW, call, 0) == 0; }) &&
      std::all_of(conditional.begin(), conditional.end(),
                  [&](const ConditionalCall& rule) { return allow(filter.get(), rule); }) &&
      // Its flags lie in memory, where no filter sees them; without it the C library falls back to clone.
      seccomp_rule_add(filter.get(), SCMP_ACT_ERRNO(ENOSYS), SCMP_SYS(clone3), 0) == 0;
  return complete && seccomp_load(filter.get()) == 0;
}

}  // namespace

bool confineThisProcess(const ConfinementLimits& limits) {
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  // The parent may have gone before this was said.
  if (getppid() != limits.parent) return false;
  prctl(PR_SET_DUMPABLE, 0);
  if (prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0) return false;
  limitResources(limits);
  forbidFiles();
  return filterSystemCalls();
}

}  // namespace nimbrel
