// The panel description (type 6): counted record bodies decoded into a staging array that
// replaces the live store in one step, so the screen never sees half a panel.
#include "link/decoders.h"
#include "link/limits.h"
#include "link/payload_reader.h"
#include "link/record_decoder.h"
#include "model/control_store.h"

#include <vector>

DecodeStatus DecodePanel(ReceiveSource& source) {
    std::uint32_t count;
    if (DecodeStatus rc = ReceiveWord(source, &count); rc != DecodeStatus::kOk) return rc;
    if (count > limits::kMaxRecords) return DecodeStatus::kMalformed;
    // Grown record by record: a count the device does not follow with records costs nothing.
    std::vector<ControlRecord> staging;
    std::vector<std::uint8_t> body;
    std::uint64_t total = 0;
    for (std::uint32_t i = 0; i < count; ++i) {
        ControlRecord& record = staging.emplace_back();
        std::uint32_t length;
        if (DecodeStatus rc = ReceiveWord(source, &length); rc != DecodeStatus::kOk) return rc;
        total += length;
        if (length > limits::kMaxRecordBytes || total > limits::kMaxPanelBytes) {
            return DecodeStatus::kMalformed;
        }
        if (DecodeStatus rc = ReceiveBytes(source, length, &body); rc != DecodeStatus::kOk) {
            return rc;
        }
        if (DecodeStatus rc = DecodeRecord(body.data(), body.size(), record);
            rc != DecodeStatus::kOk) {
            return rc;
        }
    }
    SwapInControls(std::move(staging));
    return DecodeStatus::kOk;
}
