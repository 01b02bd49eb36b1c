// What the receive worker reports for each message it handled: the screen reads the code from
// the link after the result message arrives and acts on it.
#pragma once

#include <cstdint>

enum LinkResult : std::int32_t {
    kResultIncompatible = -2,  // the device speaks another version (no message produces it)
    kResultUnintelligible = -1,  // already reported with a box; reception stops
    kResultIdentity = 1,       // type 2: the panel's name; pings may start
    kResultPanel = 2,          // type 6: a new panel description
    kResultSessionEnd = 3,     // types 1 and 5: the device ended the session
    kResultDevicePing = 4,     // type 8: answered already
    kResultPingReply = 5,      // type 11
    kResultNotice = 6,         // type 13
    kResultValues = 7,         // type 9: values changed
    kResultReload = 8,         // type 15: the device asks for the panel again
    kResultLayouts = 9,        // type 16: layouts changed
    kResultFiles = 10,         // type 17: files arrived
    kResultSettings = 11,      // type 19: settings stored
};
