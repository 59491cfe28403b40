#include "platform/linux/X11KeyCodes.h"

#include <array>

namespace nimbrel {
namespace {

struct KeyPosition {
  quint32 virtualKeyCode;
  quint8 kernelKeyCode;
};

// clang-format off: a table is read in columns.
// Left: virtual key codes of the ANSI keyboard (HIToolbox, kVK_…). Right: the kernel's input-event-codes
// (KEY_…).
constexpr std::array kPositions{
    KeyPosition{0, 30},    KeyPosition{1, 31},    KeyPosition{2, 32},
    KeyPosition{3, 33},  // A S D F
    KeyPosition{4, 35},    KeyPosition{5, 34},    KeyPosition{6, 44},
    KeyPosition{7, 45},  // H G Z X
    KeyPosition{8, 46},    KeyPosition{9, 47},    KeyPosition{10, 86},
    KeyPosition{11, 48},  // C V ISO B
    KeyPosition{12, 16},   KeyPosition{13, 17},   KeyPosition{14, 18},
    KeyPosition{15, 19},  // Q W E R
    KeyPosition{16, 21},   KeyPosition{17, 20},   KeyPosition{18, 2},
    KeyPosition{19, 3},  // Y T 1 2
    KeyPosition{20, 4},    KeyPosition{21, 5},    KeyPosition{22, 7},
    KeyPosition{23, 6},  // 3 4 6 5
    KeyPosition{24, 13},   KeyPosition{25, 10},   KeyPosition{26, 8},
    KeyPosition{27, 12},  // = 9 7 -
    KeyPosition{28, 9},    KeyPosition{29, 11},   KeyPosition{30, 27},
    KeyPosition{31, 24},  // 8 0 ] O
    KeyPosition{32, 22},   KeyPosition{33, 26},   KeyPosition{34, 23},
    KeyPosition{35, 25},  // U [ I P
    KeyPosition{36, 28},   KeyPosition{37, 38},   KeyPosition{38, 36},
    KeyPosition{39, 40},  // Return L J '
    KeyPosition{40, 37},   KeyPosition{41, 39},   KeyPosition{42, 43},
    KeyPosition{43, 51},  // K ; backslash ,
    KeyPosition{44, 53},   KeyPosition{45, 49},   KeyPosition{46, 50},
    KeyPosition{47, 52},  // / N M .
    KeyPosition{48, 15},   KeyPosition{49, 57},   KeyPosition{50, 41},
    KeyPosition{51, 14},  // Tab Space ` Delete
    KeyPosition{53, 1},    KeyPosition{65, 83},   KeyPosition{67, 55},
    KeyPosition{69, 78},  // Escape, keypad . * +
    KeyPosition{71, 69},   KeyPosition{75, 98},   KeyPosition{76, 96},
    KeyPosition{78, 74},  // Clear / Enter -
    KeyPosition{81, 117},  KeyPosition{82, 82},   KeyPosition{83, 79},
    KeyPosition{84, 80},  // = 0 1 2
    KeyPosition{85, 81},   KeyPosition{86, 75},   KeyPosition{87, 76},
    KeyPosition{88, 77},                                                // 3 4 5 6
    KeyPosition{89, 71},   KeyPosition{91, 72},   KeyPosition{92, 73},  // 7 8 9
    KeyPosition{96, 63},   KeyPosition{97, 64},   KeyPosition{98, 65},
    KeyPosition{99, 61},  // F5 F6 F7 F3
    KeyPosition{100, 66},  KeyPosition{101, 67},  KeyPosition{103, 87},
    KeyPosition{105, 183},  // F8 F9 F11 F13
    KeyPosition{106, 186}, KeyPosition{107, 184}, KeyPosition{109, 68},
    KeyPosition{111, 88},  // F16 F14 F10 F12
    KeyPosition{113, 185}, KeyPosition{114, 110}, KeyPosition{115, 102},
    KeyPosition{116, 104},  // F15 Help Home PgUp
    KeyPosition{117, 111}, KeyPosition{118, 62},  KeyPosition{119, 107},
    KeyPosition{120, 60},  // Del F4 End F2
    KeyPosition{121, 109}, KeyPosition{122, 59},  KeyPosition{123, 105},
    KeyPosition{124, 106},                         // PgDn F1 Left Right
    KeyPosition{125, 108}, KeyPosition{126, 103},  // Down Up
};
// clang-format on

constexpr quint8 kKernelOffset = 8;

}  // namespace

std::optional<quint8> x11KeyCode(quint32 virtualKeyCode) {
  for (const auto& position : kPositions) {
    if (position.virtualKeyCode == virtualKeyCode)
      return static_cast<quint8>(position.kernelKeyCode + kKernelOffset);
  }
  return std::nullopt;
}

std::optional<quint32> virtualKeyCode(quint32 x11KeyCode) {
  for (const auto& position : kPositions) {
    if (x11KeyCode == quint32{position.kernelKeyCode} + kKernelOffset) return position.virtualKeyCode;
  }
  return std::nullopt;
}

}  // namespace nimbrel
