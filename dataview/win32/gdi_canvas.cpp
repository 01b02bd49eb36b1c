#include "dataview/win32/gdi_canvas.h"

#include <cstdint>
#include <vector>

namespace {

const wchar_t* Wide(std::u16string_view text) {
    return reinterpret_cast<const wchar_t*>(text.data());
}
int Length(std::u16string_view text) { return static_cast<int>(text.size()); }

// A 32-bit top-down bitmap whose pixels the caller can reach.
struct Bitmap {
    HBITMAP handle = nullptr;
    std::uint32_t* pixels = nullptr;

    Bitmap(HDC dc, int width, int height) {
        BITMAPINFO info{};
        info.bmiHeader.biSize = sizeof info.bmiHeader;
        info.bmiHeader.biWidth = width;
        info.bmiHeader.biHeight = -height;
        info.bmiHeader.biPlanes = 1;
        info.bmiHeader.biBitCount = 32;
        info.bmiHeader.biCompression = BI_RGB;
        void* bits = nullptr;
        handle = CreateDIBSection(dc, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
        pixels = static_cast<std::uint32_t*>(bits);
    }
    ~Bitmap() {
        if (handle) DeleteObject(handle);
    }
    Bitmap(const Bitmap&) = delete;
    Bitmap& operator=(const Bitmap&) = delete;
};

}  // namespace

GdiCanvas::GdiCanvas(HDC dc) : dc_(dc) {
    LOGFONTW logFont{};
    logFont.lfHeight = 12;
    logFont.lfWeight = FW_NORMAL;
    logFont.lfPitchAndFamily = FF_SWISS;
    font_ = CreateFontIndirectW(&logFont);
    oldFont_ = SelectObject(dc_, font_);
    oldPen_ = SelectObject(dc_, GetStockObject(BLACK_PEN));
    oldBrush_ = SelectObject(dc_, GetStockObject(WHITE_BRUSH));
    oldTextColour_ = SetTextColor(dc_, RGB(0, 0, 0));
    oldBackground_ = SetBkColor(dc_, RGB(255, 255, 255));
}

GdiCanvas::~GdiCanvas() {
    SelectObject(dc_, oldPen_);
    SelectObject(dc_, oldBrush_);
    SelectObject(dc_, oldFont_);
    SetTextColor(dc_, oldTextColour_);
    SetBkColor(dc_, oldBackground_);
    DeleteObject(font_);
    for (auto& [key, pen] : pens_) DeleteObject(pen);
    for (auto& [colour, brush] : brushes_) DeleteObject(brush);
}

void GdiCanvas::Use(const dataview::Pen& pen) {
    if (pen.none) {
        SelectObject(dc_, GetStockObject(NULL_PEN));
        return;
    }
    HPEN& handle = pens_[{pen.width, pen.colour}];
    if (!handle) handle = CreatePen(PS_SOLID, pen.width, pen.colour);
    SelectObject(dc_, handle);
}

void GdiCanvas::Use(const dataview::Brush& brush) {
    if (brush.colour == dataview::kWhite) {
        SelectObject(dc_, GetStockObject(WHITE_BRUSH));
        return;
    }
    HBRUSH& handle = brushes_[brush.colour];
    if (!handle) handle = CreateSolidBrush(brush.colour);
    SelectObject(dc_, handle);
}

void GdiCanvas::Rectangle(const dataview::Rect& r, const dataview::Pen& pen,
                          const dataview::Brush& brush) {
    Use(pen);
    Use(brush);
    ::Rectangle(dc_, r.left, r.top, r.right, r.bottom);
}

void GdiCanvas::Ellipse(const dataview::Rect& r, const dataview::Pen& pen,
                        const dataview::Brush& brush) {
    Use(pen);
    Use(brush);
    ::Ellipse(dc_, r.left, r.top, r.right, r.bottom);
}

void GdiCanvas::Line(dataview::Point from, dataview::Point to, const dataview::Pen& pen) {
    Use(pen);
    const POINT points[2] = {{from.x, from.y}, {to.x, to.y}};
    Polyline(dc_, points, 2);
}

dataview::TextSize GdiCanvas::Measure(std::u16string_view text) {
    RECT r{0, 0, 240, 320};
    DrawTextW(dc_, Wide(text), Length(text), &r, DT_CALCRECT | DT_SINGLELINE);
    return {r.right - r.left, r.bottom - r.top};
}

void GdiCanvas::Text(dataview::Point at, dataview::TextSize box, std::u16string_view text,
                     dataview::Colour colour) {
    COLORREF before = SetTextColor(dc_, colour);
    RECT r{at.x, at.y, at.x + box.width, at.y + box.height};
    DrawTextW(dc_, Wide(text), Length(text), &r, DT_SINGLELINE);
    SetTextColor(dc_, before);
}

void GdiCanvas::RotatedText(dataview::Point at, dataview::TextSize box,
                            std::u16string_view text) {
    const int w = box.width, h = box.height;
    if (w <= 0 || h <= 0) return;
    HDC memory = CreateCompatibleDC(dc_);
    Bitmap flat(dc_, w, h);
    Bitmap turned(dc_, h, w);
    if (memory && flat.pixels && turned.pixels) {
        HGDIOBJ oldBitmap = SelectObject(memory, flat.handle);
        HGDIOBJ oldFont = SelectObject(memory, font_);
        RECT r{0, 0, w, h};
        FillRect(memory, &r, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
        SetTextColor(memory, RGB(0, 0, 0));
        SetBkColor(memory, RGB(255, 255, 255));
        DrawTextW(memory, Wide(text), Length(text), &r, DT_SINGLELINE);
        GdiFlush();
        // Pixel (x, y) goes to (h - 1 - y, x): a quarter turn clockwise.
        for (int y = 0; y < h; ++y) {
            for (int x = 0; x < w; ++x) turned.pixels[x * h + (h - 1 - y)] = flat.pixels[y * w + x];
        }
        SelectObject(memory, turned.handle);
        BitBlt(dc_, at.x, at.y, h, w, memory, 0, 0, SRCCOPY);
        SelectObject(memory, oldFont);
        SelectObject(memory, oldBitmap);
    }
    if (memory) DeleteDC(memory);
}

void GdiCanvas::Clip(const dataview::Rect& r) {
    HRGN region = CreateRectRgn(r.left, r.top, r.right, r.bottom);
    SelectClipRgn(dc_, region);
    DeleteObject(region);
}

void GdiCanvas::Unclip() { SelectClipRgn(dc_, nullptr); }
