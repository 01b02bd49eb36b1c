// The little of the Arduino core the device library uses, for building it natively: Print and
// Stream as the core declares them, flash texts as plain memory.
#pragma once

#include <stddef.h>
#include <stdint.h>
#include <string.h>

class __FlashStringHelper;
#define F(text) (reinterpret_cast<const __FlashStringHelper*>(text))
#define PROGMEM

class Print {
public:
    virtual ~Print() = default;
    virtual size_t write(uint8_t byte) = 0;
    virtual size_t write(const uint8_t* data, size_t size) {
        size_t n = 0;
        while (size-- > 0) n += write(*data++);
        return n;
    }
};

class Stream : public Print {
public:
    virtual int available() = 0;
    virtual int read() = 0;
    virtual int peek() = 0;
};
