#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QUrl>
#include <optional>

namespace nimbrel {

/// What the program puts on the pasteboard: each part that is set is offered under its types.
struct PasteboardContent final {
  QList<QUrl> fileUrls;
  std::optional<QString> text;
  std::optional<QByteArray> rtf;
  std::optional<QByteArray> html;
  std::optional<QByteArray> png;
  std::optional<QByteArray> tiff;
  /// Asks other history keepers to look away.
  bool concealed = false;

  /// Whether there is nothing to offer.
  [[nodiscard]] bool isEmpty() const { return fileUrls.isEmpty() && !text && !rtf && !html && !png && !tiff; }

  bool operator==(const PasteboardContent&) const = default;
};

}  // namespace nimbrel
