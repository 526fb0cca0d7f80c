#pragma once

// The protocol of the X keyboard extension. Its header names a field `explicit`, a keyword of C++, which is
// renamed here; only a system header may define a keyword without a warning.
#pragma GCC system_header

#include <xcb/xcb.h>

#define explicit explicit_
#include <xcb/xkb.h>
#undef explicit
