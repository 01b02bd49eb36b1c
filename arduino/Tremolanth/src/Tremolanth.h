// Tremolanth for microcontrollers: a board offers a panel of controls to the Tremolanth client
// over any Arduino Stream (HardwareSerial, SoftwareSerial, a Bluetooth serial, a WiFiClient).
//
// The sketch keeps its values in its own variables and describes its panel in one function,
// called with a TrmPanel whenever the library needs to know the controls: to send the panel,
// to find where an incoming value goes, to send a value. Labels, formats and list items are
// flash texts (F("...")). Nothing is allocated: the panel is written as it is described, and
// what the client sends is read byte by byte straight into the variables.
//
//   bool lamp;
//   void describe(TrmPanel& p) { p.title(F("Lamp")); p.checkBox(1, F("Lamp"), lamp); }
//   Tremolanth device(Serial, describe);
//   void setup() { Serial.begin(9600); }
//   void loop() { if (device.poll() == 1) digitalWrite(LED_BUILTIN, lamp); }
#ifndef TREMOLANTH_H
#define TREMOLANTH_H

#include <Arduino.h>

#include "TremolanthWire.h"
#include "TremolanthWriter.h"

// The longest password the library reads; a longer one is never accepted.
#ifndef TRM_PASSWORD_CHARS
#define TRM_PASSWORD_CHARS 16
#endif
// Controls a panel may have (Messages not counted).
#ifndef TRM_MAX_CONTROLS
#define TRM_MAX_CONTROLS 32
#endif

// A date-time editable in every field but the seconds.
#define TRM_EDIT_DATE_TIME                                                                   \
    (TRM_EDITABLE | TRM_FIELD_MINUTE | TRM_FIELD_HOUR | TRM_FIELD_DAY | TRM_FIELD_MONTH |    \
     TRM_FIELD_YEAR)

typedef const __FlashStringHelper* TrmText;

struct TrmDateTime {
    uint8_t second;
    uint8_t minute;
    uint8_t hour;
    uint8_t day;      // 1 to 31
    uint8_t weekday;  // 0 = Sunday
    uint8_t month;    // 1 to 12
    uint16_t year;
};

// A fixed ring of chart rows that the sketch owns: SERIES values a row (and a number sample
// with SAMPLED), the oldest row overwritten once ROWS are full. Append with add(), then
// send(key) the chart or table so the client follows.
struct TrmRingState {
    uint8_t next;  // the row add() writes next
    bool full;     // every row holds a value
};

template <typename T, uint8_t SERIES, uint8_t ROWS, bool SAMPLED = false>
struct TrmRing : TrmRingState {
    T values[SERIES][ROWS];
    T samples[SAMPLED ? ROWS : 1];

    // One row: a value for each series, missing ones 0.
    template <typename... V> void add(V... v) {
        const T row[SERIES] = {static_cast<T>(v)...};
        put(row, 0);
    }
    // One row with its sample (the chart's x value, the table's first column).
    template <typename... V> void addSampled(T sample, V... v) {
        const T row[SERIES] = {static_cast<T>(v)...};
        put(row, sample);
    }
    void put(const T* row, T sample) {
        for (uint8_t s = 0; s < SERIES; ++s) values[s][next] = row[s];
        samples[SAMPLED ? next : 0] = sample;
        if (++next == ROWS) {
            next = 0;
            full = true;
        }
    }
};

// The sketch judges a password: a log-in (change false: true lets the user in) or, after the
// old password was judged good, the new one of a change (change true: true when taken).
typedef bool (*TrmPasswordCheck)(const char* password, bool change);

// What the library read that it could not use, for the sketch to report (Tremolanth::error()).
enum TrmError : uint8_t {
    kTrmErrorNone = 0,
    kTrmErrorUnknownType,   // a frame of a type the device side does not read
    kTrmErrorUnknownKey,    // a value for no control of the panel
    kTrmErrorItemSize,      // a value of another size than its control's: skipped
    kTrmErrorCut,           // a frame broken off by the next one
};

struct TrmKind;
struct TrmOps;

// One control as its describe call gives it (internal).
struct TrmControl {
    const TrmKind* kind;  // in flash: the type's tag, attributes, value and apply functions
    uint8_t index;        // position among the panel's controls
    uint8_t group;        // 1 + index of the section or password it belongs to, 0 none
    void* var;
    uint16_t size;      // bytes of the variable or of the flash data; a chart's rows
    TrmText texts[3];   // label; format, file name or chart units; list items or series names
    const void* data;   // flash bytes the control shows, chart values, a password's check
    uint32_t flags;
    uint16_t key;       // 1 to 255
    uint16_t keyHigh;   // 0: after flags, the key is the record's next 32-bit word
    int32_t low;        // minimum; a text's size, a chart's series
    int32_t high;       // maximum; a list's items, a chart's rows, a radio box's group
    int8_t exponent;
    uint8_t on;         // a box's variable holds this when ticked; a chart's shape
};

class Tremolanth;

// Handed to the sketch's describe function. Keys are 1 to 255 and unique in the panel.
class TrmPanel {
public:
    // The panel's name, under which the client keeps its settings for this device.
    void title(TrmText name) { t_.title = name; }
    // A text of size bytes (its terminator included). flags: TRM_EDITABLE, TRM_MASKED.
    void text(uint8_t key, TrmText label, char* value, uint8_t size, uint32_t flags = 0);
    // poll() returns the key when pressed.
    void button(uint8_t key, TrmText label);
    void checkBox(uint8_t key, TrmText label, bool& value);
    // One of a group of boxes sharing choice: ticking it sets choice to value.
    void radio(uint8_t key, TrmText label, uint8_t& choice, uint8_t value);
    // The controls after a section, up to the next section, password or endGroup(), show
    // only while it is open.
    void section(uint8_t key, TrmText label, bool& open);
    void endGroup() { t_.group = 0; }
    // format: %dd% %MM% %yyyy% %HH% %mm% %ss% and the like.
    void dateTime(uint8_t key, TrmText label, TrmDateTime& value, TrmText format,
                  uint32_t flags = TRM_EDIT_DATE_TIME);
    // An editable number kept between minimum and maximum, shown as value x 10^exponent
    // through format ("%f" stands for the number: F("%f °C")).
    void number(uint8_t key, TrmText label, int32_t& value, int32_t minimum, int32_t maximum,
                TrmText format = 0, int8_t exponent = 0);
    // A number the user only reads.
    void number(uint8_t key, TrmText label, int32_t& value, TrmText format = 0,
                int8_t exponent = 0);
    // A line chart, or a data table, of a ring: series names separated by '|'.
    template <typename T, uint8_t S, uint8_t R, bool SA>
    void chart(uint8_t key, TrmText label, TrmRing<T, S, R, SA>& ring, TrmText series,
               TrmText units = 0, int8_t exponent = 0) {
        ringControl(key, label, ring, ring.values, series, units,
                    shape(sizeof(T), S, R, SA, false, exponent));
    }
    template <typename T, uint8_t S, uint8_t R, bool SA>
    void table(uint8_t key, TrmText label, TrmRing<T, S, R, SA>& ring, TrmText series,
               TrmText units = 0, int8_t exponent = 0) {
        ringControl(key, label, ring, ring.values, series, units,
                    shape(sizeof(T), S, R, SA, true, exponent));
    }
    // The controls after it, up to the next section, password or endGroup(), show only while
    // loggedIn. check decides; see TrmPasswordCheck.
    void password(uint8_t key, TrmText label, bool& loggedIn, TrmPasswordCheck check);
    // items separated by '|': F("Off|Heat|Cool").
    void list(uint8_t key, TrmText label, TrmText items, uint8_t& selected);
    // A box the client shows on Tremolanth::popup(key). icon: 0, TRM_ICON_STOP,
    // TRM_ICON_EXCLAMATION or TRM_ICON_QUESTION.
    void message(uint8_t key, TrmText text, uint32_t icon = 0);
    // size bytes of data. flags: TRM_EDITABLE (the data is text), TRM_FOR_BROWSER (a web
    // address the client opens).
    void blob(uint8_t key, TrmText label, uint8_t* data, uint16_t size, uint32_t flags = 0);
    // Image bytes in flash (PROGMEM); pressable: poll() returns the key when pressed.
    void image(uint8_t key, TrmText label, const uint8_t* data, uint16_t size,
               bool pressable = true);
    // A file in flash (PROGMEM) the client receives, and opens, when the user presses it.
    void files(uint8_t key, TrmText label, TrmText name, const uint8_t* content, uint16_t size);

private:
    friend class Tremolanth;
    friend struct TrmOps;
    // What a run of the sketch's describe function does: counts and writes the settings,
    // writes the records, finds a control, starts or applies an item the client sends into
    // its control, or writes value or layout items.
    enum Pass : uint8_t { kSettings, kRecords, kFind, kStart, kApply, kItems };
    // Every pass runs on this one panel: passes never nest, and the stack stays small.
    static TrmPanel shared_;
    TrmPanel() = default;
    // A ring's value width, series, rows, samples, chart or table and exponent in one word,
    // so that a chart's call passes everything in registers.
    static constexpr uint32_t shape(uint8_t width, uint8_t series, uint8_t rows, bool sampled,
                                    bool table, int8_t exponent) {
        return width | (sampled ? 0x10u : 0u) | (table ? 0x20u : 0u) |
               static_cast<uint32_t>(series) << 8 | static_cast<uint32_t>(rows) << 16 |
               static_cast<uint32_t>(static_cast<uint8_t>(exponent)) << 24;
    }
    void ringControl(uint8_t key, TrmText label, TrmRingState& ring, const void* values,
                     TrmText names, TrmText units, uint32_t shape);
    // Each declaration fills in c_ what its type needs, then visits it.
    void visit(uint8_t key, TrmText label, const TrmKind* kind, void* var);
    void visitControl(const TrmKind* kind);

    // Every field within 64 bytes of the start: an 8-bit processor reaches those with one short
    // instruction.
    TrmControl c_;  // the control being described; all zero between declarations
    Tremolanth* device_;
    Pass pass_;
    uint16_t key_;  // the control sought: found, started, applied, or whose item is written
    // kItems: the controls that give an item besides the one of key_: those of a group, or
    // those bound to a variable (a radio group).
    uint8_t groupOf_;
    const void* var_;
    bool layout_;  // layout items instead of value items
    // What a pass counts as it goes.
    struct Tally {
        uint8_t index;
        uint8_t group;   // of the controls that follow
        bool closed;     // their section is closed or their password logged out
        uint8_t controls;
        uint8_t messages;
        uint8_t visible;
        uint16_t messageBytes;
        uint16_t count;  // settings or items written, controls found
        uint8_t done;    // what applying an item did
        TrmText title;
    } t_;
    // kFind: what the control of key_ is.
    const TrmKind* foundKind_;
    TrmText foundLabel_;
    uint8_t foundIcon_;  // a Message's icon: the flags' bits 16 to 23
    uint8_t foundIndex_;
};

// The sketch's description of its panel: it only declares the controls, as the library calls
// it for everything it does (it must not call the device itself).
typedef void (*TrmDescribe)(TrmPanel& panel);

class Tremolanth {
public:
    // constexpr: a global device needs no start-up code.
    constexpr Tremolanth(Stream& stream, TrmDescribe describe)
        : out_(putStream, &stream), describe_(describe) {}

    // Reads what the client sent (only what has arrived) and answers it. Returns the key of a
    // control whose value the client changed or that it pressed, or 0; call it again for the
    // next one.
    uint8_t poll();
    // The same for one byte from a transport of the sketch's own.
    uint8_t feed(uint8_t byte);

    // Sends the control's value to the client (after the sketch changed it): a radio sends
    // its whole group, a section or password also shows or hides its controls.
    void send(uint8_t key);
    // Hides or shows a control.
    void hide(uint8_t key, bool hidden = true);
    void show(uint8_t key) { hide(key, false); }
    // Shows a message() in a box on the client.
    void popup(uint8_t key);
    // Asks the client to fetch the panel again (after the sketch changed its controls).
    void reload();
    // Ends the session: the client closes the panel.
    void end();

    // A client asked for the panel and has not said goodbye.
    bool connected() const { return connected_; }
    // The last thing read that could not be used; reading it clears it.
    TrmError error();

private:
    friend class TrmPanel;
    friend struct TrmOps;
    // What the reader reads; a head's state is the count of its bytes.
    enum State : uint8_t { kHunt = 0, kCount = 4, kItemHead = 8, kHead = 12, kItemData = 0xFF };
    // Where an item's bytes go: nowhere, to dest_, through passwordByte(), nowhere but noted
    // (a Message's answer).
    enum Mode : uint8_t { kModeSkip, kModeData, kModePassword, kModeAnswer };

    static void putStream(void* stream, uint8_t byte);
    // One pass over the panel on the shared TrmPanel; dry: its writing only counted. Returns
    // the count of the pass.
    uint16_t pass(uint8_t what, uint16_t key, bool dry = false);
    void sendPanel();
    // A value (type 9) or layout (type 16) update of the controls a kItems pass picks: that of
    // key, and those of the shared panel's groupOf_ or var_.
    void sendItems(uint8_t type, uint8_t key);
    // A frame's head.
    TRM_NOINLINE void frame(uint8_t type);
    // A frame's head and the count of what it carries.
    TRM_NOINLINE void frame(uint8_t type, uint16_t count);
    // A frame of one item: its head, the item's key and size; the data follows.
    TRM_NOINLINE void oneItem(uint8_t type, uint16_t key, uint16_t size);

    // poll() and feed(), send() and popup() through a pointer register: see reached().
    uint8_t read(uint8_t byte);
    void sendValue(uint8_t key);
    void showMessage(uint8_t key);
    void command();
    void itemHead();
    void nextItem();
    void startItem(TrmControl& c);
    void passwordByte(uint8_t byte);
    uint8_t finishItem();

    TrmWriter out_;  // everything the device sends (to the stream), and the counting ahead of it
    TrmDescribe describe_;
    uint8_t hidden_[(TRM_MAX_CONTROLS + 7) / 8] = {};
    bool connected_ = false;
    uint8_t lastPopup_ = 0;
    TrmError error_ = kTrmErrorNone;

    // The frame reader: a frame's head, the item count and each item's head are gathered in
    // scratch_, which then takes the item's value.
    State state_ = kHunt;
    uint8_t matched_ = 0;  // marker bytes seen in a row
    uint8_t at_ = 0;       // bytes of the head, count or item head
    Mode mode_ = kModeSkip;
    uint8_t password_ = 0;  // bits of a password item being read
    uint16_t itemKey_ = 0;
    uint8_t blobKey_ = 0;   // a Blob item was read: its empty trailer may follow
    uint16_t items_ = 0;    // items of the value message still to come
    uint16_t size_ = 0;     // bytes of the item
    uint16_t pos_ = 0;      // bytes of the item read
    uint8_t* dest_ = 0;     // where the item goes: the variable or scratch_; a password's check
    uint8_t scratch_[TRM_PASSWORD_CHARS + 1 > 12 ? TRM_PASSWORD_CHARS + 1 : 12] = {};
};

#endif  // TREMOLANTH_H
