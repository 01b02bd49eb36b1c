// Stand-in for pings_dialog.cpp until the Pings dialog lands (the build takes this file
// only while that one is missing): "Pings..." reaches it and returns.
#include "panel/win32/pings_dialog.h"

void EditPingInterval() {}
