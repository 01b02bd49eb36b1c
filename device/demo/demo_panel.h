// The demo panel: what the demo device shows and the state behind it.
#pragma once

#include "device/chart_ring.h"
#include "device/date_time.h"
#include "device/messages.h"
#include "device/records.h"

#include <cstdint>
#include <string>
#include <vector>

namespace demo {

enum Key : std::uint32_t {
    kKeyStatus = 1,
    kKeyName = 2,
    kKeyHello = 3,
    kKeyLamp = 4,
    kKeyFan = 5,
    kKeySpeedLow = 6,
    kKeySpeedMedium = 7,
    kKeySpeedHigh = 8,
    kKeySetPoint = 9,
    kKeyTemperature = 10,
    kKeyAlarm = 11,
    kKeyMode = 12,
    kKeyLog = 13,
    kKeyReadings = 14,
    kKeyReload = 15,
    kKeyAdvanced = 20,  // section
    kKeyPin = 21,       // under the section
    kKeyManual = 22,    // under the section
    kKeyLogo = 23,      // under the section
    kKeyService = 30,   // password
    kKeyOffset = 31,    // guarded by the password
    kKeyReport = 32,    // guarded by the password
    kKeyMessageFirst = 100,
};

// A message pops up only from the position equal to the client's row count, so the panel
// carries one Message per possible row count (see DemoMessageFor).
inline constexpr std::uint32_t kMessageCount = 8;

inline constexpr std::uint32_t kTextBytes = 32;     // Name, PIN: 8-bit texts
inline constexpr std::uint32_t kStatusBytes = 96;   // Status: UTF-16, 47 characters
inline constexpr std::uint32_t kMessageBytes = 128;
inline constexpr std::int32_t kSetPointMin = 50, kSetPointMax = 300;  // tenths of a degree
inline constexpr std::int32_t kOffsetMin = -50, kOffsetMax = 50;
inline constexpr std::uint32_t kLogRows = 60;
inline constexpr std::uint32_t kReadingRows = 12;
inline constexpr std::uint32_t kReadingSeries = 3;
inline const char* const kDefaultPassword = "1234";
inline const char* const kPanelName = "Tremolanth Demo";
inline const char* const kManualAddress = "https://www.example.com/";
inline const char* const kReportName = "report.html";

struct DemoState {
    std::string status = "Ready";
    std::string name = "World";
    bool lamp = false;
    bool fan = true;
    int speed = 1;  // 0 low, 1 medium, 2 high
    std::int32_t setPoint = 215;
    std::int32_t temperature = 198;
    dev::DateTime alarm;
    std::int32_t mode = 1;
    bool advancedOpen = false;
    std::string pin;
    bool loggedIn = false;
    std::string password = kDefaultPassword;
    std::int32_t offset = 0;
    dev::ChartRing log;
    dev::ChartRing readings;
    std::uint32_t readingNumber = 0;
    std::uint32_t noise = 12345;  // the simulation's pseudo-random state
};

DemoState MakeDemoState();

// The records in panel order, flags reflecting what is hidden now.
std::vector<dev::Record> DemoRecords(const DemoState& state);
bool DemoIsBlob(std::uint32_t key);
bool DemoIsHidden(const DemoState& state, std::uint32_t key);
// Rows the client shows now: the controls that are neither hidden nor Messages.
std::uint32_t DemoVisibleRows(const DemoState& state);
// The Message that the client will show for the row count of the state, or 0 when there is
// none.
std::uint32_t DemoMessageFor(const DemoState& state);

// The settings sent at connect: ping period and each control's row layout.
std::vector<dev::Setting> DemoSettings(std::uint32_t pingSeconds);

// What the device shows for the state, as value update items.
dev::Item StatusItem(const DemoState& state);
dev::Item SpeedItem(const DemoState& state, int index);
dev::Item TemperatureItem(const DemoState& state);
dev::Item LogItem(const DemoState& state);
dev::Item ReadingsItem(const DemoState& state);
dev::Item PasswordItem(const DemoState& state);
// Layout items showing or hiding the controls that depend on the section or the password.
std::vector<dev::Item> SectionLayout(const DemoState& state);
std::vector<dev::Item> GuardedLayout(const DemoState& state);

}  // namespace demo
