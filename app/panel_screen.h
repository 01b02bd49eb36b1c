// The panel screen (dialog 108): one device's control panel, from connecting to leaving.
// The receive worker reports each message with kResultMessage; kCloseViewsMessage closes the
// screen.
#pragma once

#include <windows.h>

#include <cstdint>

// Runs the screen for a device of the table. Returns 0 normally, -1 when the device could not
// be connected, or the link's start code when the link could not be started.
INT_PTR OpenPanelScreen(HWND deviceList, int deviceIndex);

// The link was lost or refused: closes it and the socket and, unless the device asked the
// screens to stay open, the open editor and the panel screen.
void DisconnectPanel();

// The pieces of the screen (panel_*.cpp).
void OnLinkResult(HWND dialog);
void LeavePanel(HWND dialog);
void LaunchReceivedFiles();
void OnPingTimer();
