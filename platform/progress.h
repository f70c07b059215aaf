// The progress window frmProgress with its label Label1 and bar ProgressBar1.
#pragma once

#include <string_view>

namespace kalvo {

// Never takes the focus. Cheap to call often: the display follows at most 30
// times a second. `text` is code page 1252.
class Progress {
public:
    virtual ~Progress() = default;

    virtual void setLabel(std::string_view text) = 0;
    // 0 to 100.
    virtual void setValue(double percent) = 0;
    virtual void show() = 0;
    virtual void refresh() = 0;
    virtual void unload() = 0;
};

}  // namespace kalvo
