#include "Tremolanth.h"

#include <string.h>

namespace {

// The client's control types.
enum Type : uint8_t {
    kTypeText = 1,
    kTypeButton = 2,
    kTypeCheckBox = 3,
    kTypeSection = 4,
    kTypeDateTime = 5,
    kTypeNumber = 6,
    kTypeChart = 7,
    kTypePassword = 8,
    kTypeList = 9,
    kTypeMessage = 10,
    kTypeBlob = 11,
    kTypeFiles = 12,
    kTypeImage = 14,
};

// Messages go out as hidden slots ahead of the controls, one for each row count the client
// can show: it pops up the Message standing at the position equal to its row count.
const uint16_t kSlotKeys = 0x100;
const uint8_t kPasswordField = TRM_PASSWORD_FIELD;
const uint8_t kPasswordItem = 2 * TRM_PASSWORD_FIELD;
const uint8_t kStyleTable = 3;

// Password item bits.
const uint8_t kFirstEmpty = 0x01;
const uint8_t kFirstGood = 0x02;
const uint8_t kOverlong = 0x04;

void putStream(void* stream, uint8_t byte) { static_cast<Stream*>(stream)->write(byte); }

const char* flash(TrmText text) { return reinterpret_cast<const char*>(text); }

uint32_t le32(const uint8_t* p) {
    return static_cast<uint32_t>(p[0]) | (static_cast<uint32_t>(p[1]) << 8) |
           (static_cast<uint32_t>(p[2]) << 16) | (static_cast<uint32_t>(p[3]) << 24);
}

// Items separated by '|' in a flash text.
uint32_t countItems(TrmText items) {
    const char* p = flash(items);
    if (!p || TRM_FLASH_BYTE(p) == 0) return 0;
    uint32_t n = 1;
    for (uint8_t c; (c = TRM_FLASH_BYTE(p)) != 0; ++p) n += c == '|' ? 1 : 0;
    return n;
}

// The bytes a value item of the control carries, and what it takes from the client.
uint16_t valueSize(const TrmControl& c) {
    switch (c.type) {
    case kTypeText:
    case kTypeBlob: return c.size;
    case kTypeDateTime: return 8;
    case kTypeNumber:
    case kTypeList: return 4;
    case kTypePassword: return kPasswordItem;
    case kTypeFiles:
    case kTypeImage: return 0;
    default: return 1;
    }
}

bool ownsGroup(const TrmControl& c) { return c.type == kTypeSection || c.type == kTypePassword; }

}  // namespace

// ---- The panel as the sketch describes it --------------------------------------------------

void TrmPanel::visit(TrmControl& c) {
    if (c.type == kTypeMessage) {
        if (pass_ == kCount) {
            ++messages_;
            const size_t bytes = TrmWriter::textLength(flash(c.label), kTrmFlash) + 1;
            if (bytes > messageBytes_) messageBytes_ = static_cast<uint16_t>(bytes);
        } else if (pass_ == kFind && key_ == c.key) {
            *found_ = c;
        }
        return;
    }
    if (index_ >= TRM_MAX_CONTROLS) return;  // beyond what the hidden bits can hold
    c.index = index_++;
    if (ownsGroup(c)) {
        group_ = static_cast<uint8_t>(c.index + 1);
        groupOpen_ = *static_cast<bool*>(c.var);
        c.group = 0;
    } else {
        c.group = group_;
    }
    if (device_.hiddenBit(c.index) || (c.group != 0 && !groupOpen_)) c.flags |= TRM_HIDDEN;

    switch (pass_) {
    case kCount:
        ++controls_;
        if (!(c.flags & TRM_HIDDEN)) ++visible_;
        settings_ = static_cast<uint16_t>(settings_ + (c.type == kTypeChart && c.width & 0x80 ? 3 : 2));
        break;
    case kSettings: {
        const uint32_t title = static_cast<uint32_t>(TrmWriter::textLength(flash(c.label), kTrmFlash));
        writer_->setting(c.key, TRM_SETTING_TITLE_LENGTH, title);
        // Types without a value text of their own would repeat the title after it.
        const bool valueText = c.type == kTypeText || c.type == kTypeDateTime || c.type == kTypeNumber ||
                               c.type == kTypeList;
        writer_->setting(c.key, TRM_SETTING_VALUE_SHOW,
                         valueText ? TRM_SHOW_COLON_SPACE : TRM_SHOW_NONE);
        if (c.type == kTypeChart && c.width & 0x80) writer_->setting(c.key, TRM_SETTING_STYLE, kStyleTable);
        break;
    }
    case kRecords: {
        TrmWriter counter(0, 0);
        device_.writeRecord(counter, c);
        writer_->u32(static_cast<uint32_t>(counter.count()));
        device_.writeRecord(*writer_, c);
        break;
    }
    case kFind:
        if (key_ == c.key) *found_ = c;
        break;
    case kItems:
        if (layout_ ? (group_of_ != 0 ? c.group == group_of_ : c.key == key_)
                    : (var_ != 0 ? c.var == var_ : c.key == key_)) {
            TrmWriter counter(0, 0);
            if (layout_) {
                writer_->itemHead(c.key, 4);
                writer_->layout((c.flags & TRM_HIDDEN) != 0, false, 0, false, 0);
            } else if (device_.writeValue(counter, c)) {
                writer_->itemHead(c.key, static_cast<uint32_t>(counter.count()));
                device_.writeValue(*writer_, c);
            } else {
                break;
            }
            ++items_;
        }
        break;
    }
}

void TrmPanel::endGroup() { group_ = 0; }

namespace {

TrmControl make(uint8_t type, uint8_t key, TrmText label, uint32_t flags, void* var,
                uint16_t size) {
    TrmControl c;
    memset(&c, 0, sizeof c);
    c.type = type;
    c.key = key;
    c.label = label;
    c.flags = flags;
    c.var = var;
    c.size = size;
    return c;
}

}  // namespace

void TrmPanel::text(uint8_t key, TrmText label, char* value, uint8_t size, uint32_t flags) {
    TrmControl c = make(kTypeText, key, label, flags, value, size);
    visit(c);
}

void TrmPanel::button(uint8_t key, TrmText label) {
    TrmControl c = make(kTypeButton, key, label, 0, 0, 1);
    visit(c);
}

void TrmPanel::checkBox(uint8_t key, TrmText label, bool& value) {
    TrmControl c = make(kTypeCheckBox, key, label, 0, &value, 1);
    visit(c);
}

void TrmPanel::radio(uint8_t key, TrmText label, uint8_t& choice, uint8_t value) {
    TrmControl c = make(kTypeCheckBox, key, label, 0, &choice, 1);
    c.low = value;
    c.width = 1;  // a radio box
    visit(c);
}

void TrmPanel::section(uint8_t key, TrmText label, bool& open) {
    TrmControl c = make(kTypeSection, key, label, 0, &open, 1);
    visit(c);
}

void TrmPanel::dateTime(uint8_t key, TrmText label, TrmDateTime& value, TrmText format,
                        uint32_t flags) {
    TrmControl c = make(kTypeDateTime, key, label, flags, &value, 8);
    c.text1 = format;
    visit(c);
}

void TrmPanel::number(uint8_t key, TrmText label, int32_t& value, int32_t minimum,
                      int32_t maximum, TrmText format, int8_t exponent) {
    TrmControl c = make(kTypeNumber, key, label,
                        TRM_EDITABLE | TRM_MINIMUM_APPLIES | TRM_MAXIMUM_APPLIES, &value, 4);
    c.text1 = format;
    c.low = minimum;
    c.high = maximum;
    c.exponent = exponent;
    // Tenths show one decimal, hundredths two: the digits a fraction needs, zeros kept.
    if (exponent < 0) c.flags |= TRM_NUMBER_FIXED;
    visit(c);
}

void TrmPanel::number(uint8_t key, TrmText label, int32_t& value, TrmText format,
                      int8_t exponent) {
    TrmControl c = make(kTypeNumber, key, label, exponent < 0 ? TRM_NUMBER_FIXED : 0, &value, 4);
    c.text1 = format;
    c.exponent = exponent;
    visit(c);
}

void TrmPanel::ringControl(uint8_t key, TrmText label, TrmRingState& ring, const void* values,
                           const void* samples, uint8_t width, uint8_t series, uint8_t rows,
                           TrmText names, TrmText units, int8_t exponent, bool table) {
    const uint32_t widthBits = width == 1 ? TRM_DATA_WIDTH8 : width == 2 ? TRM_DATA_WIDTH16 : 0;
    uint32_t flags = widthBits;
    // Samples share the values' width; the sample width bits sit two places lower.
    if (samples) flags |= TRM_SAMPLES_NUMERIC | (widthBits >> 2);
    if (exponent < 0) flags |= (TRM_NUMBER_FIXED >> 20) << TRM_DATA_STYLE_SHIFT;
    TrmControl c = make(kTypeChart, key, label, flags, &ring, rows);
    c.data = values;
    c.extra = samples;
    c.text1 = names;
    c.text2 = units;
    c.low = series;
    c.exponent = exponent;
    c.width = static_cast<uint8_t>(width | (table ? 0x80 : 0));
    visit(c);
}

void TrmPanel::password(uint8_t key, TrmText label, bool& loggedIn, TrmPasswordCheck check) {
    TrmControl c = make(kTypePassword, key, label, TRM_EDITABLE, &loggedIn, 1);
    c.extra = reinterpret_cast<const void*>(check);
    visit(c);
}

void TrmPanel::list(uint8_t key, TrmText label, TrmText items, uint8_t& selected) {
    TrmControl c = make(kTypeList, key, label, 0, &selected, 4);
    c.text1 = items;
    c.high = static_cast<int32_t>(countItems(items));
    visit(c);
}

void TrmPanel::message(uint8_t key, TrmText text, uint32_t icon) {
    TrmControl c = make(kTypeMessage, key, text, icon, 0, 0);
    visit(c);
}

void TrmPanel::blob(uint8_t key, TrmText label, uint8_t* data, uint16_t size, uint32_t flags) {
    TrmControl c = make(kTypeBlob, key, label, flags, data, size);
    visit(c);
}

void TrmPanel::image(uint8_t key, TrmText label, const uint8_t* data, uint16_t size,
                     bool pressable) {
    TrmControl c = make(kTypeImage, key, label, pressable ? TRM_EDITABLE : 0, 0, size);
    c.data = data;
    visit(c);
}

void TrmPanel::files(uint8_t key, TrmText label, TrmText name, const uint8_t* content,
                     uint16_t size) {
    TrmControl c = make(kTypeFiles, key, label, TRM_FOR_BROWSER, 0, size);
    c.data = content;
    c.text1 = name;
    visit(c);
}

// ---- What the device sends -----------------------------------------------------------------

namespace {

const char kServerText[] TRM_PROGMEM = "Tremolanth device library 1.0";
const char kUntitled[] TRM_PROGMEM = "Arduino";

void label(TrmWriter& w, const TrmControl& c) { w.countedText(flash(c.label), kTrmFlash, false); }

// The attribute block of a record whose only attribute is its label.
void labelOnly(TrmWriter& w, const TrmControl& c) {
    w.u32(1);
    w.u8('Z');
    label(w, c);
}

uint16_t textLength(const TrmControl& c) {
    const char* text = static_cast<const char*>(c.var);
    uint16_t n = 0;
    while (n + 1 < c.size && text[n] != 0) ++n;
    return n;
}

// The data block of a chart: the values series by series, the samples, the row counter.
void chartBlock(TrmWriter& w, const TrmControl& c) {
    const TrmRingState& ring = *static_cast<const TrmRingState*>(c.var);
    const uint8_t width = c.width & 0x7F;
    const uint32_t rowBytes = static_cast<uint32_t>(c.size) * width;
    w.bytes(static_cast<const uint8_t*>(c.data), rowBytes * static_cast<uint32_t>(c.low));
    if (c.extra) w.bytes(static_cast<const uint8_t*>(c.extra), rowBytes);
    // Rows filled while the ring has not wrapped; after that minus the oldest row's index.
    int32_t counter = ring.full ? (ring.next == 0 ? c.size : -static_cast<int32_t>(ring.next))
                                : ring.next;
    w.u32(static_cast<uint32_t>(counter));
}

uint32_t chartBlockSize(const TrmControl& c) {
    TrmWriter counter(0, 0);
    chartBlock(counter, c);
    return static_cast<uint32_t>(counter.count());
}

}  // namespace

void Tremolanth::writeRecord(TrmWriter& w, const TrmControl& c) {
    static const uint8_t kTags[] TRM_PROGMEM = {
        0, TRM_TAG_TEXT, TRM_TAG_BUTTON, TRM_TAG_CHECK_BOX, TRM_TAG_SECTION, TRM_TAG_DATE_TIME,
        TRM_TAG_NUMBER, TRM_TAG_CHART, TRM_TAG_PASSWORD, TRM_TAG_LIST, TRM_TAG_MESSAGE,
        TRM_TAG_BLOB, TRM_TAG_FILES, 0, TRM_TAG_IMAGE};
    w.recordHead(TRM_FLASH_BYTE(&kTags[c.type]), c.flags, c.key);
    switch (c.type) {
    case kTypeText: {
        const uint16_t n = textLength(c);
        w.u32(n + 1u);
        w.bytes(static_cast<const uint8_t*>(c.var), n);
        w.u8(0);
        w.u32(2);
        w.u8('Z');
        w.u8('m');
        label(w, c);
        w.u32Attribute(c.size);
        break;
    }
    case kTypeButton:
    case kTypeCheckBox:
    case kTypeSection:
    case kTypePassword:
        w.u32(1);
        writeValue(w, c);
        if (c.type == kTypeCheckBox && c.width) {
            // Boxes bound to one variable form a radio group, numbered by that variable.
            w.u32(2);
            w.u8('Z');
            w.u8('r');
            label(w, c);
            w.u32Attribute(static_cast<uint32_t>(reinterpret_cast<uintptr_t>(c.var)) | 0x80000000UL);
        } else {
            labelOnly(w, c);
        }
        break;
    case kTypeDateTime:
        w.u32(8);
        writeValue(w, c);
        w.u32(2);
        w.u8('Z');
        w.u8('f');
        label(w, c);
        w.countedText(flash(c.text1), kTrmFlash, false);
        break;
    case kTypeNumber: {
        const bool limits = (c.flags & TRM_MINIMUM_APPLIES) != 0;
        w.u32(4);
        writeValue(w, c);
        w.u32(limits ? 6 : 4);
        w.u8('Z');
        w.u8('f');
        w.u8('d');
        w.u8('m');
        if (limits) {
            w.u8('n');
            w.u8('x');
        }
        label(w, c);
        w.countedText(c.text1 ? flash(c.text1) : "%f", c.text1 ? kTrmFlash : kTrmRam, false);
        w.u8Attribute(static_cast<uint8_t>(c.exponent < 0 ? -c.exponent : 0));
        w.u8Attribute(static_cast<uint8_t>(c.exponent));
        if (limits) {
            w.u32Attribute(static_cast<uint32_t>(c.low));
            w.u32Attribute(static_cast<uint32_t>(c.high));
        }
        break;
    }
    case kTypeChart:
        w.u32(chartBlockSize(c));
        chartBlock(w, c);
        w.u32(7);
        w.u8('Z');
        w.u8('n');
        w.u8('N');
        w.u8('A');
        w.u8('F');
        w.u8('D');
        w.u8('M');
        label(w, c);
        w.u32Attribute(c.size);
        w.u32Attribute(static_cast<uint32_t>(c.low));
        w.countedText(flash(c.text1), kTrmFlash, true, '|');
        w.countedText(c.text2 ? flash(c.text2) : "%f", c.text2 ? kTrmFlash : kTrmRam, false);
        w.u8Attribute(static_cast<uint8_t>(c.exponent < 0 ? -c.exponent : 0));
        w.u8Attribute(static_cast<uint8_t>(c.exponent));
        break;
    case kTypeList:
        w.u32(4);
        writeValue(w, c);
        w.u32(3);
        w.u8('Z');
        w.u8('I');
        w.u8('n');
        label(w, c);
        w.countedText(flash(c.text1), kTrmFlash, true, '|');
        w.u32Attribute(static_cast<uint32_t>(c.high));
        break;
    case kTypeBlob:
        w.u32(c.size);
        writeValue(w, c);
        labelOnly(w, c);
        break;
    case kTypeFiles:
        w.u32(0);
        labelOnly(w, c);
        break;
    case kTypeImage:
        w.u32(c.size);
        w.bytes(static_cast<const uint8_t*>(c.data), c.size, kTrmFlash);
        labelOnly(w, c);
        break;
    }
}

bool Tremolanth::writeValue(TrmWriter& w, const TrmControl& c) {
    switch (c.type) {
    case kTypeText: {
        const uint16_t n = textLength(c);
        w.bytes(static_cast<const uint8_t*>(c.var), n);
        w.zeros(c.size - n);
        return true;
    }
    case kTypeButton: w.u8(0); return true;
    case kTypeCheckBox: {
        const bool on = c.width ? *static_cast<uint8_t*>(c.var) == c.low : *static_cast<bool*>(c.var);
        w.u8(on ? 255 : 0);
        return true;
    }
    case kTypeSection: w.u8(*static_cast<bool*>(c.var) ? 255 : 0); return true;
    case kTypePassword: w.u8(*static_cast<bool*>(c.var) ? 1 : 0); return true;
    case kTypeDateTime: {
        const TrmDateTime& t = *static_cast<const TrmDateTime*>(c.var);
        const uint8_t fields[6] = {t.second, t.minute, t.hour, t.day, t.weekday, t.month};
        w.dateTime(fields, t.year);
        return true;
    }
    case kTypeNumber: w.u32(static_cast<uint32_t>(*static_cast<int32_t*>(c.var))); return true;
    case kTypeList: w.u32(*static_cast<uint8_t*>(c.var)); return true;
    case kTypeChart: chartBlock(w, c); return true;
    case kTypeBlob: w.bytes(static_cast<const uint8_t*>(c.var), c.size); return true;
    default: return false;  // files and images: the client takes no value for them
    }
}

bool Tremolanth::find(uint16_t key, TrmControl* out) {
    out->type = 0;
    if (key == 0 || key > 0xFF) return false;
    TrmPanel panel(*this, TrmPanel::kFind);
    panel.key_ = key;
    panel.found_ = out;
    run(panel);
    return out->type != 0;
}

bool Tremolanth::hiddenBit(uint8_t index) const {
    return (hidden_[index >> 3] & (1u << (index & 7))) != 0;
}

void Tremolanth::setHiddenBit(uint8_t index, bool hidden) {
    const uint8_t bit = static_cast<uint8_t>(1u << (index & 7));
    if (hidden) {
        hidden_[index >> 3] |= bit;
    } else {
        hidden_[index >> 3] &= static_cast<uint8_t>(~bit);
    }
}

void Tremolanth::sendPanel() {
    TrmPanel count(*this, TrmPanel::kCount);
    run(count);
    TrmWriter w(putStream, &stream_);

    w.frameHead(TRM_IN_IDENTITY, 0);
    w.countedText(count.title_ ? flash(count.title_) : kUntitled, kTrmFlash, false);
    w.countedUtf16(kServerText, kTrmFlash);

    // Rows show each title whole, and the value after it where the control has one.
    w.frameHead(TRM_IN_SETTINGS, 0);
    w.u32(count.settings_);
    TrmPanel settings(*this, TrmPanel::kSettings);
    settings.writer_ = &w;
    run(settings);

    const uint8_t slots = count.messages_ ? static_cast<uint8_t>(count.controls_ + 1) : 0;
    w.frameHead(TRM_IN_PANEL, 0);
    w.u32(static_cast<uint32_t>(slots) + count.controls_);
    for (uint8_t i = 0; i < slots; ++i) {
        TrmWriter counter(0, 0);
        for (TrmWriter* out = &counter;; out = &w) {
            if (out == &w) w.u32(static_cast<uint32_t>(counter.count()));
            out->recordHead(TRM_TAG_MESSAGE, TRM_HIDDEN, kSlotKeys + i);
            out->u32(0);
            out->u32(1);
            out->u8('m');
            out->u32Attribute(count.messageBytes_);
            if (out == &w) break;
        }
    }
    TrmPanel records(*this, TrmPanel::kRecords);
    records.writer_ = &w;
    run(records);
    connected_ = true;
}

void Tremolanth::sendItems(uint8_t type, uint8_t key, const void* var, uint8_t group,
                           bool layout) {
    // A first pass counts the items, the second writes them behind their count.
    TrmWriter counter(0, 0);
    TrmWriter w(putStream, &stream_);
    uint32_t items = 0;
    for (TrmWriter* out = &counter;; out = &w) {
        TrmPanel panel(*this, TrmPanel::kItems);
        panel.key_ = key;
        panel.var_ = var;
        panel.group_of_ = group;
        panel.layout_ = layout;
        panel.writer_ = out;
        if (out == &w) {
            w.frameHead(type, 0);
            w.u32(items);
        }
        run(panel);
        if (out == &w || panel.items_ == 0) return;
        items = panel.items_;
    }
}

void Tremolanth::send(uint8_t key) {
    TrmControl c;
    if (!connected_ || !find(key, &c)) return;
    const bool radio = c.type == kTypeCheckBox && c.width;
    sendItems(TRM_IN_VALUES, key, radio ? c.var : 0, 0, false);
    if (ownsGroup(c)) sendItems(TRM_IN_LAYOUT, 0, 0, static_cast<uint8_t>(c.index + 1), true);
}

void Tremolanth::hide(uint8_t key, bool hidden) {
    TrmControl c;
    if (!find(key, &c) || c.type == kTypeMessage) return;
    setHiddenBit(c.index, hidden);
    if (connected_) sendItems(TRM_IN_LAYOUT, key, 0, 0, true);
}

void Tremolanth::popup(uint8_t key) {
    TrmControl c;
    if (!connected_ || !find(key, &c) || c.type != kTypeMessage) return;
    TrmPanel count(*this, TrmPanel::kCount);
    run(count);
    const uint16_t slot = static_cast<uint16_t>(kSlotKeys + count.visible_);
    const uint16_t size = count.messageBytes_;
    TrmWriter w(putStream, &stream_);
    // The text into the slot at the client's row count, then that slot shown on its own.
    w.frameHead(TRM_IN_VALUES, 0);
    w.u32(1);
    w.itemHead(slot, size);
    const size_t length = TrmWriter::textLength(flash(c.label), kTrmFlash);
    w.text(flash(c.label), kTrmFlash, false);
    w.zeros(size - length);
    w.frameHead(TRM_IN_LAYOUT, 0);
    w.u32(1);
    w.itemHead(slot, 4);
    w.layout(false, false, static_cast<uint8_t>((c.flags & TRM_ICON_MASK) >> 16), false, 0);
    lastPopup_ = key;
}

void Tremolanth::reload() {
    if (!connected_) return;
    TrmWriter w(putStream, &stream_);
    w.frameHead(TRM_IN_RELOAD, 0);
}

void Tremolanth::end() {
    TrmWriter w(putStream, &stream_);
    w.frameHead(TRM_IN_SESSION_END, 0);
    connected_ = false;
}

TrmError Tremolanth::error() {
    const TrmError e = error_;
    error_ = kTrmErrorNone;
    return e;
}

void Tremolanth::sendFile(const TrmControl& c) {
    TrmWriter w(putStream, &stream_);
    w.frameHead(TRM_IN_FILES, 0);
    w.u32(c.key);
    w.u32(1);
    w.countedText(flash(c.text1), kTrmFlash, true);
    w.u32(c.size);
    w.bytes(static_cast<const uint8_t*>(c.data), c.size, kTrmFlash);
}

// ---- What the client sends, byte by byte ---------------------------------------------------

uint8_t Tremolanth::poll() {
    // Only what has arrived: loop() is never held waiting for the client.
    for (int n = stream_.available(); n > 0; --n) {
        const int b = stream_.read();
        if (b < 0) break;
        const uint8_t key = feed(static_cast<uint8_t>(b));
        if (key != 0) return key;
    }
    return 0;
}

uint8_t Tremolanth::feed(uint8_t b) {
    // A marker starts a frame wherever it stands: a message cut short, or a client that
    // vanished mid-frame, leaves the reader ready for the next one.
    if (b == trmMarkerByte(matched_)) {
        if (++matched_ == TRM_MARKER_SIZE) {
            matched_ = 0;
            if (state_ != kHunt && !(state_ == kItemHead && items_ == 0)) error_ = kTrmErrorCut;
            state_ = kHead;
            at_ = 0;
            blobKey_ = 0;
            mode_ = kModeSkip;
            return 0;
        }
    } else {
        matched_ = b == trmMarkerByte(0) ? 1 : 0;
    }

    switch (state_) {
    case kHunt: return 0;
    case kHead:
        // Two header words, then the type; the flags are not read.
        if (at_ == 8) type_ = b;
        if (at_ == 9 && b != 0) type_ = 0xFF;
        if (++at_ < 12) return 0;
        state_ = kHunt;
        switch (type_) {
        case TRM_OUT_PANEL_REQUEST: sendPanel(); break;
        case TRM_OUT_GOODBYE: connected_ = false; break;
        case TRM_OUT_PING: {
            TrmWriter w(putStream, &stream_);
            w.frameHead(TRM_IN_PING_REPLY, 0);
            break;
        }
        case TRM_OUT_VALUES:
            state_ = kCount;
            at_ = 0;
            acc_ = 0;
            accHigh_ = false;
            break;
        case TRM_OUT_PING_REPLY:
        case TRM_OUT_ACK:
        case TRM_OUT_DEFAULT_LAYOUT: break;
        default: error_ = kTrmErrorUnknownType; break;
        }
        return 0;
    case kCount:
        accumulate(b);
        if (at_ < 4) return 0;
        items_ = accHigh_ ? 0xFFFF : acc_;  // more than that never fits a panel
        nextItem();
        return 0;
    case kItemHead:
        accumulate(b);
        if (at_ == 4) {
            itemKey_ = accHigh_ ? 0xFFFF : acc_;
            acc_ = 0;
            accHigh_ = false;
        }
        if (at_ < 8) return 0;
        // Every Blob item is followed by an empty one of the same key, outside the count.
        if (blobKey_ != 0) {
            const bool trailer = itemKey_ == blobKey_ && acc_ == 0 && !accHigh_;
            blobKey_ = 0;
            if (trailer) {
                nextItem();
                return 0;
            }
        }
        if (items_ == 0) {
            state_ = kHunt;
            return 0;
        }
        --items_;
        if (accHigh_) {
            // No control holds that much: the rest of the message is dropped.
            error_ = kTrmErrorItemSize;
            state_ = kHunt;
            return 0;
        }
        startItem(itemKey_, acc_);
        if (left_ == 0) return finishItem();
        state_ = kItemData;
        return 0;
    case kItemData:
        itemByte(b);
        if (--left_ != 0) return 0;
        return finishItem();
    }
    return 0;
}

void Tremolanth::accumulate(uint8_t b) {
    // Little-endian words, of which only the low 16 bits matter on the board.
    if (at_ & 2) {
        if (b != 0) accHigh_ = true;
    } else {
        acc_ = static_cast<uint16_t>(acc_ | (at_ & 1 ? b << 8 : b));
    }
    ++at_;
}

void Tremolanth::nextItem() {
    at_ = 0;
    acc_ = 0;
    accHigh_ = false;
    state_ = items_ == 0 && blobKey_ == 0 ? kHunt : kItemHead;
}

void Tremolanth::startItem(uint16_t key, uint16_t size) {
    mode_ = kModeSkip;
    left_ = size;
    pos_ = 0;
    password_ = 0;
    memset(scratch_, 0, sizeof scratch_);
    TrmControl c;
    if (key >= kSlotKeys && key < kSlotKeys + 0x100) {
        mode_ = kModeScratch;  // a Message's answer
        return;
    }
    if (!find(key, &c) || c.type == kTypeMessage) {
        error_ = kTrmErrorUnknownKey;
        return;
    }
    if (c.type == kTypeBlob) blobKey_ = c.key;
    // Never more than the control holds, nor a part of it: anything else is skipped.
    if (size != valueSize(c) || c.type == kTypeChart || ((c.type == kTypeText || c.type == kTypeBlob) && c.size == 0)) {
        error_ = kTrmErrorItemSize;
        return;
    }
    switch (c.type) {
    case kTypeText:
        dest_ = static_cast<uint8_t*>(c.var);
        capacity_ = static_cast<uint16_t>(c.size - 1);  // the terminator stays
        dest_[capacity_] = 0;
        mode_ = kModeDirect;
        break;
    case kTypeBlob:
        dest_ = static_cast<uint8_t*>(c.var);
        capacity_ = c.size;
        mode_ = kModeDirect;
        break;
    case kTypePassword: mode_ = kModePassword; break;
    default: mode_ = kModeScratch; break;  // applied whole when the item is complete
    }
}

void Tremolanth::itemByte(uint8_t b) {
    switch (mode_) {
    case kModeDirect:
        if (pos_ < capacity_) dest_[pos_] = b;
        break;
    case kModeScratch:
        if (pos_ < sizeof scratch_) scratch_[pos_] = b;
        break;
    case kModePassword: {
        const uint8_t at = static_cast<uint8_t>(pos_ < kPasswordField ? pos_ : pos_ - kPasswordField);
        if (at < TRM_PASSWORD_CHARS) {
            scratch_[at] = b;
        } else if (b != 0 && memchr(scratch_, 0, TRM_PASSWORD_CHARS) == 0) {
            password_ |= kOverlong;
        }
        if (pos_ == kPasswordField - 1) passwordFieldDone();
        break;
    }
    case kModeSkip: break;
    }
    ++pos_;
}

void Tremolanth::passwordFieldDone() {
    if (scratch_[0] == 0) {
        password_ |= kFirstEmpty;
    } else if (!(password_ & kOverlong)) {
        TrmControl c;
        TrmPasswordCheck check = 0;
        if (find(itemKey_, &c)) check = reinterpret_cast<TrmPasswordCheck>(const_cast<void*>(c.extra));
        if (check && check(reinterpret_cast<const char*>(scratch_), false)) password_ |= kFirstGood;
    }
    password_ &= static_cast<uint8_t>(~kOverlong);
    memset(scratch_, 0, sizeof scratch_);
}

uint8_t Tremolanth::finishItem() {
    uint8_t changed = 0;
    if (itemKey_ >= kSlotKeys) {
        if (mode_ != kModeSkip) changed = lastPopup_;
    } else if (mode_ != kModeSkip) {
        TrmControl c;
        if (find(itemKey_, &c)) changed = applyItem(c);
    }
    mode_ = kModeSkip;
    nextItem();
    return changed;
}

uint8_t Tremolanth::applyItem(TrmControl& c) {
    const uint8_t first = scratch_[0];
    switch (c.type) {
    case kTypeButton: return first != 0 ? c.key : 0;
    case kTypeImage: return c.key;
    case kTypeFiles: sendFile(c); return c.key;
    case kTypeCheckBox:
        if (!c.width) {
            *static_cast<bool*>(c.var) = first != 0;
        } else if (first != 0) {
            // The client sends the whole group, cleared boxes too: the ticked one decides.
            *static_cast<uint8_t*>(c.var) = static_cast<uint8_t>(c.low);
        } else {
            return 0;
        }
        break;
    case kTypeSection: *static_cast<bool*>(c.var) = first != 0; break;
    case kTypeDateTime: {
        TrmDateTime& t = *static_cast<TrmDateTime*>(c.var);
        t.second = scratch_[0];
        t.minute = scratch_[1];
        t.hour = scratch_[2];
        t.day = scratch_[3];
        t.weekday = scratch_[4];
        t.month = scratch_[5];
        t.year = static_cast<uint16_t>(scratch_[6] | (scratch_[7] << 8));
        break;
    }
    case kTypeNumber: {
        const int32_t sent = static_cast<int32_t>(le32(scratch_));
        int32_t v = sent;
        if ((c.flags & TRM_MINIMUM_APPLIES) && v < c.low) v = c.low;
        if ((c.flags & TRM_MAXIMUM_APPLIES) && v > c.high) v = c.high;
        *static_cast<int32_t*>(c.var) = v;
        break;
    }
    case kTypeList: {
        const uint32_t index = le32(scratch_);
        if (index >= static_cast<uint32_t>(c.high)) {
            send(c.key);  // refused: the client shows the item kept
            return 0;
        }
        *static_cast<uint8_t*>(c.var) = static_cast<uint8_t>(index);
        break;
    }
    case kTypePassword: {
        bool& in = *static_cast<bool*>(c.var);
        const bool secondEmpty = scratch_[0] == 0 && !(password_ & kOverlong);
        if (secondEmpty) {
            in = (password_ & (kFirstEmpty | kFirstGood)) == kFirstGood;  // empty: log out
        } else if ((password_ & kFirstGood) && !(password_ & kOverlong)) {
            TrmPasswordCheck check = reinterpret_cast<TrmPasswordCheck>(const_cast<void*>(c.extra));
            if (check) check(reinterpret_cast<const char*>(scratch_), true);
        }
        break;  // the verdict goes back, and shows or hides the controls it guards
    }
    default: break;  // text and blob are in place
    }
    // The client shows what the device kept (a number within its limits, a radio's group, a
    // section's or password's controls).
    send(c.key);
    return c.key;
}
