#include "platform/thread.h"

#include <atomic>

#include <pthread.h>
#include <time.h>

#include <cerrno>

namespace plat {

namespace {

struct Start {
    ThreadFunction function;
    void* argument;
};

void* Trampoline(void* p) {
    Start start = *static_cast<Start*>(p);
    delete static_cast<Start*>(p);
    start.function(start.argument);
    return nullptr;
}

std::atomic<int> g_failStarts{0};

}  // namespace

void FailThreadStartsForTest(int error) { g_failStarts = error; }

int StartDetachedThread(ThreadFunction function, void* argument) {
    if (int error = g_failStarts.load()) return error;
    pthread_t thread;
    auto* start = new Start{function, argument};
    int rc = pthread_create(&thread, nullptr, Trampoline, start);
    if (rc != 0) {
        delete start;
        return rc;
    }
    pthread_detach(thread);
    return 0;
}

void SleepMilliseconds(unsigned milliseconds) {
    timespec ts{static_cast<time_t>(milliseconds / 1000),
                static_cast<long>(milliseconds % 1000) * 1000000L};
    while (nanosleep(&ts, &ts) != 0 && errno == EINTR) {
    }
}

}  // namespace plat
