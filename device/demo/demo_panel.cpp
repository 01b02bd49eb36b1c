#include "device/demo/demo_panel.h"

#include "device/control_flags.h"
#include "device/demo/demo_assets.h"
#include "device/values.h"

#include <algorithm>
#include <iterator>

namespace demo {

using namespace dev;

namespace {

// Panel order around the Messages; the Messages stand at positions kBefore.size() onwards.
constexpr std::uint32_t kBefore[] = {
    kKeyStatus, kKeyName, kKeyHello, kKeyLamp, kKeyFan, kKeySpeedLow, kKeySpeedMedium,
    kKeySpeedHigh, kKeySetPoint, kKeyTemperature, kKeyAlarm, kKeyMode, kKeyLog, kKeyReadings,
    kKeyReload};
constexpr std::uint32_t kAfter[] = {kKeyAdvanced, kKeyPin, kKeyManual, kKeyLogo,
                                    kKeyService, kKeyOffset, kKeyReport};
constexpr std::uint32_t kFirstMessagePosition = static_cast<std::uint32_t>(std::size(kBefore));
constexpr std::uint32_t kPingSettingKind = 768;
constexpr std::uint32_t kLayoutStyleKind = 336;
constexpr std::uint32_t kTitleLengthKind = 448;
constexpr std::uint32_t kValueShowKind = 464;
constexpr std::uint32_t kTitleLength = 20;
constexpr std::uint32_t kShowAfterColon = 4;  // "Title: value"
constexpr std::uint32_t kShowTitleOnly = 1;
constexpr std::uint32_t kStyleDataTable = 3;

// Controls whose row shows a value after the title.
constexpr std::uint32_t kValueRows[] = {kKeyStatus, kKeyName, kKeySetPoint, kKeyTemperature,
                                        kKeyAlarm, kKeyMode, kKeyPin, kKeyOffset};

constexpr std::uint32_t kLogFlags = kSamplesDateTime | kDataWidth16 | (1u << kDataStyleShift);
constexpr std::uint32_t kReadingsFlags = kUtf16 | kSamplesNumeric;
constexpr std::uint32_t kAlarmFields =
    kFieldMinute | kFieldHour | kFieldWeekday | kFieldDay | kFieldMonth | kFieldYear;
constexpr std::uint32_t kNumberLimits = kEditable | kMinimumApplies | kMaximumApplies;

template <std::size_t N>
bool Contains(const std::uint32_t (&keys)[N], std::uint32_t key) {
    return std::find(std::begin(keys), std::end(keys), key) != std::end(keys);
}

ControlHead Head(const DemoState& state, std::uint32_t key, std::uint32_t flags,
                 const char* label) {
    if (DemoIsHidden(state, key)) flags |= kHidden;
    return {key, flags, label, std::nullopt};
}

ChartParams LogParams() {
    ChartParams params;
    params.rowCapacity = kLogRows;
    params.seriesCount = 2;
    params.sampleUnits = "%HH%:%mm%:%ss%";
    params.dataUnits = "%f \u00B0C";
    params.axisCaption = "Time";
    params.seriesNames = {"Temperature", "Set point"};
    params.dataDecimals = 1;
    params.dataExponent = -1;
    return params;
}

ChartParams ReadingsParams() {
    ChartParams params;
    params.rowCapacity = kReadingRows;
    params.seriesCount = kReadingSeries;
    params.sampleUnits = "#%d";
    params.dataUnits = "%f mV";
    params.axisCaption = "Reading";
    params.seriesNames = {"Sensor A", "Sensor B", "Sensor C"};
    return params;
}

// A number in tenths, shown with one decimal.
NumberParams Tenths(std::int32_t value, std::optional<std::int32_t> minimum,
                  std::optional<std::int32_t> maximum, const char* format) {
    NumberParams params;
    params.value = value;
    params.minimum = minimum;
    params.maximum = maximum;
    params.decimals = 1;
    params.exponent = -1;
    params.format = format;
    return params;
}

}  // namespace

DemoState MakeDemoState() {
    DemoState state;
    state.alarm = DateTime{0, 30, 7, 1, WeekdayOf(2030, 1, 1), 1, 2030};
    state.log = MakeChartRing(kLogFlags, kLogRows, 2);
    state.readings = MakeChartRing(kReadingsFlags, kReadingRows, kReadingSeries);
    return state;
}

bool DemoIsHidden(const DemoState& state, std::uint32_t key) {
    switch (key) {
    case kKeyPin:
    case kKeyManual:
    case kKeyLogo:
        return !state.advancedOpen;
    case kKeyOffset:
    case kKeyReport:
        return !state.loggedIn;
    default:
        return key >= kKeyMessageFirst;
    }
}

bool DemoIsBlob(std::uint32_t key) { return key == kKeyManual; }

std::uint32_t DemoVisibleRows(const DemoState& state) {
    std::uint32_t rows = 0;
    for (std::uint32_t key : kBefore) rows += DemoIsHidden(state, key) ? 0 : 1;
    for (std::uint32_t key : kAfter) rows += DemoIsHidden(state, key) ? 0 : 1;
    return rows;
}

std::uint32_t DemoMessageFor(const DemoState& state) {
    const std::uint32_t rows = DemoVisibleRows(state);
    if (rows < kFirstMessagePosition || rows >= kFirstMessagePosition + kMessageCount) return 0;
    return kKeyMessageFirst + (rows - kFirstMessagePosition);
}

std::vector<Record> DemoRecords(const DemoState& s) {
    std::vector<Record> r;
    r.push_back(TextRecord(Head(s, kKeyStatus, kUtf16, "Status"), s.status, kStatusBytes));
    r.push_back(TextRecord(Head(s, kKeyName, kEditable, "Name"), s.name, kTextBytes));
    r.push_back(ButtonRecord(Head(s, kKeyHello, 0, "Say hello")));
    r.push_back(CheckBoxRecord(Head(s, kKeyLamp, 0, "Lamp"), s.lamp, 0));
    r.push_back(CheckBoxRecord(Head(s, kKeyFan, 0, "Fan"), s.fan, 0));
    r.push_back(CheckBoxRecord(Head(s, kKeySpeedLow, 0, "Speed low"), s.speed == 0, 1));
    r.push_back(CheckBoxRecord(Head(s, kKeySpeedMedium, 0, "Speed medium"), s.speed == 1, 1));
    r.push_back(CheckBoxRecord(Head(s, kKeySpeedHigh, 0, "Speed high"), s.speed == 2, 1));
    r.push_back(NumberRecord(Head(s, kKeySetPoint, kNumberLimits | kNumberFixed, "Set point"),
                             Tenths(s.setPoint, kSetPointMin, kSetPointMax, "%f \u00B0C")));
    r.push_back(NumberRecord(Head(s, kKeyTemperature, kUtf16 | kNumberFixed, "Temperature"),
                             Tenths(s.temperature, std::nullopt, std::nullopt, "%f \u00B0C")));
    r.push_back(DateTimeRecord(Head(s, kKeyAlarm, kEditable | kAlarmFields, "Alarm"), s.alarm,
                               "%ddd% %dd%/%MM%/%yyyy% %HH%:%mm%"));
    r.push_back(ListRecord(Head(s, kKeyMode, 0, "Mode"), {"Off", "Eco", "Comfort", "Boost"},
                           s.mode));
    r.push_back(ChartRecord(Head(s, kKeyLog, kLogFlags, "Temperature log"), LogParams(),
                            ChartBlock(s.log, false)));
    r.push_back(ChartRecord(Head(s, kKeyReadings, kReadingsFlags, "Readings"), ReadingsParams(),
                            ChartBlock(s.readings, true)));
    r.push_back(ButtonRecord(Head(s, kKeyReload, 0, "Reload panel")));
    for (std::uint32_t i = 0; i < kMessageCount; ++i) {
        r.push_back(MessageRecord(Head(s, kKeyMessageFirst + i, 0, ""), "", kMessageBytes));
    }
    r.push_back(SectionRecord(Head(s, kKeyAdvanced, 0, "Advanced"), s.advancedOpen));
    r.push_back(TextRecord(Head(s, kKeyPin, kEditable | kMasked, "PIN"), s.pin, kTextBytes));
    r.push_back(BlobTextRecord(Head(s, kKeyManual, kForBrowser | kEditable, "Manual"),
                               kManualAddress));
    r.push_back(ImageRecord(Head(s, kKeyLogo, kEditable, "Logo"), DemoLogoBitmap()));
    r.push_back(PasswordRecord(Head(s, kKeyService, kEditable, "Service login"), s.loggedIn));
    r.push_back(NumberRecord(Head(s, kKeyOffset, kNumberLimits | kNumberFixed, "Calibration"),
                             Tenths(s.offset, kOffsetMin, kOffsetMax, "%f K")));
    r.push_back(FilesRecord(Head(s, kKeyReport, kForBrowser, "Report")));
    return r;
}

std::vector<Setting> DemoSettings(std::uint32_t pingSeconds) {
    std::vector<Setting> settings{{0, kPingSettingKind, pingSeconds}};
    auto rowLayout = [&](std::uint32_t key) {
        settings.push_back({key, kTitleLengthKind, kTitleLength});
        settings.push_back(
            {key, kValueShowKind, Contains(kValueRows, key) ? kShowAfterColon : kShowTitleOnly});
    };
    for (std::uint32_t key : kBefore) rowLayout(key);
    for (std::uint32_t key : kAfter) rowLayout(key);
    settings.push_back({kKeyReadings, kLayoutStyleKind, kStyleDataTable});
    return settings;
}

Item StatusItem(const DemoState& state) {
    return {kKeyStatus, TextValue(state.status, kStatusBytes, true)};
}

Item SpeedItem(const DemoState& state, int index) {
    return {kKeySpeedLow + static_cast<std::uint32_t>(index),
            ByteValue(state.speed == index ? 255 : 0)};
}

Item TemperatureItem(const DemoState& state) {
    return {kKeyTemperature, Int32Value(state.temperature)};
}

Item LogItem(const DemoState& state) { return {kKeyLog, ChartValue(state.log, false)}; }

Item ReadingsItem(const DemoState& state) {
    return {kKeyReadings, ChartValue(state.readings, true)};
}

Item PasswordItem(const DemoState& state) {
    return {kKeyService, ByteValue(state.loggedIn ? 1 : 0)};
}

std::vector<Item> SectionLayout(const DemoState& state) {
    std::vector<Item> items;
    for (std::uint32_t key : {kKeyPin, kKeyManual, kKeyLogo}) {
        Layout layout;
        layout.hidden = !state.advancedOpen;
        layout.bringIntoView = state.advancedOpen && key == kKeyLogo;
        items.push_back({key, LayoutValue(layout)});
    }
    return items;
}

std::vector<Item> GuardedLayout(const DemoState& state) {
    std::vector<Item> items;
    for (std::uint32_t key : {kKeyOffset, kKeyReport}) {
        Layout layout;
        layout.hidden = !state.loggedIn;
        layout.bringIntoView = state.loggedIn && key == kKeyReport;
        items.push_back({key, LayoutValue(layout)});
    }
    return items;
}

}  // namespace demo
