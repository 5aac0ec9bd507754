#include "imaging/raster_file.h"
#include "module/base/CArxApp.h"
#include "module/base/CTempFile.h"
#include "module/raster/CCurentRaster.h"
#include "tests/module/support/desk_fixture.h"

namespace {

using test::blank;
using test::Picture;
using test::pictureInDrawing;

class RasterImages : public test::DeskFixture
{
protected:
    CAcraster& openPicture(const Picture& picture)
    {
        CAcraster& raster = openCurrent(picture);
        raster.Lock(1);
        raster.SetColor(0);
        return raster;
    }
    // What the drawing shows once the raster's work is committed.
    Picture committed(CAcraster& raster)
    {
        raster.Reload(true);
        return pictureInDrawing(0);
    }
};

TEST_F(RasterImages, ResamplingKeepsTheProportions)
{
    struct Case
    {
        CSize from, asked, wanted;
    };
    const Case cases[] = {
        {{100, 100}, {10, 5}, {5, 5}},  // too wide for a square
        {{40, 20}, {10, 10}, {10, 5}},  // too high for a 2:1 image
        {{7, 3}, {5, 5}, {5, 2}},       // 2.14 and the half: 2
        {{7, 3}, {14, 6}, {14, 6}},     // twice the size
        {{40, 20}, {40, 20}, {40, 20}}, // as it is
    };
    for (const Case& row : cases) {
        CAcraster& raster = openPicture(blank(row.from.cx, row.from.cy));
        raster.Resample(row.asked, 300);
        const Picture picture = committed(raster);
        EXPECT_EQ(picture.size(), size_t(row.wanted.cy)) << row.from.cx << " x " << row.from.cy;
        EXPECT_EQ(picture.at(0).size(), size_t(row.wanted.cx)) << row.from.cx << " x " << row.from.cy;
        raster.ResetRegion();
        EXPECT_EQ(raster.HasSelection(), 0);
        DropCurrentRaster();
    }
}

TEST_F(RasterImages, TheSizeInTheDrawingFollowsTheResolution)
{
    CAcraster& raster = openCurrent(blank(40, 20), {.x = 5, .y = 6, .unitsPerPixel = 0.5});
    raster.Lock(1);
    AcGePoint3d origin;
    double width = 0;
    double height = 0;
    const auto expectPlacement = [&](double w, double h, const char* what) {
        raster.GetPlacement(origin, width, height);
        EXPECT_DOUBLE_EQ(origin.x, 5) << what;
        EXPECT_DOUBLE_EQ(origin.y, 6) << what;
        EXPECT_DOUBLE_EQ(width, w) << what;
        EXPECT_DOUBLE_EQ(height, h) << what;
    };
    expectPlacement(20, 10, "as placed");

    raster.Resample(CSize(40, 20), 600);
    EXPECT_EQ(raster.GetDpi(), 600);
    EXPECT_TRUE(raster.IsDirty());
    raster.Reload(true);
    expectPlacement(10, 5, "the same pixels at twice the resolution are half as large");
    raster.Resample(CSize(80, 40), 1200);
    raster.Reload(true);
    expectPlacement(10, 5, "twice the pixels at twice the resolution are as large");
    raster.Unlock();
}

TEST_F(RasterImages, TheTemporaryTiffHasTheImagesPixelsAndResolution)
{
    CAcraster& raster = openPicture({"#...", ".#..", "...#"});
    const std::filesystem::path path = file("out.tif");
    test::writeTiff(path, blank(3, 3), 72); // is replaced
    raster.FlipHorizontal();
    ASSERT_TRUE(raster.WriteTiff(path.c_str()));
    EXPECT_EQ(test::readPicture(path), (Picture{"...#", "..#.", "#..."}));
    const imaging::RasterInfo info = imaging::inspectRaster(path);
    EXPECT_EQ(info.format, imaging::Format::TiffGroup4);
    EXPECT_NEAR(info.resolution.x, 300, 1e-3);
    EXPECT_NEAR(info.resolution.y, 300, 1e-3);
    EXPECT_FALSE(raster.WriteTiff(file("no folder").append("out.tif").c_str()));
}

TEST_F(RasterImages, ATemporaryFileIsAFreeNameThatIsClearedInTheEnd)
{
    std::filesystem::path path;
    {
        const CTempFile temporary(L".dwg");
        path = temporary.m_strPath.GetString();
        EXPECT_EQ(path.filename().wstring().substr(0, 2), L"HV");
        EXPECT_EQ(path.extension(), ".dwg");
        EXPECT_EQ(path.parent_path(), std::filesystem::temp_directory_path().parent_path());
        EXPECT_FALSE(std::filesystem::exists(path));
        test::writeTiff(path, blank(1, 1), 300);
    }
    EXPECT_FALSE(std::filesystem::exists(path));
}

} // namespace
