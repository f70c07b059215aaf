// Whether a Jet file was locked. From 0x18 its first page is veiled with one key that
// all files share (RC4); under the veil:
//
//   0x3E  4 bytes         key the other pages are enciphered with, 0 when they are not
//   0x42  20 or 40 bytes  password; Jet 4 masks it with the day of creation as a 32-bit
//                         number, repeated. Zeros before the mask when there is none.
//   0x72  8 bytes         moment of creation, days as a double (Jet 4)
#pragma once

#include "platform/jet/jet_bytes.h"
#include "platform/jet/jet_signature.h"

namespace kalvo {

enum class JetProtection { kNone, kEnciphered, kPassword };

[[nodiscard]] JetProtection jetProtectionOf(JetBytes firstPage, JetVersion version);

}  // namespace kalvo
