#pragma once

#include <QIODevice>
#include <QString>

namespace nimbrel {

/// A file descriptor of the system as a device without a buffer: reading gives what is there as soon as there
/// is any, writing waits until all is written. A failure is told by -1 and the error string. One thread.
class DescriptorDevice final : public QIODevice {
 public:
  /// Opens a file for reading; not open, with an error string, when that fails.
  explicit DescriptorDevice(const QString& path);
  /// A descriptor that stays the caller's.
  DescriptorDevice(int descriptor, OpenMode mode);
  ~DescriptorDevice() override;

  [[nodiscard]] bool isSequential() const override { return true; }

 protected:
  qint64 readData(char* data, qint64 size) override;
  qint64 writeData(const char* data, qint64 size) override;

 private:
  /// Whether to try again what the system has refused; waits until that makes sense.
  [[nodiscard]] bool triesAgain(short event);

  const int descriptor_;
  const bool owned_;
};

}  // namespace nimbrel
