// Where a receive worker reads its bytes from: the link's socket, or memory (tests, fuzzing).
#pragma once

#include "platform/socket.h"

#include <cstddef>
#include <cstdint>

struct ReceiveSource {
    // One receive call: bytes read (0: nothing this time), or plat::kSocketError when the
    // source has ended for good.
    int (*receive)(void* context, void* data, int length) = nullptr;
    // The pause after a read that did not bring every byte asked for.
    void (*pause)(void* context) = nullptr;
    void* context = nullptr;
    // The socket that replies of this worker go to; kInvalidSocket for memory sources.
    plat::SocketHandle socket = plat::kInvalidSocket;
};

// Reads a socket, pausing 10 ms after an incomplete read.
ReceiveSource SocketReceiveSource(plat::SocketHandle socket);

// Reads a byte range; its end is the link closing. Pauses do not wait.
struct MemoryInput {
    const std::uint8_t* data = nullptr;
    std::size_t size = 0;
    std::size_t position = 0;
    std::size_t zeroReads = 0;  // empty reads served before the end is reported
};
ReceiveSource MemoryReceiveSource(MemoryInput* input);
