#include "platform/signal.h"

#include <windows.h>

namespace plat {

Signal::Signal() : impl_(CreateEventW(nullptr, FALSE, FALSE, nullptr)) {}

Signal::~Signal() {
    if (impl_) CloseHandle(impl_);
}

void Signal::Set() { SetEvent(impl_); }

bool Signal::Wait(unsigned milliseconds) {
    return WaitForSingleObject(impl_, milliseconds == kWaitForever ? INFINITE : milliseconds) ==
           WAIT_OBJECT_0;
}

}  // namespace plat
