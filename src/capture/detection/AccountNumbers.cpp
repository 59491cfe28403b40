#include "capture/detection/AccountNumbers.h"

#include <unicode/uchar.h>
#include <unicode/ustring.h>

#include <QVarLengthArray>
#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

#include "capture/detection/BoundedPattern.h"
#include "capture/model/CodePoints.h"

namespace nimbrel {
namespace {

// ISO/IEC 7812-1: what lengths of card numbers are in use.
constexpr int kMinCardDigits = 13;
constexpr int kMaxCardDigits = 19;

// ISO 13616-1: the shortest IBAN in use, and the longest allowed.
constexpr qsizetype kMinIBAN = 15;
constexpr qsizetype kMaxIBAN = 34;

/// The shortest text that the expression for IBANs inside a line can match.
constexpr qsizetype kMinIBANInLine = 12;

bool isNumber(char32_t c) {
  if (c < 0x80) return isAsciiDigit(c);
  return u_getIntPropertyValue(static_cast<UChar32>(c), UCHAR_NUMERIC_TYPE) != U_NT_NONE;
}

/// What a digit of any script, a Roman numeral and the like stand for; nothing for fractions.
std::optional<qint64> wholeNumberValue(char32_t c) {
  if (isAsciiDigit(c)) return c - U'0';
  if (c < 0x80) return std::nullopt;
  const double value = u_getNumericValue(static_cast<UChar32>(c));
  const bool whole = value != U_NO_NUMERIC_VALUE && value == std::floor(value) && std::abs(value) < 1e18;
  return whole ? std::optional(static_cast<qint64>(value)) : std::nullopt;
}

/// Whether 13 digits occur with at most one space or hyphen between each two: what every card number in a
/// line has, and few other lines.
bool mayHoldCardNumber(QStringView line) {
  int digits = 0;
  bool separated = false;
  for (const QChar unit : line) {
    if (isAsciiDigit(unit.unicode())) {
      if (++digits == kMinCardDigits) return true;
      separated = false;
    } else if ((unit == u' ' || unit == u'-') && !separated) {
      separated = true;
    } else {
      digits = 0;
    }
  }
  return false;
}

/// Where the first two capital letters begin that touch no letter or digit before them and two digits after,
/// as in every IBAN in a line; -1 when there are none.
qsizetype possibleIBAN(QStringView line) {
  const auto at = [line](qsizetype i) { return line[i].unicode(); };
  for (qsizetype i = 3; i + kMinIBANInLine - 3 <= line.size(); ++i) {
    if (!isAsciiDigit(at(i)) || !isAsciiDigit(at(i - 1))) continue;
    const bool head = isAsciiUpper(at(i - 2)) && isAsciiUpper(at(i - 3));
    if (head && (i == 3 || !isAsciiLetterOrDigit(at(i - 4)))) return i - 3;
  }
  return -1;
}

bool isAcceptedCard(QStringView match) {
  QVarLengthArray<QChar, kMaxCardDigits> digits;
  for (const QChar unit : match) {
    if (isAsciiDigit(unit.unicode())) digits.append(unit);
  }
  if (digits.size() < kMinCardDigits || digits.size() > kMaxCardDigits) return false;
  const QChar first = digits.front();
  return first >= u'3' && first <= u'6' && passesLuhn(QStringView(digits.data(), digits.size()));
}

/// The letters and digits of a possible IBAN in upper case; nothing when it cannot be one.
class IBANCharacters {
 public:
  /// False when the character, or the number of them, is impossible.
  bool append(char32_t c) {
    if (!isAsciiLetterOrDigit(c)) return false;
    const auto index = characters_.size();
    const bool fits = index < 2 ? !isAsciiDigit(c) : index >= 4 || isAsciiDigit(c);
    if (!fits || index >= kMaxIBAN) return false;
    characters_.append(static_cast<char>(isAsciiLower(c) ? c - U'a' + U'A' : c));
    return true;
  }

  /// The same for one beyond ASCII, of which some have capital forms in it: ı, ſ, ß and the ligatures.
  bool appendCapitals(char32_t c) {
    const char32_t capital = QChar::toUpper(c);
    if (capital != c) return append(capital);
    // What several capitals stand for is of the basic plane, and none takes more than three.
    if (c > 0xffff || !u_hasBinaryProperty(static_cast<UChar32>(c), UCHAR_CHANGES_WHEN_UPPERCASED))
      return false;
    const auto unit = static_cast<char16_t>(c);
    std::array<char16_t, 4> capitals{};
    UErrorCode error = U_ZERO_ERROR;
    const int32_t count = u_strToUpper(capitals.data(), capitals.size(), &unit, 1, "", &error);
    return U_SUCCESS(error) && std::all_of(capitals.begin(), capitals.begin() + count,
                                           [this](char16_t letter) { return append(letter); });
  }

  /// ISO 7064 MOD 97-10, the first four characters last.
  [[nodiscard]] bool passesCheck() const {
    if (characters_.size() < kMinIBAN) return false;
    unsigned remainder = 0;
    for (qsizetype i = 0; i < characters_.size(); ++i) {
      const char c = characters_[(i + 4) % characters_.size()];
      const auto value = static_cast<unsigned>(isAsciiDigit(static_cast<char32_t>(c)) ? c - '0' : c - 55);
      remainder = (remainder * (value < 10 ? 10 : 100) + value) % 97;
    }
    return remainder == 1;
  }

 private:
  QVarLengthArray<char, kMaxIBAN> characters_;
};

}  // namespace

bool passesLuhn(QStringView digits) {
  // Modulo 10 at each step: characters exist that stand for a billion and more.
  qint64 sum = 0;
  bool doubled = false;
  for (qsizetype end = digits.size(); end > 0;) {
    const CodePoint point = codePointBefore(digits, end);
    const auto value = wholeNumberValue(point.value);
    if (!value) return false;
    sum = (sum + (doubled ? 2 * *value - (*value >= 5 ? 9 : 0) : *value)) % 10;
    doubled = !doubled;
    end -= point.length;
  }
  return sum == 0;
}

bool isValidIBAN(QStringView candidate) {
  IBANCharacters characters;
  for (qsizetype i = 0; i < candidate.size();) {
    const CodePoint point = codePointAt(candidate, i);
    const bool ascii = point.value < 0x80;
    if (point.value != U' ' &&
        !(ascii ? characters.append(point.value) : characters.appendCapitals(point.value)))
      return false;
    i += point.length;
  }
  return characters.passesCheck();
}

bool isCardNumber(QStringView text) {
  // Digits outside the basic plane take two units each.
  QVarLengthArray<QChar, kMaxCardDigits * 2> digits;
  int count = 0;
  for (qsizetype i = 0; i < text.size();) {
    const CodePoint point = codePointAt(text, i);
    if (point.value != U' ' && point.value != U'-') {
      if (!isNumber(point.value) || ++count > kMaxCardDigits) return false;
      for (const QChar unit : text.sliced(i, point.length))
        digits.append(unit);
    }
    i += point.length;
  }
  return count >= kMinCardDigits && passesLuhn(QStringView(digits.data(), digits.size()));
}

bool containsCardNumber(QStringView line) {
  static const BoundedPattern pattern(QStringLiteral("(?<![0-9])(?:[0-9][ -]?){12,18}[0-9](?![0-9])"));
  return mayHoldCardNumber(line) && pattern.anyMatch(line, 0, isAcceptedCard);
}

bool containsIBAN(QStringView line) {
  static const BoundedPattern pattern(QStringLiteral(
      "(?<![A-Za-z0-9])[A-Z]{2}[0-9]{2}(?: ?[A-Z0-9]{4}){2,7}(?: ?[A-Z0-9]{1,3})?(?![A-Za-z0-9])"));
  const qsizetype from = possibleIBAN(line);
  return from >= 0 && pattern.anyMatch(line, from, isValidIBAN);
}

}  // namespace nimbrel
