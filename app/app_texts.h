// Texts and fault-box source names of the Windows program.
#pragma once

inline constexpr wchar_t kProductName[] = L"Tremolanth";
inline constexpr wchar_t kAppName[] = L"TmqApp";  // the instance mutex and the window class

// Source files the fault boxes name.
inline constexpr const char* kShellSource = "tremolanth22";
inline constexpr const char* kPanelSource = "controllist";

inline constexpr wchar_t kMenubarFailed[] = L"Menubar failed";
