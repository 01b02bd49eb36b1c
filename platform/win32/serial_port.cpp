// A COM port behind a socket handle.
#include "platform/serial_port.h"

#include "platform/socket_table.h"
#include "platform/utf.h"

#include <windows.h>
#include <devguid.h>
#include <setupapi.h>

#include <algorithm>
#include <map>

namespace plat {

namespace {

HANDLE PortOf(std::intptr_t native) { return reinterpret_cast<HANDLE>(native); }

// A write takes as long as its bytes need at the port's speed: no flow control holds it.
int SerialSend(SocketHandle, std::intptr_t native, const void* data, int length, int) {
    const auto* bytes = static_cast<const char*>(data);
    int done = 0;
    while (done < length) {
        DWORD written = 0;
        if (!WriteFile(PortOf(native), bytes + done, static_cast<DWORD>(length - done), &written,
                       nullptr)) {
            return kSocketError;
        }
        if (written == 0) {
            SetLastError(ERROR_WRITE_FAULT);
            return kSocketError;
        }
        done += static_cast<int>(written);
    }
    return length;
}

// What has arrived, or 0 after the read timeout. A port that went away (a cable pulled, a pty
// whose other end closed) may still read as quiet: the port's state then fails, and that is the
// error that ends the link.
int SerialReceive(SocketHandle, std::intptr_t native, void* data, int length) {
    DWORD read = 0;
    if (!ReadFile(PortOf(native), data, static_cast<DWORD>(length), &read, nullptr)) {
        return kSocketError;
    }
    if (read > 0) return static_cast<int>(read);
    DWORD errors = 0;
    COMSTAT status{};
    return ClearCommError(PortOf(native), &errors, &status) ? 0 : kSocketError;
}

int SerialWaitReadable(SocketHandle handle, std::intptr_t native, int timeoutMilliseconds) {
    const ULONGLONG deadline = GetTickCount64() + static_cast<ULONGLONG>(timeoutMilliseconds);
    for (;;) {
        DWORD errors = 0;
        COMSTAT status{};
        if (!ClearCommError(PortOf(native), &errors, &status)) return kSocketError;
        if (status.cbInQue > 0) return 1;
        if (socket_table::IsClosed(handle)) {
            SetLastError(ERROR_INVALID_HANDLE);
            return kSocketError;
        }
        if (GetTickCount64() >= deadline) return 0;
        Sleep(10);
    }
}

// A read in another thread gives up at once rather than at its timeout.
void SerialWake(std::intptr_t native) { CancelIoEx(PortOf(native), nullptr); }
void SerialRelease(std::intptr_t native) { CloseHandle(PortOf(native)); }

const socket_table::NativeOps kSerialOps{SerialWake, SerialRelease, SerialSend, SerialReceive,
                                         SerialWaitReadable};

// "COM12" -> 12, anything else -> 0 (listed last).
unsigned PortNumber(const std::u16string& port) {
    unsigned number = 0;
    for (std::size_t i = 3; i < port.size() && port[i] >= u'0' && port[i] <= u'9'; ++i) {
        number = number * 10 + static_cast<unsigned>(port[i] - u'0');
    }
    return number;
}

// The names Windows gives the ports it knows as devices ("Standard Serial over Bluetooth link
// (COM5)"), by port.
std::map<std::u16string, std::u16string> FriendlyNames() {
    std::map<std::u16string, std::u16string> names;
    HDEVINFO devices = SetupDiGetClassDevsW(&GUID_DEVCLASS_PORTS, nullptr, nullptr, DIGCF_PRESENT);
    if (devices == INVALID_HANDLE_VALUE) return names;
    SP_DEVINFO_DATA device{};
    device.cbSize = sizeof device;
    for (DWORD i = 0; SetupDiEnumDeviceInfo(devices, i, &device); ++i) {
        wchar_t port[64] = {};
        HKEY key = SetupDiOpenDevRegKey(devices, &device, DICS_FLAG_GLOBAL, 0, DIREG_DEV, KEY_READ);
        if (key == INVALID_HANDLE_VALUE) continue;
        DWORD size = sizeof port - sizeof(wchar_t);
        const bool named = RegQueryValueExW(key, L"PortName", nullptr, nullptr,
                                            reinterpret_cast<BYTE*>(port), &size) == ERROR_SUCCESS;
        RegCloseKey(key);
        wchar_t friendly[256] = {};
        if (named && SetupDiGetDeviceRegistryPropertyW(devices, &device, SPDRP_FRIENDLYNAME,
                                                       nullptr, reinterpret_cast<BYTE*>(friendly),
                                                       sizeof friendly - sizeof(wchar_t),
                                                       nullptr)) {
            names[reinterpret_cast<const char16_t*>(port)] =
                reinterpret_cast<const char16_t*>(friendly);
        }
    }
    SetupDiDestroyDeviceInfoList(devices);
    return names;
}

}  // namespace

SocketHandle SerialOpen(const std::string& path, std::uint32_t baud) {
    if (baud == 0) return kInvalidSocket;
    const std::u16string port = Utf8ToUtf16(path);
    const std::wstring device = L"\\\\.\\" + std::wstring(port.begin(), port.end());
    HANDLE h = CreateFileW(device.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr,
                           OPEN_EXISTING, 0, nullptr);
    if (h == INVALID_HANDLE_VALUE) return kInvalidSocket;
    DCB dcb{};
    dcb.DCBlength = sizeof dcb;
    bool ok = GetCommState(h, &dcb);
    if (ok) {
        dcb.BaudRate = baud;
        dcb.ByteSize = 8;
        dcb.Parity = NOPARITY;
        dcb.StopBits = ONESTOPBIT;
        dcb.fBinary = TRUE;
        dcb.fParity = FALSE;
        dcb.fOutxCtsFlow = FALSE;
        dcb.fOutxDsrFlow = FALSE;
        dcb.fDsrSensitivity = FALSE;
        dcb.fOutX = FALSE;
        dcb.fInX = FALSE;
        dcb.fNull = FALSE;
        dcb.fAbortOnError = FALSE;
        dcb.fDtrControl = DTR_CONTROL_ENABLE;
        dcb.fRtsControl = RTS_CONTROL_ENABLE;
        // A read returns what is buffered at once, else waits this long for the first byte.
        COMMTIMEOUTS timeouts{};
        timeouts.ReadIntervalTimeout = MAXDWORD;
        timeouts.ReadTotalTimeoutMultiplier = MAXDWORD;
        timeouts.ReadTotalTimeoutConstant = kSerialReadWaitMs;
        ok = SetCommState(h, &dcb) && SetCommTimeouts(h, &timeouts);
    }
    if (!ok) {
        CloseHandle(h);
        return kInvalidSocket;
    }
    PurgeComm(h, PURGE_RXCLEAR | PURGE_TXCLEAR);
    return socket_table::Add(reinterpret_cast<std::intptr_t>(h), kSerialOps);
}

bool IsSerialPort(SocketHandle handle) { return socket_table::OpsOf(handle) == &kSerialOps; }

std::vector<SerialPortName> ListSerialPorts() {
    std::vector<SerialPortName> ports;
    HKEY key;
    if (RegOpenKeyExW(HKEY_LOCAL_MACHINE, L"HARDWARE\\DEVICEMAP\\SERIALCOMM", 0, KEY_QUERY_VALUE,
                      &key) != ERROR_SUCCESS) {
        return ports;
    }
    for (DWORD i = 0;; ++i) {
        wchar_t name[256], port[64] = {};
        DWORD nameLength = 256, size = sizeof port - sizeof(wchar_t), type = 0;
        LONG rc = RegEnumValueW(key, i, name, &nameLength, nullptr, &type,
                                reinterpret_cast<BYTE*>(port), &size);
        if (rc == ERROR_NO_MORE_ITEMS) break;
        if (rc == ERROR_SUCCESS && type == REG_SZ && port[0]) {
            const std::u16string p = reinterpret_cast<const char16_t*>(port);
            ports.push_back({p, p});
        }
    }
    RegCloseKey(key);
    const auto friendly = FriendlyNames();
    for (SerialPortName& p : ports) {
        if (auto it = friendly.find(p.port); it != friendly.end()) p.shownName = it->second;
    }
    std::sort(ports.begin(), ports.end(), [](const SerialPortName& a, const SerialPortName& b) {
        return PortNumber(a.port) < PortNumber(b.port);
    });
    return ports;
}

}  // namespace plat
