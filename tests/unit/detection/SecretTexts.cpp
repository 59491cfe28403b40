#include "unit/detection/SecretTexts.h"

namespace nimbrel::testing {
namespace {

using namespace Qt::StringLiterals;

const QString kUpper = u"ABCDEFGHIJKLMNOPQRSTUVWXYZ"_s;
const QString kLower = kUpper.toLower();
const QString kDigits = u"0123456789"_s;
const QString kAlphanumeric = kUpper + kLower + kDigits;

/// What the account number of an IBAN with these first four characters must leave modulo 97.
int modulo97(const QString& account) {
  int remainder = 0;
  for (const QChar c : account)
    remainder =
        c.isDigit() ? (remainder * 10 + c.digitValue()) % 97 : (remainder * 100 + c.unicode() - 55) % 97;
  return remainder;
}

}  // namespace

int SecretTexts::number(int below) {
  // Not a distribution of the library: those differ from one to the next.
  return static_cast<int>(random_() % static_cast<unsigned>(below));
}

QString SecretTexts::run(const QString& alphabet, int length) {
  QString text;
  for (int i = 0; i < length; ++i)
    text += alphabet[number(static_cast<int>(alphabet.size()))];
  return text;
}

QString SecretTexts::cardNumber(int digits) {
  QString card = run(kDigits, digits - 1);
  if (!chance(3)) card[0] = one(u"3456"_s);
  int sum = 0;
  for (int i = 0; i < card.size(); ++i) {
    const int value = card[card.size() - 1 - i].digitValue() * (i % 2 == 0 ? 2 : 1);
    sum += value > 9 ? value - 9 : value;
  }
  return card + QString::number((10 - sum % 10) % 10);
}

QString SecretTexts::iban() {
  const QString country = run(kUpper, 2);
  const QString account = run(chance(2) ? kDigits : kDigits + kUpper, 11 + number(20));
  const int check = 98 - modulo97(account + country + u"00"_s);
  return country + u"%1"_s.arg(check, 2, 10, QChar(u'0')) + account;
}

QString SecretTexts::token() {
  const QString url = kAlphanumeric + u"_-"_s;
  switch (number(15)) {
    case 0:
      return u"-----BEGIN "_s + one(QStringList{u""_s, u"RSA "_s, u"EC "_s, u"OPENSSH "_s}) +
             u"PRIVATE KEY-----"_s;
    case 1:
      return u"eyJ"_s + run(url, 4 + number(9)) + u".eyJ"_s + run(url, 4 + number(9)) + u'.' +
             run(url, number(9));
    case 2:
      return one(QStringList{u"sk"_s, u"pk"_s, u"rk"_s}) + u'-' + run(url, 19 + number(3));
    case 3:
      return one(QStringList{u"sk"_s, u"pk"_s, u"rk"_s}) + one(QStringList{u"_live_"_s, u"_test_"_s}) +
             run(kAlphanumeric, 15 + number(3));
    case 4:
      return u"whsec_"_s + run(kAlphanumeric, 19 + number(3));
    case 5:
      return u"gh"_s + one(u"pousr"_s) + u'_' + run(kAlphanumeric, 29 + number(3));
    case 6:
      return u"github_pat_"_s + run(kAlphanumeric + u'_', 39 + number(3));
    case 7:
      return u"glpat-"_s + run(url, 19 + number(3));
    case 8:
      return u"npm_"_s + run(kAlphanumeric, 35 + number(3));
    case 9:
      return u"hf_"_s + run(kAlphanumeric, 29 + number(3));
    case 10:
      return u"SG."_s + run(url, 15 + number(3)) + u'.' + run(url, 15 + number(3));
    case 11:
      return u"xox"_s + one(u"abprs"_s) + u'-' + run(kAlphanumeric + u'-', 9 + number(3));
    case 12:
      return u"AKIA"_s + run(kDigits + kUpper, 15 + number(3));
    case 13:
      return u"AIza"_s + run(url, 34 + number(3));
    default:
      return u"Bearer"_s + separator() + run(kAlphanumeric + u"._~+/=-"_s, 19 + number(3));
  }
}

QString SecretTexts::grouped(const QString& text, int size, const QString& separator) {
  QString result;
  for (int i = 0; i < text.size(); ++i) {
    if (i > 0 && i % size == 0) result += separator;
    result += text[i];
  }
  return result;
}

QString SecretTexts::otherDigits(const QString& digits) {
  const char32_t zero = one(std::u32string(U"\u0660\u0966\uff10\U0001d7ce\u2160"));
  QString result;
  for (const QChar c : digits) {
    const char32_t other = zero + static_cast<char32_t>(c.digitValue());
    result += chance(4) || !c.isDigit() ? QString(c) : QString::fromUcs4(&other, 1);
  }
  return result;
}

QString SecretTexts::spoiled(QString text) {
  if (text.isEmpty()) return text;
  const int at = number(static_cast<int>(text.size()));
  switch (number(7)) {
    case 0:
      return text.remove(at, 1);
    case 1:
      return text.insert(at, one(kAlphanumeric + u" -_.,:"_s));
    case 2:
      text[at] = one(kAlphanumeric + u" -_.,:"_s);
      return text;
    case 3:
      return text.insert(
          at, one(QStringList{u"\u0301"_s, u"\u200d"_s, u"\ufe0f"_s, u"\u0600"_s, u"ß"_s, u"ñ"_s, u"\u0131"_s,
                              u"\ufb01"_s, u"\u00a0"_s, u"😀"_s, QString(QChar(0xd800)), QString(QChar(0))}));
    case 4:
      return text.toLower();
    case 5:
      return text.toUpper();
    default:
      return text.left(at);
  }
}

QString SecretTexts::separator() {
  return one(QStringList{u" "_s,       u" "_s,       u" "_s,      u"  "_s, u"\t"_s,      u"\u00a0"_s,
                         u"\u2009"_s,  u"\u3000"_s,  u"\n"_s,     u"\n"_s, u"\n"_s,      u"\r\n"_s,
                         u"\r"_s,      u"\u2028"_s,  u"\u0085"_s, u"\v"_s, u" \u0301"_s, u" \u200d"_s,
                         u" \u0903"_s, u"\u0600 "_s, u"\u180e"_s, u": "_s, u", "_s});
}

QString SecretTexts::piece() {
  switch (number(12)) {
    case 0:
    case 1:
      return token();
    case 2:
      return grouped(cardNumber(12 + number(9)), 2 + number(4),
                     one(QStringList{u""_s, u" "_s, u"-"_s, u" "_s}));
    case 3:
      return grouped(iban(), 4, one(QStringList{u""_s, u" "_s}));
    case 4:
      return run(kDigits, 4 + number(7));
    case 5:
      return run(kAlphanumeric + u"_-+/="_s, 30 + number(38));
    case 6:
      return otherDigits(cardNumber(13 + number(7)));
    case 7:
      return run(kLower, 1 + number(12));
    case 8:
      return run(kUpper + kDigits, 10 + number(30));
    case 9:
      return u"sk-"_s + run(kAlphanumeric, 192 + number(10));
    case 10:
      return run(u"\u0301a😀ñ字1-"_s, 1 + number(30));
    default:
      return run(kDigits + u" -"_s, 10 + number(20));
  }
}

QString SecretTexts::text() {
  QString text;
  const int pieces = 1 + number(3);
  for (int i = 0; i < pieces; ++i) {
    QString next = piece();
    if (chance(4)) next = spoiled(next);
    if (chance(4))
      next = run(u"\"'`,;:()[]{}<>"_s, 1 + number(2)) + next + run(u"\"'`,;:()[]{}<>"_s, number(3));
    if (i > 0) text += separator();
    text += next;
  }
  if (chance(4)) text = separator() + text + separator();
  // Past the limit of what is looked at as a whole, or just before it.
  if (chance(500)) text = QString(8192 - text.toUtf8().size() + number(3) - 1, one(u" x"_s)) + text;
  return text;
}

}  // namespace nimbrel::testing
