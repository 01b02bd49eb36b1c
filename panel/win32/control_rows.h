// The rows of the panel screen's list view (IDC_PANEL_LIST): one row per visible control.
// Each operation takes the store's lock for its work and releases it before returning.
#pragma once

#include <windows.h>

#include <cstdint>

// The control id a row of the list carries (0 for a row that is not there).
std::uint32_t RowControlId(HWND list, int row);

void FillControlRows(HWND dialog);
void RefreshChangedRows(HWND dialog);
void RefreshLayoutChanges(HWND dialog);
void ShowMessageControl(std::uint32_t controlId);
void ToggleCheckRow(HWND dialog, std::uint32_t controlId, int row);
