// The Back key in an edit field: with nothing selected and the caret past the start, it takes
// away the character before the caret; otherwise it takes away the selection (nothing, when
// the caret is at the start). The caret goes to where the removal began.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

struct BackspaceResult {
    std::u16string text;
    std::size_t caret = 0;
    bool changed = false;
};

// selStart and selEnd as the edit reports them (in either order; clamped to the text).
BackspaceResult Backspace(std::u16string_view text, std::size_t selStart, std::size_t selEnd);
