#include "Tremolanth.h"

#include <stddef.h>
#include <string.h>

// What a control type is, in flash. Each declaration names its own kind, so a type the sketch
// never declares leaves its value and apply functions out of the firmware.
struct TrmKind {
    uint8_t tag;
    uint8_t attributes;  // the first of its attributes in kLetters and kOps
    uint8_t count;       // and how many
    uint8_t options;
    uint8_t item;        // the bytes of a value the client sends, or kItemVariable, kItemRefused
    uint8_t flags;       // record flags every control of the kind has, bits 16 to 23
    // The control's value (what: the TrmControl): its item in a value update, and behind its
    // byte count in the record (how: kRecord).
    TrmWriter::Part value;
    // Takes a complete item into the sketch's variable; kEcho, kChanged and kChange bits.
    uint8_t (*apply)(Tremolanth& device, TrmControl& c);
};

namespace {

const uint8_t kRecord = 1;  // how a value is written into its record

// Kind options.
const uint8_t kShowValue = 0x01;   // the row shows a value text after the title
const uint8_t kTable = 0x02;       // a chart shown as a data table
const uint8_t kOwnsGroup = 0x04;   // section, password: the controls after it follow it
const uint8_t kTerminated = 0x08;  // the variable's last byte stays a terminator
const uint8_t kTrailer = 0x10;     // an empty item of the same key follows each item
const uint8_t kRadio = 0x20;       // boxes bound to one variable
const uint8_t kList = 0x40;        // items to count
const uint8_t kDecimals = 0x80;    // a number: fixed decimals when its exponent is negative

// Kind items. 0: the control has no value item (files, images: the record carries their
// data), and the client's empty item presses it.
const uint8_t kItemVariable = 0xFF;  // the variable's size, the bytes going straight into it
const uint8_t kItemRefused = 0xFE;   // the client sets no value of it (charts)

// What an apply function reports.
const uint8_t kEcho = 0x01;     // send the value the sketch kept back to the client
const uint8_t kChanged = 0x02;  // poll() returns the key
// A password change for the sketch to judge, after the pass: its check may send or pop up.
const uint8_t kChange = 0x04;

// Messages go out as hidden slots ahead of the controls, one for each row count the client
// can show: it pops up the Message standing at the position equal to its row count.
const uint16_t kSlotKeys = 0x100;
const uint16_t kNoKey = 0xFFFF;  // a key no control has
const uint8_t kPasswordField = TRM_PASSWORD_FIELD;
const uint8_t kPasswordItem = 2 * TRM_PASSWORD_FIELD;
const uint8_t kStyleTable = 3;
// The settings of a row: its title's length, how its value shows, a data table's style.
const uint16_t kSettingKinds[] TRM_PROGMEM = {TRM_SETTING_TITLE_LENGTH, TRM_SETTING_VALUE_SHOW,
                                              TRM_SETTING_STYLE};

// Password item bits.
const uint8_t kFirstEmpty = 0x01;
const uint8_t kFirstGood = 0x02;
const uint8_t kOverlong = 0x04;
const uint8_t kEnded = 0x08;  // a terminator among the characters read of this field

// The texts of a control.
enum Text : uint8_t { kTextLabel, kTextFormat, kTextItems };

// Items separated by '|' in a flash text.
uint16_t countItems(TrmText items) {
    const char* p = reinterpret_cast<const char*>(items);
    if (!p || TRM_FLASH_BYTE(p) == 0) return 0;
    uint16_t n = 1;
    for (uint8_t c; (c = TRM_FLASH_BYTE(p)) != 0; ++p) {
        if (c == '|') ++n;
    }
    return n;
}

// What each attribute carries: where in the control its value stands. The letters of a kind
// are a run of kLetters, their values the same run of kOps.
enum Op : uint8_t {
    kOpLabel = offsetof(TrmControl, texts),  // a text
    kOpFormat = kOpLabel + sizeof(TrmText),
    kOpItems = kOpFormat + sizeof(TrmText),  // items, each terminated
    kOpLow = offsetof(TrmControl, low),      // a 32-bit number
    kOpHigh = offsetof(TrmControl, high),
    kOpExponent = offsetof(TrmControl, exponent),  // an 8-bit number
    kOpDecimals = kOpExponent | 0x80,  // the decimals a negative exponent asks for
};
const char kLetters[] TRM_PROGMEM = "ZfdmnxZrZmZnNAFDMZIn";
const uint8_t kOps[] TRM_PROGMEM = {
    kOpLabel, kOpFormat, kOpDecimals, kOpExponent, kOpLow, kOpHigh,          // number, date-time
    kOpLabel, kOpHigh,                                                       // radio
    kOpLabel, kOpLow,                                                        // text
    kOpLabel, kOpHigh, kOpLow, kOpItems, kOpFormat, kOpDecimals, kOpExponent,  // chart
    kOpLabel, kOpItems, kOpHigh};                                            // list
const uint8_t kAttrNumber = 0, kAttrRadio = 6, kAttrText = 8, kAttrChart = 10, kAttrList = 17;

// A Message slot's record, its size first, around the low byte of its key and its one
// attribute, 'm': the bytes a Message's text takes. Hidden, no value.
const uint8_t kSlotHead[] TRM_PROGMEM = {27, 0, 0, 0, TRM_TAG_MESSAGE, 0, TRM_HIDDEN, 0, 0, 0};
const uint8_t kSlotTail[] TRM_PROGMEM = {
    kSlotKeys >> 8, 0, 0,  // the key's upper bytes
    0, 0, 0, 0,            // no value
    1, 0, 0, 0, 'm',       // one attribute
    4, 0, 0, 0};           // its size; the bytes follow

// The bit of a control's hidden flag in its byte of Tremolanth::hidden_.
const uint8_t kBits[8] TRM_PROGMEM = {1, 2, 4, 8, 16, 32, 64, 128};
uint8_t bitOf(uint8_t index) { return TRM_FLASH_BYTE(&kBits[index & 7]); }

const char kServerText[] TRM_PROGMEM = "Tremolanth device library 1.0";
const char kUntitled[] TRM_PROGMEM = "Arduino";
const char kPlainFormat[] TRM_PROGMEM = "%f";

const char* flash(TrmText text) { return reinterpret_cast<const char*>(text); }

// p kept in a pointer register: with one global device the compiler would address each of its
// fields at its fixed place, in instructions twice as long.
template <typename T> T* reached(T* p) {
#if defined(__GNUC__)
    __asm__("" : "+r"(p));
#endif
    return p;
}

TrmText plainIfNull(TrmText format) {
    return format ? format : reinterpret_cast<TrmText>(kPlainFormat);
}

// Function pointers of a kind, read from flash.
#ifdef __AVR__
#define TRM_FLASH_WORD(p) pgm_read_word(p)
#else
#define TRM_FLASH_WORD(p) (*(p))
#endif

template <typename T> T flashPointer(const T* p) {
#ifdef __AVR__
    return reinterpret_cast<T>(pgm_read_word(p));
#else
    return *p;
#endif
}

uint8_t optionsOf(const TrmControl& c) { return TRM_FLASH_BYTE(&c.kind->options); }

// An attribute's value, behind its byte count: a text, a 32-bit or an 8-bit number.
void attribute(TrmWriter& w, const void* control, uint8_t op) {
    const TrmControl& c = *static_cast<const TrmControl*>(control);
    const uint8_t* field = reinterpret_cast<const uint8_t*>(&c) + (op & 0x7F);
    if (op < kOpLow) {
        w.text(flash(*reinterpret_cast<const TrmText*>(field)),
               op == kOpItems ? TrmWriter::kItems : TrmWriter::kPlain);
    } else if (op < kOpExponent) {
        w.bytes(field, 4);  // little-endian, as the wire
    } else {
        const int8_t exponent = c.exponent;
        w.u8(static_cast<uint8_t>(op == kOpExponent ? exponent : exponent < 0 ? -exponent : 0));
    }
}

void record(TrmWriter& w, const void* control, uint8_t) {
    const TrmControl& c = *static_cast<const TrmControl*>(control);
    const TrmKind* k = c.kind;
    w.u16(TRM_FLASH_BYTE(&k->tag));
    w.bytes(&c.flags, 8);  // flags and key, little-endian as the wire
    w.counted(flashPointer(&k->value), &c, kRecord);
    const uint8_t first = TRM_FLASH_BYTE(&k->attributes);
    const uint8_t count = TRM_FLASH_BYTE(&k->count);
    w.u32Size(count);
    w.bytes(kLetters + first, count, kTrmFlash);
    for (uint8_t i = first; i < first + count; ++i) {
        w.counted(attribute, &c, TRM_FLASH_BYTE(&kOps[i]));
    }
}

uint16_t textLength(const TrmControl& c) {
    const char* text = static_cast<const char*>(c.var);
    uint16_t n = 0;
    while (n + 1 < c.size && text[n] != 0) ++n;
    return n;
}

// A little-endian word gathered by the reader, of which only the low 16 bits matter on the
// board: more than that is 0xFFFF, which never fits.
uint16_t headWord(const uint8_t* p) {
    return static_cast<uint16_t>(p[2] | p[3] ? 0xFFFF : p[0] | (p[1] << 8));
}

}  // namespace

// The type-specific parts, each reached only from its kinds.
struct TrmOps {
    static const TrmControl& of(const void* control) {
        return *static_cast<const TrmControl*>(control);
    }
    // The variable's bytes as they are: the board and the wire are both little-endian.
    static void rawValue(TrmWriter& w, const void* c, uint8_t) { w.bytes(of(c).var, of(c).size); }
    static void noValue(TrmWriter&, const void*, uint8_t) {}
    static void buttonValue(TrmWriter& w, const void*, uint8_t) { w.u8(0); }
    // Check boxes, radio boxes and sections: ticked when the variable holds on.
    static void flagValue(TrmWriter& w, const void* c, uint8_t) {
        w.u8(*static_cast<const uint8_t*>(of(c).var) == of(c).on ? 255 : 0);
    }
    static void listValue(TrmWriter& w, const void* c, uint8_t) {
        w.u32Size(*static_cast<const uint8_t*>(of(c).var));
    }
    // The record carries the text and its terminator, an item the whole variable.
    static void textValue(TrmWriter& w, const void* control, uint8_t how) {
        const TrmControl& c = of(control);
        const uint16_t n = textLength(c);
        w.bytes(c.var, n);
        w.zeros(how == kRecord ? 1 : c.size - n);
    }
    static void imageValue(TrmWriter& w, const void* c, uint8_t) {
        w.bytes(of(c).data, of(c).size, kTrmFlash);
    }
    // The values series by series, the samples, the row counter.
    static void chartValue(TrmWriter& w, const void* control, uint8_t) {
        const TrmControl& c = of(control);
        const TrmRingState& ring = *static_cast<const TrmRingState*>(c.var);
        const uint16_t rowBytes = static_cast<uint16_t>(c.size * (c.on & 0x0F));
        w.bytes(c.data, static_cast<size_t>(rowBytes) * static_cast<uint8_t>(c.low));
        // The samples follow the values in the ring.
        if (c.on & 0x10) {
            w.bytes(static_cast<const uint8_t*>(c.data) + rowBytes * static_cast<uint8_t>(c.low),
                    rowBytes);
        }
        // Rows filled while the ring has not wrapped; after that minus the oldest row's index.
        w.u32(ring.full ? (ring.next == 0 ? c.size : static_cast<uint32_t>(-ring.next))
                        : ring.next);
    }

    // What a kind never has called: a Message has no record and takes no item, the client
    // sets no value of a chart.
    static constexpr TrmWriter::Part neverWritten = nullptr;
    static constexpr uint8_t (*neverApplied)(Tremolanth&, TrmControl&) = nullptr;

    static uint8_t applyInPlace(Tremolanth&, TrmControl&) { return kEcho | kChanged; }
    static uint8_t applyText(Tremolanth&, TrmControl& c) {
        static_cast<char*>(c.var)[c.size - 1] = 0;  // the last byte read stays the terminator
        return kEcho | kChanged;
    }
    static uint8_t applyButton(Tremolanth& d, TrmControl&) {
        return d.scratch_[0] != 0 ? kChanged : 0;
    }
    static uint8_t applyPress(Tremolanth&, TrmControl&) { return kChanged; }
    static uint8_t applyFlag(Tremolanth& d, TrmControl& c) {
        const uint8_t first = d.scratch_[0];
        // The client sends a radio group whole, cleared boxes too: the ticked one decides.
        if (first == 0 && (optionsOf(c) & kRadio)) return 0;
        *static_cast<uint8_t*>(c.var) = first != 0 ? c.on : 0;
        return kEcho | kChanged;
    }
    // The item is laid out as the variable is.
    static uint8_t applyDateTime(Tremolanth& d, TrmControl& c) {
        memcpy(c.var, d.scratch_, sizeof(TrmDateTime));
        return kEcho | kChanged;
    }
    static uint8_t applyNumber(Tremolanth& d, TrmControl& c) {
        int32_t v;
        memcpy(&v, d.scratch_, 4);
        // A number with limits has both.
        if (c.flags & TRM_MINIMUM_APPLIES) {
            if (v < c.low) v = c.low;
            if (v > c.high) v = c.high;
        }
        *static_cast<int32_t*>(c.var) = v;
        return kEcho | kChanged;
    }
    static uint8_t applyList(Tremolanth& d, TrmControl& c) {
        uint16_t index;
        memcpy(&index, d.scratch_, 2);
        // Refused (the client shows the item kept): past the items, which are fewer than 2^16.
        if ((d.scratch_[2] | d.scratch_[3]) || index >= static_cast<uint16_t>(c.high)) return kEcho;
        *static_cast<uint8_t*>(c.var) = static_cast<uint8_t>(index);
        return kEcho | kChanged;
    }
    static uint8_t applyPassword(Tremolanth& d, TrmControl& c) {
        const uint8_t bits = d.password_;
        if (d.scratch_[0] == 0 && !(bits & kOverlong)) {
            // An empty second field: a log-in (a good first one) or a log-out (an empty one).
            *static_cast<bool*>(c.var) = (bits & (kFirstEmpty | kFirstGood)) == kFirstGood;
        } else if ((bits & kFirstGood) && !(bits & kOverlong)) {
            return kEcho | kChanged | kChange;
        }
        return kEcho | kChanged;  // the verdict goes back, and shows or hides what it guards
    }
    static uint8_t applyFiles(Tremolanth& d, TrmControl& c) {
        TrmWriter& w = d.out_;
        d.frame(TRM_IN_FILES);
        w.u32Size(c.key);
        w.u32Size(1);
        w.countedText(flash(c.texts[kTextFormat]), TrmWriter::kTerminated);
        w.counted(imageValue, &c, 0);  // the file's bytes in flash, as an image's
        return kChanged;
    }
};

namespace {

#define TRM_KIND(name, tag, attributes, count, options, item, flags, value, apply)             \
    const TrmKind name TRM_PROGMEM = {                                                         \
        tag,  attributes, count, options,                                                      \
        item, static_cast<uint8_t>(static_cast<uint32_t>(flags) >> 16), TrmOps::value,         \
        TrmOps::apply}

TRM_KIND(kTextKind, TRM_TAG_TEXT, kAttrText, 2, kShowValue | kTerminated, kItemVariable, 0,
         textValue, applyText);
TRM_KIND(kButtonKind, TRM_TAG_BUTTON, 0, 1, 0, 1, 0, buttonValue, applyButton);
TRM_KIND(kCheckBoxKind, TRM_TAG_CHECK_BOX, 0, 1, 0, 1, 0, flagValue, applyFlag);
TRM_KIND(kRadioKind, TRM_TAG_CHECK_BOX, kAttrRadio, 2, kRadio, 1, 0, flagValue, applyFlag);
TRM_KIND(kSectionKind, TRM_TAG_SECTION, 0, 1, kOwnsGroup, 1, 0, flagValue, applyFlag);
TRM_KIND(kDateTimeKind, TRM_TAG_DATE_TIME, kAttrNumber, 2, kShowValue, sizeof(TrmDateTime), 0,
         rawValue, applyDateTime);
TRM_KIND(kNumberKind, TRM_TAG_NUMBER, kAttrNumber, 6, kShowValue | kDecimals, 4,
         TRM_EDITABLE | TRM_MINIMUM_APPLIES | TRM_MAXIMUM_APPLIES, rawValue, applyNumber);
TRM_KIND(kReadoutKind, TRM_TAG_NUMBER, kAttrNumber, 4, kShowValue | kDecimals, 4, 0, rawValue,
         applyNumber);
TRM_KIND(kChartKind, TRM_TAG_CHART, kAttrChart, 7, 0, kItemRefused, 0, chartValue,
         neverApplied);
TRM_KIND(kTableKind, TRM_TAG_CHART, kAttrChart, 7, kTable, kItemRefused, 0, chartValue,
         neverApplied);
TRM_KIND(kPasswordKind, TRM_TAG_PASSWORD, 0, 1, kOwnsGroup, kPasswordItem, TRM_EDITABLE,
         rawValue, applyPassword);
TRM_KIND(kListKind, TRM_TAG_LIST, kAttrList, 3, kShowValue | kList, 4, 0, listValue, applyList);
TRM_KIND(kMessageKind, TRM_TAG_MESSAGE, 0, 0, 0, 0, 0, neverWritten, neverApplied);
TRM_KIND(kBlobKind, TRM_TAG_BLOB, 0, 1, kTrailer, kItemVariable, 0, rawValue, applyInPlace);
TRM_KIND(kFilesKind, TRM_TAG_FILES, 0, 1, 0, 0, TRM_FOR_BROWSER, noValue, applyFiles);
TRM_KIND(kImageKind, TRM_TAG_IMAGE, 0, 1, 0, 0, 0, imageValue, applyPress);

}  // namespace

// ---- The panel as the sketch describes it --------------------------------------------------

TrmPanel TrmPanel::shared_;

void TrmPanel::visit(uint8_t key, TrmText label, const TrmKind* kind, void* var) {
    c_.key = key;
    c_.texts[kTextLabel] = label;
    c_.kind = kind;
    c_.var = var;
    visitControl(kind);
    memset(&c_, 0, sizeof c_);  // the next declaration sets only what its type has
}

void TrmPanel::visitControl(const TrmKind* kind) {
    TrmControl& c = c_;
    Tremolanth& device = *device_;
    TrmWriter& w = device.out_;
    const uint8_t options = TRM_FLASH_BYTE(&kind->options);
    const bool message = TRM_FLASH_BYTE(&kind->tag) == TRM_TAG_MESSAGE;
    if (!message) {
        if (t_.index >= TRM_MAX_CONTROLS) return;  // beyond what the hidden bits can hold
        const uint8_t index = t_.index++;
        c.index = index;
        if (options & kOwnsGroup) {
            t_.group = t_.index;
            t_.closed = !*static_cast<bool*>(c.var);
        } else {
            c.group = t_.group;
        }
        if ((device.hidden_[index >> 3] & bitOf(index)) || (c.group != 0 && t_.closed)) {
            reinterpret_cast<uint8_t*>(&c.flags)[0] |= TRM_HIDDEN;
        }
    }
    // Boxes bound to one variable form a radio group, numbered by that variable.
    if (options & kRadio) {
        const uint32_t var = static_cast<uint32_t>(reinterpret_cast<uintptr_t>(c.var));
        c.high = static_cast<int32_t>(var | 0x80000000UL);
    }
    if (options & kList) c.high = countItems(c.texts[kTextItems]);
    // What every control of the kind has: its value's size, its flags. Tenths show one
    // decimal, hundredths two: the digits a fraction needs, zeros kept.
    const uint8_t item = TRM_FLASH_BYTE(&kind->item);
    if (item != 0 && item <= sizeof(TrmDateTime)) c.size = item;
    uint8_t flags = TRM_FLASH_BYTE(&kind->flags);
    if ((options & kDecimals) && c.exponent < 0) flags |= TRM_NUMBER_FIXED >> 16;
    reinterpret_cast<uint8_t*>(&c.flags)[2] |= flags;  // little-endian, bits 16 to 23
    // The control of the key sought; only the first of a key is found.
    const bool sought = c.key == key_;

    switch (pass_) {
    case kSettings:
        if (message) {
            ++t_.messages;
            const uint16_t bytes =
                static_cast<uint16_t>(w.textLength(flash(c.texts[kTextLabel])) + 1);
            if (bytes > t_.messageBytes) t_.messageBytes = bytes;
            return;
        }
        ++t_.controls;
        if (!(c.flags & TRM_HIDDEN)) ++t_.visible;
        // Rows show each title whole, and the value after it where the control has one; a data
        // table has its style.
        for (uint8_t i = 0; i < (options & kTable ? 3 : 2); ++i) {
            w.u32Size(c.key);
            w.u32Size(TRM_FLASH_WORD(&kSettingKinds[i]));
            w.u32Size(i == 0   ? w.textLength(flash(c.texts[kTextLabel]))
                      : i == 1 ? (options & kShowValue ? TRM_SHOW_COLON_SPACE : TRM_SHOW_NONE)
                               : kStyleTable);
            ++t_.count;
        }
        break;
    case kRecords:
        if (!message) w.counted(record, &c, kRecord);
        break;
    default:  // kFind, kStart, kApply
        // A Message takes no item.
        if (!sought || (message && pass_ != kFind)) break;
        key_ = kNoKey;
        ++t_.count;
        if (pass_ == kStart) {
            device.startItem(c);
        } else if (pass_ == kApply) {
            t_.done = flashPointer(&kind->apply)(device, c);
        } else {
            foundKind_ = kind;
            // What send() updates: a radio box's whole group.
            var_ = options & kRadio ? c.var : 0;
            groupOf_ = 0;
            foundLabel_ = c.texts[kTextLabel];
            foundIcon_ = reinterpret_cast<const uint8_t*>(&c.flags)[2];
            foundIndex_ = c.index;
        }
        break;
    case kItems:
        if (message) return;
        if (sought || (groupOf_ != 0 && c.group == groupOf_) || (var_ != 0 && c.var == var_)) {
            if (layout_) {
                w.u32Size(c.key);
                w.u32Size(4);
                w.u32Size(c.flags & TRM_HIDDEN ? TRM_LAYOUT_HIDDEN : 0);
            } else if (TRM_FLASH_BYTE(&kind->item) == 0) {
                return;  // files and images: the client takes no value for them
            } else {
                w.u32Size(c.key);
                w.counted(flashPointer(&kind->value), &c, 0);
            }
            ++t_.count;
        }
        break;
    }
}

void TrmPanel::text(uint8_t key, TrmText label, char* value, uint8_t size, uint32_t flags) {
    c_.size = size;
    c_.low = size;  // its attribute
    c_.flags = flags;
    visit(key, label, &kTextKind, value);
}

void TrmPanel::button(uint8_t key, TrmText label) { visit(key, label, &kButtonKind, 0); }

void TrmPanel::checkBox(uint8_t key, TrmText label, bool& value) {
    c_.on = true;
    visit(key, label, &kCheckBoxKind, &value);
}

void TrmPanel::radio(uint8_t key, TrmText label, uint8_t& choice, uint8_t value) {
    c_.on = value;
    visit(key, label, &kRadioKind, &choice);
}

void TrmPanel::section(uint8_t key, TrmText label, bool& open) {
    c_.on = true;
    visit(key, label, &kSectionKind, &open);
}

void TrmPanel::dateTime(uint8_t key, TrmText label, TrmDateTime& value, TrmText format,
                        uint32_t flags) {
    c_.texts[kTextFormat] = format;
    c_.flags = flags;
    visit(key, label, &kDateTimeKind, &value);
}

void TrmPanel::number(uint8_t key, TrmText label, int32_t& value, int32_t minimum,
                      int32_t maximum, TrmText format, int8_t exponent) {
    c_.texts[kTextFormat] = plainIfNull(format);
    c_.low = minimum;
    c_.high = maximum;
    c_.exponent = exponent;
    visit(key, label, &kNumberKind, &value);
}

void TrmPanel::number(uint8_t key, TrmText label, int32_t& value, TrmText format,
                      int8_t exponent) {
    c_.texts[kTextFormat] = plainIfNull(format);
    c_.exponent = exponent;
    visit(key, label, &kReadoutKind, &value);
}

void TrmPanel::ringControl(uint8_t key, TrmText label, TrmRingState& ring, const void* values,
                           TrmText names, TrmText units, uint32_t shape) {
    const uint8_t width = shape & 0x0F;
    const uint8_t series = static_cast<uint8_t>(shape >> 8);
    const uint8_t rows = static_cast<uint8_t>(shape >> 16);
    const int8_t exponent = static_cast<int8_t>(shape >> 24);
    const uint32_t widthBits = width == 1 ? TRM_DATA_WIDTH8 : width == 2 ? TRM_DATA_WIDTH16 : 0;
    uint32_t flags = widthBits;
    // Samples share the values' width; the sample width bits sit two places lower.
    if (shape & 0x10) flags |= TRM_SAMPLES_NUMERIC | (widthBits >> 2);
    if (exponent < 0) flags |= (TRM_NUMBER_FIXED >> 20) << TRM_DATA_STYLE_SHIFT;
    c_.size = rows;
    c_.data = values;
    c_.texts[kTextFormat] = plainIfNull(units);
    c_.texts[kTextItems] = names;
    c_.flags = flags;
    c_.low = series;
    c_.high = rows;
    c_.exponent = exponent;
    c_.on = static_cast<uint8_t>(shape);
    visit(key, label, shape & 0x20 ? &kTableKind : &kChartKind, &ring);
}

void TrmPanel::password(uint8_t key, TrmText label, bool& loggedIn, TrmPasswordCheck check) {
    c_.data = reinterpret_cast<const void*>(check);
    c_.size = sizeof loggedIn;  // its value: logged in
    visit(key, label, &kPasswordKind, &loggedIn);
}

void TrmPanel::list(uint8_t key, TrmText label, TrmText items, uint8_t& selected) {
    c_.texts[kTextItems] = items;
    visit(key, label, &kListKind, &selected);
}

void TrmPanel::message(uint8_t key, TrmText text, uint32_t icon) {
    c_.flags = icon;
    visit(key, text, &kMessageKind, 0);
}

void TrmPanel::blob(uint8_t key, TrmText label, uint8_t* data, uint16_t size, uint32_t flags) {
    c_.size = size;
    c_.flags = flags;
    visit(key, label, &kBlobKind, data);
}

void TrmPanel::image(uint8_t key, TrmText label, const uint8_t* data, uint16_t size,
                     bool pressable) {
    c_.data = data;
    c_.size = size;
    if (pressable) c_.flags = TRM_EDITABLE;
    visit(key, label, &kImageKind, 0);
}

void TrmPanel::files(uint8_t key, TrmText label, TrmText name, const uint8_t* content,
                     uint16_t size) {
    c_.data = content;
    c_.size = size;
    c_.texts[kTextFormat] = name;
    visit(key, label, &kFilesKind, 0);
}

// ---- What the device sends -----------------------------------------------------------------

void Tremolanth::putStream(void* stream, uint8_t byte) {
    static_cast<Stream*>(stream)->write(byte);
}

uint16_t Tremolanth::pass(uint8_t what, uint16_t key, bool dry) {
    TrmPanel& panel = TrmPanel::shared_;
    panel.device_ = this;
    panel.pass_ = static_cast<TrmPanel::Pass>(what);
    panel.key_ = key;
    memset(&panel.t_, 0, sizeof panel.t_);
    const size_t start = out_.count();
    const TrmPutByte put = dry ? out_.pause() : 0;
    describe_(panel);
    if (dry) out_.resume(put, start);
    return panel.t_.count;
}

void Tremolanth::sendPanel() {
    TrmPanel& panel = TrmPanel::shared_;
    TrmWriter& w = out_;
    const uint16_t settings = pass(TrmPanel::kSettings, 0, true);

    frame(TRM_IN_IDENTITY);
    w.countedText(panel.t_.title ? flash(panel.t_.title) : kUntitled);
    w.countedText(kServerText, TrmWriter::kWide);  // the second text is UTF-16

    frame(TRM_IN_SETTINGS, settings);
    pass(TrmPanel::kSettings, 0);

    const uint8_t controls = panel.t_.controls;
    const uint8_t slots = panel.t_.messages ? static_cast<uint8_t>(controls + 1) : 0;
    frame(TRM_IN_PANEL, slots + controls);
    const uint16_t bytes = panel.t_.messageBytes;
    for (uint8_t i = 0; i < slots; ++i) {
        w.bytes(kSlotHead, sizeof kSlotHead, kTrmFlash);
        w.u8(i);
        w.bytes(kSlotTail, sizeof kSlotTail, kTrmFlash);
        w.u32Size(bytes);
    }
    pass(TrmPanel::kRecords, 0);
    connected_ = true;
}

void Tremolanth::sendItems(uint8_t type, uint8_t key) {
    // A first pass counts the items, the second writes them behind their count.
    TrmPanel::shared_.layout_ = type == TRM_IN_LAYOUT;
    const uint16_t items = pass(TrmPanel::kItems, key, true);
    if (items == 0) return;
    frame(type, items);
    pass(TrmPanel::kItems, key);
}

void Tremolanth::send(uint8_t key) { reached(this)->sendValue(key); }

void Tremolanth::sendValue(uint8_t key) {
    TrmPanel& panel = TrmPanel::shared_;
    if (!connected_ || !pass(TrmPanel::kFind, key)) return;
    const uint8_t options = TRM_FLASH_BYTE(&panel.foundKind_->options);
    // A radio box sends its whole group, a section or password shows or hides its controls.
    sendItems(TRM_IN_VALUES, key);
    if (options & kOwnsGroup) {
        panel.groupOf_ = static_cast<uint8_t>(panel.foundIndex_ + 1);
        sendItems(TRM_IN_LAYOUT, 0);
    }
}

void Tremolanth::hide(uint8_t key, bool hidden) {
    TrmPanel& panel = TrmPanel::shared_;
    if (!pass(TrmPanel::kFind, key) || TRM_FLASH_BYTE(&panel.foundKind_->tag) == TRM_TAG_MESSAGE) {
        return;
    }
    const uint8_t index = panel.foundIndex_;
    const uint8_t bit = bitOf(index);
    if (hidden) {
        hidden_[index >> 3] |= bit;
    } else {
        hidden_[index >> 3] &= static_cast<uint8_t>(~bit);
    }
    if (!connected_) return;
    panel.var_ = 0;  // this box alone, not its radio group
    sendItems(TRM_IN_LAYOUT, key);
}

void Tremolanth::popup(uint8_t key) { reached(this)->showMessage(key); }

void Tremolanth::showMessage(uint8_t key) {
    TrmPanel& panel = TrmPanel::shared_;
    if (!connected_ || !pass(TrmPanel::kFind, key) ||
        TRM_FLASH_BYTE(&panel.foundKind_->tag) != TRM_TAG_MESSAGE) {
        return;
    }
    const char* text = flash(panel.foundLabel_);
    const uint8_t icon = panel.foundIcon_ & (TRM_ICON_MASK >> 16);
    pass(TrmPanel::kSettings, 0, true);
    const uint16_t slot = static_cast<uint16_t>(kSlotKeys + panel.t_.visible);
    const uint16_t size = panel.t_.messageBytes;
    TrmWriter& w = out_;
    // The text into the slot at the client's row count, then that slot shown on its own.
    oneItem(TRM_IN_VALUES, slot, size);
    w.text(text);
    w.zeros(size - w.textLength(text));
    oneItem(TRM_IN_LAYOUT, slot, 4);
    w.u16(0);  // shown
    w.u16(icon);
    lastPopup_ = key;
}

void Tremolanth::frame(uint8_t type) { out_.frameHead(type, 0); }

void Tremolanth::frame(uint8_t type, uint16_t count) {
    frame(type);
    out_.u32Size(count);
}

void Tremolanth::oneItem(uint8_t type, uint16_t key, uint16_t size) {
    frame(type, 1);
    out_.u32Size(key);
    out_.u32Size(size);
}

void Tremolanth::reload() {
    if (connected_) frame(TRM_IN_RELOAD);
}

void Tremolanth::end() {
    frame(TRM_IN_SESSION_END);
    connected_ = false;
}

TrmError Tremolanth::error() {
    const TrmError e = error_;
    error_ = kTrmErrorNone;
    return e;
}

// ---- What the client sends, byte by byte ---------------------------------------------------

uint8_t Tremolanth::poll() {
    // Only what has arrived: loop() is never held waiting for the client.
    Stream& stream = *static_cast<Stream*>(out_.context());
    for (int n = stream.available(); n > 0; --n) {
        const int b = stream.read();
        if (b < 0) break;
        const uint8_t key = feed(static_cast<uint8_t>(b));
        if (key != 0) return key;
    }
    return 0;
}

uint8_t Tremolanth::feed(uint8_t b) { return reached(this)->read(b); }

uint8_t Tremolanth::read(uint8_t b) {
    // A marker starts a frame wherever it stands: a message cut short, or a client that
    // vanished mid-frame, leaves the reader ready for the next one.
    if (b == trmMarkerByte(matched_)) {
        if (++matched_ == TRM_MARKER_SIZE) {
            matched_ = 0;
            if (state_ != kHunt && !(state_ == kItemHead && items_ == 0)) error_ = kTrmErrorCut;
            state_ = kHead;
            at_ = 0;
            blobKey_ = 0;
            return 0;
        }
    } else {
        matched_ = b == TRM_MARKER_0 ? 1 : 0;
    }

    switch (state_) {
    case kHunt: return 0;
    case kItemData:
        if (mode_ == kModePassword) {
            passwordByte(b);
        } else if (mode_ == kModeData) {
            dest_[pos_] = b;  // the item's size checked against what holds it
        }
        ++pos_;
        break;
    default:
        // A frame's head after the marker (two header words, the type, the flags), the count
        // of a value message, an item's key and size: gathered, then read whole.
        scratch_[at_++] = b;
        if (at_ != state_) return 0;
        at_ = 0;
        if (state_ == kHead) {
            command();
            return 0;
        }
        if (state_ == kCount) {
            items_ = headWord(scratch_);  // more than that never fits a panel
            nextItem();
            return 0;
        }
        itemHead();
        break;
    }
    // An item complete, its last byte read or empty.
    if (state_ != kItemData || pos_ != size_) return 0;
    return finishItem();
}

void Tremolanth::command() {
    state_ = kHunt;
    switch (scratch_[8] | (scratch_[9] << 8)) {
    case TRM_OUT_PANEL_REQUEST: sendPanel(); break;
    case TRM_OUT_GOODBYE: connected_ = false; break;
    case TRM_OUT_PING: frame(TRM_IN_PING_REPLY); break;
    case TRM_OUT_VALUES: state_ = kCount; break;
    case TRM_OUT_PING_REPLY:
    case TRM_OUT_ACK:
    case TRM_OUT_DEFAULT_LAYOUT: break;
    default: error_ = kTrmErrorUnknownType; break;
    }
}

void Tremolanth::itemHead() {
    itemKey_ = headWord(scratch_);
    size_ = static_cast<uint16_t>(scratch_[4] | (scratch_[5] << 8));
    const bool huge = scratch_[6] | scratch_[7];  // no control holds that much
    // Every Blob item is followed by an empty one of the same key, outside the count.
    if (blobKey_ != 0) {
        const bool trailer = itemKey_ == blobKey_ && size_ == 0 && !huge;
        blobKey_ = 0;
        if (trailer) {
            nextItem();
            return;
        }
    }
    state_ = kHunt;
    if (items_ == 0) return;
    --items_;
    if (huge) {
        // The rest of the message is dropped.
        error_ = kTrmErrorItemSize;
        return;
    }
    state_ = kItemData;
    pos_ = 0;
    // A Message's answer is only noted.
    mode_ = kModeAnswer;
    if (itemKey_ >> 8 != kSlotKeys >> 8) {
        mode_ = kModeSkip;
        if (!pass(TrmPanel::kStart, itemKey_)) error_ = kTrmErrorUnknownKey;
    }
}

void Tremolanth::startItem(TrmControl& c) {
    const uint8_t options = optionsOf(c);
    uint8_t item = TRM_FLASH_BYTE(&c.kind->item);
    if (options & kTrailer) blobKey_ = static_cast<uint8_t>(c.key);
    // Never more than the control holds, nor a part of it: anything else is skipped.
    uint16_t expected = item;
    if (item == kItemVariable) {
        expected = c.size;
        if (expected == 0) item = kItemRefused;  // nothing to hold it
    }
    if (item == kItemRefused || size_ != expected) {
        error_ = kTrmErrorItemSize;
        return;
    }
    // Gathered whole, and applied when complete, but for the items that go straight into the
    // variable. Every byte of it is written before it is read: the item's size is checked.
    mode_ = kModeData;
    dest_ = scratch_;
    if (item == kItemVariable) {
        dest_ = static_cast<uint8_t*>(c.var);
        // A text keeps its terminator, even when the item is cut short.
        if (options & kTerminated) dest_[size_ - 1] = 0;
    } else if (item == kPasswordItem) {
        dest_ = reinterpret_cast<uint8_t*>(const_cast<void*>(c.data));
        mode_ = kModePassword;
        password_ = 0;
        scratch_[TRM_PASSWORD_CHARS] = 0;  // the characters read stay a string
    }
}

void Tremolanth::nextItem() { state_ = items_ == 0 && blobKey_ == 0 ? kHunt : kItemHead; }

void Tremolanth::passwordByte(uint8_t b) {
    uint8_t at = static_cast<uint8_t>(pos_);  // below kPasswordItem
    if (at >= kPasswordField) at -= kPasswordField;
    if (at < TRM_PASSWORD_CHARS) {
        scratch_[at] = b;
        if (b == 0) password_ |= kEnded;
    } else if (b != 0 && !(password_ & kEnded)) {
        password_ |= kOverlong;  // a character past the ones read, none of which ended it
    }
    if (pos_ == kPasswordField - 1) {
        // The first field: the password to log in with, or the old one of a change.
        if (scratch_[0] == 0) {
            password_ |= kFirstEmpty;
        } else if (!(password_ & kOverlong)) {
            TrmPasswordCheck check = reinterpret_cast<TrmPasswordCheck>(dest_);
            if (check && check(reinterpret_cast<const char*>(scratch_), false)) {
                password_ |= kFirstGood;
            }
        }
        // The second field overwrites every character read; the terminator after them stays.
        password_ &= static_cast<uint8_t>(~(kOverlong | kEnded));
    }
}

uint8_t Tremolanth::finishItem() {
    uint8_t changed = 0;
    if (mode_ == kModeAnswer) {
        changed = lastPopup_;
    } else if (mode_ != kModeSkip) {
        pass(TrmPanel::kApply, itemKey_);
        const uint8_t done = TrmPanel::shared_.t_.done;
        const uint8_t key = static_cast<uint8_t>(itemKey_);
        TrmPasswordCheck check = reinterpret_cast<TrmPasswordCheck>(dest_);
        if ((done & kChange) && check) check(reinterpret_cast<const char*>(scratch_), true);
        // The client shows what the device kept (a number within its limits, a radio's
        // group, a section's or password's controls).
        if (done & kEcho) send(key);
        if (done & kChanged) changed = key;
    }
    nextItem();
    return changed;
}
