#include "link/network_devices.h"

#include <gtest/gtest.h>

namespace {

struct Listed {
    std::u16string name;
    std::string host;
    std::uint16_t port;
    bool operator==(const Listed&) const = default;
};

struct Case {
    const char* what;
    std::u16string text;
    std::vector<Listed> devices;
    std::size_t problems;
    std::u16string firstProblem = u"";  // checked when given
};

std::vector<Listed> Devices(const NetworkDeviceList& list) {
    std::vector<Listed> out;
    for (const auto& d : list.devices) out.push_back({d.name, d.host, d.port});
    return out;
}

TEST(NetworkDevices, ParsesEntriesAndSkipsMalformedOnes) {
    const Case cases[] = {
        {"empty", u"", {}, 0},
        {"one", u"Demo=127.0.0.1:5000", {{u"Demo", "127.0.0.1", 5000}}, 0},
        {"two, trailing separator and blanks", u" A = localhost:1 ;B=10.0.0.2:65535; ;",
         {{u"A", "localhost", 1}, {u"B", "10.0.0.2", 65535}}, 0},
        {"name keeps spaces inside", u"Bench PSU=psu-1.lab:7000", {{u"Bench PSU", "psu-1.lab", 7000}}, 0},
        {"no equals sign", u"Demo127.0.0.1:5000;Ok=h:2", {{u"Ok", "h", 2}}, 1},
        {"empty name", u"=h:1", {}, 1},
        {"no port", u"A=host", {}, 1},
        {"empty host", u"A=:80", {}, 1},
        {"port zero", u"A=h:0", {}, 1},
        {"port too large", u"A=h:65536", {}, 1},
        {"port with sign", u"A=h:+80", {}, 1},
        {"port far too long", u"A=h:0000000000080", {}, 1},
        {"host with a space", u"A=my host:80", {}, 1},
        {"non-ASCII host", u"A=h\u00e9st:80", {}, 1},
        {"every entry bad", u"x;y;z", {}, 3},
        {"the problem names the entry and the reason", u"Lab=host:99999", {}, 1,
         u"Skipped \"Lab=host:99999\": the port is not a number from 1 to 65535."},
        {"long names are cut to the device name field", std::u16string(300, u'n') + u"=h:1",
         {{std::u16string(255, u'n'), "h", 1}}, 0},
    };
    for (const Case& c : cases) {
        NetworkDeviceList list = ParseNetworkDevices(c.text);
        EXPECT_EQ(c.devices, Devices(list)) << c.what;
        ASSERT_EQ(c.problems, list.problems.size()) << c.what;
        if (!c.firstProblem.empty()) {
            EXPECT_EQ(c.firstProblem, list.problems[0]) << c.what;
        }
    }
}

}  // namespace
