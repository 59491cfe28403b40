#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>
#include <QUrl>
#include <optional>

#include "platform/PasteboardReadPolicy.h"
#include "platform/PasteboardSnapshot.h"
#include "platform/RunningApplication.h"

/// Which of a pasteboard's contents are read, and in which order.
namespace nimbrel::macos {

/// One content of a pasteboard, within a budget of bytes.
template <class Content>
struct Reading final {
  std::optional<Content> content;
  /// It is there, and was left there.
  bool isTooLarge = false;
};

/// What can be read of a pasteboard now. Each reading may make the system ask the user, or another program
/// deliver.
class PasteboardReader {
 public:
  virtual ~PasteboardReader() = default;

  [[nodiscard]] virtual QStringList types() = 0;
  /// The files among the pasteboard's objects.
  [[nodiscard]] virtual QList<QUrl> fileUrls() = 0;
  [[nodiscard]] virtual Reading<QString> text(qint64 maxBytes) = 0;
  [[nodiscard]] virtual Reading<QByteArray> data(const QString& type, qint64 maxBytes) = 0;
};

/// What lies on the pasteboard at a change, put there while `front` was the application in front. Nothing at
/// all is read while capture is paused, and nothing but the types where there is a type to be ignored, or the
/// application is; files end the reading, and so does text that is more than blanks or too large.
[[nodiscard]] PasteboardSnapshot readSnapshot(PasteboardReader& reader, const PasteboardReadPolicy& policy,
                                              qint64 changeCount,
                                              const std::optional<RunningApplication>& front);

}  // namespace nimbrel::macos
