#include <benchmark/benchmark.h>

#include <QString>
#include <QStringList>
#include <functional>
#include <random>

#include "capture/detection/SensitiveDetector.h"

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;

/// Makes the same pieces at every run.
class Pieces {
 public:
  int number(int below) { return static_cast<int>(random_() % static_cast<unsigned>(below)); }
  template <typename List>
  auto one(const List& list) {
    return list[number(static_cast<int>(list.size()))];
  }
  QString run(const QString& alphabet, int length) {
    QString text;
    for (int i = 0; i < length; ++i)
      text += one(alphabet);
    return text;
  }
  QString word() {
    static const QStringList words =
        u"el la de que y en un ser se no haber por con su para como estar tener le lo todo pero más hacer o "
        u"poder decir "
        u"este ir otro ese si me ya ver porque dar cuando muy sin vez mucho saber qué sobre mi alguno mismo "
        u"también hasta "
        u"año dos querer entre así primero desde grande eso ni nos llegar pasar tiempo ella sí día uno bien "
        u"poco deber "
        u"entonces poner cosa tanto hombre parecer nuestro tan donde ahora parte después vida quedar siempre creer hablar"_s
            .split(u' ');
    return one(words);
  }

 private:
  std::mt19937 random_{1};
};

using Line = std::function<QString(Pieces&)>;

QString prose(Pieces& pieces) {
  QString line = pieces.word();
  for (int i = 8 + pieces.number(12); i > 0; --i)
    line += u' ' + pieces.word();
  return line + u".\n"_s;
}

/// As other scripts are written: hardly a character below U+0300.
QString foreignProse(Pieces& pieces) {
  QString line;
  for (int i = 12; i > 0; --i)
    line += pieces.run(u"абвгдежзийклмнопрстуфхцчшщъыьэюя"_s, 1 + pieces.number(9)) + u' ';
  return line + u'\n';
}

QString source(Pieces& pieces) {
  return u"    const auto %1_%2 = table.at(%3)->%4<std::string>(\"%1\", 0x%5);  // %6\n"_s
      .arg(pieces.word(), pieces.word())
      .arg(pieces.number(100))
      .arg(pieces.word(), pieces.run(u"0123456789abcdef"_s, 8), pieces.word());
}

QString logLine(Pieces& pieces) {
  return u"2026-11-%1 %2:04:39,%3 INFO [worker-%4] %5 id=%6 took %7 ms from 192.168.%4.%1\n"_s
      .arg(10 + pieces.number(18))
      .arg(10 + pieces.number(13))
      .arg(100 + pieces.number(900))
      .arg(pieces.number(64))
      .arg(pieces.word(), pieces.run(u"089abcdef"_s, 16))
      .arg(pieces.number(5000));
}

QString csv(Pieces& pieces) {
  return u"%1;%2;%3,%4;2026-11-%5;%6;%7\n"_s.arg(100000 + pieces.number(899999))
      .arg(pieces.word())
      .arg(pieces.number(10000))
      .arg(10 + pieces.number(89))
      .arg(10 + pieces.number(18))
      .arg(pieces.run(u"0123456789"_s, 10), pieces.run(u"0123456789"_s, 9));
}

QString minifiedJson(Pieces& pieces) {
  return u"{\"id\":%1,\"name\":\"%2 %3\",\"tags\":[\"%2\",\"%3\"],\"at\":\"2026-11-21T04:39:%4Z\"},"_s
      .arg(pieces.number(1'000'000))
      .arg(pieces.word(), pieces.word())
      .arg(10 + pieces.number(49));
}

/// The same piece again and again.
Line always(const QString& piece) {
  return [piece](Pieces&) { return piece; };
}

QString textOf(const Line& line, qsizetype bytes, const QString& head) {
  Pieces pieces;
  QString text = head;
  for (qsizetype size = head.toUtf8().size(); size < bytes;) {
    const QString next = line(pieces);
    size += next.toUtf8().size();
    text += next;
  }
  for (qsizetype over = text.toUtf8().size() - bytes; over > 0; over = text.toUtf8().size() - bytes)
    text.chop(1);
  // What has been cut off at the end must not make a secret of it.
  text.back() = u'!';
  return text;
}

void grade(benchmark::State& state, const Line& line, const QString& head, bool withLines) {
  const QString text = textOf(line, state.range(0), head);
  for (auto _ : state) {
    const SensitivityLevel level = withLines ? SensitiveDetector::classifyText(text, std::nullopt)
                                             : SensitiveDetector::classify(text, std::nullopt, true);
    if (level != SensitivityLevel::none) state.SkipWithError("nothing in it is a secret");
  }
  state.SetBytesProcessed(state.iterations() * text.toUtf8().size());
}

struct Corpus {
  const char* name;
  Line line;
  QString head = {};
};

void registerAll() {
  const std::vector<Corpus> corpora{
      {"prose", prose},
      {"foreignProse", foreignProse},
      {"sourceCode", source},
      {"logs", logLine},
      {"csv", csv},
      {"minifiedJson", minifiedJson},
      // Checked digit by digit, and wrong by one.
      {"adversarial/wrongCards", always(u"4111 1111 1111 1112\n"_s)},
      {"adversarial/wrongCardsInALine", always(u"4111-1111-1111-1112,"_s)},
      {"adversarial/wrongIbans", always(u"x ES91 2100 0418 4502 0005 1333\n"_s)},
      {"adversarial/ibanHeads", always(u"AB12,"_s)},
      {"adversarial/nearTokens", always(u"sk-abcdefghijklmnopqrstuvwxyz0123456789!\n"_s)},
      {"adversarial/nearTokenWords", always(u"AKIA0123456789ABCDE! "_s)},
      {"adversarial/nearKeys", always(u"-----BEGIN A"_s)},
      {"adversarial/longKey", always(u"A"_s), u"-----BEGIN "_s},
      {"adversarial/otherDigits", always(u"٤"_s)},
      {"adversarial/marks", always(u"a\u0301 \u0301"_s)},
      {"adversarial/capitalsOfSeveral", always(u"ßßßßßßßßßßßßßßßßßßßßßß "_s)},
  };
  for (const Corpus& corpus : corpora) {
    const std::string name = corpus.name;
    benchmark::RegisterBenchmark(("classify/" + name).c_str(),
                                 [corpus](auto& state) { grade(state, corpus.line, corpus.head, false); })
        ->Arg(8192)
        ->Unit(benchmark::kMicrosecond);
    // The first line makes it a text of several.
    benchmark::RegisterBenchmark(
        ("classifyText/" + name).c_str(),
        [corpus](auto& state) { grade(state, corpus.line, u"uno\n"_s + corpus.head, true); })
        ->Arg(8192)
        ->Arg(1'000'000)
        ->Unit(benchmark::kMicrosecond);
  }
}

}  // namespace
}  // namespace nimbrel

int main(int argc, char** argv) {
  nimbrel::registerAll();
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
