#include <cmath>

#include "module/base/CArxApp.h"
#include "module/raster/Coordinates.h"
#include "tests/module/support/desk_fixture.h"

namespace {

using test::blank;
using test::PlacedImage;

class Coordinates : public test::DeskFixture
{
protected:
    // One image of 4 by 3 pixels with its lower left corner at the origin, 2 drawing units to a pixel, or as given.
    CAcraster& openImage(const PlacedImage& place = {.unitsPerPixel = 2})
    {
        CAcraster& raster = openCurrent(blank(4, 3), place);
        raster.Lock(0);
        return raster;
    }
};

void expectPoint(CPoint point, int x, int y)
{
    EXPECT_EQ(point.x, x);
    EXPECT_EQ(point.y, y);
}

void expectWorld(const AcGePoint3d& point, double x, double y)
{
    EXPECT_DOUBLE_EQ(point.x, x);
    EXPECT_DOUBLE_EQ(point.y, y);
    EXPECT_DOUBLE_EQ(point.z, 0);
}

TEST_F(Coordinates, ViewAndDrawingConvertByTheHostsVariables)
{
    struct Case
    {
        standin::ViewState view;
        double x, y; // drawing
        int viewX, viewY;
    };
    const Case cases[] = {
        {{1000, 1000, {0, 0, 0}, 100}, 0, 0, 500, 500},
        {{1000, 1000, {0, 0, 0}, 100}, 50, 50, 1000, 0},
        // Half a drawing unit to a view pixel; the centre of the view is drawing point (10, 20).
        {{400, 300, {10, 20, 0}, 150}, 10, 20, 200, 150},
        {{400, 300, {10, 20, 0}, 150}, 0, 0, 180, 190},
        // -20.6 of a view pixel, with the half that rounds it -20.1: toward zero that is -20.
        {{400, 300, {10, 20, 0}, 150}, -100.3, 20, -20, 150},
        // Below the centre by one unit of 3 view pixels.
        {{300, 300, {0, 0, 0}, 100}, 0, -1, 150, 153},
    };
    for (const Case& row : cases) {
        m_viewState = row.view;
        expectPoint(WorldToView(AcGePoint3d(row.x, row.y, 7)), row.viewX, row.viewY);
    }

    m_viewState = {1000, 1000, {0, 0, 0}, 100};
    expectWorld(ViewToWorld(CPoint(500, 500)), 0, 0);
    m_viewState = {400, 300, {10, 20, 0}, 150};
    expectWorld(ViewToWorld(CPoint(200, 150)), 10, 20);
    expectWorld(ViewToWorld(CPoint(-10, -10)), -95, 100);
    expectWorld(ViewToWorld(CPoint(400, 300)), 110, -55);
}

TEST_F(Coordinates, PixelsConvertByTheirCornersAndDrawingPointsByThePixelTheyLieIn)
{
    const CAcraster& raster = openImage({.x = 10, .y = 20, .unitsPerPixel = 2});
    expectWorld(raster.PixelToWorld(CPoint(0, 0)), 10, 26);
    expectWorld(raster.PixelToWorld(CPoint(4, 3)), 18, 20);
    expectWorld(raster.PixelToWorld(1.0, 1.0), 13, 23);

    struct Case
    {
        double x, y;
        int pixelX, pixelY;
        const char* where;
    };
    const Case cases[] = {
        {13, 23, 1, 1, "the centre of a pixel"},
        {10.1, 25.9, 0, 0, "just inside the top left corner"},
        {11.9, 24.1, 0, 0, "the far end of that pixel"},
        {12.1, 23.9, 1, 1, "just inside the next pixel"},
        {17.9, 20.1, 3, 2, "the last pixel"},
        {9.2, 26.8, 0, 0, "less than half a pixel off the image"},
        {7.9, 28.1, -1, -1, "more than a pixel off the image"},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.where);
        expectPoint(raster.WorldToPixel(AcGePoint3d(row.x, row.y, 0)), row.pixelX, row.pixelY);
    }
}

TEST_F(Coordinates, ARegionOffTheScreenOrWithoutPixelsIsEmptyInTheView)
{
    CAcraster& raster = openImage();
    m_viewState.centre = {1000, 0, 0};
    CRgn off;
    EXPECT_EQ(raster.GetViewRegion(off), 1) << "the count is the region's own, also off the screen";
    CRect box;
    EXPECT_EQ(off.GetRgnBox(&box), NULLREGION);

    raster.GetRegion().SetRectRgn(0, 0, 0, 0);
    CRgn empty;
    EXPECT_EQ(raster.GetViewRegion(empty), 0);
    EXPECT_EQ(empty.GetRgnBox(&box), NULLREGION);
}

TEST_F(Coordinates, TheRegionOfManyRectanglesIsThatOfAllOneByOne)
{
    CAcraster& raster = openCurrent(blank(300, 200), {.unitsPerPixel = 1, .uy = 0.25});
    raster.Lock(0);
    CRgn& selection = raster.GetRegion();
    selection.SetRectRgn(0, 0, 0, 0);
    unsigned random = 1;
    const auto next = [&random](int limit) {
        random = random * 1103515245 + 12345;
        return static_cast<int>(random >> 16) % limit;
    };
    for (int i = 0; i < 300; ++i) {
        CRgn part;
        const CPoint corner(next(300), next(200));
        part.CreateRectRgn(corner.x, corner.y, corner.x + 1 + next(20), corner.y + 1 + next(20));
        selection.CombineRgn(&selection, &part, i % 5 ? RGN_OR : RGN_DIFF);
    }
    for (const double height : {2000.0, 300.0, 90.0}) { // from under a view pixel to beyond the view
        SCOPED_TRACE(height);
        m_viewState = {400, 300, {150, 100, 0}, height};
        CRgn view;
        const int count = raster.GetViewRegion(view);

        std::vector<char> block(GetRegionData(selection, 0, nullptr));
        auto* data = reinterpret_cast<RGNDATA*>(block.data());
        GetRegionData(selection, static_cast<DWORD>(block.size()), data);
        EXPECT_EQ(count, static_cast<int>(data->rdh.nCount));
        CRgn wanted;
        wanted.CreateRectRgn(0, 0, 0, 0);
        for (DWORD i = 0; i < data->rdh.nCount; ++i) {
            const RECT pixels = reinterpret_cast<const RECT*>(data->Buffer)[i];
            CRect rect(raster.PixelToView(CPoint(pixels.left, pixels.top)),
                       raster.PixelToView(CPoint(pixels.right, pixels.bottom)));
            rect.NormalizeRect();
            rect.right += rect.left == rect.right;
            rect.bottom += rect.top == rect.bottom;
            if (rect.left >= 400 || rect.top >= 300 || rect.right <= 0 || rect.bottom <= 0)
                continue;
            CRgn part;
            part.CreateRectRgnIndirect(rect);
            wanted.CombineRgn(&wanted, &part, RGN_OR);
        }
        EXPECT_TRUE(view.EqualRgn(&wanted));
    }
    raster.Unlock();
}

TEST_F(Coordinates, ValuesThatNoIntegerHoldsStopAtItsEnds)
{
    EXPECT_EQ(TruncateToInt(2.999), 2);
    EXPECT_EQ(TruncateToInt(-2.999), -2);
    EXPECT_EQ(TruncateToInt(1e300), INT_MAX);
    EXPECT_EQ(TruncateToInt(-1e300), INT_MIN);
    EXPECT_EQ(TruncateToInt(std::nan("")), 0);
}

} // namespace
