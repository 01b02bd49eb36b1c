#include "device/date_time.h"

namespace dev {

Bytes EncodeDateTime(const DateTime& value) {
    const std::uint8_t fields[6] = {static_cast<std::uint8_t>(value.second), value.minute,
                                    value.hour, value.day, value.weekday, value.month};
    Bytes out;
    WriterInto(out).dateTime(fields, value.year);
    return out;
}

bool DecodeDateTime(const std::uint8_t* data, std::size_t size, DateTime* out) {
    if (size < 8) return false;
    out->second = static_cast<std::int8_t>(data[0]);
    out->minute = data[1];
    out->hour = data[2];
    out->day = data[3];
    out->weekday = data[4];
    out->month = data[5];
    out->year = Read16(data + 6);
    return true;
}

std::uint8_t WeekdayOf(int year, int month, int day) {
    // Sakamoto's method.
    static const int offsets[12] = {0, 3, 2, 5, 0, 3, 5, 1, 4, 6, 2, 4};
    if (month < 1 || month > 12) return 0;
    if (month < 3) year -= 1;
    int w = (year + year / 4 - year / 100 + year / 400 + offsets[month - 1] + day) % 7;
    return static_cast<std::uint8_t>(w < 0 ? w + 7 : w);
}

}  // namespace dev
