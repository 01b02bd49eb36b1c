#include "platform/signal.h"

#include <windows.h>

namespace plat {

Signal::Signal() : impl_(CreateEventW(nullptr, FALSE, FALSE, nullptr)) {}

Signal::~Signal() {
    if (impl_) CloseHandle(impl_);
}

void Signal::Set() { SetEvent(impl_); }

void Signal::Wait() { WaitForSingleObject(impl_, INFINITE); }

}  // namespace plat
