// The microcontroller library's frame reader: any bytes from a client fed one at a time into a
// board serving a panel of every control type, then the sketch's own sends. Whatever arrives,
// the text keeps its terminator and nothing is written past a variable (ASan sees the rest).
#include "fuzz/fuzz_common.h"
#include "tests/arduino/every_control.h"

#include <cstdlib>

namespace {

// The board's serial port: what the library answers is counted and dropped.
class NullStream : public Stream {
public:
    size_t write(uint8_t) override {
        ++written;
        return 1;
    }
    int available() override { return 0; }
    int read() override { return -1; }
    int peek() override { return -1; }
    std::size_t written = 0;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    sketch::Reset();
    NullStream stream;
    Tremolanth device(stream, sketch::Describe);
    for (std::size_t i = 0; i < size; ++i) device.feed(data[i]);
    for (std::uint8_t key = 1; key <= sketch::kCalibrate; ++key) device.send(key);
    device.popup(sketch::kTooHot);
    device.hide(sketch::kLamp);
    if (sketch::name[sizeof sketch::name - 1] != 0) std::abort();
    if (sketch::mode >= 3 || sketch::speed > 1) std::abort();
    if (sketch::setPoint < 50 || sketch::setPoint > 300) std::abort();
    device.error();
    return 0;
}
