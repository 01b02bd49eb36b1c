#include "fuzz/fuzz_common.h"

#include "link/link_client.h"
#include "platform/message_box.h"
#include "platform/post.h"

#include <cstdlib>
#include <filesystem>
#include <string>
#include <unistd.h>

namespace fuzzing {

namespace {
std::string g_base;
}

void Initialise() {
    static bool done = false;
    if (done) {
        // Settings written by one input must not make the next one slower.
        std::error_code ignored;
        std::filesystem::remove_all(g_base + "/config", ignored);
        return;
    }
    done = true;
    plat::SetMessageBoxHook([](plat::WindowRef, const std::u16string&, const std::u16string&,
                               unsigned) { return 1; });
    plat::SetPostHook([](plat::WindowRef, unsigned) {});
    // Memory-backed when possible: the decoders write settings and files on every input.
    g_base = (std::filesystem::is_directory("/dev/shm") ? "/dev/shm" : "/tmp") +
             std::string("/tremolanth-fuzz-") + std::to_string(::getpid());
    setenv("XDG_CONFIG_HOME", (g_base + "/config").c_str(), 1);
    setenv("XDG_DATA_HOME", (g_base + "/data").c_str(), 1);
    setenv("TREMOLANTH_SETTINGS_NO_SYNC", "1", 1);
    std::atexit([] {
        std::error_code ignored;
        std::filesystem::remove_all(g_base, ignored);
    });
    LinkInit();
}

std::vector<ControlRecord> OneOfEach() {
    std::vector<ControlRecord> records;
    for (std::uint16_t type = 1; type <= 14; ++type) {
        ControlRecord r;
        r.type = type;
        r.controlKey = type;
        r.maxLength = 8;
        r.text.Resize(16);
        r.data.assign(16, 0);
        r.dataLength = r.dataCapacity = 16;
        r.chart.rowCapacity = 2;
        r.chart.seriesCount = 2;
        r.chart.table.assign(16, 0);
        r.chart.textPart.assign(8, 0);
        records.push_back(r);
    }
    records[kTypeBlob - 1].flags = kFlagVariant;           // text data
    records[kTypeChart - 1].flags = kSampleLabels;         // labels
    records[kTypeFiles - 1].flags = kFlagUtf16;            // UTF-16 names
    return records;
}

}  // namespace fuzzing
