#include "link/receive_source.h"

#include "link/link_client.h"
#include "link/wire.h"
#include "platform/thread.h"

#include <algorithm>
#include <cstring>

namespace {

void SocketPause(void* context) {
    auto* reader = static_cast<SocketReader*>(context);
    // Only a silent serial device still has repeats: other links never look at the clock.
    if (reader->requestRepeats > 0 && !reader->anythingArrived) {
        const auto now = std::chrono::steady_clock::now();
        if (now >= reader->nextRequest) {
            --reader->requestRepeats;
            reader->nextRequest = now + kPanelRequestInterval;
            if (Link().socket == reader->socket) {
                std::uint8_t head[wire::kFrameHeadSize];
                BuildFrameHead(head, wire::kOutPanelRequest, wire::kFlagsOutbound);
                LinkSendFrameOn(reader->socket, head, sizeof head, kSendTimeoutMs);
            }
        }
    }
    plat::SleepMilliseconds(10);
}

// Serves what the buffer holds, then reads the socket once for the rest: a frame cut at the
// buffer's end costs no pause, only a read that truly came short does.
int BufferedRead(void* context, void* data, int length) {
    auto* reader = static_cast<SocketReader*>(context);
    auto* out = static_cast<std::uint8_t*>(data);
    std::size_t wanted = static_cast<std::size_t>(length);
    std::size_t copied = std::min(wanted, reader->end - reader->begin);
    std::memcpy(out, reader->buffer + reader->begin, copied);
    reader->begin += copied;
    if (copied == wanted) return length;
    if (reader->failed) return copied > 0 ? static_cast<int>(copied) : plat::kSocketError;
    std::size_t missing = wanted - copied;
    int got;
    if (missing >= sizeof reader->buffer) {
        got = plat::SocketReceive(reader->socket, out + copied, static_cast<int>(missing));
    } else {
        got = plat::SocketReceive(reader->socket, reader->buffer, sizeof reader->buffer);
        reader->begin = 0;
        reader->end = got > 0 ? static_cast<std::size_t>(got) : 0;
        if (got > 0) {
            std::size_t n = std::min(missing, reader->end);
            std::memcpy(out + copied, reader->buffer, n);
            reader->begin = n;
            got = static_cast<int>(n);
        }
    }
    if (got > 0) reader->anythingArrived = true;
    if (got == plat::kSocketError) {
        // The bytes served from the buffer are this call's; the error is the next one's.
        reader->failed = true;
        return copied > 0 ? static_cast<int>(copied) : got;
    }
    return static_cast<int>(copied) + got;
}

int MemoryRead(void* context, void* data, int length) {
    auto* input = static_cast<MemoryInput*>(context);
    if (input->position >= input->size) return plat::kSocketError;
    std::size_t n = std::min(static_cast<std::size_t>(length), input->size - input->position);
    std::memcpy(data, input->data + input->position, n);
    input->position += n;
    return static_cast<int>(n);
}

void MemoryPause(void*) {}

}  // namespace

void SocketReader::RepeatPanelRequest() {
    requestRepeats = kPanelRequestRepeats;
    nextRequest = std::chrono::steady_clock::now() + kPanelRequestInterval;
}

ReceiveSource BufferedReceiveSource(SocketReader* reader) {
    ReceiveSource source;
    source.receive = BufferedRead;
    source.pause = SocketPause;
    source.context = reader;
    source.socket = reader->socket;
    return source;
}

ReceiveSource MemoryReceiveSource(MemoryInput* input) {
    ReceiveSource source;
    source.receive = MemoryRead;
    source.pause = MemoryPause;
    source.context = input;
    return source;
}
