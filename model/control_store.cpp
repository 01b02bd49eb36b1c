#include "model/control_store.h"

#include "platform/message_box.h"
#include "platform/program_lock.h"

#include <algorithm>
#include <cstring>

namespace {

ControlList g_controls;


std::size_t Smaller(std::size_t a, std::size_t b) { return a < b ? a : b; }

// Walks the records as the tear-down does: a record of an invalid type means the store is
// corrupt, and nothing is freed.
bool CheckTypes(const std::vector<ControlRecord>& records) {
    for (const ControlRecord& r : records) {
        if (!IsValidControlType(r.type)) {
            plat::ShowMessageBox(nullptr, u"Data transmission error.", u"Tremolanth", plat::kMbOk);
            return false;
        }
    }
    return true;
}

}  // namespace

ControlList& Controls() { return g_controls; }

void LockControls() { plat::ProgramLockEnter(); }
void UnlockControls() { plat::ProgramLockLeave(); }

void SwapInControls(std::vector<ControlRecord>&& records) {
    std::vector<ControlRecord> previous;
    {
        ControlsHold hold;
        previous.swap(g_controls.records);
        g_controls.records = std::move(records);
    }
    // The old panel is no longer reachable; the walk only reports a corrupt record.
    ControlsHold hold;
    CheckTypes(previous);
}

void TearDownControls() {
    ControlsHold hold;
    if (g_controls.records.empty()) return;
    if (!CheckTypes(g_controls.records)) return;
    g_controls.records.clear();
    g_controls.records.shrink_to_fit();
}

std::int32_t ControlCount() {
    ControlsHold hold;
    return static_cast<std::int32_t>(g_controls.records.size());
}

std::int32_t FindControlIndex(std::uint32_t id) {
    ControlsHold hold;
    const auto& records = g_controls.records;
    for (std::size_t i = 0; i < records.size(); ++i) {
        if (records[i].controlKey == id) return static_cast<std::int32_t>(i);
    }
    return -1;
}

ControlRecord* FindControl(std::uint32_t id) {
    ControlsHold hold;
    std::int32_t index = FindControlIndex(id);
    return index < 0 ? nullptr : &g_controls.records[static_cast<std::size_t>(index)];
}

std::uint32_t ControlIdAt(std::int32_t index) {
    ControlsHold hold;
    if (index < 0 || static_cast<std::size_t>(index) >= g_controls.records.size()) return 0;
    return g_controls.records[static_cast<std::size_t>(index)].controlKey;
}

void GetControlSummary(std::int32_t index, ControlSummary* out) {
    ControlsHold hold;
    if (index < 0 || static_cast<std::size_t>(index) >= g_controls.records.size()) {
        *out = ControlSummary{};
        return;
    }
    const ControlRecord& r = g_controls.records[static_cast<std::size_t>(index)];
    out->id = r.controlKey;
    out->type = r.type;
    out->flags = r.flags;
    out->style = r.background;
    out->range = r.type == kTypeList ? r.itemCount : r.group;
}

std::int32_t GetControlType(std::uint32_t id) {
    ControlsHold hold;
    ControlRecord* r = FindControl(id);
    return r ? r->type : -1;
}

std::u16string GetControlText(std::uint32_t id) {
    ControlsHold hold;
    ControlRecord* r = FindControl(id);
    return r ? r->text.Text() : std::u16string();
}

std::uint8_t IsValueChanged(std::uint32_t id) {
    ControlsHold hold;
    ControlRecord* r = FindControl(id);
    return r ? r->valueChanged : 0;
}

std::uint8_t IsLayoutChanged(std::uint32_t id) {
    ControlsHold hold;
    ControlRecord* r = FindControl(id);
    return r ? r->layoutChanged : 0;
}

std::uint8_t IsSendPending(std::uint32_t id) {
    ControlsHold hold;
    ControlRecord* r = FindControl(id);
    return r ? r->sendPending : 0;
}

std::int32_t GetControlFlags(std::uint32_t id, std::uint32_t* flags, std::uint32_t* style) {
    ControlsHold hold;
    ControlRecord* r = FindControl(id);
    if (!r) return 0;
    if (IsValidControlType(r->type) && r->type != kTypeUnknown) {
        *flags = r->flags;
        *style = r->background;
    } else {
        plat::ShowFaultBox(fault::kFlagsInvalidType, r->type);
    }
    r->layoutChanged = 0;
    return 0;
}

std::int32_t GetTripleValue(std::uint32_t id, std::uint32_t* first, std::uint32_t* second,
                            std::uint32_t* third) {
    ControlsHold hold;
    ControlRecord* r = FindControl(id);
    if (!r) return 0;
    r->valueChanged = 0;
    if (r->type != kTypeChart) return kWrongType;
    *first = r->chart.rowCapacity;
    *second = r->chart.seriesCount;
    *third = r->chart.trailingWord;
    return 0;
}

std::int32_t SetControlValue(std::uint32_t id, const void* data, std::size_t size) {
    ControlsHold hold;
    ControlRecord* r = FindControl(id);
    if (!r) return 0;
    const auto* in = static_cast<const std::uint8_t*>(data);
    if (!in) size = 0;
    bool send = true;
    switch (r->type) {
    case kTypeText:
        // No terminator is added: the buffer's own guard ends the text.
        std::memcpy(r->text.Data(), in, Smaller(size, r->text.Bytes()));
        break;
    case kTypeButton:
        if (size >= 1) r->pressByte = in[0];
        break;
    case kTypeCheckBox:
        if (size >= 1) r->checkByte = in[0];
        break;
    case kTypeSection:
        if (size >= 1) r->sectionByte = in[0];
        break;
    case kTypeDateTime:
        std::memcpy(&r->dateTime, in, Smaller(size, 8));
        break;
    case kTypeNumber:
        std::memcpy(&r->rawValue, in, Smaller(size, 4));
        break;
    case kTypeChart:
    case kTypePassword:
        return kWrongType;
    case kTypeList:
        std::memcpy(&r->selectedIndex, in, Smaller(size, 4));
        break;
    case kTypeMessage:
        if (size >= 1) r->answerByte = in[0];
        break;
    case kTypeBlob: {
        std::size_t n = Smaller(size, r->data.size());
        std::memcpy(r->data.data(), in, n);
        r->dataLength = static_cast<std::uint32_t>(n);
        break;
    }
    case kTypeFiles:
        break;
    case kTypeUnknown:
        send = false;
        break;
    case kTypeImage:
        if (!(r->flags & kFlagVariant)) {
            std::memcpy(r->data.data(), in, Smaller(size, r->data.size()));
            // The requested size, not the copied count; reads are clamped to the buffer.
            r->dataLength = static_cast<std::uint32_t>(size);
        }
        break;
    default:
        plat::ShowFaultBox(fault::kSetInvalidType, r->type);
        return 0;
    }
    r->valueChanged = 0;
    if (send) r->sendPending = 1;
    return 0;
}

std::int32_t GetControlValue(std::uint32_t id, void* data, std::size_t* size) {
    ControlsHold hold;
    ControlRecord* r = FindControl(id);
    if (!r) return 0;
    auto* out = static_cast<std::uint8_t*>(data);
    const std::uint8_t* source = nullptr;
    std::size_t need = 0;      // what the value needs
    std::size_t available = 0; // what the record's buffer really holds
    std::uint8_t byte = 0;
    switch (r->type) {
    case kTypeText:
        need = (r->text.Length() + 1) * 2;
        source = r->text.Data();
        available = need;  // the guard unit always holds the terminator
        break;
    case kTypeButton: byte = r->pressByte; break;
    case kTypeCheckBox: byte = r->checkByte; break;
    case kTypeSection: byte = r->sectionByte; break;
    case kTypePassword: byte = r->loggedInByte; break;
    case kTypeDateTime:
        need = available = 8;
        source = reinterpret_cast<const std::uint8_t*>(&r->dateTime);
        break;
    case kTypeNumber:
        need = available = 4;
        source = reinterpret_cast<const std::uint8_t*>(&r->rawValue);
        break;
    case kTypeList:
        need = available = 4;
        source = reinterpret_cast<const std::uint8_t*>(&r->selectedIndex);
        break;
    case kTypeChart:
        r->valueChanged = 0;
        return kWrongType;
    case kTypeMessage:
        need = static_cast<std::size_t>(r->maxLength) * 2;
        source = r->text.Data();
        available = r->text.Bytes();
        break;
    case kTypeBlob:
    case kTypeImage:
        need = r->dataLength;
        source = r->data.data();
        available = r->data.size();
        break;
    case kTypeFiles:
        if (!out) *size = 0;
        r->valueChanged = 0;
        return 0;
    case kTypeUnknown:
        r->valueChanged = 0;
        return 0;
    default:
        plat::ShowFaultBox(fault::kGetInvalidType, r->type);
        return 0;
    }
    bool oneByte = r->type == kTypeButton || r->type == kTypeCheckBox ||
                   r->type == kTypeSection || r->type == kTypePassword;
    if (oneByte) {
        need = available = 1;
        source = &byte;
    }
    r->valueChanged = 0;
    if (!out) {
        *size = need;
        return 0;
    }
    std::size_t n = Smaller(Smaller(*size, need), available);
    if (n) std::memcpy(out, source, n);
    return 0;
}

std::int32_t ClearRadioGroup(std::uint32_t group) {
    ControlsHold hold;
    for (ControlRecord& r : g_controls.records) {
        if (r.type == kTypeCheckBox && r.group == group && !(r.flags & kFlagVariant)) {
            r.checkByte = 0;
            r.sendPending = 1;
        }
    }
    return 0;
}

std::int32_t LayoutNoOp(std::int32_t, std::int32_t) { return 0; }

bool CopyControl(std::uint32_t id, ControlRecord* out) {
    ControlsHold hold;
    ControlRecord* r = FindControl(id);
    if (!r) return false;
    *out = *r;
    out->outPassword1 = nullptr;
    out->outPassword2 = nullptr;
    return true;
}
