#include "link/payload_reader.h"

#include "link/bytes.h"
#include "link/link_client.h"

#include <algorithm>

DecodeStatus ReceiveWord(ReceiveSource& source, std::uint32_t* word) {
    std::uint8_t b[4];
    if (LinkReceive(source, b, 4) != kLinkOk) return DecodeStatus::kClosed;
    *word = bytes::Get32(b);
    return DecodeStatus::kOk;
}

DecodeStatus ReceiveBytes(ReceiveSource& source, std::size_t n, std::vector<std::uint8_t>* out) {
    constexpr std::size_t kStep = 64 * 1024;
    out->clear();
    while (out->size() < n) {
        std::size_t done = out->size();
        std::size_t chunk = std::min(kStep, n - done);
        out->resize(done + chunk);
        if (LinkReceive(source, out->data() + done, chunk) != kLinkOk) {
            return DecodeStatus::kClosed;
        }
    }
    return DecodeStatus::kOk;
}
