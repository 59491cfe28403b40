#include "app/InstanceCommand.h"

#include <gmock/gmock.h>

#include <QBuffer>

#include "app/CommandLine.h"

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;
using Kind = InstanceCommand::Kind;

class FakeInstanceClient final : public InstanceClient {
 public:
  [[nodiscard]] IntentReply perform(const IntentCall& call) override {
    calls.append(call);
    return reply;
  }
  [[nodiscard]] IntentReply show(bool collections) override {
    shown.append(collections);
    return reply;
  }
  [[nodiscard]] IntentReply quit() override { return reply; }
  [[nodiscard]] bool isRunning() override { return true; }
  void notify(const QString&, const QString& text) override { notices.append(text); }

  IntentReply reply;
  QList<IntentCall> calls;
  QList<bool> shown;
  QStringList notices;
};

class InstanceCommandTest : public ::testing::Test {
 protected:
  InstanceCommandTest() {
    output.open(QIODevice::WriteOnly);
    errors.open(QIODevice::WriteOnly);
  }
  int runCommand(const QStringList& arguments) {
    const auto parsed = parseInstanceCommand(arguments);
    return run(std::get<InstanceCommand>(parsed.value()), client,
               {.output = output, .errors = errors, .isTerminal = isTerminal});
  }

  FakeInstanceClient client;
  QBuffer output;
  QBuffer errors;
  bool isTerminal = false;
};

TEST(ParseInstanceCommand, ReadsThemAll) {
  const auto parsed = [](const QStringList& arguments) {
    return std::get<InstanceCommand>(parseCommandLine(arguments, u"1"_s));
  };
  EXPECT_EQ(parsed({u"copy-latest"_s}), InstanceCommand{.kind = Kind::copyLatest});
  EXPECT_EQ(parsed({u"copy-latest"_s, u"--notify"_s}),
            (InstanceCommand{.kind = Kind::copyLatest, .notify = true}));
  EXPECT_EQ(parsed({u"search"_s, u"pan"_s, u"duro"_s, u"--json"_s}),
            (InstanceCommand{.kind = Kind::search, .argument = u"pan duro"_s, .json = true}));
  EXPECT_EQ(parsed({u"search"_s, u"--"_s, u"--json"_s}),
            (InstanceCommand{.kind = Kind::search, .argument = u"--json"_s}));
  EXPECT_EQ(parsed({u"toggle-capture"_s}), InstanceCommand{.kind = Kind::toggleCapture});
  EXPECT_EQ(parsed({u"paste-from"_s, u"casa"_s}),
            (InstanceCommand{.kind = Kind::pasteFrom, .argument = u"casa"_s}));
  EXPECT_EQ(parsed({u"collections"_s, u"--json"_s}),
            (InstanceCommand{.kind = Kind::collections, .json = true}));
  EXPECT_EQ(parsed({u"show"_s}), InstanceCommand{.kind = Kind::show});
  EXPECT_EQ(parsed({u"show"_s, u"--collections"_s}), InstanceCommand{.kind = Kind::showCollections});
  EXPECT_EQ(parsed({u"quit"_s}), InstanceCommand{.kind = Kind::quit});
}

TEST(ParseInstanceCommand, RefusesWhatMakesNoSense) {
  for (const QStringList& arguments :
       {QStringList{u"search"_s}, QStringList{u"search"_s, u" "_s}, QStringList{u"paste-from"_s},
        QStringList{u"paste-from"_s, u"casa"_s, u"--json"_s}, QStringList{u"copy-latest"_s, u"x"_s},
        QStringList{u"quit"_s, u"--json"_s}, QStringList{u"show"_s, u"--frob"_s},
        QStringList{u"toggle-capture"_s, u"--collections"_s}})
    EXPECT_EQ(std::get<PrintCommand>(parseCommandLine(arguments, u"1"_s)).exitStatus, 2)
        << qPrintable(arguments.join(u' '));
}

TEST_F(InstanceCommandTest, WritesTheTextsItFound) {
  client.reply = {.message = u"Se encontraron 2 textos."_s, .texts = {u"uno"_s, u"dos\ntres"_s}};
  EXPECT_EQ(runCommand({u"search"_s, u"x"_s}), 0);
  EXPECT_EQ(client.calls, (QList<IntentCall>{{Intent::searchHistory, u"x"_s}}));
  EXPECT_EQ(output.data(), "uno\ndos\ntres\n");
  EXPECT_EQ(errors.data(), "");
}

TEST_F(InstanceCommandTest, AnswersPrograms) {
  client.reply = {.message = u"Se encontraron 1 textos."_s, .texts = {u"a\"\n\u001b"_s}};
  EXPECT_EQ(runCommand({u"search"_s, u"x"_s, u"--json"_s}), 0);
  EXPECT_EQ(output.data(), "{\"message\":\"Se encontraron 1 textos.\",\"texts\":[\"a\\\"\\n\\u001b\"]}\n");
  output.buffer().clear();
  output.seek(0);
  client.reply = {.message = u"Captura pausada."_s, .paused = true};
  EXPECT_EQ(runCommand({u"toggle-capture"_s, u"--json"_s}), 0);
  EXPECT_EQ(output.data(), "{\"message\":\"Captura pausada.\",\"paused\":true}\n");
}

TEST_F(InstanceCommandTest, ATerminalIsNotToldToDoThings) {
  client.reply = {.texts = {u"a\u001b]0;x\u0007\tb\nc\u202e"_s}};
  isTerminal = true;
  EXPECT_EQ(runCommand({u"search"_s, u"x"_s}), 0);
  EXPECT_EQ(output.data(), u"a\ufffd]0;x\ufffd\tb\nc\ufffd\n"_s.toUtf8());
}

TEST_F(InstanceCommandTest, NorByJson) {
  client.reply = {.texts = {u"\u009b2J \u202e \u007f "_s + QString::fromUcs4(U"\U000e0041") + u" ñ"_s}};
  EXPECT_EQ(runCommand({u"search"_s, u"x"_s, u"--json"_s}), 0);
  EXPECT_EQ(output.data(), R"({"texts":["\u009b2J \u202e \u007f \udb40\udc41 ñ"]})"
                           "\n");
}

TEST_F(InstanceCommandTest, SaysWhatWasDone) {
  client.reply = {.message = u"Último texto copiado."_s};
  EXPECT_EQ(runCommand({u"copy-latest"_s}), 0);
  EXPECT_EQ(output.data(), u"Último texto copiado.\n"_s.toUtf8());
  EXPECT_TRUE(client.notices.isEmpty());
}

TEST_F(InstanceCommandTest, TellsTheDesktopWhenThereIsNoTerminal) {
  client.reply = {.message = u"Último texto copiado."_s};
  EXPECT_EQ(runCommand({u"copy-latest"_s, u"--notify"_s}), 0);
  client.reply = {.error = u"emptyHistory"_s, .message = u"No hay texto seguro en el historial."_s};
  EXPECT_EQ(runCommand({u"copy-latest"_s, u"--notify"_s}), 4);
  EXPECT_EQ(client.notices,
            (QStringList{u"Último texto copiado."_s, u"No hay texto seguro en el historial."_s}));
}

TEST_F(InstanceCommandTest, EachErrorHasItsStatusAndMessage) {
  const QList<std::tuple<QString, int, QString>> errorsOf{
      {u"unavailable"_s, 3, u"Nimbrel no está disponible."_s},
      {u"emptyHistory"_s, 4, u"No hay texto seguro en el historial."_s},
      {u"emptyCollection"_s, 5, u"La colección no contiene texto seguro."_s},
      {u"authenticationFailed"_s, 6, u"No se pudo desbloquear Brevin."_s},
      {u"accessibilityRequired"_s, 7, u"Concede permiso de Accesibilidad para pegar automáticamente."_s},
      {u"tooManyCalls"_s, 8, u"Demasiadas peticiones seguidas."_s},
      {u"noAnswer"_s, 9, u"Nimbrel está en marcha, pero no contesta."_s},
      {u"otra"_s, 1, u"otra"_s}};
  for (const auto& [error, status, message] : errorsOf) {
    errors.buffer().clear();
    errors.seek(0);
    client.reply = {.error = error};
    EXPECT_EQ(runCommand({u"paste-from"_s, u"casa"_s}), status);
    EXPECT_EQ(errors.data(), u"nimbrel: %1\n"_s.arg(message).toUtf8());
  }
  EXPECT_EQ(output.data(), "");
}

TEST_F(InstanceCommandTest, ShowsAndQuits) {
  EXPECT_EQ(runCommand({u"show"_s}), 0);
  EXPECT_EQ(runCommand({u"show"_s, u"--collections"_s}), 0);
  EXPECT_EQ(client.shown, (QList<bool>{false, true}));
  EXPECT_EQ(runCommand({u"quit"_s}), 0);
  client.reply = {.error = u"noAnswer"_s};
  EXPECT_EQ(runCommand({u"quit"_s}), 9);
  EXPECT_EQ(output.data(), "");
}

TEST_F(InstanceCommandTest, FailsWhenTheAnswerCannotBeWritten) {
  output.close();
  client.reply = {.texts = {u"a"_s}};
  EXPECT_EQ(runCommand({u"search"_s, u"x"_s}), 1);
}

}  // namespace
}  // namespace nimbrel
