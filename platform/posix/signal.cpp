#include "platform/signal.h"

#include <chrono>
#include <condition_variable>
#include <mutex>

namespace plat {

namespace {
struct State {
    std::mutex mutex;
    std::condition_variable changed;
    bool set = false;
};
}  // namespace

Signal::Signal() : impl_(new State) {}

Signal::~Signal() { delete static_cast<State*>(impl_); }

void Signal::Set() {
    auto* s = static_cast<State*>(impl_);
    std::lock_guard<std::mutex> hold(s->mutex);
    s->set = true;
    s->changed.notify_one();
}

bool Signal::Wait(unsigned milliseconds) {
    auto* s = static_cast<State*>(impl_);
    std::unique_lock<std::mutex> hold(s->mutex);
    auto isSet = [s] { return s->set; };
    if (milliseconds == kWaitForever) {
        s->changed.wait(hold, isSet);
    } else if (!s->changed.wait_for(hold, std::chrono::milliseconds(milliseconds), isSet)) {
        return false;
    }
    s->set = false;
    return true;
}

}  // namespace plat
