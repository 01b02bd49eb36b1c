// Stand-in for layout_dialog.cpp until the Control Layout dialog lands (the build takes this
// file only while that one is missing): "Control Layout..." reaches it and returns.
#include "panel/win32/layout_dialog.h"

void EditControlLayout(std::uint32_t, const ControlRecord&) {}
