#include "panel/backspace.h"

#include <algorithm>

BackspaceResult Backspace(std::u16string_view text, std::size_t selStart, std::size_t selEnd) {
    std::size_t start = std::min({selStart, selEnd, text.size()});
    std::size_t end = std::min(std::max(selStart, selEnd), text.size());
    if (start == end && start > 0) --start;
    BackspaceResult result;
    result.text.assign(text.substr(0, start));
    result.text.append(text.substr(end));
    result.caret = start;
    result.changed = start != end;
    return result;
}
