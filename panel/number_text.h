// The text of a scaled number: value x 10^exponent printed in one of four styles and set into
// the control's template, whose first "%" and the character after it stand for the number.
//
//   style 1  "%lf", then trailing zeros and a trailing "." removed (1500 -> "1500", 0 -> "0")
//   style 2  "%.<decimals>lf"
//   style 3  "%.<decimals>le"  (exponent with at least two digits: 1.234e+04)
//   style 4  "%.<decimals>lg"
// Other styles are shown as style 1; negative decimals as if none were given (six).
// A template without "%" is shown whole in front of the number, with nothing after it.
//
// Both write at most room - 1 characters and a terminator into out (nothing when room is 0)
// and return out.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

// Display style of a number control from its flag bits 0x300000.
int NumberStyleFromFlags(std::uint32_t flags);

char16_t* FormatScaledNumber(char16_t* out, std::size_t room, std::int32_t value, int style,
                             std::u16string_view pattern, int decimals, int exponent,
                             bool minusSign);

char16_t* FormatNumberText(char16_t* out, std::size_t room, double value, int style,
                           std::u16string_view pattern, int decimals, bool minusSign);
