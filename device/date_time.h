// The 8-byte date and time of the link: second, minute, hour, day, weekday (0 = Sunday), month,
// then a 16-bit year.
#pragma once

#include "device/out_bytes.h"

#include <cstdint>

namespace dev {

struct DateTime {
    std::int8_t second = 0;
    std::uint8_t minute = 0;
    std::uint8_t hour = 0;
    std::uint8_t day = 1;
    std::uint8_t weekday = 0;
    std::uint8_t month = 1;
    std::uint16_t year = 2000;
};

Bytes EncodeDateTime(const DateTime& value);
// False when fewer than 8 bytes are given.
bool DecodeDateTime(const std::uint8_t* data, std::size_t size, DateTime* out);

// 0 = Sunday, for a date of the Gregorian calendar.
std::uint8_t WeekdayOf(int year, int month, int day);

}  // namespace dev
