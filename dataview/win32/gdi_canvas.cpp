#include "dataview/win32/gdi_canvas.h"

#include <algorithm>
#include <cstdint>
#include <vector>

namespace {

constexpr std::size_t kSegmentsPerPolyline = 16;

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
    Flush();
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
    Flush();
    Use(pen);
    Use(brush);
    ::Rectangle(dc_, r.left, r.top, r.right, r.bottom);
}

void GdiCanvas::Ellipse(const dataview::Rect& r, const dataview::Pen& pen,
                        const dataview::Brush& brush) {
    FlushLines();
    // A dot whose outline and inside share one colour is only its shape: it can be stamped.
    const bool stamp = !pen.none && pen.width == 1 && pen.colour == brush.colour &&
                       r.right - r.left > 0 && r.right - r.left <= 16 &&
                       r.bottom - r.top > 0 && r.bottom - r.top <= 16;
    const bool same = !dots_.empty() && dotColour_ == brush.colour &&
                      r.right - r.left == dotBox_.right - dotBox_.left &&
                      r.bottom - r.top == dotBox_.bottom - dotBox_.top;
    if (!same) FlushDots();
    if (!stamp) {
        Use(pen);
        Use(brush);
        ::Ellipse(dc_, r.left, r.top, r.right, r.bottom);
        return;
    }
    if (dots_.empty()) {
        dotBox_ = r;
        dotColour_ = brush.colour;
    }
    dots_.push_back({r.left, r.top});
}

void GdiCanvas::Line(dataview::Point from, dataview::Point to, const dataview::Pen& pen) {
    FlushDots();
    if (!line_.empty() && (!(pen == linePen_) || line_.back().x != from.x ||
                           line_.back().y != from.y)) {
        FlushLines();
    }
    // Short polylines: a long wide one costs more than its segments one by one.
    if (line_.size() > kSegmentsPerPolyline) FlushLines();
    if (line_.empty()) {
        linePen_ = pen;
        line_.push_back({from.x, from.y});
    }
    line_.push_back({to.x, to.y});
}

void GdiCanvas::Flush() {
    FlushLines();
    FlushDots();
}

void GdiCanvas::FlushLines() {
    if (line_.empty()) return;
    Use(linePen_);
    Polyline(dc_, line_.data(), static_cast<int>(line_.size()));
    line_.clear();
}

void GdiCanvas::FlushDots() {
    if (dots_.empty()) return;
    const int w = dotBox_.right - dotBox_.left, h = dotBox_.bottom - dotBox_.top;
    // The dot's shape as GDI draws it, from one ellipse on white.
    HDC memory = CreateCompatibleDC(dc_);
    Bitmap shape(dc_, w, h);
    if (!memory || !shape.pixels) {
        if (memory) DeleteDC(memory);
        dots_.clear();
        return;
    }
    HGDIOBJ oldBitmap = SelectObject(memory, shape.handle);
    RECT whole{0, 0, w, h};
    FillRect(memory, &whole, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
    HGDIOBJ oldPen = SelectObject(memory, GetStockObject(BLACK_PEN));
    HGDIOBJ oldBrush = SelectObject(memory, GetStockObject(BLACK_BRUSH));
    ::Ellipse(memory, 0, 0, w, h);
    GdiFlush();
    SelectObject(memory, oldPen);
    SelectObject(memory, oldBrush);

    // Every dot stamped into one monochrome mask over their bounding box: 0 bits are painted.
    int left = dots_[0].x, top = dots_[0].y, right = left, bottom = top;
    for (const POINT& d : dots_) {
        left = std::min<int>(left, d.x);
        top = std::min<int>(top, d.y);
        right = std::max<int>(right, d.x);
        bottom = std::max<int>(bottom, d.y);
    }
    const long long maskWidth = static_cast<long long>(right) - left + w;
    const long long maskHeight = static_cast<long long>(bottom) - top + h;
    if (maskWidth > 4096 || maskHeight > 4096) {
        // Far-flung dots (the clipping cuts them anyway): one ellipse each.
        Use(dataview::Pen{1, dotColour_, false});
        Use(dataview::Brush{dotColour_});
        for (const POINT& d : dots_) ::Ellipse(dc_, d.x, d.y, d.x + w, d.y + h);
    } else {
        const int mw = static_cast<int>(maskWidth), mh = static_cast<int>(maskHeight);
        const int stride = (mw + 15) / 16 * 2;  // monochrome bitmap rows are whole words
        std::vector<std::uint8_t> bits(static_cast<std::size_t>(stride) * static_cast<std::size_t>(mh), 0xFF);
        for (const POINT& d : dots_) {
            for (int y = 0; y < h; ++y) {
                const std::size_t row = static_cast<std::size_t>(d.y - top + y) * static_cast<std::size_t>(stride);
                for (int x = 0; x < w; ++x) {
                    if ((shape.pixels[y * w + x] & 0xFFFFFF) != 0) continue;
                    const int mx = d.x - left + x;
                    bits[row + static_cast<std::size_t>(mx / 8)] &= static_cast<std::uint8_t>(~(0x80 >> (mx % 8)));
                }
            }
        }
        HBITMAP mask = CreateBitmap(mw, mh, 1, 1, bits.data());
        if (mask) {
            SelectObject(memory, mask);
            Use(dataview::Brush{dotColour_});
            const COLORREF text = SetTextColor(dc_, RGB(0, 0, 0));
            const COLORREF back = SetBkColor(dc_, RGB(255, 255, 255));
            // The brush where the mask is black, the picture left as it is where it is white.
            constexpr DWORD kBrushWhereBlack = 0x00B8074A;
            BitBlt(dc_, left, top, mw, mh, memory, 0, 0, kBrushWhereBlack);
            SetTextColor(dc_, text);
            SetBkColor(dc_, back);
            SelectObject(memory, shape.handle);
            DeleteObject(mask);
        }
    }
    SelectObject(memory, oldBitmap);
    DeleteDC(memory);
    dots_.clear();
}

dataview::TextSize GdiCanvas::Measure(std::u16string_view text) {
    Flush();
    RECT r{0, 0, 240, 320};
    DrawTextW(dc_, Wide(text), Length(text), &r, DT_CALCRECT | DT_SINGLELINE);
    return {r.right - r.left, r.bottom - r.top};
}

void GdiCanvas::Text(dataview::Point at, dataview::TextSize box, std::u16string_view text,
                     dataview::Colour colour) {
    Flush();
    COLORREF before = SetTextColor(dc_, colour);
    RECT r{at.x, at.y, at.x + box.width, at.y + box.height};
    DrawTextW(dc_, Wide(text), Length(text), &r, DT_SINGLELINE);
    SetTextColor(dc_, before);
}

void GdiCanvas::RotatedText(dataview::Point at, dataview::TextSize box,
                            std::u16string_view text) {
    Flush();
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
    Flush();
    HRGN region = CreateRectRgn(r.left, r.top, r.right, r.bottom);
    SelectClipRgn(dc_, region);
    DeleteObject(region);
}

void GdiCanvas::Unclip() {
    Flush();
    SelectClipRgn(dc_, nullptr);
}
