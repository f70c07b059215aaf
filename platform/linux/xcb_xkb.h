// <xcb/xkb.h> for C++: the generated header names a member with a reserved word.
#pragma once

#define explicit explicitKeys  // NOLINT(bugprone-macro-parentheses)
#include <xcb/xkb.h>
#undef explicit
