#include "editors/list_selection.h"

int ListSelectionFor(std::int32_t value, std::uint32_t itemCount) {
    if (value < 0 || static_cast<std::uint32_t>(value) >= itemCount) return -1;
    return value;
}
