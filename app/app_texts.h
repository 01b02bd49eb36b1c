// Names of the Windows program.
#pragma once

inline constexpr wchar_t kAppName[] = L"TmqApp";  // the instance mutex and the window class
