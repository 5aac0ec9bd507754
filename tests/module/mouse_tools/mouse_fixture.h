// A raster on the view with 4 view pixels to an image pixel, and a mouse.
#pragma once

#include "module/base/CArxApp.h"
#include "module/commands/ToolCommands.h"
#include "module/resources/resource.h"
#include "module/tools/CTool.h"
#include "tests/module/support/desk_fixture.h"

namespace test {

// Bitmaps in memory, in the clipboard's form.
using DibBytes = std::vector<BYTE>;

class MouseFixture : public DeskFixture
{
protected:
    void SetUp() override;

    // Pixel (x, y) of the image covers the view from (40 + 4x, 30 + 4y). The image is 80 by 60 pixels, unless another
    // picture is given.
    CAcraster& openRaster(const Picture& picture = blank(80, 60));
    // One of 8 bits in the place of openRaster's.
    CAcraster& openGrayRaster();
    // Ends the tool and the raster and closes the drawing, so that another can be opened.
    void closeRaster();
    // The picture of openRaster with ink at these pixels.
    static Picture withInk(const std::vector<CPoint>& pixels);
    // The middle of a pixel on the view.
    static CPoint at(int x, int y) { return CPoint(42 + 4 * x, 32 + 4 * y); }

    // Real messages to the view, each worked off before the next one.
    void post(UINT message, CPoint point, UINT flags = 0);
    void press(CPoint point, UINT flags = 0) { post(WM_LBUTTONDOWN, point, flags); }
    void move(CPoint point, UINT flags = 0) { post(WM_MOUSEMOVE, point, flags); }
    void release(CPoint point, UINT flags = 0) { post(WM_LBUTTONUP, point, flags); }
    void drag(CPoint from, CPoint to, UINT flags = 0);
    // A drag that comes back to where it began: what it draws on the view shows, from a drag of more than `tooShort`
    // on, and nothing of it is left in the end.
    void expectDragErasesItself(CPoint start, CSize tooShort = {0, 0});
    void command(UINT id);
    void escape();

    // Every pixel of the view, row by row.
    std::vector<COLORREF> viewPixels();
    static int locks() { return g_pArxApp->m_pRaster->GetLockCount(); }
    static COLORREF pixelOf(const std::vector<COLORREF>& pixels, int x, int y) { return pixels[y * 400 + x]; }

    static int selected(CAcraster& raster);

    void putOnClipboard(UINT format, const DibBytes& bytes);
    void emptyClipboard();
    // What another program would find there.
    DibBytes bitmapOnClipboard();
};

DibBytes bytesOf(std::initializer_list<int> values);
DibBytes little(DWORD value);
DibBytes operator+(DibBytes left, const DibBytes& right);

// A 1-bit bitmap, top row first, black where the picture has ink.
DibBytes dibOf(const Picture& picture);
// A header alone; a negative height has the top row come first. What lies beyond its first 40 bytes is given or zero.
DibBytes dibHeader(int width, int height, int bits, DWORD length = 40, DWORD compression = BI_RGB,
                   const DibBytes& rest = {});

} // namespace test
