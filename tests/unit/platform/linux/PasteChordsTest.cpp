#include "platform/linux/PasteChords.h"

#include <gmock/gmock.h>

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;

TEST(PasteChords, AreControlVForMostPrograms) {
  EXPECT_EQ(pasteChordOf(u"org.kde.kate"_s), PasteChord::controlV);
  EXPECT_EQ(pasteChordOf(QString()), PasteChord::controlV);
}

TEST(PasteChords, AreTheTerminalsOwn) {
  EXPECT_EQ(pasteChordOf(u"XTerm"_s), PasteChord::shiftInsertPrimary);
  EXPECT_EQ(pasteChordOf(u"URxvt"_s), PasteChord::shiftInsertPrimary);
  EXPECT_EQ(pasteChordOf(u"lxterminal"_s), PasteChord::controlShiftV);
  EXPECT_EQ(pasteChordOf(u"org.gnome.Terminal"_s), PasteChord::controlShiftV);
  EXPECT_EQ(pasteChordOf(u"Alacritty"_s), PasteChord::controlShiftV);
}

}  // namespace
}  // namespace nimbrel
