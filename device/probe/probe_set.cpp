#include "device/probe/probe_set.h"

#include "device/date_time.h"
#include "link/password_send.h"
#include "link/value_encoder.h"
#include "model/control_store.h"
#include "platform/utf.h"

#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstring>

namespace probe {

namespace {

constexpr std::int32_t kNotApplied = 1;

template <typename T>
bool Whole(const std::string& text, T* out) {
    auto [p, ec] = std::from_chars(text.data(), text.data() + text.size(), *out);
    return !text.empty() && ec == std::errc() && p == text.data() + text.size();
}

bool ByteOf(const std::string& value, std::uint8_t* out) {
    if (value == "on" || value == "press") return *out = 255, true;
    if (value == "off") return *out = 0, true;
    return Whole(value, out);
}

void PutUnits(const std::u16string& units, std::vector<std::uint8_t>* out) {
    out->resize((units.size() + 1) * 2, 0);  // with its terminator
    std::memcpy(out->data(), units.data(), units.size() * 2);
}

bool HexBytes(const std::string& hex, std::vector<std::uint8_t>* out) {
    if (hex.size() % 2) return false;
    for (std::size_t i = 0; i < hex.size(); i += 2) {
        std::uint8_t b = 0;
        auto [p, ec] = std::from_chars(hex.data() + i, hex.data() + i + 2, b, 16);
        if (ec != std::errc() || p != hex.data() + i + 2) return false;
        out->push_back(b);
    }
    return true;
}

bool DateTimeBytes(const std::string& value, std::vector<std::uint8_t>* out) {
    int year, month, day, hour, minute, second = 0, used = 0;
    const int n = std::sscanf(value.c_str(), "%d-%d-%d %d:%d%n:%d%n", &year, &month, &day, &hour,
                              &minute, &used, &second, &used);
    if (n < 5 || static_cast<std::size_t>(used) != value.size() || year < 0 || year > 65535 ||
        month < 1 || month > 12 || day < 1 || day > 31 || hour < 0 || hour > 23 || minute < 0 ||
        minute > 59 || second < 0 || second > 59) {
        return false;
    }
    dev::DateTime t;
    t.year = static_cast<std::uint16_t>(year);
    t.month = static_cast<std::uint8_t>(month);
    t.day = static_cast<std::uint8_t>(day);
    t.hour = static_cast<std::uint8_t>(hour);
    t.minute = static_cast<std::uint8_t>(minute);
    t.second = static_cast<std::int8_t>(second);
    t.weekday = dev::WeekdayOf(year, month, day);
    *out = dev::EncodeDateTime(t);
    return true;
}

// A number as shown, back to the integer the control holds.
bool ScaledBytes(const ControlRecord& r, const std::string& value, std::vector<std::uint8_t>* out) {
    double shown = 0;
    auto [p, ec] = std::from_chars(value.data(), value.data() + value.size(), shown);
    if (value.empty() || ec != std::errc() || p != value.data() + value.size()) return false;
    const double raw = std::round(shown / std::pow(10.0, r.exponent));
    if (!(raw >= INT32_MIN && raw <= INT32_MAX)) return false;
    const auto v = static_cast<std::int32_t>(raw);
    out->resize(4);
    std::memcpy(out->data(), &v, 4);
    return true;
}

bool Int32Bytes(const std::string& value, std::vector<std::uint8_t>* out) {
    std::int32_t v = 0;
    if (!Whole(value, &v)) return false;
    out->resize(4);
    std::memcpy(out->data(), &v, 4);
    return true;
}

}  // namespace

bool ProbeValueBytes(const ControlRecord& r, const std::string& value,
                     std::vector<std::uint8_t>* out, std::string* error) {
    out->clear();
    bool ok = true;
    std::uint8_t byte = 0;
    switch (r.type) {
    case kTypeText:
        PutUnits(plat::Utf8ToUtf16(value), out);
        break;
    case kTypeButton:
        if (value.empty()) byte = 255;
        else ok = ByteOf(value, &byte);
        out->assign(1, byte);
        break;
    case kTypeCheckBox:
    case kTypeSection:
    case kTypeMessage:
        ok = ByteOf(value, &byte);
        out->assign(1, byte);
        break;
    case kTypeDateTime:
        ok = DateTimeBytes(value, out);
        break;
    case kTypeNumber:
        ok = ScaledBytes(r, value, out);
        break;
    case kTypeList:
        ok = Int32Bytes(value, out);
        break;
    case kTypeBlob:
        if (value.rfind("hex:", 0) == 0) ok = HexBytes(value.substr(4), out);
        else PutUnits(plat::Utf8ToUtf16(value), out);
        break;
    default:
        break;  // files and image take a press (no bytes); the rest take nothing
    }
    if (!ok) *error = "\"" + value + "\" is not a value for control " + std::to_string(r.controlKey);
    return ok;
}

std::int32_t StoreProbeSet(const ProbeSet& set, std::string* error) {
    ControlRecord record;
    if (!CopyControl(set.key, &record)) {
        *error = "no control has key " + std::to_string(set.key);
        return kNotApplied;
    }
    if (record.type == kTypePassword) {
        return SubmitPassword(set.key, plat::Utf8ToUtf16(set.value).c_str());
    }
    std::vector<std::uint8_t> bytes;
    if (!ProbeValueBytes(record, set.value, &bytes, error)) return kNotApplied;
    // A ticked radio button clears its group first, as the panel does.
    if (record.type == kTypeCheckBox && record.group != 0 && !bytes.empty() && bytes[0] != 0) {
        ClearRadioGroup(record.group);
    }
    static const std::uint8_t kNone = 0;  // a press carries no bytes
    return SetControlValue(set.key, bytes.empty() ? &kNone : bytes.data(), bytes.size());
}

std::int32_t ApplyProbeChange(const ProbeChange& change) {
    const std::u16string oldText = plat::Utf8ToUtf16(change.oldPassword);
    const std::u16string newText = plat::Utf8ToUtf16(change.newPassword);
    std::int32_t rc = ChangePassword(change.key, oldText.c_str(), newText.c_str());
    // After a change the client logs out, so that the user logs in with the new password.
    if (rc == 0) LogOut(change.key);
    return rc;
}

}  // namespace probe
