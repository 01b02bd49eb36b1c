// The whole receive path on an arbitrary byte stream: workers run one after another, as the
// panel screen restarts them, until the stream ends.
#include "fuzz/fuzz_common.h"
#include "link/link_client.h"
#include "model/control_store.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzzing::Initialise();
    MemoryInput input{data, size};
    ReceiveSource source = MemoryReceiveSource(&input);
    // Each worker consumes at least one byte or ends at the end of the stream.
    for (std::size_t i = 0; i <= size && input.position < size; ++i) {
        RunReceiveWorker(source, nullptr);
    }
    // The store must stay usable whatever arrived.
    for (std::int32_t k = 0; k < ControlCount(); ++k) {
        std::size_t need = 0;
        GetControlValue(ControlIdAt(k), nullptr, &need);
    }
    LinkClose();
    return 0;
}
