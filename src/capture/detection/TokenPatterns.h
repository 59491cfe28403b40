#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include "capture/detection/BoundedPattern.h"

namespace nimbrel {

/// One kind of credential that is known by its form.
struct TokenPattern final {
  /// In the syntax of `BoundedPattern`.
  QString expression;
  /// What the text begins with, each in turn; for the one that may stand anywhere, what it holds.
  QStringList prefixes;
  /// No text with fewer UTF-16 units can match.
  qsizetype minimumSize;
  bool anywhere = false;
};

/// The credentials that are known by their form, in the order in which they are tried.
[[nodiscard]] const QList<TokenPattern>& tokenPatterns();

/// Whether a text is, as a whole, one of the credentials known by their form. Private-key blocks are not
/// looked for. Any thread.
[[nodiscard]] bool isToken(QStringView text);

/// Whether a text holds the first line of a PEM private-key block (RFC 7468). Any thread.
[[nodiscard]] bool holdsPrivateKey(QStringView text);

}  // namespace nimbrel
