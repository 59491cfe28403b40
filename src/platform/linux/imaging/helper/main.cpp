#include <fcntl.h>
#include <malloc.h>
#include <poll.h>
#include <sys/resource.h>
#include <unistd.h>

#include <QCoreApplication>
#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <memory>
#include <optional>

#include "platform/linux/imaging/ImagingMessages.h"
#include "platform/linux/imaging/helper/BoundedImage.h"
#include "platform/linux/imaging/helper/Confinement.h"
#include "platform/linux/imaging/helper/ImagingService.h"
#include "platform/linux/imaging/helper/LineRecognizer.h"

namespace nimbrel {
namespace {

/// Memory goes back to the system when nobody has asked for anything for so long.
constexpr int kIdleMilliseconds = 20'000;

constexpr qsizetype kReadBytes = 1 << 20;

/// The given number of bytes, or nothing when the other side has gone.
std::optional<QByteArray> receive(qsizetype length) {
  QByteArray bytes;
  while (bytes.size() < length) {
    const qsizetype have = bytes.size();
    const qsizetype want = std::min(length - have, kReadBytes);
    bytes.resize(have + want);
    const ssize_t count = read(STDIN_FILENO, bytes.data() + have, static_cast<size_t>(want));
    bytes.resize(have + std::max<ssize_t>(count, 0));
    if (count == 0 || (count < 0 && errno != EINTR)) return std::nullopt;
  }
  return bytes;
}

bool send(const QByteArray& bytes) {
  qsizetype sent = 0;
  while (sent < bytes.size()) {
    const ssize_t count =
        write(STDOUT_FILENO, bytes.constData() + sent, static_cast<size_t>(bytes.size() - sent));
    if (count < 0 && errno != EINTR) return false;
    sent += std::max<ssize_t>(count, 0);
  }
  return true;
}

bool isIdle() {
  pollfd watched{STDIN_FILENO, POLLIN, 0};
  int ready = -1;
  do {
    ready = poll(&watched, 1, kIdleMilliseconds);
  } while (ready < 0 && errno == EINTR);
  return ready == 0;
}

/// Whether so much of the processor time is used up that another image might not be finished.
bool isTired() {
  constexpr double kWorkingSeconds = 300;
  return static_cast<double>(std::clock()) / CLOCKS_PER_SEC > kWorkingSeconds;
}

/// Answers one request; false when there will be no other.
bool serveOne(LineRecognizer* recognizer) {
  const auto header = receive(kFrameHeaderBytes);
  const auto length = header ? announcedLength(*header) : std::nullopt;
  const auto frame = length ? receive(*length) : std::nullopt;
  const auto request = frame ? decodeRequest(*frame) : std::nullopt;
  if (!request) return false;
  const QByteArray reply = encodeReply(answer(*request, recognizer));
  return send(frameHeader(reply)) && send(reply);
}

/// What the libraries have to say about a picture is nobody's business. Gives where messages went before.
int muteStandardError() {
  const int before = dup(STDERR_FILENO);
  const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
  dup2(nowhere, STDERR_FILENO);
  close(nowhere);
  return before;
}

/// Decoders leave out what is missing in a damaged picture. What stands there then must not be what was in
/// memory before, which may be another picture: all memory is handed out as zeros.
void clearMemory() {
  constexpr int kZeros = 0xff;
  mallopt(M_PERTURB, kZeros);
}

/// The end is Nimbrel's to decide; a signal to all processes of a terminal or a service is not meant for the
/// picture in work.
void ignoreTermination() {
  for (const int number : {SIGTERM, SIGINT, SIGHUP})
    std::signal(number, SIG_IGN);
}

int serve(bool readsText, int parent) {
  constexpr unsigned long long kMegabyte = 1 << 20;
  const ConfinementLimits limits{.parent = parent, .memory = 2048 * kMegabyte, .processorSeconds = 600};
  // Everything that comes from files comes before the door shuts.
  loadImageDecoders();
  const auto recognizer = readsText ? LineRecognizer::load() : nullptr;
  // Nobody waits for the text, and everybody notices a slow machine.
  constexpr int kKindness = 10;
  if (readsText) setpriority(PRIO_PROCESS, 0, kKindness);
  const int log = muteStandardError();
  if (!confineThisProcess(limits)) {
    dprintf(log, "nimbrel-imaging: el núcleo no permite aislar el proceso\n");
    return 1;
  }
  close(log);
  while (!isTired() && !isIdle() && serveOne(recognizer.get())) {
  }
  return 0;
}

}  // namespace
}  // namespace nimbrel

int main(int argc, char** argv) {
  nimbrel::clearMemory();
  nimbrel::ignoreTermination();
  // Its event loop would open more descriptors than a confined thread may.
  qputenv("QT_NO_GLIB", "1");
  const QCoreApplication application(argc, argv);
  if (argc != 3) {
    std::fputs("nimbrel-imaging: lo inicia Nimbrel cuando hace falta\n", stderr);
    return 2;
  }
  return nimbrel::serve(std::strcmp(argv[1], "text") == 0, std::atoi(argv[2]));
}
