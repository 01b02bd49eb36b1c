#include "app/wait_cursor.h"

void BeginWaitCursor(HCURSOR* saved) { *saved = SetCursor(LoadCursorW(nullptr, IDC_WAIT)); }

void EndWaitCursor(HCURSOR saved) { SetCursor(saved); }
