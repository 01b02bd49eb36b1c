// The Pings dialog (dialog 115): the keep-alive interval of the panel (implemented in
// pings_dialog.cpp).
#pragma once

// Runs the dialog modally over the main window; the caller restarts the ping timer.
void EditPingInterval();
