#include "platform/signal.h"

#include <atomic>

namespace plat {

// An atomic word waited on directly: a hand-over costs one wake and no mutex, which matters
// when the link hands over once per message.
namespace {
using State = std::atomic<int>;
}

Signal::Signal() : impl_(new State(0)) {}

Signal::~Signal() { delete static_cast<State*>(impl_); }

void Signal::Set() {
    auto* s = static_cast<State*>(impl_);
    s->store(1, std::memory_order_release);
    s->notify_one();
}

void Signal::Wait() {
    auto* s = static_cast<State*>(impl_);
    while (s->exchange(0, std::memory_order_acquire) == 0) s->wait(0, std::memory_order_relaxed);
}

}  // namespace plat
