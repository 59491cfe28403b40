#pragma once

#include <QStringView>

/// Payment-card and bank-account numbers, told by their check digits. All functions are pure; any thread.
namespace nimbrel {

/// Whether a sequence of digits, of any script, passes the Luhn check (ISO/IEC 7812-1 annex B): every other
/// digit from the right is doubled, less 9 when it was 5 or more, and the sum is divisible by 10. False when
/// any character has no whole-number value; true for an empty text.
[[nodiscard]] bool passesLuhn(QStringView digits);

/// Whether a text is an IBAN in any case, plain spaces left out: 15 to 34 ASCII letters and digits, two
/// letters and two digits first, that pass ISO 7064 MOD 97-10 (ISO 13616-1). Countries are not looked at.
[[nodiscard]] bool isValidIBAN(QStringView candidate);

/// Whether a text is nothing but digits of any script, plain spaces and hyphens, with 13 to 19 digits that
/// pass the Luhn check. The first digit does not matter.
[[nodiscard]] bool isCardNumber(QStringView text);

/// Whether a line holds 13 to 19 ASCII digits, each followed by at most one space or hyphen, that begin with
/// 3, 4, 5 or 6, pass the Luhn check and touch no other digit.
[[nodiscard]] bool containsCardNumber(QStringView line);

/// Whether a line holds a valid IBAN in upper case, in groups of four or without spaces, that touches no
/// other letter or digit.
[[nodiscard]] bool containsIBAN(QStringView line);

}  // namespace nimbrel
