// Writing the bytes of the link one at a time: little-endian words, counted fields, frame
// heads, record heads, items, layout updates, date-times and 8-bit texts.
//
// A writer without a byte function only counts: a record's byte count is the count of a first
// pass over the same code that then writes it, so nothing is ever buffered. Plain C++11 with
// no library beyond the C headers, so the board and the PC device library share it.
#ifndef TREMOLANTH_WRITER_H
#define TREMOLANTH_WRITER_H

#include "TremolanthWire.h"

#include <stddef.h>
#include <stdint.h>

#ifdef __AVR__
#include <avr/pgmspace.h>
#define TRM_PROGMEM PROGMEM
#define TRM_FLASH_BYTE(p) pgm_read_byte(p)
#else
#define TRM_PROGMEM
#define TRM_FLASH_BYTE(p) (*reinterpret_cast<const uint8_t*>(p))
#endif

// Where a text lives: on an AVR, flash is another address space read with its own instruction.
enum TrmMemory : uint8_t { kTrmRam = 0, kTrmFlash = 1 };

typedef void (*TrmPutByte)(void* context, uint8_t byte);

class TrmWriter {
public:
    // put null: count only.
    TrmWriter(TrmPutByte put, void* context) : put_(put), context_(context), count_(0) {}

    size_t count() const { return count_; }
    bool counting() const { return put_ == 0; }

    void u8(uint8_t v) {
        if (put_) put_(context_, v);
        ++count_;
    }
    void u16(uint16_t v);
    void u32(uint32_t v);
    void bytes(const uint8_t* data, size_t size, TrmMemory memory = kTrmRam);
    void zeros(size_t size);

    // The 20-byte head of every frame.
    void frameHead(uint16_t type, uint16_t flags);
    // The common start of a record body: tag, flags, key.
    void recordHead(uint16_t tag, uint32_t flags, uint32_t key);
    // An item of a value or layout update: key and byte count; the data follows.
    void itemHead(uint32_t key, uint32_t size) {
        u32(key);
        u32(size);
    }
    // One settings record (type 19).
    void setting(uint32_t owner, uint32_t kind, uint32_t value) {
        u32(owner);
        u32(kind);
        u32(value);
    }
    // The data of a layout update item: hidden and bring-into-view bits, a Message's icon
    // (the icon's flag bits >> 16) and, with hasBackground, a colour 0x00BBGGRR.
    void layout(bool hidden, bool bringIntoView, uint8_t icon, bool hasBackground,
                uint32_t background);
    // Second, minute, hour, day, weekday (0 = Sunday), month, 16-bit year.
    void dateTime(const uint8_t fields[6], uint16_t year);

    // Attributes as counted values.
    void u32Attribute(uint32_t v) {
        u32(4);
        u32(v);
    }
    void u8Attribute(uint8_t v) {
        u32(1);
        u8(v);
    }

    // UTF-8 as 8-bit text: characters up to U+00FF become one byte (the client's code page
    // agrees with Latin-1 there), any other character '?'. With separator, each occurrence of
    // it ends an item: items one after another, each terminated (list items, series names).
    void text(const char* utf8, TrmMemory memory, bool terminate, char separator = 0);
    // The byte count of that text, then the text.
    void countedText(const char* utf8, TrmMemory memory, bool terminate, char separator = 0);
    // The 8-bit length of a text (what text() would write, without a terminator).
    static size_t textLength(const char* utf8, TrmMemory memory);
    // The text as UTF-16LE (the second identity text must be UTF-16), counted.
    void countedUtf16(const char* ascii, TrmMemory memory);

private:
    TrmPutByte put_;
    void* context_;
    size_t count_;  // 16 bits on an 8-bit board: a record there is far smaller
};

// The marker byte at position i (0 to 7).
uint8_t trmMarkerByte(uint8_t i);

#endif  // TREMOLANTH_WRITER_H
