// The text of a date-time value by the control's template: tokens such as "%dd%" or "%HH%"
// are replaced by the locale's formatting of that picture, other characters are copied.
//
// Tokens, tried in this order at each position (longer forms before shorter ones):
//   %yyyy% %yy% %MMMM% %MMM% %MM% %M% %dddd% %ddd% %dd% %d%      (date)
//   %hh% %h% %HH% %H% %ss% %s% %mm% %m% %tt% %t%                  (time)
// The weekday tokens name the value's own day of the week, even when it disagrees with its
// date. A token whose text does not fit the room left expands to nothing.
#pragma once

#include "model/control_record.h"

#include <cstddef>
#include <string_view>

// Writes the expansion into out (room characters including the terminator, at most 1024
// used) and returns out.
char16_t* ExpandDateTimeTemplate(char16_t* out, std::size_t room, const DateTimeValue& value,
                                 std::u16string_view pattern);
