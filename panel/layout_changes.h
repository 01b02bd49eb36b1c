// What a layout update from the device means for the panel list: rows to bring into view,
// whether the list must be rebuilt, and which Message controls to announce.
#pragma once

#include <cstdint>
#include <vector>

struct LayoutChangePlan {
    std::vector<int> rowsIntoView;            // rows of changed controls with flag 0x10
    bool rebuild = false;                     // a control's row no longer matches its hidden bit
    std::vector<std::uint32_t> messageIds;    // ids to hand to ShowMessageControl, in order
};

// rowIds: the control id of each row as the list shows it. Runs under the store's lock and
// clears the layout-changed mark of every control it reads.
//
// A visible Message control is noted in the slot at the position equal to the number of rows,
// with the id of the control at that position, not its own: the device relies on a Message
// control standing there (typically the last control), and another control noted instead is
// ignored later because it is not a Message.
LayoutChangePlan PlanLayoutChanges(const std::vector<std::uint32_t>& rowIds);
