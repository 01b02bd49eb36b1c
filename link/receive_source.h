// Where a receive worker reads its bytes from: the link's socket, or memory (tests, fuzzing).
#pragma once

#include "platform/socket.h"

#include <chrono>
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

// The bytes of one connection read ahead of the workers: a worker asking for 1 byte of a
// marker or 12 of a header is served from here, so the link costs one receive call per
// burst of frames rather than several per frame. Each worker of the connection in turn
// continues where the previous one stopped; workers of one link never overlap.
struct SocketReader {
    explicit SocketReader(plat::SocketHandle s) : socket(s) {}
    plat::SocketHandle socket;
    std::uint8_t buffer[16384];
    std::size_t begin = 0;
    std::size_t end = 0;
    // The socket failed: once the bytes read before it are served, every read fails too.
    bool failed = false;
    // A device on a serial port may restart as the port opens (a board reset by DTR, its boot
    // loader swallowing the first second) and miss the panel request: while nothing has
    // arrived, the request goes out again every so often, a few times.
    bool anythingArrived = false;
    int requestRepeats = 0;
    std::chrono::steady_clock::time_point nextRequest;
    void RepeatPanelRequest();
};
inline constexpr int kPanelRequestRepeats = 5;
inline constexpr std::chrono::milliseconds kPanelRequestInterval{2000};
// Reads the connection through its read-ahead, pausing 10 ms after an incomplete read.
ReceiveSource BufferedReceiveSource(SocketReader* reader);

// Reads a byte range; its end is the link closing. Pauses do not wait.
struct MemoryInput {
    const std::uint8_t* data = nullptr;
    std::size_t size = 0;
    std::size_t position = 0;
};
ReceiveSource MemoryReceiveSource(MemoryInput* input);
