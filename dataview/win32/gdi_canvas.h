// The chart canvas on a GDI device context: the chart font (12 pixels, normal weight, a
// sans-serif family), pens and brushes made once per colour, and rotated text through a
// memory bitmap.
//
// A series is thousands of calls, so they are gathered: joined segments of one pen go out as
// one polyline, and dots of one colour and size are stamped into a mask painted in one blit.
// Any other call first draws what was gathered, so the order of colours is kept.
#pragma once

#include "dataview/chart_canvas.h"

#include <windows.h>

#include <map>
#include <tuple>
#include <vector>

class GdiCanvas : public dataview::Canvas {
public:
    explicit GdiCanvas(HDC dc);
    ~GdiCanvas() override;
    GdiCanvas(const GdiCanvas&) = delete;
    GdiCanvas& operator=(const GdiCanvas&) = delete;

    void Rectangle(const dataview::Rect& r, const dataview::Pen& pen,
                   const dataview::Brush& brush) override;
    void Ellipse(const dataview::Rect& r, const dataview::Pen& pen,
                 const dataview::Brush& brush) override;
    void Line(dataview::Point from, dataview::Point to, const dataview::Pen& pen) override;
    dataview::TextSize Measure(std::u16string_view text) override;
    void Text(dataview::Point at, dataview::TextSize box, std::u16string_view text,
              dataview::Colour colour) override;
    void RotatedText(dataview::Point at, dataview::TextSize box,
                     std::u16string_view text) override;
    void Clip(const dataview::Rect& r) override;
    void Unclip() override;

private:
    void Flush();
    void FlushLines();
    void FlushDots();
    void Use(const dataview::Pen& pen);
    void Use(const dataview::Brush& brush);

    HDC dc_;
    HFONT font_;
    HGDIOBJ oldPen_, oldBrush_, oldFont_;
    COLORREF oldTextColour_, oldBackground_;
    std::map<std::tuple<int, COLORREF>, HPEN> pens_;
    std::map<COLORREF, HBRUSH> brushes_;

    std::vector<POINT> line_;  // the polyline being gathered
    dataview::Pen linePen_;
    std::vector<POINT> dots_;  // top-left corners of the dots being gathered
    dataview::Rect dotBox_;    // the first dot's rectangle: size and colour of them all
    COLORREF dotColour_ = 0;
};
