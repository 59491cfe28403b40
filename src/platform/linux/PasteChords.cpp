#include "platform/linux/PasteChords.h"

#include <algorithm>
#include <array>

namespace nimbrel {
namespace {

// Identifiers in lower case. Terminals whose Shift-Insert pastes PRIMARY and that know no clipboard chord.
constexpr std::array kPrimaryTerminals{
    QStringView(u"xterm"),         QStringView(u"uxterm"),     QStringView(u"debian-xterm"),
    QStringView(u"debian-uxterm"), QStringView(u"urxvt"),      QStringView(u"rxvt"),
    QStringView(u"rxvt-unicode"),  QStringView(u"mlterm"),     QStringView(u"aterm"),
    QStringView(u"eterm"),         QStringView(u"koi8rxterm"),
};

constexpr std::array kClipboardTerminals{
    QStringView(u"org.gnome.terminal"),
    QStringView(u"gnome-terminal"),
    QStringView(u"gnome-terminal-server"),
    QStringView(u"org.gnome.console"),
    QStringView(u"org.gnome.ptyxis"),
    QStringView(u"kgx"),
    QStringView(u"xfce4-terminal"),
    QStringView(u"org.xfce.terminal"),
    QStringView(u"mate-terminal"),
    QStringView(u"lxterminal"),
    QStringView(u"org.lxde.lxterminal"),
    QStringView(u"qterminal"),
    QStringView(u"konsole"),
    QStringView(u"org.kde.konsole"),
    QStringView(u"yakuake"),
    QStringView(u"org.kde.yakuake"),
    QStringView(u"terminator"),
    QStringView(u"tilix"),
    QStringView(u"com.gexperts.tilix"),
    QStringView(u"guake"),
    QStringView(u"sakura"),
    QStringView(u"kitty"),
    QStringView(u"alacritty"),
    QStringView(u"org.wezfurlong.wezterm"),
    QStringView(u"com.mitchellh.ghostty"),
    QStringView(u"cool-retro-term"),
    QStringView(u"st-256color"),
    QStringView(u"stterm"),
    QStringView(u"roxterm"),
    QStringView(u"deepin-terminal"),
    QStringView(u"io.elementary.terminal"),
    QStringView(u"termit"),
    QStringView(u"terminology"),
};

}  // namespace

PasteChord pasteChordOf(const QString& applicationIdentifier) {
  const QString id = applicationIdentifier.toLower();
  const auto isOneOf = [&](const auto& terminals) {
    return std::find(terminals.begin(), terminals.end(), QStringView(id)) != terminals.end();
  };
  if (isOneOf(kPrimaryTerminals)) return PasteChord::shiftInsertPrimary;
  if (isOneOf(kClipboardTerminals)) return PasteChord::controlShiftV;
  return PasteChord::controlV;
}

}  // namespace nimbrel
