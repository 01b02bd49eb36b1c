// What the action key and left/right do on a row of the panel list, by the control's type.
// The store's lock is never held while an editor or view runs: they get a copy of the record.
#include "app/control_activation.h"

#include "app/app_texts.h"
#include "dataview/win32/data_view.h"
#include "editors/win32/editors.h"
#include "link/link_client.h"
#include "link/value_encoder.h"
#include "model/control_store.h"
#include "panel/browser_targets.h"
#include "panel/row_image_index.h"
#include "panel/row_text.h"
#include "panel/value_step.h"
#include "panel/win32/control_rows.h"
#include "panel/win32/panel_timers.h"
#include "platform/browser.h"
#include "platform/message_box.h"
#include "res/resource.h"

#include <commctrl.h>

#include <string>

namespace {

HWND ListOf(HWND dialog) {
    return GetDlgItem(dialog, IDC_PANEL_LIST);
}

struct SelectedRow {
    int row = -1;
    std::uint32_t id = 0;
};

// The first selected row whose control is in the store (call under the lock).
SelectedRow FindSelectedRow(HWND list) {
    int row = static_cast<int>(
        SendMessageW(list, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED));
    if (row < 0) return {};
    std::uint32_t id = RowControlId(list, row);
    if (FindControlIndex(id) < 0) return {};
    return {row, id};
}

// Sets the row's text when it differs from what it shows (call under the lock).
void SetRowText(HWND list, int row, const std::u16string& text) {
    wchar_t shown[kRowTextSize] = {};
    LVITEMW item{};
    item.iSubItem = 0;
    item.pszText = shown;
    item.cchTextMax = static_cast<int>(kRowTextSize);
    SendMessageW(list, LVM_GETITEMTEXTW, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
    if (text == reinterpret_cast<const char16_t*>(shown)) return;
    item.pszText = reinterpret_cast<LPWSTR>(const_cast<char16_t*>(text.c_str()));
    SendMessageW(list, LVM_SETITEMTEXTW, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
}

// After an editor: the row shows the stored value, unless the link ended meanwhile (the rows
// then belong to a panel that is gone).
void RefreshRowOf(HWND dialog, std::uint32_t controlId) {
    HWND list = ListOf(dialog);
    ControlsHold hold;
    if (!LinkIsOpen()) return;
    for (int row = 0, count = ListView_GetItemCount(list); row < count; ++row) {
        if (RowControlId(list, row) != controlId) continue;
        SetRowText(list, row, ComposeRowText(controlId));
        break;
    }
}

std::u16string ReadBlobText(std::uint32_t controlId) {
    ControlsHold hold;
    std::size_t size = 0;
    if (GetControlValue(controlId, nullptr, &size) != 0 || size == 0) return {};
    std::u16string text(size / 2, u'\0');
    std::size_t bytes = text.size() * 2;
    GetControlValue(controlId, text.data(), &bytes);
    return text.substr(0, text.find(u'\0'));
}

void PressControl(std::uint32_t controlId) {
    const std::uint8_t none = 0;
    SetControlValue(controlId, &none, 0);
    LinkSendPendingValues();
}

void PressButton(std::uint32_t controlId) {
    const std::uint8_t pressed = 255;
    SetControlValue(controlId, &pressed, 1);
    LinkSendPendingValues();
}

// Only a web address goes to the browser: a blob naming a program or a file is not opened.
void OpenBlob(std::uint32_t controlId, const ControlRecord& record) {
    const char16_t* problem = kUnintelligibleText;
    if ((record.flags & kMaskForBrowser) == kForBrowser) {
        const std::u16string text = ReadBlobText(controlId);
        if (IsWebAddress(text)) {
            if (plat::LaunchBrowser(text)) return;
            problem = kNoBrowserText;
        }
    }
    plat::ShowMessageBox(nullptr, problem, u"Tremolanth", plat::kMbIconAsterisk);
}

} // namespace

void ActivateSelectedRow(HWND dialog) {
    HWND list = ListOf(dialog);
    SelectedRow selected;
    ControlRecord record;
    {
        ControlsHold hold;
        selected = FindSelectedRow(list);
        if (selected.row < 0 || !CopyControl(selected.id, &record)) return;
    }
    const std::uint32_t id = selected.id;
    switch (record.type) {
    case kTypeText:
        EditText(id, record);
        RefreshRowOf(dialog, id);
        break;
    case kTypeButton:
        PressButton(id);
        return;
    case kTypeCheckBox:
        ToggleCheckRow(dialog, id, selected.row);
        return;
    case kTypeSection:
        ToggleSection(dialog, id, selected.row);
        return;
    case kTypeDateTime:
        EditDateTime(id, record);
        RefreshRowOf(dialog, id);
        break;
    case kTypeNumber:
        EditNumber(id, record);
        RefreshRowOf(dialog, id);
        break;
    case kTypeChart:
        OpenDataView(id, record);
        break;
    case kTypePassword:
        EditPassword(id, record);
        break;
    case kTypeList:
        SelectListItem(id, record);
        RefreshRowOf(dialog, id);
        break;
    case kTypeMessage:
        plat::ShowFaultBox(fault::kMessageActivated, kTypeMessage);
        return;
    case kTypeBlob:
        OpenBlob(id, record);
        break;
    case kTypeFiles:
        PressControl(id);
        return;
    case kTypeImage:
        if (record.flags & kFlagVariant) PressControl(id);
        return;
    default:
        return;
    }
    SetFocus(list);
}

void StepSelectedRow(HWND dialog, bool up) {
    HWND list = ListOf(dialog);
    ControlsHold hold;
    const SelectedRow selected = FindSelectedRow(list);
    if (selected.row < 0) return;
    // One send for a burst of steps: the timer fires after the last key of the burst.
    if (StepControlValue(selected.id, up).changed) StartSendDelay(dialog);
    SetRowText(list, selected.row, ComposeRowText(selected.id));
}

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
