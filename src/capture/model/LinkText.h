#pragma once

#include <QString>
#include <QUrl>
#include <optional>

#include "capture/model/ClipItem.h"

namespace nimbrel {

/// The address that a text clip consists of: its whole trimmed text is one URL with the scheme http, https or
/// ftp and a host, or with the scheme mailto and a recipient, without white space inside. Nothing for any
/// other clip, and for texts over 8,192 UTF-16 units, which no address bar accepts.
[[nodiscard]] std::optional<QUrl> linkOf(const ClipItem& clip);

}  // namespace nimbrel
