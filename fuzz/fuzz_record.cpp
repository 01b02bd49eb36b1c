// One panel record body.
#include "fuzz/fuzz_common.h"
#include "link/record_decoder.h"
#include "model/control_store.h"

#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzzing::Initialise();
    // A copy of exactly the body: reads past its end are caught.
    std::vector<std::uint8_t> body(data, data + size);
    ControlRecord record;
    if (DecodeRecord(body.data(), body.size(), record) == DecodeStatus::kOk) {
        SwapInControls({record});
        std::size_t need = 0;
        GetControlValue(record.controlKey, nullptr, &need);
        std::vector<std::uint8_t> value(need + 1);
        need = value.size();
        GetControlValue(record.controlKey, value.data(), &need);
        SwapInControls({});
    }
    return 0;
}
