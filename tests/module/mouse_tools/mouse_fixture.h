// A raster on the view with 4 view pixels to an image pixel, and a mouse.
#pragma once

#include "host/CArxApp.h"
#include "host/ToolCommands.h"
#include "resources/resource.h"
#include "tests/module/support/desk_fixture.h"
#include "tools/CTool.h"

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
    void command(UINT id);
    void escape();

    // Every pixel of the view, row by row.
    std::vector<COLORREF> viewPixels();
    static COLORREF pixelOf(const std::vector<COLORREF>& pixels, int x, int y) { return pixels[y * 400 + x]; }

    // The rectangles of the current raster's region, in words.
    static std::string regionOf(CAcraster& raster);
    static int selected(CAcraster& raster);
    static void deselect(CAcraster& raster);

    void putOnClipboard(UINT format, const DibBytes& bytes);
    void emptyClipboard();
};

// A 1-bit bitmap, top row first, black where the picture has ink.
DibBytes dibOf(const Picture& picture);
// The header of 40 bytes alone.
DibBytes dibHeader(int width, int height, int bits);

} // namespace test
