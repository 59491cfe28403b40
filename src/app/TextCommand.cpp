#include "app/TextCommand.h"

#include <QCoreApplication>
#include <utility>

#include "app/DescriptorDevice.h"
#include "capture/detection/SensitiveDetector.h"
#include "capture/model/TextRules.h"

namespace nimbrel {
namespace {

struct Texts {
  Q_DECLARE_TR_FUNCTIONS(CommandLine)
};

/// A failure as the user reads it.
struct Failure {
  QString message;
};

template <typename T>
using Result = std::variant<T, Failure>;

/// The file that arguments name, "-" and none standing for the standard input.
QString fileOf(const QStringList& names) {
  return names.value(0) == u"-" ? QString() : names.value(0);
}

QString missingFile() {
  return Texts::tr("falta el nombre del archivo");
}

std::variant<TextCommand, UsageError> parseClassify(const QStringList& given) {
  constexpr QStringView kSource = u"--source=";
  const CommandArguments arguments = sortedArguments(withJoinedValue(given, u"--source"));
  ClassifyCommand command;
  for (const QString& option : arguments.options) {
    if (option == u"--no-codes")
      command.detectCodes = false;
    else if (option == u"--multiline")
      command.multiline = true;
    else if (option == u"--lines")
      command.perLine = true;
    else if (option.startsWith(kSource) && option != kSource)
      command.source = option.sliced(kSource.size());
    else if (option == u"--source" || option == kSource)
      return UsageError{Texts::tr("falta la aplicación de --source")};
    else
      return UsageError{Texts::tr("classify no conoce la opción «%1»").arg(printable(option))};
  }
  if (arguments.others.size() > 1) return UsageError{Texts::tr("classify lee un solo archivo")};
  if (arguments.others.contains(QString())) return UsageError{missingFile()};
  command.file = fileOf(arguments.others);
  return command;
}

QString transformNames() {
  QStringList names;
  for (const TextTransform transform : kTextTransforms)
    names.append(name(transform));
  return names.join(QStringLiteral(", "));
}

std::variant<TextCommand, UsageError> parseTransform(const QStringList& given) {
  const CommandArguments arguments = sortedArguments(given);
  if (!arguments.options.isEmpty())
    return UsageError{
        Texts::tr("transform no conoce la opción «%1»").arg(printable(arguments.options.first()))};
  if (arguments.others.isEmpty())
    return UsageError{Texts::tr("falta la transformación: %1").arg(transformNames())};
  if (arguments.others.size() > 2) return UsageError{Texts::tr("transform lee un solo archivo")};
  if (arguments.others.sliced(1).contains(QString())) return UsageError{missingFile()};
  const auto transform = textTransformNamed(arguments.others.first());
  if (!transform)
    return UsageError{Texts::tr("no hay ninguna transformación «%1»; las que hay: %2")
                          .arg(printable(arguments.others.first()), transformNames())};
  return TransformCommand{.transform = *transform, .file = fileOf(arguments.others.sliced(1))};
}

QString tooLong() {
  return Texts::tr("el texto es demasiado largo (el máximo son %1 MB)").arg(kMaxInputBytes >> 20);
}

Result<QString> decoded(const QByteArray& bytes) {
  auto text = strictUtf8(bytes);
  if (!text) return Failure{Texts::tr("el texto no es UTF-8 válido")};
  return *std::move(text);
}

/// What comes next, at most so much; empty at the end.
Result<QByteArray> readPiece(QIODevice& input, qint64 most) {
  QByteArray piece(most, Qt::Uninitialized);
  const qint64 size = input.read(piece.data(), most);
  if (size < 0) return Failure{Texts::tr("no se puede leer el texto: %1").arg(input.errorString())};
  piece.resize(size);
  return piece;
}

Result<QString> readAll(QIODevice& input) {
  constexpr qint64 kPiece = 1024 * 1024;
  QByteArray bytes;
  while (bytes.size() <= kMaxInputBytes) {
    const auto piece = readPiece(input, kPiece);
    if (const auto* const failure = std::get_if<Failure>(&piece)) return *failure;
    if (std::get<QByteArray>(piece).isEmpty()) return decoded(bytes);
    bytes += std::get<QByteArray>(piece);
  }
  return Failure{tooLong()};
}

SensitivityLevel levelOf(const ClassifyCommand& command, QStringView text) {
  // As in everything that is copied, a byte-order mark is no part of the text.
  if (text.startsWith(QChar::ByteOrderMark)) text = text.sliced(1);
  // In a text of several lines there are no codes to leave out.
  const bool withLines =
      command.multiline && (command.detectCodes || SensitiveDetector::hasSeveralLines(text));
  if (withLines) return SensitiveDetector::classifyText(text, command.source);
  return SensitiveDetector::classify(text, command.source, command.detectCodes);
}

/// The grade as scripts read it.
QByteArray gradeOf(const ClassifyCommand& command, const QString& text) {
  switch (levelOf(command, text)) {
    case SensitivityLevel::none:
      return QByteArrayLiteral("none\n");
    case SensitivityLevel::soft:
      return QByteArrayLiteral("soft\n");
    case SensitivityLevel::hard:
      return QByteArrayLiteral("hard\n");
  }
  return {};
}

std::optional<Failure> write(QIODevice& output, const QByteArray& bytes) {
  if (output.write(bytes) == bytes.size()) return std::nullopt;
  return Failure{Texts::tr("no se puede escribir el resultado: %1").arg(output.errorString())};
}

/// Grades the lines of an input as they come.
class LineClassifier final {
 public:
  explicit LineClassifier(const ClassifyCommand& command) : command_(command) {}

  /// The answers to the lines that are complete with this piece.
  [[nodiscard]] QByteArray take(const QByteArray& piece) {
    QByteArray answers;
    qsizetype begin = 0;
    for (qsizetype end = piece.indexOf('\n'); end >= 0 && !failure_; end = piece.indexOf('\n', begin)) {
      line_.append(piece.constData() + begin, end - begin);
      answers += finishLine();
      begin = end + 1;
    }
    line_.append(piece.constData() + begin, piece.size() - begin);
    if (!failure_ && line_.size() > kMaxInputBytes) fail(tooLong());
    return answers;
  }

  /// The answer to a last line without a line break.
  [[nodiscard]] QByteArray finish() { return failure_ || line_.isEmpty() ? QByteArray() : finishLine(); }

  [[nodiscard]] const std::optional<Failure>& failure() const { return failure_; }

 private:
  QByteArray finishLine() {
    const QByteArray line = std::exchange(line_, {});
    const Result<QString> text = line.size() > kMaxInputBytes ? Failure{tooLong()} : decoded(line);
    if (const auto* const failure = std::get_if<Failure>(&text)) {
      fail(failure->message);
      return {};
    }
    ++number_;
    return gradeOf(command_, std::get<QString>(text));
  }

  void fail(const QString& message) {
    failure_ = Failure{Texts::tr("línea %1: %2").arg(number_ + 1).arg(message)};
  }

  const ClassifyCommand& command_;
  QByteArray line_;
  /// How many lines have been answered.
  qint64 number_ = 0;
  std::optional<Failure> failure_;
};

std::optional<Failure> classifyLines(const ClassifyCommand& command, QIODevice& input, QIODevice& output) {
  constexpr qint64 kPiece = 64 * 1024;
  LineClassifier lines(command);
  bool more = true;
  while (more && !lines.failure()) {
    const auto read = readPiece(input, kPiece);
    if (const auto* const failure = std::get_if<Failure>(&read)) return *failure;
    const auto& piece = std::get<QByteArray>(read);
    more = !piece.isEmpty();
    // Each piece is answered at once, for whoever waits for the answers to ask on.
    const QByteArray answers = more ? lines.take(piece) : lines.finish();
    if (auto failure = write(output, answers)) return failure;
  }
  return lines.failure();
}

std::optional<Failure> answer(const ClassifyCommand& command, QIODevice& input, QIODevice& output) {
  if (command.perLine) return classifyLines(command, input, output);
  const auto text = readAll(input);
  if (const auto* const failure = std::get_if<Failure>(&text)) return *failure;
  return write(output, gradeOf(command, std::get<QString>(text)));
}

std::optional<Failure> answer(const TransformCommand& command, QIODevice& input, QIODevice& output) {
  const auto text = readAll(input);
  if (const auto* const failure = std::get_if<Failure>(&text)) return *failure;
  const auto result = apply(command.transform, std::get<QString>(text), QLocale::system());
  if (!result)
    return Failure{Texts::tr("«%1» no se puede aplicar a este texto").arg(label(command.transform))};
  return write(output, result->toUtf8());
}

template <typename Command>
std::optional<Failure> answerFromSource(const Command& command, QIODevice& input, QIODevice& output) {
  if (command.file.isEmpty()) return answer(command, input, output);
  DescriptorDevice file(command.file);
  if (!file.isOpen())
    return Failure{Texts::tr("no se puede leer «%1»: %2").arg(printable(command.file), file.errorString())};
  auto failure = answer(command, file, output);
  if (failure) failure->message = Texts::tr("«%1»: %2").arg(printable(command.file), failure->message);
  return failure;
}

}  // namespace

std::optional<std::variant<TextCommand, UsageError>> parseTextCommand(const QStringList& arguments) {
  if (arguments.value(0) == u"classify") return parseClassify(arguments.sliced(1));
  if (arguments.value(0) == u"transform") return parseTransform(arguments.sliced(1));
  return std::nullopt;
}

int run(const TextCommand& command, QIODevice& input, QIODevice& output, QIODevice& errors) {
  const auto failure =
      std::visit([&](const auto& chosen) { return answerFromSource(chosen, input, output); }, command);
  if (!failure) return 0;
  static_cast<void>(errors.write(QStringLiteral("nimbrel: %1\n").arg(failure->message).toUtf8()));
  return 1;
}

}  // namespace nimbrel
