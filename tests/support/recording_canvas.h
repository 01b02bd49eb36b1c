// A canvas that keeps every call, for checking a chart's layout without a screen. Texts
// measure 6 pixels a character and 12 high.
#pragma once

#include "dataview/chart_canvas.h"

#include <string>
#include <vector>

namespace testing_support {

struct CanvasCall {
    enum Kind { kRectangle, kEllipse, kLine, kText, kRotatedText, kClip, kUnclip } kind;
    dataview::Rect rect;  // Line: from (left, top) to (right, bottom); texts: at and box
    dataview::Pen pen;
    dataview::Colour colour = 0;  // the brush or the text colour
    std::u16string text;
};

class RecordingCanvas : public dataview::Canvas {
public:
    std::vector<CanvasCall> calls;

    void Rectangle(const dataview::Rect& r, const dataview::Pen& pen,
                   const dataview::Brush& brush) override {
        calls.push_back({CanvasCall::kRectangle, r, pen, brush.colour, {}});
    }
    void Ellipse(const dataview::Rect& r, const dataview::Pen& pen,
                 const dataview::Brush& brush) override {
        calls.push_back({CanvasCall::kEllipse, r, pen, brush.colour, {}});
    }
    void Line(dataview::Point from, dataview::Point to, const dataview::Pen& pen) override {
        calls.push_back({CanvasCall::kLine, {from.x, from.y, to.x, to.y}, pen, pen.colour, {}});
    }
    dataview::TextSize Measure(std::u16string_view text) override {
        return {static_cast<int>(text.size()) * 6, 12};
    }
    void Text(dataview::Point at, dataview::TextSize box, std::u16string_view text,
              dataview::Colour colour) override {
        calls.push_back({CanvasCall::kText, {at.x, at.y, at.x + box.width, at.y + box.height},
                         {}, colour, std::u16string(text)});
    }
    void RotatedText(dataview::Point at, dataview::TextSize box,
                     std::u16string_view text) override {
        calls.push_back({CanvasCall::kRotatedText,
                         {at.x, at.y, at.x + box.height, at.y + box.width}, {}, 0,
                         std::u16string(text)});
    }
    void Clip(const dataview::Rect& r) override {
        calls.push_back({CanvasCall::kClip, r, {}, 0, {}});
    }
    void Unclip() override { calls.push_back({CanvasCall::kUnclip, {}, {}, 0, {}}); }

    std::vector<CanvasCall> Of(CanvasCall::Kind kind) const {
        std::vector<CanvasCall> out;
        for (const CanvasCall& c : calls) {
            if (c.kind == kind) out.push_back(c);
        }
        return out;
    }
};

}  // namespace testing_support
