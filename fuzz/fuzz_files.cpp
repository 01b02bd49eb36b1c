// A file message against a store with an 8-bit and a UTF-16 files control.
#include "fuzz/fuzz_common.h"
#include "link/decoders.h"
#include "model/control_store.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzzing::Initialise();
    SwapInControls(fuzzing::OneOfEach());
    MemoryInput input{data, size};
    ReceiveSource source = MemoryReceiveSource(&input);
    DecodeFiles(source);
    SwapInControls({});
    return 0;
}
