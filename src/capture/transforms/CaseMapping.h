#pragma once

#include <QLocale>
#include <QString>

/// Full Unicode case mapping (chapter 3.13 of the standard): ß becomes SS, a final Σ becomes ς. Pure; any
/// thread.
namespace nimbrel {

/// The same in every locale.
[[nodiscard]] QString uppercased(const QString& text);
[[nodiscard]] QString lowercased(const QString& text);

/// The first letter of each word (UAX #29) as a title's, all others small, by the rules of a locale.
[[nodiscard]] QString titleCased(const QString& text, const QLocale& locale);

}  // namespace nimbrel
