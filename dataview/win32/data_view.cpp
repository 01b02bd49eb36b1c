#include "dataview/win32/data_view.h"

#include "dataview/chart_layout.h"
#include "dataview/win32/data_views.h"
#include "model/device_settings.h"
#include "shell/shell_state.h"

DataViewState& CurrentDataView() {
    static DataViewState state;
    return state;
}

void OpenDataView(std::uint32_t controlId, const ControlRecord& record) {
    CurrentDataView() = {controlId, record};
    if (ReadDeviceSetting(controlId, kSettingLayoutStyle, 0) == dataview::kStyleDataTable) {
        RunDataTable();
    } else {
        RunChartDialog();
    }
    Shell().currentDialog = nullptr;
}
