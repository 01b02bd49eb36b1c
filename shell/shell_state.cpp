#include "shell/shell_state.h"

ShellState& Shell() {
    static ShellState state;
    return state;
}
