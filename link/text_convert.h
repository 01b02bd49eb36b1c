// Texts between the wire and the records: UTF-16LE bytes or 8-bit text in the system code page.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

// The bytes of a wire text as UTF-16: copied when utf16 (count/2 units), else converted from
// the code page, all count bytes (zero bytes inside stay, as separators of lists do).
std::u16string WireText(const std::uint8_t* data, std::size_t count, bool utf16);

// Converts 8-bit text up to its first zero (at most count bytes) into out, which holds
// outUnits units; returns the units written. Nothing past out is touched.
std::size_t CodePageTextInto(const std::uint8_t* data, std::size_t count, char16_t* out,
                             std::size_t outUnits);

// Converts k units into out (outSize bytes) for the wire. While the converter returns 122 it
// is retried with one unit less (the count is compared, not the error: a text that converts
// to exactly 122 bytes is cut too); when terminate is set, the text is cut at outSize - 1
// bytes and a zero is written at min(outSize - 1, k).
void ConvertToCodePage(const char16_t* source, std::size_t k, std::uint8_t* out,
                       std::size_t outSize, bool terminate = true);
