// Operations that go to the worker process and back. Those that a command has are checked in the sessions; saving has
// a file of its own.

#include <algorithm>
#include <cstring>
#include <functional>

#include "standin/desk/gdi_count.h"
#include "tests/module/support/desk_fixture.h"
#include "workerlink/SendToWorker.h"

namespace {

using test::blank;
using test::Picture;
using test::pictureInDrawing;
using test::readPicture;

const Picture steps = {
    "........", //
    ".##.....", //
    "...##...", //
    ".....#..",
};

class WorkerOperations : public test::DeskFixture
{
protected:
    CAcraster& openPicture(const Picture& picture)
    {
        CAcraster& raster = openCurrent(picture);
        raster.Lock(1);
        return raster;
    }
};

TEST_F(WorkerOperations, AWorkerThatFailsLeavesTheImageAsItWas)
{
    CAcraster& raster = openPicture(steps);
    SetWorkerPath(file("no worker.exe").c_str());
    raster.Invert();
    raster.Reload(true);
    EXPECT_EQ(pictureInDrawing(0), steps);
    EXPECT_TRUE(raster.QueryFormats().filter.IsEmpty());
    EXPECT_FALSE(raster.QueryFormatCode(0));
}

TEST_F(WorkerOperations, FilterRemovesSpecksOrFillsHolesInTheSelection)
{
    // At 254 dots per inch a size of 10 is 10 pixels.
    Picture picture = blank(40, 20);
    picture[3][3] = '#';
    picture[3][30] = '#';
    Picture withoutLeft = picture;
    withoutLeft[3][3] = '.';
    CAcraster& raster = openCurrent(picture, {}, 254);
    raster.Lock(1);
    raster.GetRegion().SetRectRgn(0, 0, 20, 20);
    raster.Filter(FilterDespeckle, 10, true);
    raster.Reload(true);
    EXPECT_EQ(pictureInDrawing(0), withoutLeft);
    raster.Filter(FilterDespeckle, 10, false);
    raster.Reload(true);
    EXPECT_EQ(pictureInDrawing(0), blank(40, 20));

    raster.Invert();
    raster.SetColor(0xFFFFFF);
    raster.Stamp(CPoint(10, 10));
    raster.Filter(FilterFill, 10, false);
    raster.Reload(true);
    EXPECT_EQ(pictureInDrawing(0), Picture(20, std::string(40, '#')));
}

TEST_F(WorkerOperations, ACropTakesWhatTheSelectionHasOfTheImage)
{
    struct Case
    {
        const char* what;
        CRect selection;
        Picture picture; // afterwards
        double x;        // of the lower left corner, in drawing units of a pixel's size
        double y;
    };
    const Case cases[] = {
        {"inside", {3, 1, 6, 3}, {"...", "##."}, 3, 1},
        {"over two edges", {-5, 2, 4, 90}, {"...#", "...."}, 0, 0},
        {"round the image", {-10, -10, 20, 20}, steps, 0, 0},
        {"beside the image", {8, 0, 12, 4}, steps, 0, 0},
        {"above the image", {0, -3, 8, 0}, steps, 0, 0},
    };
    for (const Case& row : cases) {
        CAcraster& raster = openPicture(steps);
        raster.GetRegion().SetRectRgn(row.selection);
        raster.Crop();
        raster.Reload(true);
        EXPECT_EQ(pictureInDrawing(0), row.picture) << row.what;
        AcGePoint3d origin;
        double width = 0;
        double height = 0;
        raster.GetPlacement(origin, width, height);
        EXPECT_NEAR(origin.x, row.x, 1e-9) << row.what;
        EXPECT_NEAR(origin.y, row.y, 1e-9) << row.what;
        EXPECT_NEAR(width, row.picture[0].size(), 1e-9) << row.what;
        EXPECT_NEAR(height, row.picture.size(), 1e-9) << row.what;
        raster.Unlock();
    }
}

TEST_F(WorkerOperations, ACropWhoseResultCannotBeReadBackMovesNothing)
{
    CAcraster& raster = openPicture(steps);
    raster.GetRegion().SetRectRgn(3, 1, 6, 3);
    test::planWorker({"spoils"});
    raster.Crop();
    raster.Reload(true);
    AcGePoint3d origin;
    double width = 0;
    double height = 0;
    raster.GetPlacement(origin, width, height);
    EXPECT_EQ(pictureInDrawing(0), steps);
    EXPECT_EQ(origin.x, 0);
    EXPECT_EQ(width, 8);
}

TEST_F(WorkerOperations, TheWorkerNamesTheFormats)
{
    CAcraster& raster = openPicture(steps);
    const RasterFormats formats = raster.QueryFormats();
    EXPECT_GE(formats.filterIndex, 0) << "the raster's own format is among them";
    EXPECT_GE(formats.filter.Find(L"*.tif"), 0);
    EXPECT_TRUE(formats.filter.Right(2) == L"||");
    EXPECT_EQ(raster.QueryFormatCode(formats.filterIndex), 101) << "the file is a TIFF without compression";
}

TEST_F(WorkerOperations, ARegionThatTheReplyBringsBackIsNotLeftBehind)
{
    CAcraster& raster = openPicture(steps);
    const auto select = [&raster] {
        CRgn corner;
        corner.CreateRectRgn(0, 0, 1, 1);
        raster.ResetRegion();
        raster.GetRegion().CombineRgn(&raster.GetRegion(), &corner, RGN_DIFF); // a crop keeps the size
    };
    struct Case
    {
        const char* what;
        std::function<void()> request;
    };
    const Case cases[] = {
        {"a copy", [&] { raster.CopyToClipboard(); }},
        {"a rotation", [&] { raster.Rotate(0, CPoint(0, 0), true, true); }},
        {"a filter", [&] { raster.Filter(FilterDespeckle, 1, true); }},
        {"a crop", [&] { raster.Crop(); }},
        {"a saved part", [&] { raster.SaveAs(file("part.tif").c_str(), 29, &raster.GetRegion()); }},
    };
    for (const Case& row : cases) {
        select();
        row.request();
        select();
        const int objects = gdiObjects();
        row.request();
        EXPECT_EQ(gdiObjects(), objects) << row.what;
    }
}

// Owns the clipboard as the host's window does after a copy there: with a bitmap that it only announces.
class AnnouncingOwner : public CWnd
{
public:
    explicit AnnouncingOwner(const std::vector<BYTE>& dib) : m_dib(dib)
    {
        CreateEx(0, L"STATIC", L"clipboard", WS_POPUP, CRect(0, 0, 0, 0), nullptr, 0);
        EXPECT_TRUE(::OpenClipboard(m_hWnd));
        EmptyClipboard();
        SetClipboardData(CF_DIB, nullptr);
        CloseClipboard();
    }
    ~AnnouncingOwner() override { DestroyWindow(); }

    bool m_told = false; // that the clipboard is no longer its own

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        if (message == WM_RENDERFORMAT) {
            const HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, m_dib.size());
            std::copy(m_dib.begin(), m_dib.end(), static_cast<BYTE*>(GlobalLock(block)));
            GlobalUnlock(block);
            SetClipboardData(CF_DIB, block);
        }
        m_told = m_told || message == WM_DESTROYCLIPBOARD;
        return CWnd::WindowProc(message, wParam, lParam);
    }

private:
    std::vector<BYTE> m_dib;
};

// 2 by 1 pixels of 1 bit: black, white.
std::vector<BYTE> blackAndWhite()
{
    const BITMAPINFOHEADER header = {sizeof(BITMAPINFOHEADER), 2, 1, 1, 1, BI_RGB, 0, 0, 0, 0, 0};
    std::vector<BYTE> dib(sizeof(header) + 12);
    std::memcpy(dib.data(), &header, sizeof(header));
    std::fill_n(dib.begin() + sizeof(header), 3, BYTE(255)); // colour 0 is white, 1 black
    dib[sizeof(header) + 8] = 0x80;
    return dib;
}

TEST_F(WorkerOperations, WhatTheHostItselfHasOnTheClipboardCanBePasted)
{
    const AnnouncingOwner owner(blackAndWhite());
    CAcraster& raster = openPicture({"....", "...."});
    raster.PasteFromClipboard({1, 1}, true);
    raster.Reload(true);
    raster.Unlock();
    EXPECT_EQ(pictureInDrawing(0), (Picture{"....", ".#.."}));
}

TEST_F(WorkerOperations, ACopyTakesTheClipboardFromTheHostItselfWithoutWaitingForIt)
{
    const AnnouncingOwner owner(blackAndWhite());
    CAcraster& raster = openPicture({"#..#"});
    raster.CopyToClipboard();
    EXPECT_TRUE(owner.m_told) << "this thread takes no messages while the worker waits for it to be told";
    raster.PasteFromClipboard({2, 0}, false);
    raster.Reload(true);
    raster.Unlock();
    EXPECT_EQ(pictureInDrawing(0), Picture{"#.#."});
}

} // namespace
