#include "app/bluetooth.h"

#include "platform/socket.h"

#include <winsock2.h>
#include <ws2bth.h>

namespace {

constexpr ULONG kGeneralInquiryAccessCode = 0x9E8B33;
constexpr DWORD kResultBufferSize = 16384;
const GUID kSerialPortService = {0x00001101, 0x0000, 0x1000,
                                 {0x80, 0x00, 0x00, 0x80, 0x5F, 0x9B, 0x34, 0xFB}};

std::int32_t LowBits(int error) { return static_cast<std::int16_t>(error & 0xFFFF); }

// The inquiry's parameters travel in a blob whose layout is the system's own: the handset's
// carries the number of answers wanted, the desktop's only the code and the length.
#ifdef _WIN32_WCE
struct InquiryBlob {
    ULONG LAP;
    unsigned char length;
    unsigned char num_responses;
};
InquiryBlob MakeInquiry(int length, int maxDevices) {
    return {kGeneralInquiryAccessCode, static_cast<unsigned char>(length),
            static_cast<unsigned char>(maxDevices)};
}
constexpr DWORD kInquiryFlags = LUP_CONTAINERS;
#else
using InquiryBlob = BTH_QUERY_DEVICE;
InquiryBlob MakeInquiry(int length, int) {
    return {kGeneralInquiryAccessCode, static_cast<UCHAR>(length)};
}
// The desktop answers from its cache unless told to ask the radio.
constexpr DWORD kInquiryFlags = LUP_CONTAINERS | LUP_FLUSHCACHE;
#endif

}  // namespace

std::int32_t BluetoothInquiry(int length, int maxDevices, std::vector<FoundDevice>* found) {
    InquiryBlob inquiry = MakeInquiry(length, maxDevices);
    BLOB blob{sizeof inquiry, reinterpret_cast<BYTE*>(&inquiry)};
    WSAQUERYSETW query{};
    query.dwSize = sizeof query;
    query.dwNameSpace = NS_BTH;
    query.lpBlob = &blob;
    HANDLE lookup = nullptr;
    if (WSALookupServiceBeginW(&query, kInquiryFlags, &lookup) == SOCKET_ERROR) {
        return LowBits(WSAGetLastError());
    }
    auto* result = static_cast<WSAQUERYSETW*>(LocalAlloc(LPTR, kResultBufferSize));
    if (!result) {
        WSALookupServiceEnd(lookup);
        return -1;
    }
    int error = 0;
    while (static_cast<int>(found->size()) < maxDevices) {
        DWORD size = kResultBufferSize;
        if (WSALookupServiceNextW(lookup, LUP_RETURN_NAME | LUP_RETURN_ADDR, &size, result) ==
            SOCKET_ERROR) {
            error = WSAGetLastError();
            break;
        }
        FoundDevice device;
        if (result->lpszServiceInstanceName) device.name = result->lpszServiceInstanceName;
        if (result->lpcsaBuffer && result->lpcsaBuffer->RemoteAddr.lpSockaddr) {
            device.address =
                reinterpret_cast<SOCKADDR_BTH*>(result->lpcsaBuffer->RemoteAddr.lpSockaddr)->btAddr;
        }
        found->push_back(device);
    }
    WSALookupServiceEnd(lookup);
    LocalFree(result);
    if (error == 0 || error == WSA_E_NO_MORE) return 0;
    return LowBits(error);
}

std::intptr_t BluetoothConnect(std::uint64_t address, int timeoutMilliseconds) {
    SOCKET s = ::socket(AF_BTH, SOCK_STREAM, BTHPROTO_RFCOMM);
    if (s == INVALID_SOCKET) return -1;
    SOCKADDR_BTH peer{};
    peer.addressFamily = AF_BTH;
    peer.btAddr = address;
    peer.serviceClassId = kSerialPortService;
    peer.port = 0;  // the channel comes from service discovery
    if (plat::SocketConnectNative(static_cast<std::intptr_t>(s), &peer, sizeof peer,
                                  timeoutMilliseconds) != 0) {
        ::closesocket(s);
        return -1;
    }
    return static_cast<std::intptr_t>(s);
}
