#include "device/demo/demo_device.h"

#include "device/demo/demo_apply.h"
#include "device/demo/demo_assets.h"
#include "device/json_line.h"
#include "device/messages.h"
#include "device/values.h"
#include "link/wire.h"

#include <ctime>

namespace demo {

using namespace dev;

namespace {

void SendPanel(DemoDevice& device, Session& session) {
    Identity identity;
    identity.panelName = kPanelName;
    identity.serverText = "Tremolanth demo device";
    SessionSend(session, EncodeIdentity(identity));
    SessionSend(session, EncodeSettings(DemoSettings(device.options.pingSeconds)));
    SessionSend(session, EncodePanel(DemoRecords(device.state), true));
    device.panelSent = true;
}

void SendReport(DemoDevice& device, Session& session) {
    const std::string html = DemoReportHtml(device.state);
    SessionSend(session, EncodeFiles(kKeyReport, {{kReportName, Bytes(html.begin(), html.end())}},
                                     false, true));
}

// A message box: its text into the Message at the client's row count, then that Message
// unhidden on its own, after the layout changes before it have taken effect.
void SendPopup(DemoDevice& device, Session& session, const Reaction& reaction) {
    const std::uint32_t key = DemoMessageFor(device.state);
    if (key == 0) return;
    SessionSend(session, EncodeValueUpdates({{key, MessageValue(reaction.popupText, kMessageBytes,
                                                                false)}}));
    Layout shown;
    shown.icon = reaction.popupIcon;
    SessionSend(session, EncodeLayoutUpdates({{key, LayoutValue(shown)}}));
}

void React(DemoDevice& device, Session& session, const ClientMessage& message) {
    Reaction reaction;
    ApplyValues(device.state, message, &reaction);
    if (!reaction.values.empty()) SessionSend(session, EncodeValueUpdates(reaction.values));
    if (!reaction.layouts.empty()) SessionSend(session, EncodeLayoutUpdates(reaction.layouts));
    if (reaction.popup) SendPopup(device, session, reaction);
    if (reaction.pushReport) SendReport(device, session);
    if (reaction.reload) SessionSend(session, EncodeBare(wire::kInReload));
}

void OnMessage(DemoDevice& device, Session& session, const ClientMessage& message) {
    if (device.log) device.log(MessageLogLine(session.number, message));
    switch (message.type) {
    case wire::kOutPanelRequest:
        SendPanel(device, session);
        break;
    case wire::kOutPing:
        SessionSend(session, EncodeBare(wire::kInPingReply));
        break;
    case wire::kOutDefaultLayout:
        // The device's own layout is the default: send it again.
        SessionSend(session, EncodeSettings(DemoSettings(device.options.pingSeconds)));
        break;
    case wire::kOutValues:
        React(device, session, message);
        break;
    default:
        break;  // goodbye ends the session in the server; replies and acks need nothing
    }
}

// The simulated plant: the temperature creeps toward the set point with some noise.
void Simulate(DemoState& state, const DateTime& now) {
    state.noise = state.noise * 1103515245u + 12345u;
    const auto wobble = static_cast<std::int32_t>((state.noise >> 16) % 3) - 1;
    const std::int32_t target = state.setPoint + state.offset;
    const std::int32_t step = target > state.temperature ? 2 : (target < state.temperature ? -2 : 0);
    state.temperature += step + wobble;

    ChartSample sample;
    sample.time = now;
    AddChartRow(state.log, sample, {state.temperature, state.setPoint});

    sample.number = static_cast<std::int32_t>(++state.readingNumber);
    std::vector<std::int32_t> sensors;
    for (std::uint32_t s = 0; s < kReadingSeries; ++s) {
        state.noise = state.noise * 1103515245u + 12345u;
        sensors.push_back(1000 * static_cast<std::int32_t>(s + 1) +
                          static_cast<std::int32_t>((state.noise >> 16) % 200));
    }
    AddChartRow(state.readings, sample, sensors);
}

void OnTick(DemoDevice& device, Session& session) {
    if (!device.panelSent) return;
    ++device.ticks;
    Simulate(device.state, device.now ? device.now() : LocalNow());
    SessionSend(session, EncodeValueUpdates({TemperatureItem(device.state), LogItem(device.state),
                                             ReadingsItem(device.state)}));
    if (device.options.devicePingTicks && device.ticks % device.options.devicePingTicks == 0) {
        SessionSend(session, EncodeBare(wire::kInPing));
    }
}

std::string ItemJson(const ValueItem& item) {
    JsonObject o;
    JsonAdd(o, "key", std::int64_t{item.key});
    JsonAdd(o, "n", static_cast<std::int64_t>(item.data.size()));
    JsonAdd(o, "hex", HexText(item.data));
    if (item.blobTrailer) JsonAddBool(o, "blobTrailer", true);
    return JsonText(o);
}

}  // namespace

DemoDevice MakeDemoDevice(const DemoOptions& options) {
    DemoDevice device;
    device.options = options;
    device.state = MakeDemoState();
    return device;
}

SessionHandlers DemoHandlers(DemoDevice& device) {
    SessionHandlers h;
    h.connected = [&device](Session&) { device.panelSent = false; };
    h.message = [&device](Session& s, const ClientMessage& m) { OnMessage(device, s, m); };
    h.tick = [&device](Session& s) { OnTick(device, s); };
    h.stopping = [](Session& s) { SessionSend(s, EncodeBare(wire::kInSessionEnd)); };
    h.problem = [&device](Session& s, const std::string& problem) {
        if (device.log) device.log(ProblemLogLine(s.number, problem));
    };
    h.isBlob = DemoIsBlob;
    h.tickMilliseconds = device.options.tickMilliseconds;
    return h;
}

std::string MessageLogLine(int session, const ClientMessage& message) {
    JsonObject o;
    JsonAdd(o, "session", std::int64_t{session});
    JsonAdd(o, "type", std::int64_t{message.type});
    JsonAdd(o, "flags", std::int64_t{message.flags});
    if (message.type == wire::kOutValues) {
        JsonAdd(o, "count", std::int64_t{message.count});
        std::vector<std::string> items;
        for (const ValueItem& item : message.items) items.push_back(ItemJson(item));
        JsonAddRaw(o, "items", JsonArray(items));
        if (message.truncated) JsonAddBool(o, "truncated", true);
    }
    if (message.type == wire::kOutDefaultLayout) JsonAdd(o, "payload", std::int64_t{message.payload});
    return JsonText(o);
}

std::string ProblemLogLine(int session, const std::string& problem) {
    JsonObject o;
    JsonAdd(o, "session", std::int64_t{session});
    JsonAdd(o, "error", problem);
    return JsonText(o);
}

DateTime LocalNow() {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
#ifdef _WIN32
    localtime_s(&local, &now);
#else
    localtime_r(&now, &local);
#endif
    DateTime t;
    t.second = static_cast<std::int8_t>(local.tm_sec > 59 ? 59 : local.tm_sec);
    t.minute = static_cast<std::uint8_t>(local.tm_min);
    t.hour = static_cast<std::uint8_t>(local.tm_hour);
    t.day = static_cast<std::uint8_t>(local.tm_mday);
    t.weekday = static_cast<std::uint8_t>(local.tm_wday);
    t.month = static_cast<std::uint8_t>(local.tm_mon + 1);
    t.year = static_cast<std::uint16_t>(local.tm_year + 1900);
    return t;
}

}  // namespace demo
