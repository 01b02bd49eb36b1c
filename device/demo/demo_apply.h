// How the demo device takes the values the client sends: each one is applied to the state as
// a real device would (clamped, checked) and what the client must now show is collected.
#pragma once

#include "device/client_message.h"
#include "device/demo/demo_panel.h"
#include "device/messages.h"

#include <cstdint>
#include <string>
#include <vector>

namespace demo {

struct Reaction {
    std::vector<dev::Item> values;   // echoes and changed values (type 9)
    std::vector<dev::Item> layouts;  // shown or hidden controls (type 16)
    bool popup = false;              // show popupText in a Message box
    std::string popupText;
    std::uint8_t popupIcon = 0;      // 0 none, 2 stop, 3 exclamation, 4 question
    bool pushReport = false;         // send the report file
    bool reload = false;             // ask the client to fetch the panel again
};

// Applies every item of a value message (type 7).
void ApplyValues(DemoState& state, const dev::ClientMessage& message, Reaction* reaction);

}  // namespace demo
