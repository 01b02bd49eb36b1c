// Writing the bytes of the link one at a time: little-endian words, counted fields, frame
// heads, record heads, items, layout updates, date-times and 8-bit texts.
//
// A writer without a byte function only counts, and a writer can pause its byte function: a
// record's byte count is the count of a first, dry pass over the same code that then writes
// it, so nothing is ever buffered. Plain C++11 with no library beyond the C headers, so the
// board and the PC device library share it.
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

// A function the compiler keeps whole rather than copying into each caller.
#if defined(__GNUC__)
#define TRM_NOINLINE __attribute__((noinline))
#else
#define TRM_NOINLINE
#endif

// Where bytes live: on an AVR, flash is another address space read with its own instruction.
enum TrmMemory : uint8_t { kTrmRam = 0, kTrmFlash = 1 };

typedef void (*TrmPutByte)(void* context, uint8_t byte);

class TrmWriter {
public:
    // put null: count only.
    constexpr TrmWriter(TrmPutByte put, void* context) : put_(put), context_(context), count_(0) {}

    size_t count() const { return count_; }
    void* context() const { return context_; }
    // A dry run: until resume(), bytes are counted but not written. A byte count goes ahead
    // of what it counts this way, without a second writer.
    TrmPutByte pause() {
        const TrmPutByte put = put_;
        put_ = 0;
        return put;
    }
    // Writing again, the count back to what it was.
    void resume(TrmPutByte put, size_t count) {
        put_ = put;
        count_ = count;
    }
    // Something to write, given what and how: a text, a control's value.
    typedef void (*Part)(TrmWriter& w, const void* what, uint8_t how);
    // The bytes part would write, counted without writing them.
    TRM_NOINLINE size_t measure(Part part, const void* what, uint8_t how);
    // Their byte count as a 32-bit word, then the bytes.
    void counted(Part part, const void* what, uint8_t how);

    void u8(uint8_t v);
    void u16(uint16_t v);
    void u32(uint32_t v);
    // A 32-bit word whose value fits a size_t: counts and keys, without 32-bit arithmetic on
    // an 8-bit board.
    void u32Size(size_t v);
    // Null data: zeros.
    void bytes(const void* data, size_t size, TrmMemory memory = kTrmRam);
    void zeros(size_t size) { bytes(0, size); }

    // The 20-byte head of every frame.
    TRM_NOINLINE void frameHead(uint16_t type, uint16_t flags);
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

    // How text() writes a text: as it is, as UTF-16LE (ASCII only), with a terminator, or as
    // items each terminated.
    enum TextEnd : uint8_t { kPlain, kWide, kTerminated, kItems };
    // A UTF-8 text in flash (plain memory off the board) as 8-bit text: characters up to
    // U+00FF become one byte (the client's code page agrees with Latin-1 there), any other
    // character '?'. As kItems, each '|' ends an item: items one after another, each
    // terminated (list items, series names). Null writes nothing but the terminator.
    void text(const char* utf8, TextEnd end = kPlain);
    // The byte count of that text, then the text.
    void countedText(const char* utf8, TextEnd end = kPlain);
    // The 8-bit length of a text (what text() would write, without a terminator).
    TRM_NOINLINE size_t textLength(const char* utf8);
    // text() as a Part: what is the text, how its TextEnd.
    static void textPart(TrmWriter& w, const void* what, uint8_t how);

private:
    TrmPutByte put_;
    void* context_;
    size_t count_;  // 16 bits on an 8-bit board: a record there is far smaller
};

// The marker byte at position i (0 to 7).
uint8_t trmMarkerByte(uint8_t i);

#endif  // TREMOLANTH_WRITER_H
