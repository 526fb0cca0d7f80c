#pragma once

// The protocol of the X keyboard extension, whose header has a field with a name that C++ keeps to itself.
// As a system's header this one may say so to the preprocessor without a warning.
#pragma GCC system_header

#include <xcb/xcb.h>

#define explicit explicit_
#include <xcb/xkb.h>
#undef explicit
