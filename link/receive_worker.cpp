// The receive worker: reads one message, acts on it, reports a result code and ends.
#include "link/decoders.h"
#include "link/link_client.h"
#include "link/link_results.h"
#include "link/bytes.h"
#include "link/wire.h"
#include "platform/message_box.h"
#include "platform/post.h"

#include <cstdio>
#include <cstring>

namespace {


// Replies go to the socket this worker reads, and only while the link still holds it.
std::int32_t Reply(const ReceiveSource& source, std::uint16_t type) {
    if (source.socket == plat::kInvalidSocket || Link().socket != source.socket) {
        return kLinkNoSocket;
    }
    std::uint8_t head[20];
    BuildFrameHead(head, type, wire::kFlagsOutbound);
    return LinkSendFrameOn(source.socket, head, sizeof head, kSendTimeoutMs);
}

WorkerOutcome Finish(plat::WindowRef window) {
    plat::PostToWindow(window, Link().resultMessage);
    return WorkerOutcome::kReported;
}

// The link closed under the worker: nothing is reported.
WorkerOutcome EndSilently() { return WorkerOutcome::kClosed; }

WorkerOutcome Fail(plat::WindowRef window, fault::Site site, long value) {
    plat::ShowFaultBox(site, value);
    Link().lastResult = kResultUnintelligible;
    Finish(window);
    return WorkerOutcome::kError;
}

// The screen shows the wait cursor while a panel description is being read.
DecodeStatus ReadPanel(ReceiveSource& source, plat::WindowRef window) {
    plat::PostToWindow(window, kPanelReadingMessage);
    DecodeStatus status = DecodePanel(source);
    plat::PostToWindow(window, kPanelReadMessage);
    return status;
}

}  // namespace

WorkerOutcome RunReceiveWorker(ReceiveSource& source, plat::WindowRef window) {
    LinkClient& link = Link();
    // Hunt the marker one byte at a time: whatever precedes it is dropped.
    std::uint8_t marker[8] = {};
    while (std::memcmp(marker, wire::kMarker, 8) != 0) {
        std::memmove(marker, marker + 1, 7);
        std::int32_t rc = LinkReceive(source, &marker[7], 1);
        if (rc == kLinkClosed) return EndSilently();
        if (rc != 0) return Fail(window, fault::kMarkerRead, rc);
    }
    std::uint8_t header[12] = {};
    std::int32_t rc = LinkReceive(source, header, sizeof header);
    if (rc == kLinkClosed) return EndSilently();
    if (rc != 0) return Fail(window, fault::kHeaderRead, rc);

    const std::uint16_t type = bytes::Get16(header + 8);
    const std::uint16_t flags = bytes::Get16(header + 10);
    const bool ackWanted = (flags & wire::kFlagAckWanted) != 0;

    // Types whose decoder decides the result, and whose success may be acknowledged.
    // A failed file write shows the system's error; every other failure its own code.
    auto decoded = [&](DecodeStatus status, fault::Site failSite, LinkResult result,
                       int systemError = 0) {
        if (status == DecodeStatus::kClosed) return EndSilently();
        if (status != DecodeStatus::kOk) {
            return Fail(window, failSite,
                        status == DecodeStatus::kFileNotWritten ? systemError
                                                                : static_cast<long>(status));
        }
        if (ackWanted) Reply(source, wire::kOutAck);
        link.lastResult = result;
        return Finish(window);
    };

    switch (type) {
    case wire::kInSessionEnd:
    case wire::kInSessionEndAlt:
        link.lastResult = kResultSessionEnd;
        break;
    case wire::kInIdentity:
        DecodeIdentity(source, flags);  // a failed read shows up at the next worker's read
        link.lastResult = kResultIdentity;
        break;
    case wire::kInPanel:
        return decoded(ReadPanel(source, window), fault::kPanelFailed, kResultPanel);
    case wire::kInPing:
        Reply(source, wire::kOutPingReply);
        link.lastResult = kResultDevicePing;
        break;
    case wire::kInValues:
        return decoded(DecodeValueUpdates(source), fault::kValuesFailed, kResultValues);
    case wire::kInPingReply:
        link.pingPending = 0;
        link.lastResult = kResultPingReply;
        break;
    case wire::kInNotice:
        link.lastResult = kResultNotice;
        break;
    case wire::kInReload:
        link.lastResult = kResultReload;
        break;
    case wire::kInLayout:
        return decoded(DecodeLayoutUpdates(source), fault::kLayoutFailed, kResultLayouts);
    case wire::kInFiles: {
        int systemError = 0;
        const DecodeStatus status = DecodeFiles(source, &systemError);
        if (status == DecodeStatus::kClosed) {
            // The file transfer reports a broken link, then ends like the others.
            plat::ShowFaultBox(fault::kFileLinkClosed, static_cast<long>(status));
            return EndSilently();
        }
        return decoded(status, fault::kFileFailed, kResultFiles, systemError);
    }
    case wire::kInSettings:
        DecodeSettings(source);
        link.lastResult = kResultSettings;
        break;
    default: {
        char text[48];
        std::snprintf(text, sizeof text, "Message = %ld", static_cast<long>(type));
        plat::ShowMessageBox(nullptr, std::u16string(text, text + std::strlen(text)),
                             u"Tremolanth", plat::kMbOk);
        link.lastResult = kResultUnintelligible;
        plat::ShowFaultBox(fault::kUnknownType, -1);
        Finish(window);
        return WorkerOutcome::kError;
    }
    }
    return Finish(window);
}
