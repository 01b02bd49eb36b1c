// panel-probe's command line.
#include "device/probe/probe_options.h"

#include <gtest/gtest.h>

TEST(PanelProbe, CommandLines) {
    const auto parse = [](std::vector<const char*> args, probe::ProbeOptions* o, std::string* e) {
        args.insert(args.begin(), "panel-probe");
        return probe::ParseProbeOptions(static_cast<int>(args.size()), args.data(), o, e);
    };
    using Sets = std::vector<std::pair<std::uint32_t, std::string>>;
    // Where the probe connects: host:port, or port@speed.
    const auto where = [](const NetworkDevice& d) {
        return d.serialPort.empty() ? d.host + ":" + std::to_string(d.port)
                                    : d.serialPort + "@" + std::to_string(d.baud);
    };
    const struct {
        std::vector<const char*> args;
        std::string device;
        Sets sets;
        bool watch;
        double timeout;
    } accepted[] = {
        {{"localhost:7700"}, "localhost:7700", {}, false, 10},
        {{"--watch", "--timeout", "2.5", "h:16"}, "h:16", {}, true, 2.5},
        {{"h:9", "--set", "0x20=a=b", "--set", "5="}, "h:9", {{0x20, "a=b"}, {5, ""}}, false, 10},
        {{"/dev/ttyACM0@57600", "--watch"}, "/dev/ttyACM0@57600", {}, true, 0},
        {{"/dev/pts/3"}, "/dev/pts/3@115200", {}, false, 10},
        {{"com5"}, "com5@115200", {}, false, 10},
    };
    for (const auto& c : accepted) {
        probe::ProbeOptions o;
        std::string error;
        ASSERT_TRUE(parse(c.args, &o, &error)) << c.args[0] << " " << error;
        EXPECT_EQ(c.device, where(o.device));
        Sets sets;
        for (const probe::ProbeSet& set : o.sets) sets.emplace_back(set.key, set.value);
        EXPECT_EQ(c.sets, sets);
        EXPECT_EQ(c.watch, o.watch);
        EXPECT_EQ(c.timeout, o.timeoutSeconds);
    }
    const std::vector<std::vector<const char*>> refused = {
        {}, {"h"}, {"h:0"}, {"h:70000"}, {"/dev/tty@fast"}, {"COM5@0"}, {"COM0"},
        {"h:9", "--set", "x=1"}, {"h:9", "--set"},
        {"h:9", "--change", "20", "old"}, {"h:9", "--change", "k", "a", "b"},
        {"h:9", "--timeout", "-1"}, {"h:9", "--bogus"}};
    for (const auto& args : refused) {
        probe::ProbeOptions o;
        std::string error;
        EXPECT_FALSE(parse(args, &o, &error)) << (args.empty() ? "(none)" : args.back());
        EXPECT_FALSE(error.empty());
    }
}
