// The wait cursor around slow steps (inquiry, connecting).
#pragma once

#include <windows.h>

void BeginWaitCursor(HCURSOR* saved);
void EndWaitCursor(HCURSOR saved);
