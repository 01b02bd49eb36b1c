// Stand-in for control_activation.cpp until control activation lands (the build takes this
// file only while that one is missing). Pressing and stepping rows do nothing yet, so the
// keys already select rows; toggling a section is complete, since leaving the panel screen
// turns held sections off with it.
#include "panel/win32/control_activation.h"

#include "link/value_encoder.h"
#include "model/control_store.h"
#include "panel/row_image_index.h"
#include "panel/win32/control_rows.h"
#include "res/resource.h"

#include <commctrl.h>

void ActivateSelectedRow(HWND) {}

void StepSelectedRow(HWND, bool) {}

void ToggleSection(HWND dialog, std::uint32_t controlId, int row) {
    std::uint8_t value = 255;
    std::size_t size = 1;
    GetControlValue(controlId, &value, &size);
    std::uint8_t next = value != 0 ? 0 : 255;
    LVITEMW item{};
    item.mask = LVIF_IMAGE;
    item.iItem = row;
    item.iImage = next == 0 ? kImageSectionOff : kImageSectionOn;
    SendDlgItemMessageW(dialog, IDC_PANEL_LIST, LVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&item));
    SetControlValue(controlId, &next, 1);
    LinkSendPendingValues();
}
