#include "TremolanthWriter.h"

#include <string.h>

namespace {

const uint8_t kMarker[TRM_MARKER_SIZE] TRM_PROGMEM = {TRM_MARKER_BYTES};

uint8_t readByte(const char* p, TrmMemory memory) {
    return memory == kTrmFlash ? TRM_FLASH_BYTE(p) : static_cast<uint8_t>(*p);
}

// Walks a UTF-8 text as 8-bit characters: returns the next one and moves p past it, 0 at the end.
uint8_t nextChar(const char*& p, TrmMemory memory) {
    uint8_t lead = readByte(p, memory);
    if (lead == 0) return 0;
    ++p;
    if (lead < 0x80) return lead;
    uint8_t result = '?';
    if ((lead == 0xC2 || lead == 0xC3) && (readByte(p, memory) & 0xC0) == 0x80) {
        result = static_cast<uint8_t>(((lead & 0x03) << 6) | (readByte(p, memory) & 0x3F));
        ++p;
    }
    // The rest of a longer or broken sequence goes with its '?'.
    while ((readByte(p, memory) & 0xC0) == 0x80) ++p;
    return result;
}

}  // namespace

uint8_t trmMarkerByte(uint8_t i) { return TRM_FLASH_BYTE(&kMarker[i & 7]); }

#if defined(__BYTE_ORDER__) && __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__
// The board keeps integers as the wire does: their bytes go out as they are, which an 8-bit
// processor does far more cheaply than shifting.
void TrmWriter::u16(uint16_t v) { bytes(reinterpret_cast<const uint8_t*>(&v), 2); }
void TrmWriter::u32(uint32_t v) { bytes(reinterpret_cast<const uint8_t*>(&v), 4); }
#else
void TrmWriter::u16(uint16_t v) {
    u8(static_cast<uint8_t>(v));
    u8(static_cast<uint8_t>(v >> 8));
}
void TrmWriter::u32(uint32_t v) {
    for (uint8_t i = 0; i < 4; ++i) u8(static_cast<uint8_t>(v >> (8 * i)));
}
#endif

void TrmWriter::bytes(const uint8_t* data, size_t size, TrmMemory memory) {
    if (!put_) {
        count_ += size;
        return;
    }
    for (size_t i = 0; i < size; ++i) u8(readByte(reinterpret_cast<const char*>(data + i), memory));
}

void TrmWriter::zeros(size_t size) {
    if (!put_) {
        count_ += size;
        return;
    }
    while (size-- > 0) u8(0);
}

void TrmWriter::frameHead(uint16_t type, uint16_t flags) {
    for (uint8_t i = 0; i < TRM_MARKER_SIZE; ++i) u8(trmMarkerByte(i));
    u32(TRM_HEADER_WORD0);
    u32(TRM_HEADER_WORD1);
    u16(type);
    u16(flags);
}

void TrmWriter::recordHead(uint16_t tag, uint32_t flags, uint32_t key) {
    u16(tag);
    u32(flags);
    u32(key);
}

void TrmWriter::layout(bool hidden, bool bringIntoView, uint8_t icon, bool hasBackground,
                       uint32_t background) {
    uint16_t word = 0;
    if (hidden) word |= TRM_LAYOUT_HIDDEN;
    if (bringIntoView) word |= TRM_LAYOUT_BRING_INTO_VIEW;
    if (hasBackground) word |= TRM_LAYOUT_BACKGROUND;
    u16(word);
    u8(icon);
    u8(0);
    if (hasBackground) u32(background);
}

void TrmWriter::dateTime(const uint8_t fields[6], uint16_t year) {
    for (uint8_t i = 0; i < 6; ++i) u8(fields[i]);
    u16(year);
}

void TrmWriter::text(const char* utf8, TrmMemory memory, bool terminate, char separator) {
    if (utf8) {
        for (uint8_t c; (c = nextChar(utf8, memory)) != 0;) {
            u8(separator != 0 && c == static_cast<uint8_t>(separator) ? 0 : c);
        }
    }
    if (terminate) u8(0);
}

void TrmWriter::countedText(const char* utf8, TrmMemory memory, bool terminate, char separator) {
    TrmWriter counter(0, 0);
    counter.text(utf8, memory, terminate, separator);
    u32(static_cast<uint32_t>(counter.count()));
    text(utf8, memory, terminate, separator);
}

size_t TrmWriter::textLength(const char* utf8, TrmMemory memory) {
    TrmWriter counter(0, 0);
    counter.text(utf8, memory, false);
    return counter.count();
}

void TrmWriter::countedUtf16(const char* ascii, TrmMemory memory) {
    u32(static_cast<uint32_t>(2 * textLength(ascii, memory)));
    if (!ascii) return;
    for (uint8_t c; (c = nextChar(ascii, memory)) != 0;) u16(c);
}
