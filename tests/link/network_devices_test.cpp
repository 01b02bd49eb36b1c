#include "link/network_devices.h"
#include "platform/utf.h"

#include <gtest/gtest.h>

namespace {

// Each device as "name@host:port;", or "name@port/speed;" for a serial one.
std::string Devices(const NetworkDeviceList& list) {
    std::string out;
    for (const auto& d : list.devices) {
        out += plat::Utf16ToUtf8(d.name) + "@" +
               (d.serialPort.empty() ? d.host + ":" + std::to_string(d.port)
                                     : d.serialPort + "/" + std::to_string(d.baud)) +
               ";";
    }
    return out;
}

TEST(NetworkDevices, ParsesEntriesAndSkipsMalformedOnes) {
    const struct {
        std::u16string text;
        std::string devices;
        std::size_t problems;
    } cases[] = {
        {u"", "", 0},
        {u"Demo=127.0.0.1:5000", "Demo@127.0.0.1:5000;", 0},
        {u" A = localhost:1 ;B=10.0.0.2:65535; ;", "A@localhost:1;B@10.0.0.2:65535;", 0},
        {u"Demo127.0.0.1:5000;Ok=h:2", "Ok@h:2;", 1},  // no equals sign
        {u"=h:1", "", 1},
        {u"A=host", "", 1},
        {u"A=h:0", "", 1},
        {u"A=h:65536", "", 1},
        {u"A=h:0000000000080", "", 1},
        {u"A=my host:80", "", 1},
        {u"A=h\u00e9st:80", "", 1},
        {u"x;y;z", "", 3},
        {u"Uno=COM5;Hc=com12@9600;Tty=/dev/ttyACM0@57600", "Uno@COM5/115200;Hc@com12/9600;"
                                                           "Tty@/dev/ttyACM0/57600;", 0},
        {u"A=COM5@;B=COM5@fast;C=COM5@4000001;D=COM0;E=COMX", "", 5},
        {std::u16string(300, u'n') + u"=h:1", std::string(255, 'n') + "@h:1;", 0},
    };
    for (const auto& c : cases) {
        NetworkDeviceList list = ParseNetworkDevices(c.text);
        EXPECT_EQ(c.devices, Devices(list)) << plat::Utf16ToUtf8(c.text);
        EXPECT_EQ(c.problems, list.problems.size()) << plat::Utf16ToUtf8(c.text);
    }
    EXPECT_EQ(std::vector<std::u16string>{
                  u"Skipped \"Lab=host:99999\": the port is not a number from 1 to 65535."},
              ParseNetworkDevices(u"Lab=host:99999").problems);
}

}  // namespace
