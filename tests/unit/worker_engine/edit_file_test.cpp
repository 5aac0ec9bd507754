#include <cmath>
#include <limits>
#include <numbers>
#include <thread>

#include "engine_fixture.h"
#include "worker/engine/edit_file.h"

namespace {

using imaging::Format;
using imaging::Rect;
using imaging::Region;

constexpr double quarterTurn = std::numbers::pi / 2;

class EditFileTest : public EngineTest
{
protected:
    void invert(const std::string& name)
    {
        worker::Request request;
        request.invert = {in(name)};
        perform(request, OperationInvert);
    }

    Picture rotated(const Picture& picture, double angle, imaging::Point pivot, bool transparent,
                    std::optional<Region> region)
    {
        put("image", picture, 300);
        worker::Request request;
        request.rotate = {in("image"), angle, pivot, transparent, std::move(region)};
        perform(request, OperationRotate);
        return this->picture("image");
    }

    // At 254 dots per inch a tenth of a millimetre is one pixel.
    Picture filtered(const Picture& picture, std::uint32_t mode, std::uint32_t size, bool selectionOnly = false,
                     std::optional<Region> region = {}, double dotsPerInch = 254)
    {
        put("image", picture, dotsPerInch);
        worker::Request request;
        request.filter = {in("image"), mode, size, selectionOnly, std::move(region)};
        perform(request, OperationFilter);
        return this->picture("image");
    }
};

} // namespace

TEST_F(EditFileTest, InvertsEveryPixelAndKeepsResolutionAndKindOfFile)
{
    for (const Format format : {Format::TiffGroup4, Format::Cals}) {
        put("image", {"#.#.#.#.#", "....#....", "#########"}, 200, format);
        invert("image");
        EXPECT_EQ(picture("image"), (Picture{".#.#.#.#.", "####.####", "........."})) << imaging::describe(format).name;
        const imaging::RasterInfo info = imaging::inspectRaster(in("image"));
        EXPECT_EQ(info.format, format);
        EXPECT_NEAR(info.resolution.x, 200, 0.02);
        EXPECT_NEAR(info.resolution.y, 200, 0.02);
    }
    EXPECT_EQ(files().size(), 1u);
}

TEST_F(EditFileTest, TurnsTheRegionAloneTransparentOrOpaque)
{
    // The region (columns 1 to 3, rows 0 to 2) turns clockwise about its middle; the row below stays.
    const Picture arrow = {"..#..", ".##.#", "..#..", "#####"};
    const Region region(Rect{1, 0, 4, 3});
    EXPECT_EQ(rotated(arrow, quarterTurn, {2, 1}, false, region), (Picture{"..#..", ".####", ".....", "#####"}));
    // About a pixel further down the region lands on the full row: its paper covers ink only when it is opaque.
    EXPECT_EQ(rotated(arrow, 2 * quarterTurn, {2, 2}, true, region), (Picture{".....", "....#", "..#..", "#####"}));
    EXPECT_EQ(rotated(arrow, 2 * quarterTurn, {2, 2}, false, region), (Picture{".....", "....#", "..#..", "#.###"}));
    EXPECT_EQ(rotated(arrow, 2 * quarterTurn, {2, 1}, false, {}), (Picture{"..#..", "#.##.", "..#..", "....."}));
}

TEST_F(EditFileTest, FilterTakesSpecksOrHolesUpToTheSizeAndNoLarger)
{
    const Picture specks = {"###....####.", "###.........", "###......#..", "..........#."};
    EXPECT_EQ(filtered(specks, FilterDespeckle, 3),
              (Picture{".......####.", "............", "............", "............"}));
    EXPECT_EQ(filtered(specks, FilterDespeckle, 2),
              (Picture{"###....####.", "###.........", "###.........", "............"}));
    // Paper that touches only at a corner is not one hole: the three at the top are apart from the two at the right.
    EXPECT_EQ(filtered({"#########", "#.##...##", "#######.#", "###...#.#", "#########"}, FilterFill, 2),
              (Picture{"#########", "####...##", "#########", "###...###", "#########"}));
}

TEST_F(EditFileTest, FiltersInsideTheSelectionOnlyWhenAsked)
{
    const Picture dots{"#..#", "....", "#..#"};
    const Region left(Rect{0, 0, 2, 3});
    EXPECT_EQ(filtered(dots, FilterDespeckle, 1, true, left), (Picture{"...#", "....", "...#"}));
    EXPECT_EQ(filtered(dots, FilterDespeckle, 1, false, left), (Picture{"....", "....", "...."}))
        << "without the flag the selection does not count";
}

TEST_F(EditFileTest, TheSizeOfASpeckFollowsTheResolution)
{
    const Picture bar{"......", ".####.", "......"};
    const Picture paper{"......", "......", "......"};
    EXPECT_EQ(filtered(bar, FilterDespeckle, 2, false, {}, 254), bar) << "0.2 mm are 2 pixels";
    EXPECT_EQ(filtered(bar, FilterDespeckle, 2, false, {}, 508), paper) << "0.2 mm are 4 pixels";
    struct Case
    {
        std::uint32_t size;
        double x, y;
        int side;
    };
    for (const Case& each : {Case{10, 300, 300, 12}, Case{1, 300, 300, 1}, Case{1, 100, 100, 1}, Case{0, 300, 300, 1},
                             Case{3, 127, 127, 2}, Case{20, 400, 400, 31}, Case{20, 0, 0, 1}, Case{10, 204, 98, 6},
                             Case{0xFFFFFFFF, 1e300, 1e300, imaging::Bitmap::maximumSide}})
        EXPECT_EQ(worker::filterSide(each.size, {each.x, each.y}), each.side)
            << "size " << each.size << " at " << each.x << " by " << each.y << " dots per inch";
}

TEST_F(EditFileTest, RefusesWhatCannotBeDoneAndLeavesTheFileWhole)
{
    put("image", {"#.", ".#"}, 300);
    putBytes("cut short", contentOf(in("image")).substr(0, 40));
    worker::Request request;
    for (const char* name : {"missing", "cut short"}) {
        request.invert = {in(name)};
        expectRefused(request, OperationInvert);
        request.rotate = {in(name), 1, {0, 0}, true, {}};
        expectRefused(request, OperationRotate);
        request.filter = {in(name), FilterDespeckle, 1, false, {}};
        expectRefused(request, OperationFilter);
    }
    for (const double angle : {std::nan(""), std::numeric_limits<double>::infinity()}) {
        request.rotate = {in("image"), angle, {0, 0}, true, {}};
        expectRefused(request, OperationRotate);
    }
    request.rotate = {in("image"), 1, {std::numeric_limits<int>::min(), 0}, true, {}};
    expectRefused(request, OperationRotate);
    request.filter = {in("image"), 2, 10, false, {}};
    expectRefused(request, OperationFilter);
    request.filter = {in("image"), FilterDespeckle, 10, true, {}};
    expectRefused(request, OperationFilter);
}

TEST_F(EditFileTest, AClosedGateKeepsTheFileAsItWas)
{
    put("image", {"#.", ".#"}, 300);
    const auto before = files();
    m_gate.close();
    EXPECT_THROW(invert("image"), worker::StoppedError);
    EXPECT_TRUE(files() == before);
}

TEST(CommitGate, ClosingWaitsForTheWritingThatIsUnderWay)
{
    worker::CommitGate gate;
    std::atomic<bool> writing = false;
    std::atomic<bool> closing = false;
    std::atomic<bool> written = false;
    std::thread writer([&] {
        gate.pass([&] {
            writing = true;
            closing.wait(false);
            for (int turn = 0; turn < 1000; ++turn) // gives a gate that does not wait the time to be caught
                std::this_thread::yield();
            written = true;
        });
    });
    while (!writing)
        std::this_thread::yield();
    closing = true;
    closing.notify_all();
    gate.close();
    EXPECT_TRUE(written) << "the gate closed over a half-written file";
    writer.join();
    EXPECT_THROW(gate.pass([] {}), worker::StoppedError);
}

TEST(OperationTable, KnowsNothingOfOtherCodes)
{
    for (const std::uint32_t unknown : {0u, 3u, 14u, 0xFFFFFFFFu})
        EXPECT_EQ(worker::findOperation(unknown), nullptr);
}
