// Owners of libxkbcommon's reference-counted objects.
#pragma once

#include <xkbcommon/xkbcommon.h>

#include <memory>

namespace kalvo {

template <auto Unref>
struct XkbUnref {
    template <typename T>
    void operator()(T* object) const {
        Unref(object);
    }
};

using XkbContextHandle = std::unique_ptr<xkb_context, XkbUnref<xkb_context_unref>>;
using XkbKeymapHandle = std::unique_ptr<xkb_keymap, XkbUnref<xkb_keymap_unref>>;
using XkbStateHandle = std::unique_ptr<xkb_state, XkbUnref<xkb_state_unref>>;

}  // namespace kalvo
