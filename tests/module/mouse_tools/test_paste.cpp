// The paste tool.

#include "tests/module/afx/gdi_count.h"
#include "tests/module/mouse_tools/mouse_fixture.h"
#include "tests/module/support/held_objects.h"
#include "tools/CEditPasteTool.h"

namespace {

using test::blank;
using test::DibBytes;
using test::Picture;
using test::pictureInDrawing;

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
    static Picture withCornerAt(int x, int y, Picture picture = blank(80, 60))
    {
        for (size_t row = 0; row < corner.size(); ++row) {
            for (size_t column = 0; column < corner[0].size(); ++column) {
                if (corner[row][column] == '#')
                    picture[y + row][x + column] = '#';
            }
        }
        return picture;
    }
};

TEST_F(Paste, FloatsInTheMiddleOfTheView)
{
    openRaster(blank(1000, 600));
    // One view pixel to an image pixel, and the middle of the view in the middle of pixel (500, 300).
    m_viewState = {400, 300, {-40 + 500.5, 30 - 300.5, 0}, 300};
    struct Case
    {
        int width, height;
        std::string wanted;
    };
    const Case cases[] = {
        {100, 50, "450,275-550,325"},
        {5, 3, "498,299-503,302"},
        {1, 1, "500,300-501,301"},
    };
    for (const Case& row : cases) {
        CEditPasteTool* tool = startWith(blank(row.width, row.height));
        ASSERT_NE(tool, nullptr);
        EXPECT_EQ(place(*tool), row.wanted);
        EXPECT_EQ(tool->ToolId(), 7);
    }
}

TEST_F(Paste, EveryOpeningIsTransparentOnAOneBitRaster)
{
    openRaster();
    ASSERT_NE(startWith(corner), nullptr);
    EXPECT_TRUE(PasteTransparent);
    move(CPoint(200, 150));
    command(ID_PASTE_TRANSPARENT);
    EXPECT_FALSE(PasteTransparent);
    ASSERT_NE(start(), nullptr);
    EXPECT_TRUE(PasteTransparent);
}

TEST_F(Paste, OnADeeperRasterItIsOpaqueAndShowsThePixelsAllTheSame)
{
    test::writeGrayTiff(file("gray.tif"), 80, 60);
    openDrawing({blank(80, 60)}, {{.file = file("gray.tif"), .x = -40, .y = -30}});
    makeCurrent(0);
    m_viewState.centre = {0.5, -0.5, 0};
    ASSERT_NE(startWith(corner), nullptr);
    EXPECT_FALSE(PasteTransparent);
    EXPECT_EQ(pixelOf(viewPixels(), 188, 142), 0u) << "the bitmap's upper edge is ink";
    delete g_pArxApp->m_pTool;

    const int objects = gdiObjects();
    for (int i = 0; i < 20; ++i) {
        ASSERT_NE(start(), nullptr);
        delete g_pArxApp->m_pTool;
    }
    EXPECT_LE(gdiObjects(), objects + 2);
}

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
    putOnClipboard(RegisterClipboardFormatW(L"Halvoran Raster Pakage"), {1, 2, 3});
    ASSERT_TRUE(OpenClipboard(view().m_hWnd));
    const DibBytes dib = test::dibOf(corner);
    const HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, dib.size());
    std::copy(dib.begin(), dib.end(), static_cast<BYTE*>(GlobalLock(block)));
    GlobalUnlock(block);
    SetClipboardData(CF_DIB, block);
    CloseClipboard();
    EXPECT_EQ(start(), nullptr);
}

TEST_F(Paste, AClickBesideTheImageCommits)
{
    Picture ground = blank(80, 60);
    ground[28] = std::string(80, '#');
    for (const bool transparent : {true, false}) {
        SCOPED_TRACE(transparent);
        openRaster(ground);
        // Away from the edges of pixels, so that the middle lies in pixel (40, 30).
        m_viewState.centre = {0.5, -0.5, 0};
        CEditPasteTool* tool = startWith(corner);
        ASSERT_NE(tool, nullptr);
        EXPECT_EQ(place(*tool), "36,28-44,32");
        PasteTransparent = transparent;
        move(CPoint(20, 20));
        drag(CPoint(20, 20), CPoint(20, 20));
        Picture wanted = withCornerAt(36, 28, ground);
        EXPECT_EQ(pictureInDrawing(0), wanted);
        ASSERT_FALSE(m_posted.empty());
        EXPECT_EQ(m_posted.back(), L"orvo_selarea ");
        EXPECT_EQ(g_pArxApp->m_pRaster->GetLockCount(), 0);
        delete g_pArxApp->m_pTool;
        g_pArxApp->DropRaster();
        standin::closeDrawing();
    }
}

TEST_F(Paste, OnlyTheOpaqueModeBringsItsPaper)
{
    const Picture black(60, std::string(80, '#'));
    for (const bool transparent : {true, false}) {
        openRaster(black);
        m_viewState.centre = {0.5, -0.5, 0};
        ASSERT_NE(startWith(corner), nullptr);
        PasteTransparent = transparent;
        move(CPoint(20, 20));
        press(CPoint(20, 20));
        Picture wanted = black;
        for (size_t row = 0; !transparent && row < corner.size(); ++row)
            wanted[28 + row].replace(36, 8, corner[row]);
        EXPECT_EQ(pictureInDrawing(0), wanted) << (transparent ? "transparent" : "opaque");
        delete g_pArxApp->m_pTool;
        g_pArxApp->DropRaster();
        standin::closeDrawing();
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
    EXPECT_EQ(pictureInDrawing(0), withCornerAt(56, 38));
}

TEST_F(Paste, APanDropsThePaste)
{
    openRaster();
    CEditPasteTool* tool = startWith(corner);
    ASSERT_NE(tool, nullptr);
    move(CPoint(200, 150));
    EXPECT_TRUE(m_posted.empty());
    m_viewState.centre.x = 1;
    move(CPoint(201, 150));
    EXPECT_EQ(m_posted, std::vector<std::wstring>{L"orvo_selarea "});
    EXPECT_EQ(pictureInDrawing(0), blank(80, 60));
}

TEST_F(Paste, ThePreviewShowsTheClipboardsPixels)
{
    openRaster();
    m_viewState.centre = {0.5, -0.5, 0};
    // 8 bits: 256 colours lie between the header and the bits. Index 1 is white, 0 black.
    DibBytes gray = test::dibHeader(8, -4, 8);
    gray.resize(40 + 1024);
    gray[44] = gray[45] = gray[46] = 255;
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

TEST_F(Paste, ADeeperRasterCostsNoContexts)
{
    test::writeGrayTiff(file("gray.tif"), 80, 60);
    openDrawing({blank(80, 60)}, {{.file = file("gray.tif"), .x = -40, .y = -30}});
    makeCurrent(0);
    putOnClipboard(CF_DIB, test::dibOf(corner));
    const auto live = [this] {
        if (start()) {
            EXPECT_FALSE(PasteTransparent);
            escape();
        }
        EXPECT_EQ(g_pArxApp->m_pTool, nullptr);
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
