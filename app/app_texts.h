// Names of the Windows program.
#pragma once

inline constexpr wchar_t kAppName[] = L"TmqApp";  // the instance mutex and the window class

// Boxes about what the device sent.
inline constexpr char16_t kUnintelligibleText[] =
    u"This program does not know what to do with the data supplied by the remote device.";
inline constexpr char16_t kNoBrowserText[] =
    u"No web browser is set up on this computer to open what the remote device sent.";
