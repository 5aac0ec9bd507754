// The paste tool. Where it floats, what a commit paints and what drops it is played and checked to the pixel in the
// sessions.

#include "module/tools/CEditPasteTool.h"
#include "tests/module/mouse_tools/mouse_fixture.h"
#include "tests/module/support/held_objects.h"

namespace {

using test::blank;
using test::DibBytes;
using test::Picture;
using test::pictureInDrawing;
using test::operator+;

const Picture corner = {
    "########", //
    "#.......",
    "#.......",
    "#......#",
};

class Paste : public test::MouseFixture
{
protected:
    CEditPasteTool* start()
    {
        auto* tool = new CEditPasteTool;
        if (tool->Start())
            return tool;
        delete tool;
        return nullptr;
    }
    CEditPasteTool* startWith(const Picture& picture)
    {
        putOnClipboard(CF_DIB, test::dibOf(picture));
        return start();
    }
    static std::string place(const CEditPasteTool& tool)
    {
        const CRect& rect = tool.FloatingRect();
        return std::to_string(rect.left) + "," + std::to_string(rect.top) + "-" + std::to_string(rect.right) + "," +
               std::to_string(rect.bottom);
    }
    static Picture sheetWith(const Picture& pasted, CPoint topLeft)
    {
        Picture picture = blank(80, 60);
        for (size_t row = 0; row < pasted.size(); ++row)
            picture[topLeft.y + row].replace(topLeft.x, pasted[row].size(), pasted[row]);
        return picture;
    }
};

TEST_F(Paste, WithoutABitmapItDoesNotStart)
{
    openRaster();
    emptyClipboard();
    EXPECT_EQ(start(), nullptr);
    EXPECT_EQ(g_pArxApp->m_pTool, nullptr);

    const DibBytes whole = test::dibOf(corner);
    struct Case
    {
        const char* what;
        DibBytes bytes;
    };
    DibBytes compressed = whole;
    compressed[16] = BI_RLE8;
    const Case cases[] = {
        {"cut off in the header", DibBytes(whole.begin(), whole.begin() + 30)},
        {"an enormous size", test::dibHeader(1 << 20, 1 << 20, 32)},
        {"sizes beyond any number", test::dibHeader(0x7FFFFFFF, -0x7FFFFFFF - 1, 32)},
        {"no width", test::dibHeader(0, 5, 1)},
        {"compressed", compressed},
    };
    for (const Case& row : cases) {
        putOnClipboard(CF_DIB, row.bytes);
        EXPECT_EQ(start(), nullptr) << row.what;
    }
}

TEST_F(Paste, ALastRowNeedNotBeFilledUp)
{
    openRaster();
    DibBytes dib = test::dibHeader(5, 1, 24);
    dib.resize(dib.size() + 15);
    putOnClipboard(CF_DIB, dib);
    EXPECT_NE(start(), nullptr);
}

TEST_F(Paste, DataOfTheModulesOwnFormatIsNotPasted)
{
    openRaster();
    putOnClipboard(CF_DIB, test::dibOf(corner));
    ASSERT_TRUE(OpenClipboard(nullptr));
    SetClipboardData(RegisterClipboardFormatW(L"Halvoran Raster Pakage"), GlobalAlloc(GMEM_MOVEABLE, 3));
    CloseClipboard();
    EXPECT_EQ(start(), nullptr);
}

TEST_F(Paste, BitmapsOfAnyDepthAndHeaderArePasted)
{
    using test::bytesOf;
    using test::dibHeader;
    // All say the same in the colours black, white, dark and light.
    const Picture motif = {
        "#..#", // 2 1 3 0
        ".##.", // 3 0 2 1
    };
    const DibBytes black = bytesOf({0, 0, 0, 0});
    const DibBytes white = bytesOf({255, 255, 255, 0});
    const DibBytes dark = bytesOf({90, 20, 30, 0});
    const DibBytes light = bytesOf({200, 250, 250, 0});
    const DibBytes colours = black + white + dark + light;
    const DibBytes upper1 = bytesOf({0x90, 0, 0, 0});
    const DibBytes lower1 = bytesOf({0x60, 0, 0, 0});
    const DibBytes rows4 = bytesOf({0x30, 0x21, 0, 0, 0x21, 0x30, 0, 0});
    const DibBytes upper8 = bytesOf({2, 1, 3, 0});
    const DibBytes lower8 = bytesOf({3, 0, 2, 1});
    const DibBytes upper24 = bytesOf({90, 20, 30, 255, 255, 255, 200, 250, 250, 0, 0, 0});
    const DibBytes lower24 = bytesOf({200, 250, 250, 0, 0, 0, 90, 20, 30, 255, 255, 255});
    const DibBytes upper32 = dark + white + light + black;
    const DibBytes lower32 = light + black + dark + white;
    const DibBytes masks = test::little(0xFF0000) + test::little(0xFF00) + test::little(0xFF);
    const auto palette = [&](int count) { return colours + DibBytes((count - 4) * size_t(4)); };
    struct Case
    {
        const char* what;
        DibBytes dib;
    };
    const Case cases[] = {
        {"1 bit, white first", dibHeader(4, 2, 1) + white + black + lower1 + upper1},
        {"1 bit, black first, top row first", dibHeader(4, -2, 1) + black + white + lower1 + upper1},
        {"4 bits", dibHeader(4, 2, 4) + palette(16) + rows4},
        {"8 bits, top row first", dibHeader(4, -2, 8) + palette(256) + upper8 + lower8},
        {"8 bits, a header of 124 bytes", dibHeader(4, 2, 8, 124) + palette(256) + lower8 + upper8},
        {"24 bits", dibHeader(4, 2, 24) + lower24 + upper24},
        {"24 bits, top row first, 108 bytes", dibHeader(4, -2, 24, 108) + upper24 + lower24},
        {"32 bits", dibHeader(4, 2, 32) + lower32 + upper32},
        {"32 bits, masks behind the header", dibHeader(4, 2, 32, 40, BI_BITFIELDS) + masks + lower32 + upper32},
        {"32 bits, masks in the header", dibHeader(4, -2, 32, 124, BI_BITFIELDS, masks) + upper32 + lower32},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.what);
        openRaster();
        m_viewState.centre = {0.5, -0.5, 0}; // the middle of the view lies in pixel (40, 30)
        putOnClipboard(CF_DIB, row.dib);
        ASSERT_NE(start(), nullptr);
        PasteTransparent = false;
        move(CPoint(20, 20));
        drag(CPoint(20, 20), CPoint(20, 20));
        EXPECT_EQ(pictureInDrawing(0), sheetWith(motif, {38, 29}));
        closeRaster();
    }
}

TEST_F(Paste, AClickInsideDragsAndNeverCommits)
{
    openRaster();
    m_viewState.centre = {0.5, -0.5, 0};
    CEditPasteTool* tool = startWith(corner);
    ASSERT_NE(tool, nullptr);
    move(CPoint(200, 150));
    press(CPoint(200, 150));
    EXPECT_EQ(GetCapture(), view().m_hWnd);
    // The handlers themselves, so that no timer can come between.
    tool->OnMouseMove(CPoint(240, 170), MK_LBUTTON);
    EXPECT_EQ(place(*tool), "46,33-54,37");
    tool->OnMouseMove(CPoint(280, 190), MK_LBUTTON);
    EXPECT_EQ(place(*tool), "46,33-54,37") << "a move during the wait is left out";

    // The wait is over once the image is back on the view: its upper left corner is ink.
    const auto shown = [this] { return pixelOf(viewPixels(), 236, 162) == 0; };
    EXPECT_TRUE(test::pumpUntil(shown));
    tool->OnMouseMove(CPoint(280, 190), MK_LBUTTON);
    EXPECT_EQ(place(*tool), "56,38-64,42") << "the next move makes up for it";
    release(CPoint(280, 190));
    EXPECT_EQ(GetCapture(), nullptr);
    tool->OnMouseMove(CPoint(300, 200), 0);
    EXPECT_EQ(place(*tool), "56,38-64,42") << "without the button it stays";
    EXPECT_EQ(pictureInDrawing(0), blank(80, 60));
    EXPECT_TRUE(m_posted.empty());

    move(CPoint(20, 20));
    press(CPoint(20, 20));
    EXPECT_EQ(pictureInDrawing(0), sheetWith(corner, {56, 38}));
}

TEST_F(Paste, ThePreviewShowsTheClipboardsPixels)
{
    openRaster();
    m_viewState.centre = {0.5, -0.5, 0};
    // 8 bits: 256 colours lie between the header and the bits. Index 1 is white, all others black.
    DibBytes gray = test::dibHeader(8, -4, 8) + test::bytesOf({0, 0, 0, 0, 255, 255, 255, 0}) + DibBytes(1016);
    for (const std::string& row : corner) {
        for (const char pixel : row)
            gray.push_back(pixel == '#' ? 0 : 1);
    }
    for (const DibBytes& dib : {test::dibOf(corner), gray}) {
        putOnClipboard(CF_DIB, dib);
        ASSERT_NE(start(), nullptr);
        const auto pixels = viewPixels();
        // The image lies on the view from (182, 140) on, 4 view pixels to each of its own; the frame covers 2 of them.
        for (int y = 0; y < 4; ++y) {
            for (int x = 0; x < 8; ++x) {
                const CPoint inside(182 + 4 * x + (x == 7 ? 1 : 2), 140 + 4 * y + (y == 3 ? 1 : 2));
                EXPECT_EQ(pixelOf(pixels, inside.x, inside.y), corner[y][x] == '#' ? 0u : 0xFFFFFFu) << x << "," << y;
            }
        }
    }
}

TEST_F(Paste, OnADeeperRasterItIsOpaqueAndCostsNoContexts)
{
    openGrayRaster();
    m_viewState.centre = {0.5, -0.5, 0};
    putOnClipboard(CF_DIB, test::dibOf(corner));
    const auto live = [this] {
        ASSERT_NE(start(), nullptr);
        EXPECT_FALSE(PasteTransparent);
        EXPECT_EQ(pixelOf(viewPixels(), 188, 142), 0u) << "the bitmap's upper edge is ink";
        escape();
    };
    live();
    const test::HeldObjects before = test::HeldObjects::now();
    for (int i = 0; i < 20; ++i)
        live();
    EXPECT_EQ(test::HeldObjects::now(), before);
}

TEST_F(Paste, EscapeTakesTheImageOffTheView)
{
    openRaster();
    const auto before = viewPixels();
    ASSERT_NE(startWith(corner), nullptr);
    EXPECT_TRUE(viewPixels() != before);
    escape();
    EXPECT_EQ(g_pArxApp->m_pTool, nullptr);
    EXPECT_TRUE(viewPixels() == before);
}

} // namespace
