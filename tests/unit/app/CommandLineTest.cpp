#include "app/CommandLine.h"

#include <gmock/gmock.h>

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;

TEST(CommandLine, WithoutArgumentsRuns) {
  EXPECT_EQ(parseCommandLine({}, u"1"_s).action, CommandLine::Action::run);
}

TEST(CommandLine, PrintsItsVersion) {
  for (const QString& option : {u"--version"_s, u"-v"_s})
    EXPECT_EQ(parseCommandLine({option}, u"1.2.3"_s),
              (CommandLine{CommandLine::Action::print, u"nimbrel 1.2.3\n"_s, 0}));
}

TEST(CommandLine, PrintsItsHelp) {
  for (const QString& option : {u"--help"_s, u"-h"_s}) {
    const CommandLine command = parseCommandLine({option}, u"1"_s);
    EXPECT_EQ(command.action, CommandLine::Action::print);
    EXPECT_EQ(command.exitStatus, 0);
    EXPECT_TRUE(command.output.contains(u"--version"));
  }
}

TEST(CommandLine, RefusesWhatItDoesNotKnow) {
  const CommandLine command = parseCommandLine({u"--frob"_s}, u"1"_s);
  EXPECT_EQ(command.action, CommandLine::Action::print);
  EXPECT_EQ(command.exitStatus, 2);
  EXPECT_TRUE(command.output.contains(u"--frob"));
}

}  // namespace
}  // namespace nimbrel
