// The program from start to end: the instance check, then the window's life.
#pragma once

#include <windows.h>

// The whole program: 0 when another instance runs (or the check failed).
int TremolanthMain(HINSTANCE instance, int showCommand);

// Everything after the instance check: sockets, the link, the main window, its message loop
// and the shutdown. Returns the exit code.
int RunProgram(HINSTANCE instance, int showCommand);
