// Pressing a check box: a lone box flips between 0 and 255; a box of a radio group clears
// its group and turns on; a box with flag 0x10000 turns off. The new value is stored and
// sent at once.
#pragma once

#include "panel/row_image_index.h"

#include <cstdint>

struct CheckToggle {
    bool done = false;        // false: not a check box in the store, nothing changed
    std::uint32_t group = 0;  // the radio group whose rows now show kImageRadioOff, or 0
    std::uint8_t value = 0;   // the new value
    int image = 0;            // the toggled row's image
};

// Under the store's lock; sends the pending values before returning.
CheckToggle ToggleCheckControl(std::uint32_t controlId);
