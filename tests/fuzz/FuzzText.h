#pragma once

#include <QByteArray>
#include <QString>
#include <cstdint>
#include <cstring>

namespace nimbrel::testing {

/// The fuzzer's bytes as a text: most of the time as UTF-8, else as UTF-16 as it is, half characters
/// included.
[[nodiscard]] inline QString fuzzText(const std::uint8_t* data, std::size_t size) {
  const bool utf16 = size > 1 && data[0] == 0xff;
  if (!utf16) return QString::fromUtf8(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  QString text(static_cast<qsizetype>((size - 1) / 2), Qt::Uninitialized);
  std::memcpy(text.data(), data + 1, static_cast<std::size_t>(text.size()) * 2);
  return text;
}

}  // namespace nimbrel::testing
