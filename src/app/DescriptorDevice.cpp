#include "app/DescriptorDevice.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <QFile>
#include <cerrno>

namespace nimbrel {

DescriptorDevice::DescriptorDevice(const QString& path)
    : descriptor_(::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC)), owned_(true) {
  if (descriptor_ >= 0)
    open(QIODevice::ReadOnly | QIODevice::Unbuffered);
  else
    setErrorString(qt_error_string(errno));
}

DescriptorDevice::DescriptorDevice(int descriptor, OpenMode mode) : descriptor_(descriptor), owned_(false) {
  open(mode | QIODevice::Unbuffered);
}

DescriptorDevice::~DescriptorDevice() {
  if (owned_ && descriptor_ >= 0) ::close(descriptor_);
}

qint64 DescriptorDevice::readData(char* data, qint64 size) {
  ssize_t count = 0;
  do {
    count = ::read(descriptor_, data, static_cast<std::size_t>(size));
  } while (count < 0 && triesAgain(POLLIN));
  return count;
}

qint64 DescriptorDevice::writeData(const char* data, qint64 size) {
  qint64 written = 0;
  while (written < size) {
    const ssize_t count = ::write(descriptor_, data + written, static_cast<std::size_t>(size - written));
    if (count >= 0)
      written += count;
    else if (!triesAgain(POLLOUT))
      return -1;
  }
  return written;
}

bool DescriptorDevice::triesAgain(short event) {
  const int error = errno;
  if (error == EINTR) return true;
  if (error == EAGAIN) {
    pollfd descriptor{descriptor_, event, 0};
    return ::poll(&descriptor, 1, -1) >= 0 || errno == EINTR;
  }
  setErrorString(qt_error_string(error));
  return false;
}

}  // namespace nimbrel
