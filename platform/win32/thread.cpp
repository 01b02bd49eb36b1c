#include "platform/thread.h"

#include <atomic>

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

std::atomic<int> g_failStarts{0};

}  // namespace

void FailThreadStartsForTest(int error) { g_failStarts = error; }

int StartDetachedThread(ThreadFunction function, void* argument) {
    if (int error = g_failStarts.load()) return error;
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
