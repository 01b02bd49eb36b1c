// The few drawing calls a chart needs. The window draws through GDI; tests record the calls.
#pragma once

#include <cstdint>
#include <string_view>

namespace dataview {

using Colour = std::uint32_t;  // 0x00BBGGRR
inline constexpr Colour kBlack = 0x000000;
inline constexpr Colour kWhite = 0xFFFFFF;

struct Point {
    int x = 0, y = 0;
    bool operator==(const Point&) const = default;
};
struct Rect {
    int left = 0, top = 0, right = 0, bottom = 0;
    bool operator==(const Rect&) const = default;
};
struct TextSize {
    int width = 0, height = 0;
    bool operator==(const TextSize&) const = default;
};

struct Pen {
    int width = 1;
    Colour colour = kBlack;
    bool none = false;  // no outline at all
    bool operator==(const Pen&) const = default;
};
struct Brush {
    Colour colour = kWhite;
    bool operator==(const Brush&) const = default;
};

class Canvas {
public:
    virtual ~Canvas() = default;
    virtual void Rectangle(const Rect& r, const Pen& pen, const Brush& brush) = 0;
    virtual void Ellipse(const Rect& r, const Pen& pen, const Brush& brush) = 0;
    virtual void Line(Point from, Point to, const Pen& pen) = 0;
    // The chart font's single-line extent of a text.
    virtual TextSize Measure(std::u16string_view text) = 0;
    // One line on white at `at`, cut to `box`.
    virtual void Text(Point at, TextSize box, std::u16string_view text, Colour colour) = 0;
    // Black on white, turned 90 degrees clockwise (reads top to bottom): `box` is the size
    // before turning, so the text covers box.height x box.width pixels from `at`.
    virtual void RotatedText(Point at, TextSize box, std::u16string_view text) = 0;
    // Later calls draw only inside r, until Unclip.
    virtual void Clip(const Rect& r) = 0;
    virtual void Unclip() = 0;
};

}  // namespace dataview
