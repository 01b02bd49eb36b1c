#include "device/demo/demo_apply.h"

#include "device/values.h"
#include "device/wire_text.h"

#include <algorithm>

namespace demo {

using namespace dev;

namespace {

constexpr std::uint8_t kIconStop = 2;

bool IsValidDate(const DateTime& t) {
    static const int days[12] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    if (t.month < 1 || t.month > 12 || t.day < 1) return false;
    const bool leap = (t.year % 4 == 0 && t.year % 100 != 0) || t.year % 400 == 0;
    const int last = days[t.month - 1] + (t.month == 2 && leap ? 1 : 0);
    return t.day <= last && t.hour < 24 && t.minute < 60 && t.second >= 0 && t.second < 60;
}

// The status line is sent once, after the whole message was applied.
void SetStatus(DemoState& state, std::string text) { state.status = std::move(text); }

void Popup(Reaction* reaction, std::string text, std::uint8_t icon) {
    reaction->popup = true;
    reaction->popupText = std::move(text);
    reaction->popupIcon = icon;
}

void ApplyPassword(DemoState& state, const Bytes& data, Reaction* reaction) {
    PasswordFields fields;
    if (!ReadPasswordFields(data, false, &fields)) return;
    const bool wasLoggedIn = state.loggedIn;
    if (fields.first.empty() && fields.second.empty()) {
        state.loggedIn = false;
        SetStatus(state, "Logged out");
    } else if (fields.second.empty()) {
        state.loggedIn = fields.first == state.password;
        if (state.loggedIn) {
            SetStatus(state, "Service login accepted");
        } else {
            SetStatus(state, "Wrong password");
            Popup(reaction, "Wrong password.", kIconStop);
        }
    } else if (fields.first == state.password) {
        state.password = fields.second;
        SetStatus(state, "Password changed");
    } else {
        SetStatus(state, "Password not changed");
        Popup(reaction, "The old password is wrong.", kIconStop);
    }
    reaction->values.push_back(PasswordItem(state));
    if (state.loggedIn != wasLoggedIn) {
        for (Item& item : GuardedLayout(state)) reaction->layouts.push_back(std::move(item));
    }
}

void ApplyItem(DemoState& state, const ValueItem& item, Reaction* reaction) {
    std::uint8_t byte = 0;
    std::int32_t number = 0;
    DateTime time;
    switch (item.key) {
    case kKeyName:
        state.name = TextFromBytes(item.data.data(), item.data.size(), false);
        reaction->values.push_back({kKeyName, TextValue(state.name, kTextBytes, false)});
        SetStatus(state, "Name set to " + state.name);
        break;
    case kKeyHello:
        if (ReadByte(item.data, &byte) && byte != 0) {
            Popup(reaction, "Hello, " + state.name + "!", 0);
            SetStatus(state, "Said hello");
        }
        break;
    case kKeyLamp:
    case kKeyFan:
        if (!ReadByte(item.data, &byte)) break;
        (item.key == kKeyLamp ? state.lamp : state.fan) = byte != 0;
        reaction->values.push_back({item.key, ByteValue(byte != 0 ? 255 : 0)});
        SetStatus(state, std::string(item.key == kKeyLamp ? "Lamp " : "Fan ") +
                             (byte != 0 ? "on" : "off"));
        break;
    case kKeySpeedLow:
    case kKeySpeedMedium:
    case kKeySpeedHigh:
        // The client sends the whole group, cleared boxes included; the ticked one wins.
        if (ReadByte(item.data, &byte) && byte != 0) {
            state.speed = static_cast<int>(item.key - kKeySpeedLow);
        }
        break;
    case kKeySetPoint:
        if (!ReadInt32(item.data, &number)) break;
        state.setPoint = std::clamp(number, kSetPointMin, kSetPointMax);
        reaction->values.push_back({kKeySetPoint, Int32Value(state.setPoint)});
        break;
    case kKeyAlarm:
        if (DecodeDateTime(item.data.data(), item.data.size(), &time) && IsValidDate(time)) {
            time.weekday = WeekdayOf(time.year, time.month, time.day);
            state.alarm = time;
            SetStatus(state, "Alarm set");
        }
        reaction->values.push_back({kKeyAlarm, DateTimeValue(state.alarm)});
        break;
    case kKeyMode:
        if (!ReadInt32(item.data, &number)) break;
        state.mode = std::clamp(number, 0, 3);
        reaction->values.push_back({kKeyMode, Int32Value(state.mode)});
        break;
    case kKeyReload:
        reaction->reload = true;
        break;
    case kKeyAdvanced:
        if (!ReadByte(item.data, &byte)) break;
        state.advancedOpen = byte != 0;
        reaction->values.push_back({kKeyAdvanced, ByteValue(state.advancedOpen ? 255 : 0)});
        for (Item& layout : SectionLayout(state)) reaction->layouts.push_back(std::move(layout));
        break;
    case kKeyPin:
        state.pin = TextFromBytes(item.data.data(), item.data.size(), false);
        reaction->values.push_back({kKeyPin, TextValue(state.pin, kTextBytes, false)});
        SetStatus(state, "PIN changed");
        break;
    case kKeyLogo:
        SetStatus(state, "Logo pressed");
        break;
    case kKeyService:
        ApplyPassword(state, item.data, reaction);
        break;
    case kKeyOffset:
        if (!state.loggedIn || !ReadInt32(item.data, &number)) break;
        state.offset = std::clamp(number, kOffsetMin, kOffsetMax);
        reaction->values.push_back({kKeyOffset, Int32Value(state.offset)});
        break;
    case kKeyReport:
        if (!state.loggedIn) break;
        reaction->pushReport = true;
        SetStatus(state, "Report sent");
        break;
    default:
        break;  // the Manual blob and the Messages' answers change nothing here
    }
}

}  // namespace

void ApplyValues(DemoState& state, const ClientMessage& message, Reaction* reaction) {
    const std::string statusBefore = state.status;
    bool speedTouched = false;
    for (const ValueItem& item : message.items) {
        if (item.blobTrailer) continue;
        ApplyItem(state, item, reaction);
        speedTouched |= item.key >= kKeySpeedLow && item.key <= kKeySpeedHigh;
    }
    if (speedTouched) {
        for (int i = 0; i < 3; ++i) reaction->values.push_back(SpeedItem(state, i));
        static const char* const names[] = {"low", "medium", "high"};
        SetStatus(state, std::string("Speed ") + names[state.speed]);
    }
    if (state.status != statusBefore) reaction->values.push_back(StatusItem(state));
}

}  // namespace demo
