// One instance at a time: a named mutex, and the running instance's window brought forward.
#pragma once

#include <windows.h>

// 0 with *running set when another instance was found and brought forward, 0 with *running
// clear for the first instance (the mutex then stays open for the life of the process), or
// E_FAIL when the mutex cannot be made or the other instance's window never appears.
HRESULT CheckSingleInstance(const wchar_t* name, const wchar_t* title, bool* running);

// Tests: replaces the 500 ms wait between two looks for the window.
using InstanceWaitFunction = void (*)(unsigned milliseconds);
InstanceWaitFunction SetInstanceWaitForTest(InstanceWaitFunction wait);
