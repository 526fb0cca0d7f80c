#pragma once

// The protocol of the X keyboard extension, whose header has a field with a name that C++ keeps to itself.

#include <xcb/xcb.h>

#define explicit explicit_
#include <xcb/xkb.h>
#undef explicit
