// The rows a fill of the panel list shows: one per control that is neither hidden nor a
// Message, in store order, each with its text, image and fast key.
//
// Fast keys go by position (row r below 12 is key r + 1) unless some visible control has a
// non-zero LayoutFastKey; then each row takes its own setting (0, or outside 1..12: no key).
#pragma once

#include "model/control_record.h"
#include "panel/fast_keys.h"

#include <cstdint>
#include <string>
#include <vector>

struct PlannedRow {
    std::uint32_t controlId = 0;
    std::u16string text;
    int image = 0;
    int fastKey = 0;  // 0: none
};

bool HasRow(const ControlRecord& record);

// Plans every row under the store's lock.
std::vector<PlannedRow> PlanControlRows();

// Enters the rows' keys into the table; entries of keys no row has are left as they were.
void RecordFastKeys(const std::vector<PlannedRow>& rows, FastKeyTable& table);

// Width of the list's first column: the client width less 14, less 6 more for a scroll bar
// when more than 9 rows are visible.
int FirstColumnWidth(int clientWidth, std::size_t rowCount);
