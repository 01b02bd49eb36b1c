// Identity texts and settings records; the first two bytes are the header flags, whose
// lowest bit also picks settings instead of identity.
#include "fuzz/fuzz_common.h"
#include "link/decoders.h"
#include "link/link_client.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzzing::Initialise();
    if (size < 2) return 0;
    std::uint16_t flags = static_cast<std::uint16_t>(data[0] | (data[1] << 8));
    MemoryInput input{data + 2, size - 2};
    ReceiveSource source = MemoryReceiveSource(&input);
    if (flags & 0x8000) {
        DecodeSettings(source);
    } else {
        DecodeIdentity(source, flags);
        LinkPanelId();
    }
    return 0;
}
