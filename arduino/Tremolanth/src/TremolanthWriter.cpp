#include "TremolanthWriter.h"

namespace {

// The marker and the two header words: the first 16 bytes of every frame.
const uint8_t kFrameStart[16] TRM_PROGMEM = {
    TRM_MARKER_BYTES,
    static_cast<uint8_t>(TRM_HEADER_WORD0), static_cast<uint8_t>(TRM_HEADER_WORD0 >> 8),
    static_cast<uint8_t>(TRM_HEADER_WORD0 >> 16), static_cast<uint8_t>(TRM_HEADER_WORD0 >> 24),
    static_cast<uint8_t>(TRM_HEADER_WORD1), static_cast<uint8_t>(TRM_HEADER_WORD1 >> 8),
    static_cast<uint8_t>(TRM_HEADER_WORD1 >> 16), static_cast<uint8_t>(TRM_HEADER_WORD1 >> 24)};

}  // namespace

uint8_t trmMarkerByte(uint8_t i) { return TRM_FLASH_BYTE(&kFrameStart[i & 7]); }

void TrmWriter::u8(uint8_t v) {
    if (put_) put_(context_, v);
    ++count_;
}

void TrmWriter::u16(uint16_t v) {
    u8(static_cast<uint8_t>(v));
    u8(static_cast<uint8_t>(v >> 8));
}

void TrmWriter::u32(uint32_t v) {
    u16(static_cast<uint16_t>(v));
    u16(static_cast<uint16_t>(v >> 16));
}

void TrmWriter::u32Size(size_t v) {
    // On an 8-bit board a size_t is 16 bits: its upper half is zero.
    if (sizeof v < 4) {
        u16(static_cast<uint16_t>(v));
        u16(0);
    } else {
        u32(static_cast<uint32_t>(v));
    }
}

void TrmWriter::bytes(const void* data, size_t size, TrmMemory memory) {
    const uint8_t* p = static_cast<const uint8_t*>(data);
    for (size_t i = 0; i < size; ++i) {
        u8(!p ? 0 : memory == kTrmFlash ? TRM_FLASH_BYTE(p + i) : p[i]);
    }
}

void TrmWriter::frameHead(uint16_t type, uint16_t flags) {
    bytes(kFrameStart, sizeof kFrameStart, kTrmFlash);
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

void TrmWriter::text(const char* p, TextEnd end) {
    if (p) {
        // UTF-8 walked as 8-bit characters.
        for (uint8_t lead; (lead = TRM_FLASH_BYTE(p)) != 0;) {
            ++p;
            uint8_t c = lead;
            if (lead >= 0x80) {
                const uint8_t next = TRM_FLASH_BYTE(p);
                c = static_cast<uint8_t>((lead & 0xFE) == 0xC2 && (next & 0xC0) == 0x80
                                             ? (lead << 6) | (next & 0x3F)
                                             : '?');
                // Its continuation bytes, and those of a longer or broken sequence.
                while ((TRM_FLASH_BYTE(p) & 0xC0) == 0x80) ++p;
            }
            u8(end == kItems && c == '|' ? 0 : c);
            if (end == kWide) u8(0);
        }
    }
    if (end >= kTerminated) u8(0);
}

void TrmWriter::textPart(TrmWriter& w, const void* what, uint8_t how) {
    w.text(static_cast<const char*>(what), static_cast<TextEnd>(how));
}

void TrmWriter::countedText(const char* utf8, TextEnd end) { counted(textPart, utf8, end); }

size_t TrmWriter::textLength(const char* utf8) { return measure(textPart, utf8, kPlain); }

size_t TrmWriter::measure(Part part, const void* what, uint8_t how) {
    const size_t start = count_;
    const TrmPutByte put = pause();
    part(*this, what, how);
    const size_t size = count_ - start;
    resume(put, start);
    return size;
}

void TrmWriter::counted(Part part, const void* what, uint8_t how) {
    u32Size(measure(part, what, how));
    part(*this, what, how);
}
