#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/mman.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <functional>
#include <thread>

#include "platform/linux/imaging/helper/Confinement.h"

namespace nimbrel {
namespace {

constexpr int kRefused = 0;
constexpr int kPossible = 1;
constexpr int kNotConfined = 2;

/// Runs an attempt in a confined process of its own and gives what became of it; a signal counts as negative.
int inConfinement(const std::function<bool()>& attempt) {
  const pid_t child = fork();
  if (child == 0) {
    if (!confineThisProcess({.parent = getppid(), .memory = 1ULL << 30U, .processorSeconds = 30}))
      _exit(kNotConfined);
    _exit(attempt() ? kPossible : kRefused);
  }
  int status = 0;
  waitpid(child, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

TEST(Confinement, ComputingGoesOn) {
  EXPECT_EQ(inConfinement([] {
              auto* const memory = static_cast<volatile char*>(malloc(64 << 20));
              if (!memory) return false;
              memory[1000] = 7;
              return memory[1000] == 7;
            }),
            kPossible);
  EXPECT_EQ(inConfinement([] {
              bool ran = false;
              std::thread([&ran] { ran = true; }).join();
              return ran;
            }),
            kPossible);
}

TEST(Confinement, FilesAreOutOfReach) {
  EXPECT_EQ(inConfinement([] { return open("/etc/passwd", O_RDONLY) >= 0; }), kRefused);
  EXPECT_EQ(inConfinement([] { return open("/tmp/nimbrel-confinement", O_WRONLY | O_CREAT, 0600) >= 0; }),
            kRefused);
  EXPECT_EQ(inConfinement([] { return access("/", R_OK) == 0; }), kRefused);
  EXPECT_EQ(inConfinement([] { return unlink("/tmp/nimbrel-confinement") == 0 || errno == ENOENT; }),
            kRefused);
}

TEST(Confinement, TheNetworkIsOutOfReach) {
  EXPECT_EQ(inConfinement([] { return socket(AF_INET, SOCK_STREAM, 0) >= 0; }), kRefused);
  EXPECT_EQ(inConfinement([] { return socket(AF_UNIX, SOCK_STREAM, 0) >= 0; }), kRefused);
}

TEST(Confinement, OtherProcessesAreOutOfReach) {
  EXPECT_EQ(inConfinement([] { return fork() >= 0; }), kRefused);
  EXPECT_EQ(inConfinement([] { return kill(getppid(), 0) == 0; }), kRefused);
  EXPECT_EQ(inConfinement([] { return execl("/bin/true", "true", nullptr) == 0; }), kRefused);
}

TEST(Confinement, NoCodeCanBeMade) {
  EXPECT_EQ(inConfinement([] {
              return mmap(nullptr, 4096, PROT_READ | PROT_EXEC, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0) !=
                     MAP_FAILED;
            }),
            kRefused);
}

TEST(Confinement, MemoryIsBounded) {
  EXPECT_EQ(inConfinement([] {
              return mmap(nullptr, 2ULL << 30U, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0) !=
                     MAP_FAILED;
            }),
            kRefused);
}

}  // namespace
}  // namespace nimbrel
