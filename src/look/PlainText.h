#pragma once

#include <QString>

namespace nimbrel {

/// Texts of foreign origin, for widgets that would take some of them for markup.

/// For a button: an ampersand is no mnemonic.
[[nodiscard]] QString plainButtonText(QString text);

/// For a tool tip: a tag is no tag.
[[nodiscard]] QString plainToolTip(const QString& text);

}  // namespace nimbrel
