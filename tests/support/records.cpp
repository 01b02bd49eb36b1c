#include "tests/support/records.h"

namespace testing_support {

Bytes CommonPart(char tag, std::uint32_t flags, std::uint32_t key) {
    return U16(static_cast<std::uint16_t>(tag)) + U32(flags) + U32(key);
}

Bytes AttributeBlock(const Attrs& attributes) {
    Bytes out = U32(static_cast<std::uint32_t>(attributes.size()));
    for (const auto& a : attributes) out.push_back(static_cast<std::uint8_t>(a.first));
    for (const auto& a : attributes) out = out + U32(static_cast<std::uint32_t>(a.second.size())) + a.second;
    return out;
}

Bytes Counted(const Bytes& body) { return U32(static_cast<std::uint32_t>(body.size())) + body; }

Bytes PanelFrame(const std::vector<Bytes>& bodies, std::uint16_t flags) {
    Bytes out = FrameHead(6, flags) + U32(static_cast<std::uint32_t>(bodies.size()));
    for (const auto& b : bodies) out = out + Counted(b);
    return out;
}

}  // namespace testing_support
