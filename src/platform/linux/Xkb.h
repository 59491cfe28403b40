#pragma once

// The header has fields named like a C++ keyword.
#define explicit explicitModifiers
#include <xcb/xkb.h>
#undef explicit
