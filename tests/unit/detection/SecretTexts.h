#pragma once

#include <QString>
#include <QStringList>
#include <random>

namespace nimbrel::testing {

/// Makes texts that are secrets, hold secrets, or nearly do; always the same ones for the same seed. What it
/// makes belongs to nobody.
class SecretTexts {
 public:
  explicit SecretTexts(unsigned seed) : random_(seed) {}

  /// A text of one line or some.
  QString text();

  /// One credential, number or word, well made or with something wrong.
  QString piece();

  QString cardNumber(int digits);
  QString iban();
  QString token();
  /// So many characters of an alphabet.
  QString run(const QString& alphabet, int length);

  /// From 0 to `below` - 1.
  int number(int below);

 private:
  bool chance(int oneIn) { return number(oneIn) == 0; }
  QString grouped(const QString& text, int size, const QString& separator);
  QString spoiled(QString text);
  QString separator();
  QString otherDigits(const QString& digits);
  template <typename List>
  auto one(const List& list) {
    return list[number(static_cast<int>(list.size()))];
  }

  std::mt19937 random_;
};

}  // namespace nimbrel::testing
