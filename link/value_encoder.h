// Value messages (type 7): every control whose send-pending mark is set, in store order.
#pragma once

#include <cstdint>

inline constexpr std::int32_t kImageNotPressable = 888;

// Sends one value message under the lock and clears the marks of the records sent.
// Returns 0, a send status, -5 (a record that cannot be sent) or 888 (an image without its
// press flag).
std::int32_t LinkSendPendingValues();
