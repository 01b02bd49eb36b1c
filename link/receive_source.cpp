#include "link/receive_source.h"

#include "platform/thread.h"

#include <algorithm>
#include <cstring>

namespace {

int SocketRead(void* context, void* data, int length) {
    return plat::SocketReceive(reinterpret_cast<plat::SocketHandle>(context), data, length);
}

void SocketPause(void*) { plat::SleepMilliseconds(10); }

int MemoryRead(void* context, void* data, int length) {
    auto* input = static_cast<MemoryInput*>(context);
    if (input->position >= input->size) {
        if (input->zeroReads > 0) {
            --input->zeroReads;
            return 0;
        }
        return plat::kSocketError;
    }
    std::size_t n = std::min(static_cast<std::size_t>(length), input->size - input->position);
    std::memcpy(data, input->data + input->position, n);
    input->position += n;
    return static_cast<int>(n);
}

void MemoryPause(void*) {}

}  // namespace

ReceiveSource SocketReceiveSource(plat::SocketHandle socket) {
    ReceiveSource source;
    source.receive = SocketRead;
    source.pause = SocketPause;
    source.context = reinterpret_cast<void*>(socket);
    source.socket = socket;
    return source;
}

ReceiveSource MemoryReceiveSource(MemoryInput* input) {
    ReceiveSource source;
    source.receive = MemoryRead;
    source.pause = MemoryPause;
    source.context = input;
    return source;
}
