#include "unit/detection/LiteralDetector.h"

#include <unicode/brkiter.h>
#include <unicode/uchar.h>

#include <QStringList>
#include <algorithm>

namespace nimbrel::testing {
namespace {

std::unique_ptr<icu::RegexMatcher> compile(const char* expression) {
  UErrorCode error = U_ZERO_ERROR;
  return std::make_unique<icu::RegexMatcher>(icu::UnicodeString::fromUTF8(expression), 0, error);
}

/// The same characters, not copied.
icu::UnicodeString toIcu(const QString& text) {
  return {false, reinterpret_cast<const char16_t*>(text.utf16()), static_cast<int32_t>(text.size())};
}

char32_t firstScalar(const QString& character) {
  return character.toUcs4().value(0);
}

/// The characters that a reader sees.
QStringList charactersOf(const QString& text) {
  QStringList characters;
  const bool ascii = std::all_of(text.begin(), text.end(), [](QChar c) { return c < u'\x80' && c != u'\r'; });
  if (ascii) {
    for (const QChar c : text)
      characters.append(c);
    return characters;
  }
  UErrorCode error = U_ZERO_ERROR;
  static const std::unique_ptr<icu::BreakIterator> breaks(
      icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), error));
  const icu::UnicodeString copy = toIcu(text);
  breaks->setText(copy);
  for (int32_t begin = breaks->first(), end = breaks->next(); end != icu::BreakIterator::DONE;
       begin = end, end = breaks->next())
    characters.append(text.mid(begin, end - begin));
  return characters;
}

bool isSpace(char32_t scalar) {
  return u_isUWhiteSpace(static_cast<UChar32>(scalar));
}

bool isNumber(const QString& character) {
  return u_getIntPropertyValue(static_cast<UChar32>(firstScalar(character)), UCHAR_NUMERIC_TYPE) != U_NT_NONE;
}

std::optional<qint64> wholeNumberValue(const QString& character) {
  if (character.toUcs4().size() != 1) return std::nullopt;
  const double value = u_getNumericValue(static_cast<UChar32>(firstScalar(character)));
  if (value == U_NO_NUMERIC_VALUE || value != static_cast<double>(static_cast<qint64>(value)))
    return std::nullopt;
  return static_cast<qint64>(value);
}

QString trimmed(const QString& text) {
  QList<uint> scalars = text.toUcs4();
  while (!scalars.isEmpty() && isSpace(scalars.first()))
    scalars.removeFirst();
  while (!scalars.isEmpty() && isSpace(scalars.last()))
    scalars.removeLast();
  return QString::fromUcs4(reinterpret_cast<const char32_t*>(scalars.constData()), scalars.size());
}

bool isAsciiDigit(const QString& character) {
  return character.size() == 1 && character[0] >= u'0' && character[0] <= u'9';
}

bool isAsciiLetter(const QString& character) {
  if (character.size() != 1) return false;
  const QChar c = character[0];
  return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z');
}

/// Pieces between the characters for which `separates` holds, empty ones left out.
template <typename Predicate>
QStringList split(const QString& text, Predicate separates) {
  QStringList pieces;
  QString piece;
  const QStringList characters = charactersOf(text);
  for (const QString& character : characters) {
    if (!separates(character)) {
      piece += character;
      continue;
    }
    if (!piece.isEmpty()) pieces.append(piece);
    piece.clear();
  }
  if (!piece.isEmpty()) pieces.append(piece);
  return pieces;
}

bool isBreak(const QString& character) {
  const char32_t c = firstScalar(character);
  return (c >= 0xA && c <= 0xD) || c == 0x85 || c == 0x2028 || c == 0x2029;
}

bool isWhiteSpace(const QString& character) {
  return isSpace(firstScalar(character));
}

QString withoutPunctuation(const QString& word) {
  const QString punctuation = QStringLiteral("\"'`,;:()[]{}<>");
  QStringList characters = charactersOf(word);
  const auto isPunctuation = [&](const QString& c) { return c.size() == 1 && punctuation.contains(c); };
  while (!characters.isEmpty() && isPunctuation(characters.first()))
    characters.removeFirst();
  while (!characters.isEmpty() && isPunctuation(characters.last()))
    characters.removeLast();
  return characters.join(QString());
}

}  // namespace

LiteralDetector::LiteralDetector()
    : card_(compile("(?<![0-9])(?:[0-9][ -]?){12,18}[0-9](?![0-9])")),
      iban_(compile(
          "(?<![A-Za-z0-9])[A-Z]{2}[0-9]{2}(?: ?[A-Z0-9]{4}){2,7}(?: ?[A-Z0-9]{1,3})?(?![A-Za-z0-9])")) {
  for (const char* const expression : {
           "-----BEGIN [A-Z ]*PRIVATE KEY-----",
           "^eyJ[A-Za-z0-9_-]{5,}\\.eyJ[A-Za-z0-9_-]{5,}\\.[A-Za-z0-9_-]*$",
           "^(sk|pk|rk)-[A-Za-z0-9_-]{20,}$",
           "^(sk|pk|rk)_(live|test)_[A-Za-z0-9]{16,}$",
           "^whsec_[A-Za-z0-9]{20,}$",
           "^(ghp|gho|ghu|ghs|ghr)_[A-Za-z0-9]{30,}$",
           "^github_pat_[A-Za-z0-9_]{40,}$",
           "^glpat-[A-Za-z0-9_-]{20,}$",
           "^npm_[A-Za-z0-9]{36}$",
           "^hf_[A-Za-z0-9]{30,}$",
           "^SG\\.[A-Za-z0-9_-]{16,}\\.[A-Za-z0-9_-]{16,}$",
           "^xox[abprs]-[A-Za-z0-9-]{10,}$",
           "^AKIA[0-9A-Z]{16}$",
           "^AIza[0-9A-Za-z_-]{35}$",
           "^Bearer\\s+[A-Za-z0-9._~+/=-]{20,}$",
       })
    tokens_.push_back(compile(expression));
}

QStringList LiteralDetector::matches(icu::RegexMatcher& expression, const QString& text) {
  const icu::UnicodeString subject = toIcu(text);
  UErrorCode error = U_ZERO_ERROR;
  expression.reset(subject);
  QStringList found;
  while (expression.find(error)) {
    const int32_t begin = expression.start(error);
    found.append(text.mid(begin, expression.end(error) - begin));
  }
  return found;
}

QString LiteralDetector::numbersIn(const QString& text) {
  QStringList numbers;
  const QStringList characters = charactersOf(text);
  for (const QString& character : characters) {
    if (isNumber(character)) numbers.append(character);
  }
  return numbers.join(QString());
}

SensitivityLevel LiteralDetector::classify(const QString& text, const std::optional<QString>& sourceBundleID,
                                           bool detectCodes) {
  // Half a character counts as the replacement that every encoder writes for it.
  const QList<uint> scalars = text.toUcs4();
  const QString whole =
      QString::fromUcs4(reinterpret_cast<const char32_t*>(scalars.constData()), scalars.size());
  if (whole.toUtf8().size() > 8192) return SensitivityLevel::none;
  const QString subject = trimmed(text);
  if (subject.isEmpty()) return SensitivityLevel::none;
  for (const Expression& token : tokens_) {
    if (!matches(*token, subject).isEmpty()) return SensitivityLevel::hard;
  }
  const QStringList characters = charactersOf(subject);
  const auto length = characters.size();
  if (detectCodes && (length == 6 || length == 7 || length == 8) &&
      std::all_of(characters.begin(), characters.end(), isAsciiDigit)) {
    const QStringList sources{QStringLiteral("com.apple.MobileSMS"),
                              QStringLiteral("com.apple.mail"),
                              QStringLiteral("com.google.GoogleAuthenticator"),
                              QStringLiteral("com.1password.1password"),
                              QStringLiteral("com.agilebits.onepassword-osx"),
                              QStringLiteral("com.bitwarden.desktop"),
                              QStringLiteral("com.authy")};
    return sourceBundleID && sources.contains(*sourceBundleID) ? SensitivityLevel::hard
                                                               : SensitivityLevel::soft;
  }
  const bool onlyNumbers = std::all_of(characters.begin(), characters.end(), [](const QString& c) {
    return isNumber(c) || c == u" " || c == u"-";
  });
  if (onlyNumbers) {
    const QString numbers = numbersIn(subject);
    const auto count = charactersOf(numbers).size();
    if (count >= 13 && count <= 19 && passesLuhn(numbers)) return SensitivityLevel::hard;
  }
  if (isValidIBAN(subject)) return SensitivityLevel::hard;
  if (length >= 32 && length <= 64) {
    const auto allowed = [](const QString& c) {
      return isAsciiLetter(c) || isAsciiDigit(c) || (c.size() == 1 && QStringLiteral("_-+/=").contains(c));
    };
    const auto isUpper = [](const QString& c) { return isAsciiLetter(c) && c == c.toUpper(); };
    const auto isLower = [](const QString& c) { return isAsciiLetter(c) && c == c.toLower(); };
    if (std::all_of(characters.begin(), characters.end(), allowed) &&
        std::any_of(characters.begin(), characters.end(), isUpper) &&
        std::any_of(characters.begin(), characters.end(), isLower) &&
        std::any_of(characters.begin(), characters.end(), isAsciiDigit))
      return SensitivityLevel::hard;
  }
  return SensitivityLevel::none;
}

SensitivityLevel LiteralDetector::classifyText(const QString& text,
                                               const std::optional<QString>& sourceBundleID) {
  const QString subject = trimmed(text);
  if (subject.isEmpty()) return SensitivityLevel::none;
  if (!subject.contains(u'\n')) return classify(subject, sourceBundleID, true);
  for (const QString& line : split(subject, isBreak)) {
    if (classify(line, sourceBundleID, false) == SensitivityLevel::hard) return SensitivityLevel::hard;
    for (const QString& word : split(line, isWhiteSpace)) {
      const auto length = charactersOf(word).size();
      if (length < 20 || length > 200) continue;
      if (classify(withoutPunctuation(word), sourceBundleID, false) == SensitivityLevel::hard)
        return SensitivityLevel::hard;
    }
    if (containsCardNumber(line) || containsIBAN(line)) return SensitivityLevel::hard;
  }
  return SensitivityLevel::none;
}

bool LiteralDetector::passesLuhn(const QString& digits) {
  QStringList characters = charactersOf(digits);
  std::reverse(characters.begin(), characters.end());
  qint64 sum = 0;
  for (qsizetype i = 0; i < characters.size(); ++i) {
    const auto value = wholeNumberValue(characters[i]);
    if (!value) return false;
    const bool second = i % 2 == 1;
    qint64 counted = second ? *value * 2 : *value;
    if (second && *value >= 5) counted -= 9;
    sum += counted;
  }
  return sum % 10 == 0;
}

bool LiteralDetector::isValidIBAN(const QString& candidate) {
  QString account = candidate;
  account = account.remove(u' ').toUpper();
  const QStringList characters = charactersOf(account);
  if (characters.size() < 15 || characters.size() > 34) return false;
  for (qsizetype i = 0; i < characters.size(); ++i) {
    const QString& c = characters[i];
    if (!isAsciiLetter(c) && !isAsciiDigit(c)) return false;
    if (i < 2 && !isAsciiLetter(c)) return false;
    if ((i == 2 || i == 3) && !isAsciiDigit(c)) return false;
  }
  const QString rearranged = account.mid(4) + account.left(4);
  int remainder = 0;
  for (const QChar c : rearranged) {
    if (c.isDigit())
      remainder = (remainder * 10 + c.digitValue()) % 97;
    else
      remainder = (remainder * 100 + (c.unicode() - 55)) % 97;
  }
  return remainder == 1;
}

bool LiteralDetector::containsCardNumber(const QString& line) {
  for (const QString& match : matches(*card_, line)) {
    const QString numbers = numbersIn(match);
    const bool length = numbers.size() >= 13 && numbers.size() <= 19;
    if (length && QStringLiteral("3456").contains(numbers[0]) && passesLuhn(numbers)) return true;
  }
  return false;
}

bool LiteralDetector::containsIBAN(const QString& line) {
  const QStringList found = matches(*iban_, line);
  return std::any_of(found.begin(), found.end(), [this](const QString& match) { return isValidIBAN(match); });
}

}  // namespace nimbrel::testing
