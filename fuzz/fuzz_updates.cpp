// Value and layout updates against a store of every kind; the first byte chooses which.
#include "fuzz/fuzz_common.h"
#include "link/decoders.h"
#include "model/control_store.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzzing::Initialise();
    if (size < 1) return 0;
    SwapInControls(fuzzing::OneOfEach());
    MemoryInput input{data + 1, size - 1};
    ReceiveSource source = MemoryReceiveSource(&input);
    if (data[0] & 1) {
        DecodeLayoutUpdates(source);
    } else {
        DecodeValueUpdates(source);
    }
    SwapInControls({});
    return 0;
}
