// Whole frames from the device to the client, ready for one send. Every frame is the 20-byte
// head (out_bytes.h) and a payload; there is no length field, so the client learns each
// payload's size from the counts inside it.
//
// ackWanted sets header flag 0x0008 on types 6, 9, 16 and 17: the client then answers a frame
// it handled without error with an acknowledgement (type 14).
#pragma once

#include "device/out_bytes.h"
#include "device/records.h"

#include <cstdint>
#include <string>
#include <vector>

namespace dev {

// Type 2. The client takes panelName as its panel name (the key of its per-panel settings)
// and keeps serverText. Header flags: 0x0001 name in UTF-16 (else the code page), 0x0002 no
// pings, 0x0004 clears the client's session flag B, 0x0010 screens stay open after the link
// is lost.
struct Identity {
    std::string panelName;
    std::string serverText;
    bool nameUtf16 = true;
    bool pingsAllowed = true;
    bool sessionB = true;
    bool stayOpen = false;
};
Bytes EncodeIdentity(const Identity& identity);

// Types without a payload: 1 and 5 end the session (the client disconnects), 8 ping (the
// client answers 12), 11 the reply to the client's ping, 13 a notice, 15 asks the client to
// request the panel again.
Bytes EncodeBare(std::uint16_t type, std::uint16_t flags = 0);

// Type 6: the whole panel.
Bytes EncodePanel(const std::vector<Record>& records, bool ackWanted = false);

// One item of a value or layout update: a control key and its data (values.h).
struct Item {
    std::uint32_t key = 0;
    Bytes data{};
};
Bytes EncodeValueUpdates(const std::vector<Item>& items, bool ackWanted = false);   // type 9
Bytes EncodeLayoutUpdates(const std::vector<Item>& items, bool ackWanted = false);  // type 16

// Type 17: files for one Files control. The name is sent with its terminating zero, in UTF-16
// when the control's record is UTF-16 (namesUtf16), else in the code page. The client keeps
// only the last path component and writes under its own folder, so a bare name is best.
struct OutFile {
    std::string name;
    Bytes content{};
};
Bytes EncodeFiles(std::uint32_t key, const std::vector<OutFile>& files, bool namesUtf16,
                  bool ackWanted = false);

// Type 19: settings the client stores for this panel, by owner (0 for the panel, or a control
// key) and kind: 768 ping period in seconds, 336 layout style, 448 title length shown, 464
// how the value is shown, 480 fast key, 256 and 512 lock the layout and ping menus.
struct Setting {
    std::uint32_t owner = 0;
    std::uint32_t kind = 0;
    std::uint32_t value = 0;
};
Bytes EncodeSettings(const std::vector<Setting>& settings);

}  // namespace dev
