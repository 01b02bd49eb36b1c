// The socket calls every kind of handle shares: pin the native handle, run the call of its
// kind, and keep a receive error for good.
#include "platform/socket.h"
#include "platform/socket_table.h"

namespace plat {

namespace {

// Runs one call of the handle's kind on its pinned native handle.
template <typename Call>
int Pinned(SocketHandle socket, Call call) {
    std::intptr_t native;
    const socket_table::NativeOps* ops;
    if (!socket_table::Acquire(socket, &native, &ops)) {
        socket_table::SetSystemError(socket_table::kClosedHandleError);
        return kSocketError;
    }
    const int result = call(*ops, native);
    const int error = socket_table::SystemError();
    socket_table::Release(socket);
    socket_table::SetSystemError(error);
    return result;
}

}  // namespace

int SocketSend(SocketHandle socket, const void* data, int length, int timeoutMilliseconds) {
    return Pinned(socket, [&](const socket_table::NativeOps& ops, std::intptr_t native) {
        return ops.send(socket, native, data, length, timeoutMilliseconds);
    });
}

int SocketReceive(SocketHandle socket, void* data, int length) {
    return Pinned(socket, [&](const socket_table::NativeOps& ops, std::intptr_t native) {
        // After a reset the system reports an end of data, which a link does not take as an end.
        if (int noted = socket_table::ReceiveError(socket)) {
            socket_table::SetSystemError(noted);
            return kSocketError;
        }
        const int n = ops.receive(socket, native, data, length);
        if (n == kSocketError) {
            const int error = socket_table::SystemError();
            socket_table::NoteReceiveError(socket, error);
            socket_table::SetSystemError(error);
        }
        return n;
    });
}

int SocketWaitReadable(SocketHandle socket, int timeoutMilliseconds) {
    return Pinned(socket, [&](const socket_table::NativeOps& ops, std::intptr_t native) {
        return ops.waitReadable(socket, native, timeoutMilliseconds);
    });
}

void SocketClose(SocketHandle socket) {
    if (socket != kInvalidSocket) socket_table::Close(socket);
}

int SocketLastError() { return socket_table::SystemError(); }

}  // namespace plat
