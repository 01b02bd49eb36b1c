// State of the Windows program that only the application shell uses; what the windows share
// is in the shell's state.
#pragma once

#include "shell/shell_state.h"

struct AppState {
    int currentDevice = -1;  // index into the device table, -1 when none
};

AppState& App();
