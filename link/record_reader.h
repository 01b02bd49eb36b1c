// Reading one panel record body, already whole in memory: bounds-checked fields and the
// attribute block (count K, K letters, then K counted values; a later duplicate letter wins).
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

struct RecordBody {
    const std::uint8_t* data = nullptr;
    std::size_t size = 0;

    bool Has(std::size_t offset, std::size_t count) const {
        return offset <= size && count <= size - offset;
    }
    std::uint32_t Word(std::size_t offset) const;  // callers check Has(offset, 4)
    std::uint8_t Byte(std::size_t offset) const { return data[offset]; }
};

struct Attribute {
    char letter = 0;
    std::size_t offset = 0;  // of the value's bytes within the body
    std::size_t size = 0;
};

class AttributeBlock {
public:
    // Parses the block at offset. A body that ends exactly there has no attributes; a block
    // that runs past the body, or has more attributes than the ceiling, fails.
    bool Parse(const RecordBody& body, std::size_t offset);

    const Attribute* Find(char letter) const;  // the last with that letter, or null
    bool Has(char letter) const { return Find(letter) != nullptr; }
    // A text value, converted like the record's texts; empty when absent. Zero units stay
    // (list items and series names are zero-separated).
    std::u16string Text(char letter, bool utf16) const;
    // The same, ending at its first zero: a label, a format or a caption is one text, and a
    // device that sends its terminator along must not hide the rest of the row behind it.
    std::u16string SingleText(char letter, bool utf16) const;
    // A number copied with the field's width from the start of the value (a shorter value
    // fills the low bytes); the fallback when absent.
    std::uint32_t Word(char letter, std::uint32_t fallback) const;
    std::uint8_t Byte(char letter, std::uint8_t fallback) const;

private:
    const RecordBody* body_ = nullptr;
    std::vector<Attribute> attributes_;
};
