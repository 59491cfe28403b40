#include "capture/detection/SensitiveDetector.h"

#include <unicode/uchar.h>

#include <algorithm>

#include "capture/detection/AccountNumbers.h"
#include "capture/detection/TokenPatterns.h"
#include "capture/model/CodePoints.h"
#include "capture/model/TextRules.h"

namespace nimbrel {
namespace {

/// The most that is looked at as a whole, in bytes of UTF-8.
constexpr qsizetype kMaxBytes = 8192;

constexpr qsizetype kMinSecretLength = 32;
constexpr qsizetype kMaxSecretLength = 64;
constexpr qsizetype kMinWordLength = 20;
constexpr qsizetype kMaxWordLength = 200;

bool fitsInBytes(QStringView text) {
  // A unit takes one to three bytes, the two of a pair four.
  if (text.size() > kMaxBytes) return false;
  if (text.size() * 3 <= kMaxBytes) return true;
  qsizetype bytes = 0;
  for (qsizetype i = 0; i < text.size();) {
    const CodePoint point = codePointAt(text, i);
    bytes += point.value < 0x80 ? 1 : point.value < 0x800 ? 2 : point.value < 0x10000 ? 3 : 4;
    i += point.length;
  }
  return bytes <= kMaxBytes;
}

bool isOneTimeCode(QStringView text) {
  return text.size() >= 6 && text.size() <= 8 &&
         std::all_of(text.begin(), text.end(), [](QChar c) { return isAsciiDigit(c.unicode()); });
}

/// Whether a text looks random: long, of the characters that encoders use, with both cases and digits.
bool looksSecret(QStringView text) {
  if (text.size() < kMinSecretLength || text.size() > kMaxSecretLength) return false;
  bool upper = false;
  bool lower = false;
  bool digit = false;
  for (const QChar unit : text) {
    const char16_t c = unit.unicode();
    if (isAsciiUpper(c))
      upper = true;
    else if (isAsciiLower(c))
      lower = true;
    else if (isAsciiDigit(c))
      digit = true;
    else if (!QStringView(u"_-+/=").contains(unit))
      return false;
  }
  return upper && lower && digit;
}

/// Whether a text without white space around it is a secret as a whole, private keys left aside.
bool isSecret(QStringView trimmed) {
  return isToken(trimmed) || isCardNumber(trimmed) || isValidIBAN(trimmed) || looksSecret(trimmed);
}

/// Whether something that stands next to a space makes one character with it, which is then no space any more
/// or takes what follows along (UAX #29, rules GB9 to GB9b).
bool combines(char32_t c, std::initializer_list<UGraphemeClusterBreak> kinds) {
  // The first that combines with its neighbours.
  if (c < 0x300) return false;
  const int kind = u_getIntPropertyValue(static_cast<UChar32>(c), UCHAR_GRAPHEME_CLUSTER_BREAK);
  return std::find(kinds.begin(), kinds.end(), kind) != kinds.end();
}

/// The end of the white space character at `offset`; `offset` itself when there is none.
qsizetype endOfSpace(QStringView line, qsizetype offset) {
  const QChar unit = line[offset];
  if (!unit.isSpace()) return offset;
  // Nothing combines with a tab.
  if (unit < u' ') return offset + 1;
  if (offset > 0 && combines(codePointBefore(line, offset).value, {U_GCB_PREPEND})) return offset;
  qsizetype end = offset + 1;
  while (end < line.size()) {
    const CodePoint next = codePointAt(line, end);
    if (!combines(next.value, {U_GCB_EXTEND, U_GCB_ZWJ, U_GCB_SPACING_MARK})) break;
    end += next.length;
  }
  return end;
}

QStringView withoutPunctuation(QStringView word) {
  constexpr QStringView kPunctuation = u"\"'`,;:()[]{}<>";
  while (!word.isEmpty() && kPunctuation.contains(word.front()))
    word = word.sliced(1);
  while (!word.isEmpty() && kPunctuation.contains(word.back()))
    word.chop(1);
  return word;
}

bool hasWordLength(QStringView word) {
  return hasCharacters(word, kMinWordLength) && !hasCharacters(word, kMaxWordLength + 1);
}

bool isSecretWord(QStringView word) {
  // A character has one unit at least.
  if (word.size() < kMinWordLength || !fitsInBytes(word)) return false;
  // Its length last: counting is dear, and nearly no word is a secret.
  return isSecret(trimmedWhitespace(withoutPunctuation(word))) && hasWordLength(word);
}

bool holdsSecretWord(QStringView line) {
  qsizetype begin = 0;
  for (qsizetype i = 0; i < line.size();) {
    const qsizetype end = endOfSpace(line, i);
    if (end == i) {
      ++i;
      continue;
    }
    if (isSecretWord(line.sliced(begin, i - begin))) return true;
    begin = i = end;
  }
  return isSecretWord(line.sliced(begin));
}

bool isSecretLine(QStringView line) {
  const QStringView trimmed = trimmedWhitespace(line);
  if (trimmed.isEmpty()) return false;
  const bool whole = fitsInBytes(line) && (isSecret(trimmed) || holdsPrivateKey(trimmed));
  return whole || holdsSecretWord(line) || containsCardNumber(line) || containsIBAN(line);
}

}  // namespace

const QStringList& SensitiveDetector::codeSourceApps() {
  static const QStringList apps{
      QStringLiteral("com.apple.MobileSMS"),
      QStringLiteral("com.apple.mail"),
      QStringLiteral("com.google.GoogleAuthenticator"),
      QStringLiteral("com.1password.1password"),
      QStringLiteral("com.agilebits.onepassword-osx"),
      QStringLiteral("com.bitwarden.desktop"),
      QStringLiteral("com.authy"),
  };
  return apps;
}

SensitivityLevel SensitiveDetector::classify(QStringView text, const std::optional<QString>& sourceBundleID,
                                             bool detectCodes) {
  if (!fitsInBytes(text)) return SensitivityLevel::none;
  const QStringView trimmed = trimmedWhitespace(text);
  if (detectCodes && isOneTimeCode(trimmed)) {
    const bool certain = sourceBundleID && codeSourceApps().contains(*sourceBundleID);
    return certain ? SensitivityLevel::hard : SensitivityLevel::soft;
  }
  const bool secret = !trimmed.isEmpty() && (isSecret(trimmed) || holdsPrivateKey(trimmed));
  return secret ? SensitivityLevel::hard : SensitivityLevel::none;
}

bool SensitiveDetector::hasSeveralLines(QStringView text) {
  return trimmedWhitespace(text).contains(u'\n');
}

SensitivityLevel SensitiveDetector::classifyText(QStringView text,
                                                 const std::optional<QString>& sourceBundleID) {
  const QStringView trimmed = trimmedWhitespace(text);
  if (!hasSeveralLines(trimmed)) return classify(trimmed, sourceBundleID, true);
  qsizetype begin = 0;
  for (qsizetype i = 0; i <= trimmed.size(); ++i) {
    if (i < trimmed.size() && !isLineBreak(trimmed[i])) continue;
    if (isSecretLine(trimmed.sliced(begin, i - begin))) return SensitivityLevel::hard;
    begin = i + 1;
  }
  return SensitivityLevel::none;
}

}  // namespace nimbrel
