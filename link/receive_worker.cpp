// The receive worker: reads one message, acts on it, reports a result code and ends.
#include "link/decoders.h"
#include "link/link_client.h"
#include "link/bytes.h"
#include "link/wire.h"
#include "platform/message_box.h"
#include "platform/post.h"

#include <cstdio>
#include <cstring>

namespace {

constexpr long kLineMarkerRead = 362;
constexpr long kLineHeaderRead = 384;
constexpr long kLinePanelFailed = 447;
constexpr long kLineValuesFailed = 470;
constexpr long kLineLayoutFailed = 493;
constexpr long kLineFileLinkClosed = 520;
constexpr long kLineFileFailed = 527;
constexpr long kLineUnknownType = 547;

// Replies go to the socket this worker reads, and only while the link still holds it.
std::int32_t Reply(const ReceiveSource& source, std::uint16_t type) {
    std::uint8_t head[20];
    BuildFrameHead(head, type, wire::kFlagsOutbound);
    LinkClient& link = Link();
    plat::LockHold hold(link.lock);
    if (source.socket == plat::kInvalidSocket || link.socket != source.socket) {
        return kLinkNoSocket;
    }
    return LinkSend(head, sizeof head);
}

void Finish(plat::WindowRef window) { plat::PostToWindow(window, Link().resultMessage); }

// The link closed under the worker: nothing is reported.
void EndSilently() {}

void Fail(plat::WindowRef window, long line, long value) {
    plat::ShowFaultBox(line, kLinkSourceFile, value);
    Link().lastResult = -1;
    Finish(window);
}

}  // namespace

void RunReceiveWorker(ReceiveSource& source, plat::WindowRef window) {
    LinkClient& link = Link();
    // Hunt the marker one byte at a time: whatever precedes it is dropped.
    std::uint8_t marker[8] = {};
    while (std::memcmp(marker, wire::kMarker, 8) != 0) {
        std::memmove(marker, marker + 1, 7);
        std::int32_t rc = LinkReceive(source, &marker[7], 1);
        if (rc == kLinkClosed) return EndSilently();
        if (rc != 0) return Fail(window, kLineMarkerRead, rc);
    }
    std::uint8_t header[12] = {};
    std::int32_t rc = LinkReceive(source, header, sizeof header);
    if (rc == kLinkClosed) return EndSilently();
    if (rc != 0) return Fail(window, kLineHeaderRead, rc);

    const std::uint16_t type = bytes::Get16(header + 8);
    const std::uint16_t flags = bytes::Get16(header + 10);
    const bool ackWanted = (flags & wire::kFlagAckWanted) != 0;

    // Types whose decoder decides the result, and whose success may be acknowledged.
    auto decoded = [&](std::int32_t code, long failLine, std::int32_t result) {
        if (code == kLinkClosed) return EndSilently();
        if (code != 0) return Fail(window, failLine, code);
        if (ackWanted) Reply(source, wire::kOutAck);
        link.lastResult = result;
        Finish(window);
    };

    switch (type) {
    case wire::kInSessionEnd:
    case wire::kInSessionEndAlt:
        link.lastResult = 3;
        break;
    case wire::kInIdentity:
        DecodeIdentity(source, flags);  // a failed read shows up at the next worker's read
        link.lastResult = 1;
        break;
    case wire::kInPanel:
        return decoded(DecodePanel(source), kLinePanelFailed, 2);
    case wire::kInPing:
        Reply(source, wire::kOutPingReply);
        link.lastResult = 4;
        break;
    case wire::kInValues:
        return decoded(DecodeValueUpdates(source), kLineValuesFailed, 7);
    case wire::kInPingReply:
        link.pingPending = 0;
        link.lastResult = 5;
        break;
    case wire::kInNotice:
        link.lastResult = 6;
        break;
    case wire::kInReload:
        link.lastResult = 8;
        break;
    case wire::kInLayout:
        return decoded(DecodeLayoutUpdates(source), kLineLayoutFailed, 9);
    case wire::kInFiles: {
        std::int32_t code = DecodeFiles(source);
        if (code == kLinkClosed) {
            // The file transfer reports a broken link, then ends like the others.
            plat::ShowFaultBox(kLineFileLinkClosed, kLinkSourceFile, code);
            return EndSilently();
        }
        return decoded(code, kLineFileFailed, 10);
    }
    case wire::kInSettings:
        DecodeSettings(source);
        link.lastResult = 11;
        break;
    default: {
        char text[48];
        std::snprintf(text, sizeof text, "Message = %ld", static_cast<long>(type));
        plat::ShowMessageBox(nullptr, std::u16string(text, text + std::strlen(text)),
                             u"Tremolanth", plat::kMbOk);
        link.lastResult = -1;
        plat::ShowFaultBox(kLineUnknownType, kLinkSourceFile, -1);
        break;
    }
    }
    Finish(window);
}
