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

// One control as its describe call gives it (internal).
struct TrmControl {
    uint8_t type;
    uint8_t key;
    uint8_t index;  // position among the panel's controls
    uint8_t group;  // 1 + index of the section or password it belongs to, 0 none
    uint32_t flags;
    TrmText label;
    void* var;
    uint16_t size;
    const void* data;   // flash or RAM bytes the control shows
    const void* extra;  // chart samples, password check
    TrmText text1;      // format, list items, file name, series names
    TrmText text2;      // chart units
    int32_t low;
    int32_t high;
    int8_t exponent;
    uint8_t width;
};

class Tremolanth;

// Handed to the sketch's describe function. Keys are 1 to 255 and unique in the panel.
class TrmPanel {
public:
    // The panel's name, under which the client keeps its settings for this device.
    void title(TrmText name) { title_ = name; }
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
    void endGroup();
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
        ringControl(key, label, ring, ring.values, SA ? ring.samples : 0, sizeof(T), S, R,
                    series, units, exponent, false);
    }
    template <typename T, uint8_t S, uint8_t R, bool SA>
    void table(uint8_t key, TrmText label, TrmRing<T, S, R, SA>& ring, TrmText series,
               TrmText units = 0, int8_t exponent = 0) {
        ringControl(key, label, ring, ring.values, SA ? ring.samples : 0, sizeof(T), S, R,
                    series, units, exponent, true);
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
    enum Pass : uint8_t { kCount, kSettings, kRecords, kFind, kItems };
    TrmPanel(Tremolanth& device, Pass pass) : device_(device), pass_(pass) {}
    void ringControl(uint8_t key, TrmText label, TrmRingState& ring, const void* values,
                     const void* samples, uint8_t width, uint8_t series, uint8_t rows,
                     TrmText names, TrmText units, int8_t exponent, bool table);
    void visit(TrmControl& c);

    Tremolanth& device_;
    Pass pass_;
    uint8_t index_ = 0;
    uint8_t group_ = 0;
    bool groupOpen_ = true;
    // kFind: the key sought and where its control goes.
    uint16_t key_ = 0;
    TrmControl* found_ = 0;
    // kItems: which controls give an item, written with writer_.
    const void* var_ = 0;   // those bound to this variable (a radio group shares one)
    uint8_t group_of_ = 0;  // those of this group
    bool layout_ = false;   // layout items instead of value items
    TrmWriter* writer_ = 0;
    uint32_t items_ = 0;
    // kCount
    uint8_t controls_ = 0;
    uint8_t messages_ = 0;
    uint8_t visible_ = 0;
    uint16_t messageBytes_ = 0;
    uint16_t settings_ = 0;
    TrmText title_ = 0;
};

typedef void (*TrmDescribe)(TrmPanel& panel);

class Tremolanth {
public:
    // constexpr: a global device needs no start-up code.
    constexpr Tremolanth(Stream& stream, TrmDescribe describe)
        : stream_(stream), describe_(describe) {}

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
    enum State : uint8_t { kHunt, kHead, kCount, kItemHead, kItemData };
    enum Mode : uint8_t { kModeSkip, kModeDirect, kModeScratch, kModePassword };

    void run(TrmPanel& panel) { describe_(panel); }
    bool find(uint16_t key, TrmControl* out);
    bool hiddenBit(uint8_t index) const;
    void setHiddenBit(uint8_t index, bool hidden);
    void sendPanel();
    // A value (type 9) or layout (type 16) update of the controls a TrmPanel kItems pass picks.
    void sendItems(uint8_t type, uint8_t key, const void* var, uint8_t group, bool layout);
    void writeRecord(TrmWriter& w, const TrmControl& c);
    bool writeValue(TrmWriter& w, const TrmControl& c);
    void sendFile(const TrmControl& c);

    void nextItem();
    void accumulate(uint8_t byte);
    void startItem(uint16_t key, uint16_t size);
    void itemByte(uint8_t byte);
    uint8_t finishItem();
    uint8_t applyItem(TrmControl& c);
    void passwordFieldDone();

    Stream& stream_;
    TrmDescribe describe_;
    uint8_t hidden_[(TRM_MAX_CONTROLS + 7) / 8] = {};
    bool connected_ = false;
    uint8_t lastPopup_ = 0;
    TrmError error_ = kTrmErrorNone;

    // The frame reader.
    State state_ = kHunt;
    uint8_t matched_ = 0;  // marker bytes seen in a row
    uint8_t at_ = 0;       // byte of the head, count or item head
    uint8_t type_ = 0;
    Mode mode_ = kModeSkip;
    uint8_t password_ = 0;  // bits of a password item being read
    uint16_t itemKey_ = 0;
    uint8_t blobKey_ = 0;   // a Blob item was read: its empty trailer may follow
    uint16_t acc_ = 0;      // the low half of the word being read
    bool accHigh_ = false;  // its high half is not zero
    uint16_t items_ = 0;    // items of the value message still to come
    uint16_t left_ = 0;     // bytes of the item still to come
    uint16_t pos_ = 0;      // bytes of the item read
    uint8_t* dest_ = 0;
    uint16_t capacity_ = 0;
    uint8_t scratch_[TRM_PASSWORD_CHARS + 1 > 8 ? TRM_PASSWORD_CHARS + 1 : 8] = {};
};

#endif  // TREMOLANTH_H
