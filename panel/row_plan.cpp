#include "panel/row_plan.h"

#include "model/control_store.h"
#include "model/device_settings.h"
#include "panel/row_text.h"

bool HasRow(const ControlRecord& record) {
    return record.type != kTypeMessage && !(record.flags & kFlagHidden);
}

std::vector<PlannedRow> PlanControlRows() {
    ControlsHold hold;
    const std::vector<ControlRecord>& records = Controls().records;
    bool customKeys = false;
    for (const ControlRecord& r : records) {
        if (HasRow(r) && ReadDeviceSetting(r.controlKey, kSettingLayoutFastKey, 0) != 0) {
            customKeys = true;
            break;
        }
    }
    std::vector<PlannedRow> rows;
    for (const ControlRecord& r : records) {
        if (!HasRow(r)) continue;
        PlannedRow row;
        row.controlId = r.controlKey;
        row.text = ComposeRowText(r.controlKey);
        row.image = RowImage(r.controlKey);
        int index = static_cast<int>(rows.size());
        if (customKeys) {
            int key = ReadDeviceSetting(r.controlKey, kSettingLayoutFastKey, 0);
            row.fastKey = key >= 1 && key <= kFastKeyCount ? key : 0;
        } else {
            row.fastKey = index < kFastKeyCount ? index + 1 : 0;
        }
        rows.push_back(std::move(row));
    }
    return rows;
}

void RecordFastKeys(const std::vector<PlannedRow>& rows, FastKeyTable& table) {
    for (std::size_t i = 0; i < rows.size(); ++i) {
        AssignFastKey(table, rows[i].fastKey, rows[i].controlId, static_cast<std::int32_t>(i));
    }
}

int FirstColumnWidth(int clientWidth, std::size_t rowCount) {
    return clientWidth - 14 - (rowCount > 9 ? 6 : 0);
}
