#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringView>

namespace nimbrel {

/// A part of a text, in UTF-16 units.
struct TextRange final {
  qsizetype start = 0;
  qsizetype length = 0;

  [[nodiscard]] qsizetype end() const { return start + length; }
  bool operator==(const TextRange&) const = default;
};

/// Where the terms of a search are in a text, regardless of case and diacritics; in order, apart from each
/// other, each with the marks that belong to its last letter. The terms are folded.
[[nodiscard]] QList<TextRange> matchRanges(QStringView text, const QList<QByteArray>& terms);

/// The first match in a text with some words around it, in one line; empty when there is none in the part of
/// the text that search sees.
[[nodiscard]] QString excerptOf(const QString& text, const QList<QByteArray>& terms);

}  // namespace nimbrel
