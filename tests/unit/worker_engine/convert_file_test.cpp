#include "engine_fixture.h"

namespace {

using imaging::Format;
using imaging::Rect;
using imaging::Region;

class ConvertFileTest : public EngineTest
{
protected:
    worker::Request request(const std::string& source, const std::string& target, std::uint32_t format,
                            std::optional<Region> region = {})
    {
        worker::Request made;
        made.convertFile = {in(source), in(target), format, std::move(region)};
        return made;
    }

    void convert(const std::string& source, const std::string& target, std::uint32_t format,
                 std::optional<Region> region = {})
    {
        worker::Request made = request(source, target, format, std::move(region));
        perform(made, OperationConvertFile);
    }

    const Picture sample = {"#........#", ".#......#.", "..######..", "##########"};
};

} // namespace

TEST_F(ConvertFileTest, CarriesImageAndResolutionIntoTheFormat)
{
    put("source", sample, 400, Format::TiffUncompressed);
    convert("source", "target", 50);
    const imaging::RasterFile saved = imaging::readRaster(in("target"));
    EXPECT_EQ(rowsOf(saved.bitmap), sample);
    EXPECT_EQ(saved.info.format, Format::Cals);
    EXPECT_EQ(saved.info.resolution, (imaging::Resolution{400, 400}));
    EXPECT_EQ(files().size(), 2u);
}

TEST_F(ConvertFileTest, FormatNumber0CropsTheFileInPlaceToTheRegionsBoxWithPaperOutsideTheRegion)
{
    const Region region = Region::fromRects(std::vector<Rect>{{0, 1, 4, 3}, {2, 3, 6, 4}});
    for (const Format format : {Format::TiffGroup4, Format::Png}) {
        put("image", sample, 300, format);
        convert("image", "image", 0, region);
        EXPECT_EQ(picture("image"), (Picture{".#....", "..##..", "..####"}));
        const imaging::RasterInfo info = imaging::inspectRaster(in("image"));
        EXPECT_EQ(info.format, format);
        EXPECT_NEAR(info.resolution.x, 300, 0.01);
    }
    EXPECT_EQ(files().size(), 1u);
}

TEST_F(ConvertFileTest, OfARegionBeyondTheImageOnlyWhatLiesInsideIsKept)
{
    put("image", sample, 300);
    convert("image", "part", 50, Region(Rect{8, -1, 12, 2}));
    EXPECT_EQ(picture("part"), (Picture{".#", "#."}));
    EXPECT_EQ(imaging::inspectRaster(in("part")).format, Format::Cals);
    EXPECT_EQ(picture("image"), sample) << "saving a part changed the source";
    // A piece of the region that lies wholly outside does not count for the box.
    convert("image", "part", 50, Region::fromRects(std::vector<Rect>{{2, 1, 4, 3}, {-9, -9, -7, 99}, {3, 4, 5, 6}}));
    EXPECT_EQ(picture("part"), (Picture{"..", "##"}));
    convert("image", "image", 0, Region(Rect{-(1 << 27), -5, 1 << 27, 1 << 27}));
    EXPECT_EQ(picture("image"), sample) << "a region around the image changed it";
}

TEST_F(ConvertFileTest, RefusesWhatCannotBeDoneAndLeavesTheTargetWhole)
{
    put("image", sample, 300);
    put("target", {"#"}, 100);
    putBytes("cut short", contentOf(in("image")).substr(0, contentOf(in("image")).size() / 2));
    putBytes("no image", "nothing of the kind");
    expectRefused(request("image", "target", 30), OperationConvertFile);
    expectRefused(request("image", "target", imaging::formatCode(Format::TiffOther)), OperationConvertFile);
    expectRefused(request("missing", "target", 29), OperationConvertFile);
    expectRefused(request("cut short", "target", 29), OperationConvertFile);
    expectRefused(request("no image", "target", 29), OperationConvertFile);
    expectRefused(request("no image", "no image", 0), OperationConvertFile);
    expectRefused(request("image", "no such folder/target", 29), OperationConvertFile);
    expectRefused(request("image", "target", 29, Region(Rect{10, 0, 20, 4})), OperationConvertFile);
    expectRefused(request("image", "target", 29, Region()), OperationConvertFile);
}
