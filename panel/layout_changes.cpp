#include "panel/layout_changes.h"

#include "model/control_store.h"

LayoutChangePlan PlanLayoutChanges(const std::vector<std::uint32_t>& rowIds) {
    ControlsHold hold;
    const std::vector<ControlRecord>& records = Controls().records;
    std::vector<std::uint32_t> slots(records.size(), 0);
    LayoutChangePlan plan;
    for (const ControlRecord& r : records) {
        if (!r.layoutChanged) continue;
        std::uint32_t flags = r.flags, style = 0;
        GetControlFlags(r.controlKey, &flags, &style);  // also clears the mark
        int row = -1;
        for (std::size_t i = 0; i < rowIds.size(); ++i) {
            if (rowIds[i] == r.controlKey) {
                row = static_cast<int>(i);
                break;
            }
        }
        if (row >= 0 && (flags & kFlagBringIntoView)) plan.rowsIntoView.push_back(row);
        const bool hidden = (flags & kFlagHidden) != 0;
        if (r.type != kTypeMessage) {
            if ((row >= 0) == hidden) plan.rebuild = true;
        } else if (!hidden && rowIds.size() < slots.size()) {
            slots[rowIds.size()] = records[rowIds.size()].controlKey;
        }
    }
    for (std::uint32_t id : slots) {
        if (id != 0) plan.messageIds.push_back(id);
    }
    return plan;
}
