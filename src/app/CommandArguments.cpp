#include "app/CommandArguments.h"

namespace nimbrel {
namespace {

bool isHarmless(QChar unit) {
  return unit.category() != QChar::Other_Control && unit.category() != QChar::Other_Format;
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

QString printable(QString argument) {
  for (QChar& unit : argument) {
    if (!isHarmless(unit)) unit = QChar::ReplacementCharacter;
  }
  return argument;
}

QString printableLines(QString text) {
  for (QChar& unit : text) {
    if (unit != u'\n' && unit != u'\t' && !isHarmless(unit)) unit = QChar::ReplacementCharacter;
  }
  return text;
}

}  // namespace nimbrel
