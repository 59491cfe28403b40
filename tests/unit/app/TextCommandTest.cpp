#include "app/TextCommand.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <unistd.h>

#include <QBuffer>
#include <QFile>
#include <QTemporaryDir>
#include <cerrno>
#include <cstring>
#include <string_view>
#include <thread>

#include "app/DescriptorDevice.h"

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;
using ::testing::HasSubstr;

struct Outcome {
  int status;
  QByteArray output;
  std::string errors;
};

Outcome outcomeOf(const TextCommand& command, const QByteArray& text) {
  QBuffer input;
  input.setData(text);
  QBuffer output;
  QBuffer errors;
  input.open(QIODevice::ReadOnly);
  output.open(QIODevice::WriteOnly);
  errors.open(QIODevice::WriteOnly);
  const int status = run(command, input, output, errors);
  return {status, output.data(), errors.data().toStdString()};
}

/// An input that never ends and counts what is taken of it.
class EndlessInput final : public QIODevice {
 public:
  explicit EndlessInput(char byte) : byte_(byte) { open(QIODevice::ReadOnly | QIODevice::Unbuffered); }

  [[nodiscard]] bool isSequential() const override { return true; }
  [[nodiscard]] qint64 bytesAvailable() const override { return 1 << 16; }

  qint64 taken = 0;

 protected:
  qint64 readData(char* data, qint64 size) override {
    const qint64 given = std::min<qint64>(size, 1 << 16);
    std::fill_n(data, given, byte_);
    taken += given;
    return given;
  }
  qint64 writeData(const char*, qint64) override { return -1; }

 private:
  const char byte_;
};

/// An output that takes nothing.
class FullOutput final : public QIODevice {
 public:
  FullOutput() { open(QIODevice::WriteOnly | QIODevice::Unbuffered); }

 protected:
  qint64 readData(char*, qint64) override { return -1; }
  qint64 writeData(const char*, qint64) override {
    setErrorString(u"lleno"_s);
    return -1;
  }
};

/// An input that breaks off.
class BrokenInput final : public QIODevice {
 public:
  BrokenInput() { open(QIODevice::ReadOnly | QIODevice::Unbuffered); }
  [[nodiscard]] bool isSequential() const override { return true; }

 protected:
  qint64 readData(char*, qint64) override {
    setErrorString(u"rota"_s);
    return -1;
  }
  qint64 writeData(const char*, qint64) override { return -1; }
};

TEST(ClassifyCommand, PrintsTheGrade) {
  EXPECT_EQ(outcomeOf(ClassifyCommand{}, "hola").output, "none\n");
  EXPECT_EQ(outcomeOf(ClassifyCommand{}, "123456\n").output, "soft\n");
  EXPECT_EQ(outcomeOf(ClassifyCommand{}, "4111 1111 1111 1111\n").output, "hard\n");
  EXPECT_EQ(outcomeOf(ClassifyCommand{}, "").output, "none\n");
  EXPECT_EQ(outcomeOf(ClassifyCommand{}, "4111 1111 1111 1111").status, 0);
}

TEST(ClassifyCommand, ObeysItsOptions) {
  EXPECT_EQ(outcomeOf(ClassifyCommand{.source = u"com.authy"_s}, "123456").output, "hard\n");
  EXPECT_EQ(outcomeOf(ClassifyCommand{.detectCodes = false}, "123456").output, "none\n");
  const QByteArray letter = "Tu tarjeta:\n4111 1111 1111 1111\nSaludos";
  EXPECT_EQ(outcomeOf(ClassifyCommand{}, letter).output, "none\n");
  EXPECT_EQ(outcomeOf(ClassifyCommand{.multiline = true}, letter).output, "hard\n");
}

TEST(ClassifyCommand, LeavesCodesOutOfALineToo) {
  const ClassifyCommand command{.source = u"com.authy"_s, .detectCodes = false, .multiline = true};
  EXPECT_EQ(outcomeOf(command, "123456\n").output, "none\n");
  EXPECT_EQ(outcomeOf(command, "hola\n4111111111111111\n").output, "hard\n");
}

TEST(ClassifyCommand, LeavesAByteOrderMarkOut) {
  EXPECT_EQ(outcomeOf(ClassifyCommand{},
                      "\xef\xbb\xbf"
                      "123456\n")
                .output,
            "soft\n");
  EXPECT_EQ(outcomeOf(ClassifyCommand{.perLine = true},
                      "\xef\xbb\xbf"
                      "123456\nhola\n")
                .output,
            "soft\nnone\n");
}

TEST(ClassifyCommand, AnswersEachLine) {
  const ClassifyCommand lines{.perLine = true};
  EXPECT_EQ(outcomeOf(lines, "hola\n123456\r\n\n4111111111111111").output, "none\nsoft\nnone\nhard\n");
  EXPECT_EQ(outcomeOf(lines, "hola\n").output, "none\n");
  EXPECT_EQ(outcomeOf(lines, "").output, "");
}

TEST(ClassifyCommand, SaysWhichLineIsNoText) {
  const Outcome outcome = outcomeOf(ClassifyCommand{.perLine = true}, "hola\n\xff\xfe\n123456\n");
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.output, "none\n");
  EXPECT_THAT(outcome.errors, HasSubstr("línea 2"));
}

TEST(ClassifyCommand, RefusesWhatIsNoText) {
  for (const QByteArray& bytes :
       {QByteArray("\xff\xfe\x00", 3), QByteArray("\xc3"), QByteArray("\xed\xa0\x80")}) {
    const Outcome outcome = outcomeOf(ClassifyCommand{}, bytes);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.output, "");
    EXPECT_THAT(outcome.errors, HasSubstr("UTF-8"));
  }
  EXPECT_EQ(outcomeOf(ClassifyCommand{}, QByteArray("a\0b", 3)).output, "none\n");
}

TEST(ClassifyCommand, ReadsNoMoreThanALongText) {
  const QByteArray longest(kMaxInputBytes, 'a');
  EXPECT_EQ(outcomeOf(ClassifyCommand{}, longest).status, 0);
  EXPECT_EQ(outcomeOf(ClassifyCommand{}, longest + 'a').status, 1);
  EXPECT_EQ(outcomeOf(ClassifyCommand{.perLine = true}, longest + "\na\n").output, "none\nnone\n");
  EXPECT_EQ(outcomeOf(ClassifyCommand{.perLine = true}, longest + "aa\na\n").status, 1);
}

TEST(TextCommand, StopsReadingAnEndlessText) {
  for (const TextCommand& command :
       {TextCommand(ClassifyCommand{}), TextCommand(ClassifyCommand{.perLine = true}),
        TextCommand(TransformCommand{})}) {
    EndlessInput input('a');
    QBuffer output;
    QBuffer errors;
    output.open(QIODevice::WriteOnly);
    errors.open(QIODevice::WriteOnly);
    EXPECT_EQ(run(command, input, output, errors), 1);
    EXPECT_EQ(output.data(), "");
    EXPECT_THAT(errors.data().toStdString(), HasSubstr("16 MB"));
    EXPECT_LE(input.taken, kMaxInputBytes + (1 << 17));
  }
}

TEST(TransformCommand, WritesNothingButTheResult) {
  EXPECT_EQ(outcomeOf(TransformCommand{TextTransform::uppercase}, "mañana\n").output, "MAÑANA\n");
  EXPECT_EQ(outcomeOf(TransformCommand{TextTransform::base64Encode}, "hello").output, "aGVsbG8=");
  EXPECT_EQ(outcomeOf(TransformCommand{TextTransform::uppercase},
                      "\xef\xbb\xbf"
                      "a")
                .output,
            "\xef\xbb\xbf"
            "A");
}

TEST(TransformCommand, SaysWhenItDoesNotApply) {
  const Outcome outcome = outcomeOf(TransformCommand{TextTransform::formatJSON}, "{");
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.output, "");
  EXPECT_THAT(outcome.errors, HasSubstr("Formatear JSON"));
}

TEST(ClassifyCommand, AnswersALineBeforeTheNextComes) {
  int in[2];
  int out[2];
  ASSERT_EQ(pipe(in), 0);
  ASSERT_EQ(pipe(out), 0);
  std::thread program([&] {
    DescriptorDevice input(in[0], QIODevice::ReadOnly);
    DescriptorDevice output(out[1], QIODevice::WriteOnly);
    QBuffer errors;
    errors.open(QIODevice::WriteOnly);
    EXPECT_EQ(run(ClassifyCommand{.perLine = true}, input, output, errors), 0);
  });
  for (const auto& [line, answer] : {std::pair("123456\n", "soft\n"), {"hola\n", "none\n"}}) {
    EXPECT_EQ(write(in[1], line, strlen(line)), static_cast<ssize_t>(strlen(line)));
    char answered[5];
    EXPECT_EQ(read(out[0], answered, 5), 5);
    EXPECT_EQ(std::string_view(answered, 5), answer);
  }
  close(in[1]);
  program.join();
  for (const int descriptor : {in[0], out[0], out[1]})
    close(descriptor);
}

TEST(DescriptorDevice, WaitsForAPipeThatWouldBlock) {
  int ends[2];
  ASSERT_EQ(pipe(ends), 0);
  for (const int end : ends)
    ASSERT_EQ(fcntl(end, F_SETFL, O_NONBLOCK), 0);
  const QByteArray text(1 << 20, 'a');
  QByteArray received;
  std::thread reader([&] {
    DescriptorDevice input(ends[0], QIODevice::ReadOnly);
    char piece[4096];
    while (received.size() < text.size()) {
      const qint64 count = input.read(piece, sizeof piece);
      ASSERT_GT(count, 0);
      received.append(piece, count);
    }
  });
  DescriptorDevice output(ends[1], QIODevice::WriteOnly);
  EXPECT_EQ(output.write(text), text.size());
  reader.join();
  EXPECT_EQ(received, text);
  close(ends[0]);
  close(ends[1]);
}

TEST(DescriptorDevice, SaysWhatFails) {
  DescriptorDevice closed(-1, QIODevice::ReadWrite);
  char byte = 0;
  EXPECT_EQ(closed.read(&byte, 1), -1);
  EXPECT_EQ(closed.errorString(), qt_error_string(EBADF));
  EXPECT_EQ(closed.write("a"), -1);
  const DescriptorDevice missing(u":/"_s);
  EXPECT_FALSE(missing.isOpen());
  EXPECT_EQ(missing.errorString(), qt_error_string(ENOENT));
}

TEST(TextCommand, ReadsAFile) {
  const QTemporaryDir folder;
  const QString path = folder.filePath(u"texto.txt"_s);
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write("123456\n");
  file.close();
  EXPECT_EQ(outcomeOf(ClassifyCommand{.file = path}, "nada").output, "soft\n");
  EXPECT_EQ(outcomeOf(ClassifyCommand{.perLine = true, .file = path}, "nada").output, "soft\n");
  EXPECT_EQ(outcomeOf(TransformCommand{TextTransform::trimWhitespace, path}, "nada").output, "123456");
}

TEST(TextCommand, SaysWhyAFileCannotBeRead) {
  const QTemporaryDir folder;
  for (const QString& path : {folder.filePath(u"falta"_s), folder.path()}) {
    const Outcome outcome = outcomeOf(ClassifyCommand{.file = path}, "");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.output, "");
    EXPECT_THAT(outcome.errors, HasSubstr(path.toStdString()));
  }
}

TEST(TextCommand, SaysWhenItsInputBreaksOff) {
  for (const TextCommand& command :
       {TextCommand(ClassifyCommand{}), TextCommand(ClassifyCommand{.perLine = true}),
        TextCommand(TransformCommand{})}) {
    BrokenInput input;
    QBuffer output;
    QBuffer errors;
    output.open(QIODevice::WriteOnly);
    errors.open(QIODevice::WriteOnly);
    EXPECT_EQ(run(command, input, output, errors), 1);
    EXPECT_EQ(output.data(), "");
    EXPECT_THAT(errors.data().toStdString(), HasSubstr("rota"));
  }
}

TEST(TextCommand, SaysWhenItCannotWrite) {
  QBuffer input;
  input.setData("hola");
  input.open(QIODevice::ReadOnly);
  FullOutput output;
  QBuffer errors;
  errors.open(QIODevice::WriteOnly);
  EXPECT_EQ(run(ClassifyCommand{}, input, output, errors), 1);
  EXPECT_THAT(errors.data().toStdString(), HasSubstr("lleno"));
}

}  // namespace
}  // namespace nimbrel
