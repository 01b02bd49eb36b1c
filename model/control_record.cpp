#include "model/control_record.h"

void TextBuffer::Resize(std::size_t bytes) {
    units_.resize((bytes + 1) / 2 + 1, u'\0');
    bytes_ = bytes;
    // Bytes past the new size inside the last unit, and the guard, are zero.
    if (bytes % 2 == 1) Data()[bytes] = 0;
    units_.back() = u'\0';
}

std::size_t TextBuffer::Length() const {
    std::size_t n = 0;
    const char16_t* p = Units();
    while (p[n] != u'\0') ++n;
    return n;
}
