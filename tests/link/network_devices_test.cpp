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
    };
    for (const Case& c : cases) {
        NetworkDeviceList list = ParseNetworkDevices(c.text);
        EXPECT_EQ(c.devices, Devices(list)) << c.what;
        EXPECT_EQ(c.problems, list.problems.size()) << c.what;
    }
}

TEST(NetworkDevices, ProblemNamesTheEntryAndTheReason) {
    NetworkDeviceList list = ParseNetworkDevices(u"Lab=host:99999");
    ASSERT_EQ(1u, list.problems.size());
    EXPECT_EQ(u"Skipped \"Lab=host:99999\": the port is not a number from 1 to 65535.",
              list.problems[0]);
}

TEST(NetworkDevices, LongNamesAreCutToTheDeviceNameField) {
    std::u16string name(300, u'n');
    NetworkDeviceList list = ParseNetworkDevices(name + u"=h:1");
    ASSERT_EQ(1u, list.devices.size());
    EXPECT_EQ(255u, list.devices[0].name.size());
}

}  // namespace
