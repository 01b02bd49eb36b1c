#include "device/probe/probe_print.h"

#include "device/json_line.h"
#include "link/link_client.h"
#include "model/device_settings.h"
#include "panel/control_styles.h"
#include "platform/utf.h"

#include <string_view>
#include <vector>

namespace probe {

using dev::JsonAdd;
using dev::JsonAddRaw;
using dev::JsonObject;

namespace {

std::string Utf8(std::u16string_view text) { return plat::Utf16ToUtf8(text); }

// Texts one after another, each ended by a zero (list items, series names).
std::string TextListJson(const std::u16string& texts, std::size_t count) {
    std::vector<std::string> out;
    std::size_t start = 0;
    while (out.size() < count && start < texts.size()) {
        std::size_t end = texts.find(u'\0', start);
        if (end == std::u16string::npos) end = texts.size();
        out.push_back(dev::JsonQuote(Utf8(std::u16string_view(texts).substr(start, end - start))));
        start = end + 1;
    }
    return dev::JsonArray(out);
}

std::string DateTimeJson(const DateTimeValue& t) {
    JsonObject o;
    JsonAdd(o, "year", std::int64_t{t.year});
    JsonAdd(o, "month", std::int64_t{t.month});
    JsonAdd(o, "day", std::int64_t{t.day});
    JsonAdd(o, "hour", std::int64_t{t.hour});
    JsonAdd(o, "minute", std::int64_t{t.minute});
    JsonAdd(o, "second", std::int64_t{t.second});
    JsonAdd(o, "weekday", std::int64_t{t.weekday});
    return dev::JsonText(o);
}

void AddFormat(JsonObject& o, const ControlRecord& r) {
    if (r.hasFormat) JsonAdd(o, "format", Utf8(r.format));
}

void AddChart(JsonObject& o, const ChartData& c) {
    JsonAdd(o, "rowCapacity", std::int64_t{c.rowCapacity});
    JsonAdd(o, "seriesCount", std::int64_t{c.seriesCount});
    JsonAdd(o, "sampleUnits", Utf8(c.sampleUnits));
    JsonAdd(o, "dataUnits", Utf8(c.dataUnits));
    JsonAdd(o, "axisCaption", Utf8(c.axisCaption));
    JsonAddRaw(o, "seriesNames", TextListJson(c.seriesNames, c.seriesCount));
    JsonAdd(o, "sampleDecimals", std::int64_t{c.sampleDecimals});
    JsonAdd(o, "sampleExponent", std::int64_t{c.sampleExponent});
    JsonAdd(o, "dataDecimals", std::int64_t{c.dataDecimals});
    JsonAdd(o, "dataExponent", std::int64_t{c.dataExponent});
    JsonAdd(o, "table", dev::HexText(c.table));
    JsonAdd(o, "samples", dev::HexText(c.textPart));
    JsonAdd(o, "rowCounter", std::int64_t{static_cast<std::int32_t>(c.trailingWord)});
}

void AddTypeFields(JsonObject& o, const ControlRecord& r) {
    switch (r.type) {
    case kTypeMessage:
        JsonAdd(o, "answer", std::int64_t{r.answerByte});
        [[fallthrough]];
    case kTypeText:
        JsonAdd(o, "maxLength", std::int64_t{r.maxLength});
        // The text as the rows show it (to its first zero), and every byte of the buffer.
        JsonAdd(o, "text", Utf8(r.text.Text()));
        JsonAdd(o, "textHex", dev::HexText(r.text.Data(), r.text.Bytes()));
        break;
    case kTypeButton:
        JsonAdd(o, "press", std::int64_t{r.pressByte});
        break;
    case kTypeCheckBox:
        JsonAdd(o, "check", std::int64_t{r.checkByte});
        JsonAdd(o, "group", std::int64_t{r.group});
        break;
    case kTypeSection:
        JsonAdd(o, "state", std::int64_t{r.sectionByte});
        break;
    case kTypeDateTime:
        JsonAddRaw(o, "dateTime", DateTimeJson(r.dateTime));
        AddFormat(o, r);
        break;
    case kTypeNumber:
        JsonAdd(o, "value", std::int64_t{r.rawValue});
        JsonAdd(o, "minimum", std::int64_t{r.minimum});
        JsonAdd(o, "maximum", std::int64_t{r.maximum});
        JsonAdd(o, "decimals", std::int64_t{r.decimals});
        JsonAdd(o, "exponent", std::int64_t{r.exponent});
        AddFormat(o, r);
        break;
    case kTypeChart:
        AddChart(o, r.chart);
        break;
    case kTypePassword:
        JsonAdd(o, "loggedIn", std::int64_t{r.loggedInByte});
        break;
    case kTypeList:
        JsonAdd(o, "selected", std::int64_t{r.selectedIndex});
        JsonAdd(o, "itemCount", std::int64_t{r.itemCount});
        JsonAddRaw(o, "items", TextListJson(r.items, r.itemCount));
        break;
    case kTypeBlob:
        JsonAdd(o, "dataLength", std::int64_t{r.dataLength});
        JsonAdd(o, "dataCapacity", std::int64_t{r.dataCapacity});
        JsonAdd(o, "n", std::int64_t{r.blobN});
        JsonAdd(o, "m", std::int64_t{r.blobM});
        JsonAdd(o, "data", dev::HexText(r.data));
        break;
    case kTypeFiles:
        if (r.hasReceivedPath) JsonAdd(o, "receivedPath", Utf8(r.receivedPath));
        break;
    case kTypeImage:
        JsonAdd(o, "dataLength", std::int64_t{r.dataLength});
        JsonAdd(o, "data", dev::HexText(r.data));
        break;
    default:
        break;
    }
}

const char* Meaning(std::int32_t result) {
    switch (result) {
    case -1: return "error";
    case 1: return "identity";
    case 2: return "panel";
    case 3: return "session ended by the device";
    case 4: return "ping from the device";
    case 5: return "ping reply";
    case 6: return "notice";
    case 7: return "values";
    case 8: return "panel reload requested";
    case 9: return "layouts";
    case 10: return "files";
    case 11: return "settings";
    default: return "other";
    }
}

}  // namespace

std::string ResultJson(std::int32_t result) {
    JsonObject o;
    JsonAdd(o, "result", std::int64_t{result});
    JsonAdd(o, "meaning", Meaning(result));
    return dev::JsonText(o);
}

std::string SettingsJson() {
    std::vector<std::string> items;
    for (const StoredSetting& setting : ListDeviceSettings()) {
        JsonObject item;
        JsonAdd(item, "control", std::int64_t{setting.owner});
        JsonAdd(item, "kind", std::int64_t{setting.kind});
        JsonAdd(item, "value", std::int64_t{static_cast<std::int32_t>(setting.value)});
        items.push_back(dev::JsonText(item));
    }
    JsonObject o;
    JsonAddRaw(o, "settings", dev::JsonArray(items));
    const std::int32_t seconds = ReadDeviceSetting(0, kSettingPingSeconds, 3);
    JsonAdd(o, "pingSeconds", std::int64_t{Link().sessionFlagA ? seconds : 0});
    return dev::JsonText(o);
}

std::string IdentityJson() {
    LinkClient& link = Link();
    JsonObject o;
    JsonAdd(o, "panelName", Utf8(LinkPanelId()));
    JsonAdd(o, "serverText", Utf8(LinkServerText()));
    dev::JsonAddBool(o, "pingsAllowed", link.sessionFlagA != 0);
    dev::JsonAddBool(o, "sessionB", link.sessionFlagB != 0);
    dev::JsonAddBool(o, "stayOpen", link.sessionFlagC != 0);
    return dev::JsonText(o);
}

std::string ControlJson(const ControlRecord& r) {
    JsonObject o;
    JsonAdd(o, "key", std::int64_t{r.controlKey});
    JsonAdd(o, "type", std::int64_t{r.type});
    auto styles = StyleNames(r.type);
    JsonAdd(o, "typeName", Utf8(styles.empty() ? u"" : styles.front()));
    JsonAdd(o, "flags", std::int64_t{r.flags});
    JsonAdd(o, "background", std::int64_t{r.background});
    JsonAdd(o, "label", Utf8(r.label));
    JsonAdd(o, "valueChanged", std::int64_t{r.valueChanged});
    JsonAdd(o, "layoutChanged", std::int64_t{r.layoutChanged});
    JsonAdd(o, "sendPending", std::int64_t{r.sendPending});
    AddTypeFields(o, r);
    return dev::JsonText(o);
}

}  // namespace probe
