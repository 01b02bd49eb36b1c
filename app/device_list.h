// The device list (dialog 107, "Devices in range"): one row per device found, numbered for
// the phone keys; choosing one opens its panel screen.
#pragma once

#include <windows.h>

// Runs the dialog modally over the owner.
INT_PTR RunDeviceList(HWND owner);
// Rebuilds the rows from the device table; the first time also sets up the list view.
void FillDeviceList(HWND dialog, bool firstTime);
