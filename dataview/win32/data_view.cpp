#include "dataview/win32/data_view.h"

#include "dataview/chart_layout.h"
#include "dataview/win32/data_views.h"
#include "shell/shell_state.h"

DataViewState& CurrentDataView() {
    static DataViewState state;
    return state;
}

void OpenDataView(std::uint32_t controlId, const ControlRecord& record) {
    CurrentDataView() = {controlId, record, dataview::ReadChartSettings(controlId)};
    if (CurrentDataView().settings.style == kStyleDataTable) {
        RunDataTable();
    } else {
        RunChartDialog();
    }
    Shell().currentDialog = nullptr;
}
