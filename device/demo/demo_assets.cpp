#include "device/demo/demo_assets.h"

#include <cstdio>

namespace demo {

namespace {

constexpr int kSide = 16;
constexpr std::uint32_t kHeaderBytes = 14 + 40;

std::string Escaped(const std::string& text) {
    std::string out;
    for (char c : text) {
        switch (c) {
        case '&': out += "&amp;"; break;
        case '<': out += "&lt;"; break;
        case '>': out += "&gt;"; break;
        case '"': out += "&quot;"; break;
        default: out += c;
        }
    }
    return out;
}

std::string Tenths(std::int32_t value) {
    char text[32];
    std::snprintf(text, sizeof text, "%.1f", value / 10.0);
    return text;
}

}  // namespace

dev::Bytes DemoLogoBitmap() {
    const std::uint32_t pixelBytes = kSide * kSide * 3;  // rows of 48 bytes need no padding
    dev::Bytes out{'B', 'M'};
    dev::Put32(out, kHeaderBytes + pixelBytes);
    dev::Put32(out, 0);
    dev::Put32(out, kHeaderBytes);
    dev::Put32(out, 40);
    dev::Put32(out, kSide);
    dev::Put32(out, kSide);
    dev::Put16(out, 1);
    dev::Put16(out, 24);
    dev::Put32(out, 0);
    dev::Put32(out, pixelBytes);
    dev::Put32(out, 2835);
    dev::Put32(out, 2835);
    dev::Put32(out, 0);
    dev::Put32(out, 0);
    // A white "T" on a blue square, rows bottom-up, blue-green-red.
    for (int y = kSide - 1; y >= 0; --y) {
        for (int x = 0; x < kSide; ++x) {
            const bool bar = y >= 3 && y <= 5 && x >= 3 && x <= 12;
            const bool stem = y > 5 && y <= 12 && x >= 7 && x <= 8;
            const bool white = bar || stem;
            out.push_back(white ? 255 : 160);
            out.push_back(white ? 255 : 80);
            out.push_back(white ? 255 : 20);
        }
    }
    return out;
}

std::string DemoReportHtml(const DemoState& state) {
    static const char* const modes[] = {"Off", "Eco", "Comfort", "Boost"};
    static const char* const speeds[] = {"low", "medium", "high"};
    const char* mode = state.mode >= 0 && state.mode < 4 ? modes[state.mode] : "?";
    const char* speed = state.speed >= 0 && state.speed < 3 ? speeds[state.speed] : "?";
    std::string html =
        "<!DOCTYPE html>\n<html><head><meta charset=\"utf-8\"><title>Demo report</title></head>\n"
        "<body><h1>Tremolanth Demo report</h1>\n<table>\n";
    auto row = [&](const char* name, const std::string& value) {
        html += "<tr><th>" + std::string(name) + "</th><td>" + Escaped(value) + "</td></tr>\n";
    };
    row("Name", state.name);
    row("Temperature", Tenths(state.temperature) + " \u00B0C");
    row("Set point", Tenths(state.setPoint) + " \u00B0C");
    row("Calibration", Tenths(state.offset) + " K");
    row("Mode", mode);
    row("Lamp", state.lamp ? "on" : "off");
    row("Fan", state.fan ? std::string("on, speed ") + speed : "off");
    return html + "</table></body></html>\n";
}

}  // namespace demo
