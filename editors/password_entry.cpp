#include "editors/password_entry.h"

std::size_t PasswordLimit(std::uint32_t flags) {
    return (flags & kPasswordShort) ? 16 : 33;
}

std::u16string CutPassword(std::u16string_view typed, std::uint32_t flags) {
    return std::u16string(typed.substr(0, PasswordLimit(flags)));
}

PasswordAction PlanPasswordAction(std::uint8_t loggedIn, std::uint32_t flags) {
    if (loggedIn == 0) return PasswordAction::kLogIn;
    return (flags & kPasswordChangeable) ? PasswordAction::kChange : PasswordAction::kLogOutNow;
}
