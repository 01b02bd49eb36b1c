// The panel description (type 6): counted record bodies decoded into a staging array that
// replaces the live store in one step, so the screen never sees half a panel.
#include "link/decoders.h"
#include "link/limits.h"
#include "link/payload_reader.h"
#include "link/record_decoder.h"
#include "model/control_store.h"

#include <vector>

std::int32_t DecodePanel(ReceiveSource& source) {
    std::uint32_t count;
    if (std::int32_t rc = ReceiveWord(source, &count)) return rc;
    if (count > limits::kMaxRecords) return kDecodeMalformed;
    // Grown record by record: a count the device does not follow with records costs nothing.
    std::vector<ControlRecord> staging;
    std::vector<std::uint8_t> body;
    std::uint64_t total = 0;
    for (std::uint32_t i = 0; i < count; ++i) {
        ControlRecord& record = staging.emplace_back();
        std::uint32_t length;
        if (std::int32_t rc = ReceiveWord(source, &length)) return rc;
        total += length;
        if (length > limits::kMaxRecordBytes || total > limits::kMaxPanelBytes) {
            return kDecodeMalformed;
        }
        if (std::int32_t rc = ReceiveBytes(source, length, &body)) return rc;
        if (std::int32_t rc = DecodeRecord(body.data(), body.size(), record)) return rc;
    }
    SwapInControls(std::move(staging));
    return 0;
}
