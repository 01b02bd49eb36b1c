#include "device/messages.h"

#include "device/wire_text.h"
#include "link/wire.h"


namespace dev {

namespace {

std::uint16_t AckFlags(bool ackWanted) { return ackWanted ? wire::kFlagAckWanted : 0; }

Bytes EncodeItems(std::uint16_t type, const std::vector<Item>& items, bool ackWanted) {
    Bytes out = EncodeFrameHead(type, AckFlags(ackWanted));
    TrmWriter w = WriterInto(out);
    w.u32(static_cast<std::uint32_t>(items.size()));
    for (const Item& item : items) {
        w.itemHead(item.key, static_cast<std::uint32_t>(item.data.size()));
        w.bytes(item.data.data(), item.data.size());
    }
    return out;
}

}  // namespace

Bytes EncodeFrameHead(std::uint16_t type, std::uint16_t flags) {
    Bytes out;
    WriterInto(out).frameHead(type, flags);
    return out;
}

Bytes EncodeIdentity(const Identity& identity) {
    std::uint16_t flags = 0;
    if (identity.nameUtf16) flags |= wire::kFlagIdentityUtf16;
    if (!identity.pingsAllowed) flags |= wire::kFlagNoPings;
    if (!identity.sessionB) flags |= wire::kFlagNoSessionB;
    if (identity.stayOpen) flags |= wire::kFlagStayOpen;
    Bytes out = EncodeFrameHead(wire::kInIdentity, flags);
    PutCounted(out, TextBytes(identity.panelName, identity.nameUtf16));
    PutCounted(out, TextBytes(identity.serverText, true));
    return out;
}

Bytes EncodeBare(std::uint16_t type, std::uint16_t flags) { return EncodeFrameHead(type, flags); }

Bytes EncodePanel(const std::vector<Record>& records, bool ackWanted) {
    Bytes out = EncodeFrameHead(wire::kInPanel, AckFlags(ackWanted));
    Put32(out, static_cast<std::uint32_t>(records.size()));
    for (const Record& r : records) PutCounted(out, EncodeRecord(r));
    return out;
}

Bytes EncodeValueUpdates(const std::vector<Item>& items, bool ackWanted) {
    return EncodeItems(wire::kInValues, items, ackWanted);
}

Bytes EncodeLayoutUpdates(const std::vector<Item>& items, bool ackWanted) {
    return EncodeItems(wire::kInLayout, items, ackWanted);
}

Bytes EncodeFiles(std::uint32_t key, const std::vector<OutFile>& files, bool namesUtf16,
                  bool ackWanted) {
    Bytes out = EncodeFrameHead(wire::kInFiles, AckFlags(ackWanted));
    Put32(out, key);
    Put32(out, static_cast<std::uint32_t>(files.size()));
    for (const OutFile& file : files) {
        PutCounted(out, TextBytes(file.name, namesUtf16, true));
        PutCounted(out, file.content);
    }
    return out;
}

Bytes EncodeSettings(const std::vector<Setting>& settings) {
    Bytes out = EncodeFrameHead(wire::kInSettings, 0);
    TrmWriter w = WriterInto(out);
    w.u32(static_cast<std::uint32_t>(settings.size()));
    for (const Setting& s : settings) w.setting(s.owner, s.kind, s.value);
    return out;
}

}  // namespace dev
