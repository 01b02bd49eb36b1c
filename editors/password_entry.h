// The password editor's rules: what activating a password row does, how long a password may
// be, and whether a change may be sent.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

inline constexpr std::uint32_t kPasswordShort = 0x4; // at most 16 characters
inline constexpr std::uint32_t kPasswordChangeable = 0x10000;

// 16 characters for a control with short passwords, else 33.
std::size_t PasswordLimit(std::uint32_t flags);
std::u16string CutPassword(std::u16string_view typed, std::uint32_t flags);

enum class PasswordAction {
    kLogIn,     // logged out: the entry dialog
    kLogOutNow, // logged in, no change allowed: log out without a dialog
    kChange,    // logged in and changeable: the change dialog (Log Out, Change)
};
PasswordAction PlanPasswordAction(std::uint8_t loggedIn, std::uint32_t flags);
