#include "capture/model/TextRules.h"

#include <QStringDecoder>
#include <QTextBoundaryFinder>
#include <algorithm>
#include <array>

#include "capture/model/CodePoints.h"

namespace nimbrel {
namespace {

bool isPlain(QStringView text) {
  // One UTF-16 unit is one character unless something combines; below U+0300 only CR LF does.
  return std::all_of(text.begin(), text.end(), [](QChar c) { return c.unicode() < 0x300 && c != u'\r'; });
}

/// The position after `count` characters, or the end; and how many characters were passed.
struct Position {
  qsizetype offset;
  qsizetype characters;
};

Position advanceInAll(QStringView text, qsizetype count) {
  QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
  Position position{0, 0};
  while (position.characters < count) {
    const qsizetype next = finder.toNextBoundary();
    if (next < 0) break;
    position = {next, position.characters + 1};
  }
  return position;
}

Position advance(QStringView text, qsizetype count) {
  // Every character has at least one unit, so a prefix of `count` plain units is exactly `count` characters,
  // provided that the unit after it cannot combine with it.
  const QStringView head = text.first(std::min(text.size(), count + 1));
  if (isPlain(head)) {
    const qsizetype units = std::min(text.size(), count);
    return {units, units};
  }
  // The finder looks at all it is given: a few units for each character are enough for nearly every text.
  qsizetype window = count <= text.size() / 8 ? count * 8 : text.size();
  // Half a character at its end would pass for a whole one.
  if (window > 0 && window < text.size() && text[window - 1].isHighSurrogate()) ++window;
  QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text.first(window));
  qsizetype characters = 0;
  qsizetype offset = 0;
  while (characters < count) {
    const qsizetype next = finder.toNextBoundary();
    if (next < 0) break;
    // A boundary at the end of the window is only the end of the window.
    if (next == window && window < text.size()) return advanceInAll(text, count);
    offset = next;
    ++characters;
  }
  if (characters < count && window < text.size()) return advanceInAll(text, count);
  return {offset, characters};
}

bool isCombiningMark(char32_t codePoint) {
  const auto category = QChar::category(codePoint);
  return category == QChar::Mark_NonSpacing || category == QChar::Mark_Enclosing;
}

/// The long way: whole texts, since what a mark does depends on its neighbours.
QByteArray foldedByDecomposition(QStringView text) {
  const QString decomposed = text.toString().normalized(QString::NormalizationForm_D);
  QString stripped;
  stripped.reserve(decomposed.size());
  for (qsizetype i = 0; i < decomposed.size();) {
    const CodePoint point = codePointAt(decomposed, i);
    if (point.value == 0)
      stripped += u' ';
    else if (!isCombiningMark(point.value))
      stripped += QStringView(decomposed).sliced(i, point.length);
    i += point.length;
  }
  // Folding can decompose once more (U+0130 folds to i and a dot above), hence the marks go last again.
  QString folded = stripped.toCaseFolded();
  folded.removeIf([](QChar c) { return isCombiningMark(c.unicode()); });
  return folded.toUtf8();
}

/// The first code point that combines with what stands before it.
constexpr char16_t kFirstCombining = 0x300;

/// The folded form of every unit below it. Without combining marks around, each stands for itself.
const std::array<QByteArray, kFirstCombining>& foldTable() {
  static const auto table = [] {
    std::array<QByteArray, kFirstCombining> made;
    for (char16_t unit = 0; unit < kFirstCombining; ++unit) {
      const QChar letter(unit);
      made.at(unit) = foldedByDecomposition(QStringView(&letter, 1));
    }
    return made;
  }();
  return table;
}

QByteArray foldedByTable(QStringView text) {
  const auto& table = foldTable();
  QByteArray folded;
  folded.reserve(text.size() + text.size() / 8);
  for (const QChar letter : text)
    folded += table[letter.unicode()];
  return folded;
}

}  // namespace

QStringView trimmedWhitespace(QStringView text) {
  qsizetype begin = 0;
  qsizetype end = text.size();
  while (begin < end && text[begin].isSpace())
    ++begin;
  while (end > begin && text[end - 1].isSpace())
    --end;
  return text.sliced(begin, end - begin);
}

qsizetype characterCount(QStringView text) {
  return advance(text, text.size()).characters;
}

bool hasCharacters(QStringView text, qsizetype count) {
  return advance(text, count).characters >= count;
}

QStringView firstCharacters(QStringView text, qsizetype count) {
  return text.first(advance(text, count).offset);
}

QByteArray foldedText(QStringView text) {
  const bool simple =
      std::all_of(text.begin(), text.end(), [](QChar c) { return c.unicode() < kFirstCombining; });
  return simple ? foldedByTable(text) : foldedByDecomposition(text);
}

std::optional<QString> strictUtf8(const QByteArray& bytes) {
  QStringDecoder decoder(QStringConverter::Utf8,
                         QStringConverter::Flag::Stateless | QStringConverter::Flag::ConvertInitialBom);
  QString text = decoder(bytes);
  if (decoder.hasError()) return std::nullopt;
  return text;
}

QString encodedForPath(const QString& text) {
  return QString::fromLatin1(text.toUtf8().toPercentEncoding("!$&'()*+,/:=@"));
}

QList<QByteArray> searchTerms(const QByteArray& foldedQuery) {
  QList<QByteArray> terms;
  const QString query = QString::fromUtf8(foldedQuery);
  qsizetype begin = 0;
  for (qsizetype i = 0; i <= query.size(); ++i) {
    if (i < query.size() && !query[i].isSpace()) continue;
    if (i > begin) terms.append(QStringView(query).sliced(begin, i - begin).toUtf8());
    begin = i + 1;
  }
  return terms;
}

}  // namespace nimbrel
