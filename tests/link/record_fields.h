// A record's fields that differ from a fresh record's, as "name=value" words: one line holds
// a decoded record's whole expected state, and a field set by mistake shows up too.
#pragma once

#include "model/control_record.h"
#include "platform/utf.h"
#include "tests/support/wire_builder.h"

#include <sstream>
#include <string>

namespace testing_support {

inline std::string Fields(const ControlRecord& r) {
    std::ostringstream s;
    s << "type=" << r.type;
    const auto put = [&](const char* name, auto value) {
        if (value != decltype(value){}) s << ' ' << name << '=' << +value;
    };
    const auto text = [&](const char* name, std::u16string value) {
        for (char16_t& c : value) c = c ? c : u'|';
        if (!value.empty()) s << ' ' << name << '=' << plat::Utf16ToUtf8(value);
    };
    const auto bytes = [&](const char* name, const Bytes& value) {
        if (!value.empty()) s << ' ' << name << "=[" << Hex(value) << ']';
    };
    s << std::hex;
    put("flags", r.flags);
    put("bg", r.background);
    put("counter", r.chart.trailingWord);
    s << std::dec;
    put("key", r.controlKey);
    text("label", r.label);
    put("m", r.maxLength);
    text("text", r.text.Text());
    put("bytes", r.text.Bytes());
    put("press", r.pressByte);
    put("check", r.checkByte);
    put("section", r.sectionByte);
    put("in", r.loggedInByte);
    put("group", r.group);
    const DateTimeValue& d = r.dateTime;
    if (d.year || d.month || d.day || d.hour || d.minute || d.second || d.weekday) {
        s << " when=" << d.year << '-' << +d.month << '-' << +d.day << ' ' << +d.hour << ':'
          << +d.minute << ':' << +d.second << " w" << +d.weekday;
    }
    if (r.hasFormat) s << " f=" << plat::Utf16ToUtf8(r.format);
    put("raw", r.rawValue);
    put("min", r.minimum);
    put("max", r.maximum);
    put("d", r.decimals);
    put("e", r.exponent);
    bytes("table", r.chart.table);
    bytes("samples", r.chart.textPart);
    put("rows", r.chart.rowCapacity);
    put("series", r.chart.seriesCount);
    text("names", r.chart.seriesNames);
    text("units", r.chart.sampleUnits);
    text("dataUnits", r.chart.dataUnits);
    text("axis", r.chart.axisCaption);
    put("sd", r.chart.sampleDecimals);
    put("se", r.chart.sampleExponent);
    put("dd", r.chart.dataDecimals);
    put("de", r.chart.dataExponent);
    put("selected", r.selectedIndex);
    text("items", r.items);
    put("count", r.itemCount);
    bytes("data", r.data);
    put("length", r.dataLength);
    put("capacity", r.dataCapacity);
    put("n", r.blobN);
    put("bm", r.blobM);
    if (r.hasReceivedPath) s << " path=" << plat::Utf16ToUtf8(r.receivedPath);
    return s.str();
}

}  // namespace testing_support
