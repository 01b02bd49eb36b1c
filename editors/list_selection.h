// The list selector's rule: the row a list value selects.
#pragma once

#include <cstdint>

// The value itself when it names an item, else -1 (nothing selected).
int ListSelectionFor(std::int32_t value, std::uint32_t itemCount);
