// The controls of the connected panel and the operations that read and change them under the
// program lock (which also keeps the link's frames apart).
//
// Operations marked "locked" take the lock themselves; the index-based getters expect the
// caller to hold it (LockControls) for anything beyond a single read. The lock is recursive.
// Unknown ids are ignored by the value operations (result 0). -5 means: not valid for the
// control's type.
#pragma once

#include "model/control_record.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

inline constexpr std::int32_t kWrongType = -5;

struct ControlList {
    std::vector<ControlRecord> records;
};

// The live store; guard with LockControls.
ControlList& Controls();

void LockControls();
void UnlockControls();

// Holds the store's lock for one scope.
class ControlsHold {
public:
    ControlsHold() { LockControls(); }
    ~ControlsHold() { UnlockControls(); }
    ControlsHold(const ControlsHold&) = delete;
    ControlsHold& operator=(const ControlsHold&) = delete;
};

// Replaces the live records with a new panel (locked); the old ones are torn down after the
// lock is released.
void SwapInControls(std::vector<ControlRecord>&& records);
// Frees every record (locked). A record of an invalid type stops it with
// "Data transmission error." and leaves the store as it was.
void TearDownControls();

std::int32_t ControlCount();                     // locked
std::int32_t FindControlIndex(std::uint32_t id); // -1 when absent
ControlRecord* FindControl(std::uint32_t id);    // nullptr when absent
std::uint32_t ControlIdAt(std::int32_t index);

struct ControlSummary {
    std::uint32_t id = 0;
    std::uint16_t type = 0;
    std::uint32_t flags = 0;
    std::uint32_t style = 0;  // the background colour word
    std::uint32_t range = 0;  // the group word of a check box, the item count of a list
};
void GetControlSummary(std::int32_t index, ControlSummary* out);

std::int32_t GetControlType(std::uint32_t id);   // locked; -1 for an unknown id
std::u16string GetControlText(std::uint32_t id); // the text value; empty for an unknown id
std::uint8_t IsValueChanged(std::uint32_t id);
std::uint8_t IsLayoutChanged(std::uint32_t id);
std::uint8_t IsSendPending(std::uint32_t id);
// Types 1 to 12 and 14: flags and style, and clears the layout mark.
std::int32_t GetControlFlags(std::uint32_t id, std::uint32_t* flags, std::uint32_t* style);
// Type 7 only: the three value words (row capacity, series count, row counter).
std::int32_t GetTripleValue(std::uint32_t id, std::uint32_t* first, std::uint32_t* second,
                            std::uint32_t* third);

std::int32_t SetControlValue(std::uint32_t id, const void* data, std::size_t size);
// With data null: *size becomes the size the value needs. Otherwise copies min(*size, need).
std::int32_t GetControlValue(std::uint32_t id, void* data, std::size_t* size);
std::int32_t ClearRadioGroup(std::uint32_t group);
std::int32_t LayoutNoOp(std::int32_t index, std::int32_t value);

// Copies of one record (locked); false when the id is absent.
bool CopyControl(std::uint32_t id, ControlRecord* out);

// Marks a record changed by the device (used by the decoders, lock held by the caller).
inline void MarkValueChanged(ControlRecord& r) { r.valueChanged = 1; }
inline void MarkLayoutChanged(ControlRecord& r) { r.layoutChanged = 1; }
