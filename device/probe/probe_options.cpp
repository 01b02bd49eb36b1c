#include "device/probe/probe_options.h"

#include "platform/utf.h"

#include <charconv>
#include <cstring>

namespace probe {

const char kProbeUsage[] =
    "usage: panel-probe DEVICE [--set KEY=VALUE]... [--change KEY OLD NEW]... [--watch]\n"
    "                   [--timeout SECONDS]\n"
    "Connects as the client does and prints, one JSON object a line, every link result and,\n"
    "after each panel and update, every control with the fields the client decoded.\n"
    "  DEVICE            HOST:PORT, or a serial port: a tty's path (/dev/ttyACM0, a pty) or\n"
    "                    COMn, with @SPEED in bits per second (115200 when none is given)\n"
    "  --set KEY=VALUE   after the panel arrives, store VALUE into control KEY (decimal or 0x\n"
    "                    hex) as the client's editors do. All values are sent together in one\n"
    "                    value message, in the panel's order. VALUE by type: text as is;\n"
    "                    button, check box, section, message: on/off or 0-255; number as\n"
    "                    shown (21.5 with exponent -1); date-time YYYY-MM-DD HH:MM[:SS]; list\n"
    "                    index; password (a log-in, sent on its own; empty logs out); blob text\n"
    "                    or hex:BYTES; files and image: anything (a press)\n"
    "  --change KEY OLD NEW\n"
    "                    change the password of control KEY, then log out as the client does;\n"
    "                    an empty NEW shows the client's answer\n"
    "  --watch           keep following updates until the link ends or the time limit\n"
    "  --timeout S       the time limit in seconds (default 10; none with --watch)\n"
    "Without --watch the probe stops after the panel, or after the first value update that\n"
    "follows the values it set.\n";

namespace {

template <typename T>
bool ParseInteger(std::string_view text, T* out) {
    int base = 10;
    if (text.size() > 2 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X')) {
        text.remove_prefix(2);
        base = 16;
    }
    auto [p, ec] = std::from_chars(text.data(), text.data() + text.size(), *out, base);
    return !text.empty() && ec == std::errc() && p == text.data() + text.size();
}


}  // namespace

bool ParseProbeOptions(int argc, const char* const* argv, ProbeOptions* out, std::string* error) {
    bool timeoutGiven = false;
    for (int i = 1; i < argc; ++i) {
        const std::string arg = argv[i];
        const bool hasValue = i + 1 < argc;
        if (arg == "--watch") {
            out->watch = true;
        } else if (arg == "--set" && hasValue) {
            const std::string assignment = argv[++i];
            const std::size_t equals = assignment.find('=');
            ProbeSet set;
            if (equals == std::string::npos ||
                !ParseInteger(std::string_view(assignment).substr(0, equals), &set.key)) {
                *error = "--set wants KEY=VALUE, not " + assignment;
                return false;
            }
            set.value = assignment.substr(equals + 1);
            out->sets.push_back(set);
        } else if (arg == "--change" && i + 3 < argc) {
            ProbeChange change;
            if (!ParseInteger(argv[i + 1], &change.key)) {
                *error = std::string("--change wants KEY OLD NEW, not ") + argv[i + 1];
                return false;
            }
            change.oldPassword = argv[i + 2];
            change.newPassword = argv[i + 3];
            out->changes.push_back(change);
            i += 3;
        } else if (arg == "--timeout" && hasValue) {
            const char* text = argv[++i];
            auto [p, ec] = std::from_chars(text, text + std::strlen(text), out->timeoutSeconds);
            if (ec != std::errc() || *p != '\0' || out->timeoutSeconds < 0) {
                *error = std::string("bad --timeout: ") + text;
                return false;
            }
            timeoutGiven = true;
        } else if (arg.rfind("--", 0) != 0 && !out->deviceGiven) {
            const std::u16string problem = ParseDeviceAddress(plat::Utf8ToUtf16(arg), &out->device);
            if (!problem.empty()) {
                *error = arg + ": " + plat::Utf16ToUtf8(problem);
                return false;
            }
            out->deviceGiven = true;
        } else {
            *error = "unknown or incomplete option " + arg;
            return false;
        }
    }
    if (!out->deviceGiven) {
        *error = "no device given";
        return false;
    }
    if (out->watch && !timeoutGiven) out->timeoutSeconds = 0;
    return true;
}

}  // namespace probe
