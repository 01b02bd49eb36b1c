#include "panel/settings_forms.h"

#include "model/device_settings.h"

#include <limits>

std::int32_t ParseNumberField(std::u16string_view text) {
    std::size_t at = 0;
    while (at < text.size() && (text[at] == u' ' || (text[at] >= u'\t' && text[at] <= u'\r'))) {
        ++at;
    }
    bool negative = false;
    if (at < text.size() && (text[at] == u'-' || text[at] == u'+')) negative = text[at++] == u'-';
    // Accumulated as a negative number, whose range reaches the 32-bit minimum.
    constexpr std::int64_t kMin = std::numeric_limits<std::int32_t>::min();
    std::int64_t value = 0;
    for (; at < text.size() && text[at] >= u'0' && text[at] <= u'9'; ++at) {
        value = value * 10 - (text[at] - u'0');
        if (value < kMin) value = kMin;
    }
    if (!negative) value = value == kMin ? -(kMin + 1) : -value;
    return static_cast<std::int32_t>(value);
}

std::u16string NumberFieldText(std::int32_t value) {
    std::string digits = std::to_string(value);
    return std::u16string(digits.begin(), digits.end());
}

LayoutChoice ReadLayoutChoice(std::uint32_t controlId) {
    return {ReadDeviceSetting(controlId, kSettingLayoutStyle, 0),
            ReadDeviceSetting(controlId, kSettingLayoutFastKey, 0),
            ReadDeviceSetting(controlId, kSettingLayoutValueShow, 0),
            ReadDeviceSetting(controlId, kSettingLayoutTitleLength, 0)};
}

void SaveLayoutChoice(std::uint32_t controlId, const LayoutChoice& choice) {
    auto save = [controlId](std::uint32_t kind, std::int32_t value) {
        WriteDeviceSetting(controlId, kind, static_cast<std::uint32_t>(value));
    };
    save(kSettingLayoutTitleLength, choice.titleLength);
    save(kSettingLayoutStyle, choice.style);
    save(kSettingLayoutFastKey, choice.fastKey);
    save(kSettingLayoutValueShow, choice.valueShow);
}

std::int32_t ChosenIndex(int selection) { return selection < 0 ? 0 : selection; }

PingsForm PingsFormFor(std::int32_t storedSeconds) {
    if (storedSeconds == 0) return {false, NumberFieldText(kDefaultPingSeconds)};
    return {true, NumberFieldText(storedSeconds)};
}

std::int32_t PingSecondsFrom(bool enabled, std::u16string_view seconds) {
    return enabled ? ParseNumberField(seconds) : 0;
}
