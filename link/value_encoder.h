// Value messages (type 7): every control whose send-pending mark is set, in store order.
#pragma once

#include "link/link_client.h"

#include <cstdint>

inline constexpr std::int32_t kImageNotPressable = 888;

// Sends one value message and clears the marks of the records sent: the message is made under
// the program lock and sent after it is released, within the time (a device that stops reading
// breaks the link). Returns 0, a send status, -5 (a record that cannot be sent) or 888 (an
// image without its press flag).
std::int32_t LinkSendPendingValues(unsigned timeoutMs = kSendTimeoutMs);
