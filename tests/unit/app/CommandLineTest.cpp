#include "app/CommandLine.h"

#include <gmock/gmock.h>

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;

TEST(CommandLine, WithoutArgumentsRuns) {
  EXPECT_EQ(parseCommandLine({}, u"1"_s), CommandLine(RunCommand{}));
}

TEST(CommandLine, RunsWithUrlsOfItsOwnAndNoOthers) {
  const QStringList urls{u"nimbrel://add?text=a"_s, u"NIMBREL:x"_s};
  EXPECT_EQ(parseCommandLine(urls, u"1"_s), CommandLine(RunCommand{urls}));
  for (const QStringList& others :
       {QStringList{u"https://example.org"_s}, QStringList{u"nimbrel://add"_s, u"--frob"_s},
        QStringList{u"nimbrel"_s}}) {
    const CommandLine command = parseCommandLine(others, u"1"_s);
    ASSERT_TRUE(std::holds_alternative<PrintCommand>(command)) << qPrintable(others.first());
    EXPECT_EQ(std::get<PrintCommand>(command).exitStatus, 2);
  }
}

TEST(CommandLine, ShowsThePanelForWhoeverStartsItFromAMenu) {
  EXPECT_EQ(parseCommandLine({u"--panel"_s}, u"1"_s), CommandLine(RunCommand{{}, true}));
  EXPECT_EQ(parseCommandLine({u"--panel"_s, u"nimbrel:x"_s}, u"1"_s),
            CommandLine(RunCommand{{u"nimbrel:x"_s}, false}));
  EXPECT_EQ(std::get<PrintCommand>(parseCommandLine({u"--panel"_s, u"show"_s}, u"1"_s)).exitStatus, 2);
}

TEST(CommandLine, PrintsItsVersion) {
  for (const QString& option : {u"--version"_s, u"-v"_s})
    EXPECT_EQ(parseCommandLine({option}, u"1.2.3"_s), CommandLine(PrintCommand{u"nimbrel 1.2.3\n"_s, 0}));
}

TEST(CommandLine, PrintsItsHelp) {
  for (const QStringList& arguments :
       {QStringList{u"--help"_s}, QStringList{u"-h"_s}, QStringList{u"classify"_s, u"--help"_s},
        QStringList{u"transform"_s, u"--help"_s}}) {
    const auto command = std::get<PrintCommand>(parseCommandLine(arguments, u"1"_s));
    EXPECT_EQ(command.exitStatus, 0);
    EXPECT_TRUE(command.output.contains(u"--version"));
    for (const TextTransform transform : kTextTransforms)
      EXPECT_TRUE(command.output.contains(name(transform))) << qPrintable(name(transform));
  }
}

TEST(CommandLine, RefusesWhatItDoesNotKnow) {
  const auto command = std::get<PrintCommand>(parseCommandLine({u"--frob"_s}, u"1"_s));
  EXPECT_EQ(command.exitStatus, 2);
  EXPECT_TRUE(command.output.contains(u"--frob"));
}

TEST(CommandLine, ReadsClassify) {
  const auto parsed = [](const QStringList& arguments) {
    return parseCommandLine(QStringList(u"classify"_s) + arguments, u"1"_s);
  };
  EXPECT_EQ(parsed({}), CommandLine(TextCommand(ClassifyCommand{})));
  EXPECT_EQ(parsed({u"-"_s}), CommandLine(TextCommand(ClassifyCommand{})));
  const ClassifyCommand all{.source = u"com.authy"_s, .detectCodes = false, .perLine = true, .file = u"a"_s};
  EXPECT_EQ(parsed({u"--source"_s, u"com.authy"_s, u"--no-codes"_s, u"--lines"_s, u"a"_s}),
            CommandLine(TextCommand(all)));
  EXPECT_EQ(parsed({u"a"_s, u"--lines"_s, u"--no-codes"_s, u"--source=com.authy"_s}),
            CommandLine(TextCommand(all)));
  EXPECT_EQ(parsed({u"--multiline"_s}), CommandLine(TextCommand(ClassifyCommand{.multiline = true})));
  EXPECT_EQ(parsed({u"--"_s, u"--lines"_s}), CommandLine(TextCommand(ClassifyCommand{.file = u"--lines"_s})));
}

TEST(CommandLine, ReadsTransform) {
  EXPECT_EQ(parseCommandLine({u"transform"_s, u"formatJSON"_s}, u"1"_s),
            CommandLine(TextCommand(TransformCommand{.transform = TextTransform::formatJSON})));
  EXPECT_EQ(
      parseCommandLine({u"transform"_s, u"uppercase"_s, u"a.txt"_s}, u"1"_s),
      CommandLine(TextCommand(TransformCommand{.transform = TextTransform::uppercase, .file = u"a.txt"_s})));
}

TEST(CommandLine, RefusesAMisusedTextCommand) {
  for (const QString& words :
       {u"classify --frob"_s, u"classify a b"_s, u"classify --source"_s, u"classify --source="_s,
        u"transform"_s, u"transform frob"_s, u"transform Uppercase"_s, u"transform --frob uppercase"_s,
        u"transform uppercase a b"_s}) {
    const auto command = parseCommandLine(words.split(u' '), u"1"_s);
    ASSERT_TRUE(std::holds_alternative<PrintCommand>(command)) << qPrintable(words);
    EXPECT_EQ(std::get<PrintCommand>(command).exitStatus, 2) << qPrintable(words);
  }
}

TEST(CommandLine, SaysThatAValueIsMissing) {
  const auto command = std::get<PrintCommand>(parseCommandLine({u"classify"_s, u"--source"_s}, u"1"_s));
  EXPECT_TRUE(command.output.contains(u"falta"));
  for (const QStringList& arguments :
       {QStringList{u"classify"_s, u""_s}, QStringList{u"transform"_s, u"uppercase"_s, u""_s}})
    EXPECT_EQ(std::get<PrintCommand>(parseCommandLine(arguments, u"1"_s)).exitStatus, 2);
}

TEST(CommandLine, TakesWhatFollowsTwoHyphensForAFile) {
  for (const QString& file : {u"--help"_s, u"-h"_s, u"--lines"_s})
    EXPECT_EQ(parseCommandLine({u"classify"_s, u"--"_s, file}, u"1"_s),
              CommandLine(TextCommand(ClassifyCommand{.file = file})));
}

TEST(CommandLine, ShowsNoControlCharacters) {
  for (const QStringList& arguments :
       {QStringList{u"\u001b[31m"_s}, QStringList{u"classify"_s, u"--\u001b[31m"_s},
        QStringList{u"transform"_s, u"\u001b]0;a\u0007"_s}})
    EXPECT_FALSE(std::get<PrintCommand>(parseCommandLine(arguments, u"1"_s)).output.contains(u'\u001b'));
}

TEST(CommandLine, NamesTheTransformsWhenAnUnknownOneIsAskedFor) {
  const auto command = std::get<PrintCommand>(parseCommandLine({u"transform"_s, u"frob"_s}, u"1"_s));
  EXPECT_TRUE(command.output.contains(u"frob"));
  for (const TextTransform transform : kTextTransforms)
    EXPECT_TRUE(command.output.contains(name(transform)));
}

}  // namespace
}  // namespace nimbrel
