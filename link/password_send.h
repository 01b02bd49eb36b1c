// Sending a password: the texts are attached to the control's record only for the time the
// value message is being sent, so the client never keeps a password after it left.
//
// Results: 0 (also for an unknown id: nothing is sent), -5 when the control is no Password, or
// for a change whose new password is empty.
#pragma once

#include <cstdint>

std::int32_t SubmitPassword(std::uint32_t id, const char16_t* text);
std::int32_t ChangePassword(std::uint32_t id, const char16_t* oldText, const char16_t* newText);
// Logs out: submits the empty password.
std::int32_t LogOut(std::uint32_t id);
