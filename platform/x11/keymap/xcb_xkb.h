// <xcb/xkb.h> for C++: the generated header names a member with a reserved word.
#pragma once

// clang, and only clang, warns of a macro with the name of a keyword.
#ifdef __clang__
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wkeyword-macro"
#endif
#define explicit explicitKeys  // NOLINT(bugprone-macro-parentheses)
#include <xcb/xkb.h>
#undef explicit
#ifdef __clang__
#pragma clang diagnostic pop
#endif
