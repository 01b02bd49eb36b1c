// The one link to the remote device: its socket, the program lock, the device's identity
// texts, session flags, worker state and last result.
//
// Its status codes are the link's own set (link/status_codes.h).
#pragma once

#include "link/receive_source.h"
#include "link/status_codes.h"
#include "platform/socket.h"
#include "platform/types.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <string>

inline constexpr unsigned kResultMessage = 0x8000;  // the panel screen's link-result message
// Around the reading of a panel description, so the screen can show the wait cursor.
inline constexpr unsigned kPanelReadingMessage = 0x8002;
inline constexpr unsigned kPanelReadMessage = 0x8003;

struct LinkClient {
    std::atomic<plat::SocketHandle> socket{plat::kInvalidSocket};
    std::atomic<std::uint8_t> initialised{0};
    // Identity texts (guarded by the program lock; the worker replaces each once it has
    // arrived whole).
    std::u16string panelId;
    std::u16string serverText;
    // Workers reading a message (one, but for a stale one of an earlier link still ending).
    std::atomic<int> workerRunning{0};
    std::atomic<unsigned> resultMessage{0};
    std::atomic<std::int32_t> lastResult{0};
    std::atomic<std::uint8_t> pingPending{0};
    std::atomic<std::uint8_t> sessionFlagA{0};  // pings allowed
    std::atomic<std::uint8_t> sessionFlagB{0};
    std::atomic<std::uint8_t> sessionFlagC{0};  // screens stay open after a disconnect
    std::atomic<std::uint8_t> acknowledgeValues{0};  // value messages ask for an acknowledgement
};

LinkClient& Link();

std::int32_t LinkInit();
std::int32_t LinkShutdown();
std::int32_t LinkStart(plat::SocketHandle socket, plat::WindowRef window, unsigned message);
std::int32_t LinkStartReceiver(plat::WindowRef window, unsigned message);
std::int32_t LinkRequestPanel();
std::int32_t LinkRestart();
std::int32_t LinkDisconnect(std::uint8_t notifyDevice);

// Ends the link on leaving, within a bounded time: the goodbye goes out when it can be sent
// within waitMs; otherwise the device stopped reading (or a sender is stuck on it), so the
// socket is closed, which wakes whoever waits on it, and the goodbye is skipped. The link is
// closed either way. Returns the goodbye's send status (-3 when it was skipped).
inline constexpr unsigned kLeaveWaitMs = 250;
std::int32_t LinkStop(unsigned waitMs = kLeaveWaitMs);
std::int32_t LinkClose();
// Sends a ping, or -8 when the last one was never answered.
std::int32_t LinkSendPing();
std::int32_t LinkSendDefaultLayout(std::uint32_t value);

// How long a device may leave a frame unread before the link counts as broken.
inline constexpr unsigned kSendTimeoutMs = 3000;

// The send primitive: one whole frame, under the link's send lock so that the bytes of two
// frames never interleave, and never under the program lock (callers must not hold it: the
// screen may not wait on the device). A frame that cannot be sent within the time, or a
// connection that failed, closes the socket: every call waiting on it wakes, and the link is
// as broken as it is. 0, -2 without a link, -3 when sending failed.
std::int32_t LinkSend(const void* frame, std::size_t count, unsigned timeoutMs = kSendTimeoutMs);
// The same, to a given socket (a worker replying on the connection it reads).
std::int32_t LinkSendFrameOn(plat::SocketHandle socket, const void* frame, std::size_t count,
                             unsigned timeoutMs);

// The receive primitive: exactly count bytes, or 6 when the source ended.
std::int32_t LinkReceive(ReceiveSource& source, void* buffer, std::size_t count);

// Copies of the identity texts (empty when absent).
std::u16string LinkPanelId();
std::u16string LinkServerText();
bool LinkIsOpen();

// Builds the 20-byte head of an outbound frame.
void BuildFrameHead(std::uint8_t head[20], std::uint16_t type, std::uint16_t flags);
// Sends a head-only frame of the given type.
std::int32_t LinkSendControlFrame(std::uint16_t type);

// How a receive worker's message ended: reported to the window (a result, or -1 after an
// error, which stops reception), or not at all because the link closed under it.
enum class WorkerOutcome { kReported, kError, kClosed };

// Reads and handles one message from the source; LinkStartReceiver runs it on the
// connection's receive thread.
WorkerOutcome RunReceiveWorker(ReceiveSource& source, plat::WindowRef window);

// Told (on the receive thread) when a worker ends on an error or on a closed link; for
// clients without a screen, such as panel-probe.
using WorkerEndObserver = void (*)(WorkerOutcome outcome);
WorkerEndObserver SetWorkerEndObserver(WorkerEndObserver observer);
