#include "editors/text_entry.h"

#include <algorithm>

TextDialogKind PlanTextDialog(std::uint32_t flags) {
    if (!(flags & 0x10000)) return TextDialogKind::kReadOnly;
    return (flags & 0x20000) ? TextDialogKind::kMasked : TextDialogKind::kPlain;
}

std::size_t TextCapacityChars(std::uint32_t capacityBytes, std::uint32_t flags) {
    return (flags & 0x4) ? capacityBytes / 2 : capacityBytes;
}

std::size_t TextTypingLimit(std::size_t capacityChars) {
    return capacityChars > 0 ? capacityChars - 1 : 0;
}

std::vector<char16_t> TextUnitsToStore(std::u16string_view typed, std::size_t capacityChars) {
    std::vector<char16_t> units(capacityChars, u'\0');
    const std::size_t kept = std::min(typed.size(), TextTypingLimit(capacityChars));
    std::copy_n(typed.begin(), kept, units.begin());
    return units;
}
