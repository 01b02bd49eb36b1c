// Entry point of tremolanth.exe.
#include "app/program.h"

#include <windows.h>

int WINAPI WinMain(HINSTANCE instance, HINSTANCE, LPSTR, int showCommand) {
    return TremolanthMain(instance, showCommand);
}
