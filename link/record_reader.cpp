#include "link/record_reader.h"

#include "link/bytes.h"
#include "link/limits.h"
#include "link/text_convert.h"

#include <algorithm>
#include <cstring>

std::uint32_t RecordBody::Word(std::size_t offset) const { return bytes::Get32(data + offset); }

bool AttributeBlock::Parse(const RecordBody& body, std::size_t offset) {
    body_ = &body;
    attributes_.clear();
    if (offset == body.size) return true;
    if (!body.Has(offset, 4)) return false;
    std::uint32_t count = body.Word(offset);
    if (count > limits::kMaxAttributes || !body.Has(offset + 4, count)) return false;
    std::size_t letters = offset + 4;
    std::size_t at = letters + count;
    attributes_.reserve(count);
    for (std::uint32_t i = 0; i < count; ++i) {
        if (!body.Has(at, 4)) return false;
        std::uint32_t size = body.Word(at);
        if (!body.Has(at + 4, size)) return false;
        attributes_.push_back({static_cast<char>(body.Byte(letters + i)), at + 4, size});
        at += 4 + static_cast<std::size_t>(size);
    }
    return true;
}

const Attribute* AttributeBlock::Find(char letter) const {
    for (auto it = attributes_.rbegin(); it != attributes_.rend(); ++it) {
        if (it->letter == letter) return &*it;
    }
    return nullptr;
}

std::u16string AttributeBlock::Text(char letter, bool utf16) const {
    const Attribute* a = Find(letter);
    if (!a) return {};
    return WireText(body_->data + a->offset, a->size, utf16);
}

std::u16string AttributeBlock::SingleText(char letter, bool utf16) const {
    std::u16string text = Text(letter, utf16);
    text.resize(std::min(text.size(), text.find(u'\0')));
    return text;
}

std::uint32_t AttributeBlock::Word(char letter, std::uint32_t fallback) const {
    const Attribute* a = Find(letter);
    if (!a) return fallback;
    std::uint8_t word[4] = {};
    std::memcpy(word, body_->data + a->offset, std::min<std::size_t>(a->size, 4));
    return bytes::Get32(word);
}

std::uint8_t AttributeBlock::Byte(char letter, std::uint8_t fallback) const {
    const Attribute* a = Find(letter);
    if (!a) return fallback;
    return a->size > 0 ? body_->data[a->offset] : 0;
}
