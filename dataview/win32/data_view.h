// The data views of a chart or data-table control: the chart window (dialog 118) or the data
// table (dialog 117), as the control's LayoutStyle says (implemented in data_view.cpp).
#pragma once

#include "model/control_record.h"

#include <cstdint>

// Runs the control's view modally over the screen window; when it returns no view is the
// current dialog any more.
void OpenDataView(std::uint32_t controlId, const ControlRecord& record);
