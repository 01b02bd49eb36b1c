// The text editor's rules: which of its three dialogs a text control gets, how many characters
// it may hold, and the units "Done" stores.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

enum class TextDialogKind {
    kReadOnly, // shown whole, not editable
    kPlain,
    kMasked, // typed characters hidden
};
TextDialogKind PlanTextDialog(std::uint32_t flags);

// Characters the control holds, its terminator included: the byte capacity halved for a
// control held in 2-byte characters, else the byte capacity itself.
std::size_t TextCapacityChars(std::uint32_t capacityBytes, std::uint32_t flags);
// Characters the user may type: one fewer, for the terminator.
std::size_t TextTypingLimit(std::size_t capacityChars);

// Exactly capacityChars units: the typed text cut to leave room for the terminator, zeros after.
std::vector<char16_t> TextUnitsToStore(std::u16string_view typed, std::size_t capacityChars);
