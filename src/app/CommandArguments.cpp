#include "app/CommandArguments.h"

#include <QList>

namespace nimbrel {
namespace {

bool isHarmless(char32_t character) {
  const auto category = QChar::category(character);
  return category != QChar::Other_Control && category != QChar::Other_Format;
}

QString textOf(char32_t character) {
  return QString::fromUcs4(&character, 1);
}

/// A text with each character put in another way.
template <typename Put>
QString mapped(const QString& text, const Put& put) {
  QString result;
  for (const uint character : text.toUcs4())
    result += put(static_cast<char32_t>(character));
  return result;
}

}  // namespace

CommandArguments sortedArguments(const QStringList& arguments) {
  CommandArguments result;
  bool optionsOver = false;
  for (const QString& argument : arguments) {
    if (!optionsOver && argument == u"--")
      optionsOver = true;
    else if (!optionsOver && argument.startsWith(u'-') && argument != u"-")
      result.options.append(argument);
    else
      result.others.append(argument);
  }
  return result;
}

QStringList withJoinedValue(QStringList arguments, QStringView option) {
  for (qsizetype i = 0; i + 1 < arguments.size() && arguments.at(i) != u"--"; ++i) {
    if (arguments.at(i) == option) arguments[i] += u'=' + arguments.takeAt(i + 1);
  }
  return arguments;
}

QString printable(const QString& argument) {
  return mapped(argument, [](char32_t character) {
    return isHarmless(character) ? textOf(character) : QString(QChar::ReplacementCharacter);
  });
}

QString printableLines(const QString& text) {
  return mapped(text, [](char32_t character) {
    const bool kept = character == U'\n' || character == U'\t' || isHarmless(character);
    return kept ? textOf(character) : QString(QChar::ReplacementCharacter);
  });
}

QByteArray escapedJson(const QByteArray& json) {
  const auto escape = [](char32_t character) {
    if (isHarmless(character)) return textOf(character);
    QString escaped;
    for (const QChar unit : textOf(character))
      escaped += QStringLiteral("\\u%1").arg(unit.unicode(), 4, 16, QLatin1Char('0'));
    return escaped;
  };
  return mapped(QString::fromUtf8(json), escape).toUtf8();
}

}  // namespace nimbrel
