#include "panel/row_text.h"

#include "model/control_store.h"
#include "model/device_settings.h"
#include "panel/control_styles.h"
#include "panel/datetime_text.h"
#include "panel/number_text.h"
#include "panel/row_image_index.h"

#include <string_view>
#include <vector>

namespace {

constexpr std::int32_t kMaxTitleLength = 512;
constexpr std::size_t kTextValueLimit = 1021;

char16_t g_rowText[kRowTextSize];

enum ValueShow : std::int32_t {
    kShowBare = 0,
    kShowNothing = 1,
    kShowSpace = 2,
    kShowColon = 3,
    kShowColonSpace = 4,
};

// Appends to the shared buffer, never beyond its last character.
struct RowWriter {
    std::size_t length = 0;
    void Append(std::u16string_view text) {
        for (char16_t c : text) {
            if (length + 1 >= kRowTextSize) break;
            g_rowText[length++] = c;
        }
        g_rowText[length] = u'\0';
    }
    char16_t* End() { return g_rowText + length; }
    std::size_t Room() const { return kRowTextSize - length; }
    void Settle() {  // after a formatter wrote at End()
        while (g_rowText[length] != u'\0') ++length;
    }
};

std::uint8_t ReadByte(std::uint32_t id) {
    std::uint8_t value = 0;
    std::size_t size = 1;
    GetControlValue(id, &value, &size);
    return value;
}

std::int32_t ReadWord(std::uint32_t id) {
    std::int32_t value = 0;
    std::size_t size = sizeof value;
    GetControlValue(id, &value, &size);
    return value;
}

std::u16string ReadText(std::uint32_t id) {
    std::size_t size = 0;
    GetControlValue(id, nullptr, &size);
    std::vector<char16_t> units(size / 2 + 1, u'\0');
    GetControlValue(id, units.data(), &size);
    return std::u16string(units.data());
}

// The item at index of zero-terminated items; empty when the items end before it.
std::u16string_view ListItem(const std::u16string& items, std::int32_t index) {
    std::size_t start = 0;
    for (std::int32_t i = 0; i < index; ++i) {
        std::size_t end = items.find(u'\0', start);
        if (end == std::u16string::npos) return {};
        start = end + 1;
    }
    if (start >= items.size()) return {};
    std::size_t end = items.find(u'\0', start);
    return std::u16string_view(items).substr(start, end == std::u16string::npos
                                                        ? std::u16string::npos
                                                        : end - start);
}

const char16_t* Separator(std::int32_t show) {
    switch (show) {
    case kShowSpace: return u" ";
    case kShowColon: return u":";
    case kShowColonSpace: return u": ";
    default: return u"";
    }
}

// Appends the value part; false when the whole row text must be empty.
bool AppendValue(RowWriter& row, const ControlRecord& r) {
    const std::uint32_t id = r.controlKey;
    switch (r.type) {
    case kTypeText: {
        std::u16string text = ReadText(id);
        std::size_t limit = row.length < kTextValueLimit ? kTextValueLimit - row.length : 0;
        if (text.size() > limit) text.resize(limit);
        if (r.flags & kFlagMinimum) text.assign(text.size(), u'*');
        row.Append(text);
        return true;
    }
    case kTypeDateTime: {
        DateTimeValue value;
        std::size_t size = sizeof value;
        GetControlValue(id, &value, &size);
        ExpandDateTimeTemplate(row.End(), row.Room(), value, r.format);
        row.Settle();
        return true;
    }
    case kTypeNumber:
        FormatScaledNumber(row.End(), row.Room(), ReadWord(id), NumberStyleFromFlags(r.flags),
                           r.format, r.decimals, r.exponent, false);
        row.Settle();
        return true;
    case kTypeList: {
        std::int32_t index = ReadWord(id);
        if (index < 0 || static_cast<std::uint32_t>(index) >= r.itemCount) return false;
        row.Append(ListItem(r.items, index));
        return true;
    }
    case kTypeButton:
    case kTypeCheckBox:
    case kTypeSection:
    case kTypeChart:
    case kTypePassword:
    case kTypeBlob:
    case kTypeFiles:
    case kTypeUnknown:
    case kTypeImage:
        // No value text of its own: the title stands in (the layout can switch it off).
        row.Append(r.label);
        return true;
    default:
        return false;
    }
}

}  // namespace

const char16_t* ComposeRowText(std::uint32_t controlId) {
    ControlsHold hold;
    const ControlRecord* r = FindControl(controlId);
    if (!r || r->type == kTypeMessage || !IsValidControlType(r->type)) return u"";
    std::int32_t titleLength = ReadDeviceSetting(controlId, kSettingLayoutTitleLength, 0);
    std::int32_t show = ReadDeviceSetting(controlId, kSettingLayoutValueShow, 0);
    if (titleLength < 0 || titleLength > kMaxTitleLength) titleLength = kMaxTitleLength;

    RowWriter row;
    row.Append(u" ");
    row.Append(std::u16string_view(r->label).substr(0, static_cast<std::size_t>(titleLength)));
    if (show == kShowNothing) return g_rowText;
    row.Append(Separator(show));
    if (!AppendValue(row, *r)) return u"";
    return g_rowText;
}

int RowImage(std::uint32_t controlId) {
    ControlsHold hold;
    const ControlRecord* r = FindControl(controlId);
    if (!r) return -1;
    const bool variant = (r->flags & kFlagVariant) != 0;
    switch (r->type) {
    case kTypeText: return variant ? kImageTextEditable : kImageText;
    case kTypeButton: return kImageButton;
    case kTypeCheckBox: {
        bool on = ReadByte(controlId) != 0;
        if (r->group != 0) return on ? kImageRadioOn : kImageRadioOff;
        return on ? kImageCheckOn : kImageCheckOff;
    }
    case kTypeSection: return ReadByte(controlId) ? kImageSectionOn : kImageSectionOff;
    case kTypeDateTime: return kImageDateTime;
    case kTypeNumber:
        if (!variant) return kImageNumberReadOnly;
        return ReadDeviceSetting(controlId, kSettingLayoutStyle, 0) == kStyleNumberNoSpin
                   ? kImageNumberNoSpin
                   : kImageNumber;
    case kTypeChart: return kImageChart;
    case kTypePassword: return ReadByte(controlId) ? kImagePasswordIn : kImagePasswordOut;
    case kTypeList:
        return ReadDeviceSetting(controlId, kSettingLayoutStyle, 0) == kStyleListNoSpin
                   ? kImageListNoSpin
                   : kImageList;
    case kTypeBlob: return kImageBlob;
    case kTypeFiles: return kImageFiles;
    case kTypeUnknown: return kImageUnknown;
    case kTypeImage: return variant ? kImageButton : kImageUnknown;
    default: return 0;
    }
}
