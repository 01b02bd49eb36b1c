// A call the system gives no time limit (a name lookup) run on a thread of its own and waited
// for only so long: a call that outlives the wait finishes unobserved and its result is dropped.
#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>

namespace plat {

template <typename Result>
std::optional<Result> CallWithin(std::function<Result()> call, int timeoutMilliseconds) {
    struct Shared {
        std::mutex mutex;
        std::condition_variable done;
        std::optional<Result> result;
        std::function<Result()> call;
    };
    auto shared = std::make_shared<Shared>();
    shared->call = std::move(call);
    try {
        std::thread([shared] {
            Result result = shared->call();
            std::lock_guard<std::mutex> hold(shared->mutex);
            shared->result = std::move(result);
            shared->done.notify_all();
        }).detach();
    } catch (const std::system_error&) {
        return shared->call();  // no thread to spare: wait for the call itself
    }
    std::unique_lock<std::mutex> hold(shared->mutex);
    shared->done.wait_for(hold, std::chrono::milliseconds(timeoutMilliseconds),
                          [&] { return shared->result.has_value(); });
    return shared->result;
}

}  // namespace plat
