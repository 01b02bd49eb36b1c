// Panel record bodies spelled out in tests: the common part, a type's fixed part and the
// attribute block, each written as the bytes the wire carries.
#pragma once

#include "tests/support/wire_builder.h"

#include <utility>
#include <vector>

namespace testing_support {

using Attrs = std::vector<std::pair<char, Bytes>>;

// Tag (2 bytes), flags (4), key (4).
Bytes CommonPart(char tag, std::uint32_t flags, std::uint32_t key);
// Count, letters, then each value with its 32-bit byte count.
Bytes AttributeBlock(const Attrs& attributes);
// A body's bytes preceded by its 32-bit length, as a panel lists them.
Bytes Counted(const Bytes& body);
// A whole type-6 frame with these bodies.
Bytes PanelFrame(const std::vector<Bytes>& bodies, std::uint16_t flags = 0);

}  // namespace testing_support
