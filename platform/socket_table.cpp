#include "platform/socket_table.h"

#include <mutex>
#include <unordered_map>

namespace plat::socket_table {

namespace {

struct Entry {
    std::intptr_t native;
    const NativeOps* ops;
    int users = 0;
    bool closed = false;
    int receiveError = 0;
};

std::mutex g_mutex;
std::unordered_map<SocketHandle, Entry> g_entries;
SocketHandle g_next = 0x1000;

}  // namespace

SocketHandle Add(std::intptr_t native, const NativeOps& ops) {
    std::lock_guard<std::mutex> hold(g_mutex);
    SocketHandle handle = g_next++;
    g_entries.emplace(handle, Entry{native, &ops});
    return handle;
}

bool Acquire(SocketHandle handle, std::intptr_t* native, const NativeOps** ops) {
    std::lock_guard<std::mutex> hold(g_mutex);
    auto it = g_entries.find(handle);
    if (it == g_entries.end() || it->second.closed) return false;
    ++it->second.users;
    *native = it->second.native;
    if (ops) *ops = it->second.ops;
    return true;
}

const NativeOps* OpsOf(SocketHandle handle) {
    std::lock_guard<std::mutex> hold(g_mutex);
    auto it = g_entries.find(handle);
    return it == g_entries.end() || it->second.closed ? nullptr : it->second.ops;
}

void Release(SocketHandle handle) {
    std::intptr_t toRelease = -1;
    const NativeOps* ops = nullptr;
    {
        std::lock_guard<std::mutex> hold(g_mutex);
        auto it = g_entries.find(handle);
        if (it == g_entries.end()) return;
        if (--it->second.users == 0 && it->second.closed) {
            toRelease = it->second.native;
            ops = it->second.ops;
            g_entries.erase(it);
        }
    }
    if (ops && ops->release) ops->release(toRelease);
}

void NoteReceiveError(SocketHandle handle, int error) {
    std::lock_guard<std::mutex> hold(g_mutex);
    auto it = g_entries.find(handle);
    if (it != g_entries.end() && it->second.receiveError == 0) it->second.receiveError = error;
}

int ReceiveError(SocketHandle handle) {
    std::lock_guard<std::mutex> hold(g_mutex);
    auto it = g_entries.find(handle);
    return it == g_entries.end() ? 0 : it->second.receiveError;
}

bool IsClosed(SocketHandle handle) {
    std::lock_guard<std::mutex> hold(g_mutex);
    auto it = g_entries.find(handle);
    return it == g_entries.end() || it->second.closed;
}

namespace {

void CloseEntry(SocketHandle handle, bool wakeFirst) {
    std::intptr_t native = -1;
    const NativeOps* ops = nullptr;
    {
        std::lock_guard<std::mutex> hold(g_mutex);
        auto it = g_entries.find(handle);
        if (it == g_entries.end() || it->second.closed) return;
        ops = it->second.ops;
        if (it->second.users > 0) {
            // Wake the running call while the native handle is surely still ours; the call
            // releases it when it returns (see Release).
            it->second.closed = true;
            if (ops->wake && wakeFirst) ops->wake(it->second.native);
            return;
        }
        native = it->second.native;
        g_entries.erase(it);
    }
    if (ops->wake && wakeFirst) ops->wake(native);
    if (ops->release) ops->release(native);
}

}  // namespace

void Close(SocketHandle handle) { CloseEntry(handle, true); }

void CloseWithoutShutdown(SocketHandle handle) { CloseEntry(handle, false); }

}  // namespace plat::socket_table
