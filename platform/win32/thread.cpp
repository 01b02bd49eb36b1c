#include "platform/thread.h"

#include <windows.h>

namespace plat {

namespace {

struct Start {
    ThreadFunction function;
    void* argument;
};

DWORD WINAPI Trampoline(LPVOID p) {
    Start start = *static_cast<Start*>(p);
    delete static_cast<Start*>(p);
    start.function(start.argument);
    return 0;
}

}  // namespace

int StartDetachedThread(ThreadFunction function, void* argument) {
    auto* start = new Start{function, argument};
    HANDLE thread = CreateThread(nullptr, 0, Trampoline, start, 0, nullptr);
    if (!thread) {
        delete start;
        return static_cast<int>(GetLastError());
    }
    CloseHandle(thread);  // never joined
    return 0;
}

void SleepMilliseconds(unsigned milliseconds) { Sleep(milliseconds); }

}  // namespace plat
