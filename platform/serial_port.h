// Serial ports as the device socket: a COM port on Windows (a board on USB, a Bluetooth serial
// module's virtual port, a cable), a tty elsewhere (the same, a pty, a Linux rfcomm device).
// An open port is a SocketHandle of the same table as the sockets: the link reads, writes and
// closes it with the socket calls. A receive returns what has arrived, or 0 after a short wait
// (kSerialReadWaitMs), so a worker never sits on a port for long; a port that goes away (a cable
// pulled) fails every later receive.
#pragma once

#include "platform/socket.h"

#include <cstdint>
#include <string>
#include <vector>

namespace plat {

inline constexpr std::uint32_t kDefaultSerialBaud = 115200;
inline constexpr int kSerialReadWaitMs = 200;

// Opens the port ("COM5", or a path such as "/dev/ttyACM0", in UTF-8) at the speed, with 8 data
// bits, no parity, 1 stop bit, no flow control, DTR and RTS on. kInvalidSocket when it does not
// exist, is busy or cannot be configured (a speed it does not take among them).
SocketHandle SerialOpen(const std::string& path, std::uint32_t baud);

// True for a handle SerialOpen made and nobody has closed.
bool IsSerialPort(SocketHandle handle);

struct SerialPortName {
    std::u16string port;       // "COM5": what SerialOpen takes
    std::u16string shownName;  // the name the system gives the port, else the port itself
};
// The machine's serial ports in the order of their numbers. Ports are listed where the system
// keeps a list of them (Windows); elsewhere a port is named by its path, and the list is empty.
std::vector<SerialPortName> ListSerialPorts();

}  // namespace plat
