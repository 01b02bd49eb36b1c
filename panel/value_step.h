// Left and right on a number or list row: the value one step down or up, stored for sending.
#pragma once

#include <cstdint>

// A number stepped by d: held at the minimum or maximum only when that limit applies (flags
// 0x20000, 0x40000); no wrap.
std::int32_t StepNumber(std::int32_t value, int d, std::uint32_t flags, std::int32_t minimum,
                        std::int32_t maximum);
// A list index stepped by d: "List (No Loop)" stops at the ends, the other styles wrap.
std::int32_t StepListIndex(std::int32_t index, int d, std::uint32_t count, std::int32_t style);

struct ValueStep {
    bool changed = false; // a new value was stored and marked for sending
};

// Under the store's lock: steps the control as its type and LayoutStyle allow. Does not send.
ValueStep StepControlValue(std::uint32_t controlId, bool up);
