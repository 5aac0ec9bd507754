#include <cmath>
#include <limits>
#include <sstream>

#include "drawing/error.h"
#include "engine_fixture.h"
#include "tests/support/python.h"
#include "worker/engine/pen_table.h"

namespace {

using drawing::Vector2;
using imaging::Rect;
using imaging::Region;

// The text of a DXF file from lines "code value".
std::string drawingOf(const std::string& entities, const std::string& tables = "")
{
    std::istringstream lines("0 SECTION\n2 TABLES\n" + tables + "0 ENDSEC\n0 SECTION\n2 ENTITIES\n" + entities +
                             "0 ENDSEC\n0 EOF\n");
    std::string text;
    for (std::string line; std::getline(lines, line);)
        text += line.replace(line.find(' '), 1, "\n") + "\n";
    return text;
}

std::string lineEntity(const std::string& from, const std::string& to, const std::string& properties = "8 0\n")
{
    const auto point = [](const std::string& xy, char last) {
        const std::size_t comma = xy.find(',');
        return std::string("1") + last + " " + xy.substr(0, comma) + "\n2" + last + " " + xy.substr(comma + 1) + "\n";
    };
    return "0 LINE\n" + properties + point(from, '0') + point(to, '1');
}

std::string solidEntity(double left, double bottom, double right, double top)
{
    std::ostringstream text;
    text << "0 SOLID\n8 0\n10 " << left << "\n20 " << bottom << "\n11 " << right << "\n21 " << bottom << "\n12 " << left
         << "\n22 " << top << "\n13 " << right << "\n23 " << top << "\n";
    return text.str();
}

class RasterizeTest : public EngineTest
{
protected:
    // One drawing unit is one pixel and the raster's bottom left corner the origin, unless a test says otherwise. At
    // 254 dots per inch a pen of 10 hundredths of a millimetre is one pixel wide.
    worker::Request burn(const std::string& entities, const Picture& paper, const std::string& pens = "10\n",
                         std::optional<Region> region = {}, const std::string& tables = "")
    {
        putBytes("drawing", drawingOf(entities, tables));
        putBytes("pens", pens);
        put("raster", paper, 254);
        worker::Request request = requestFor({0, 0}, {double(paper[0].size()), double(paper.size())});
        request.rasterize.region = std::move(region);
        request.rasterize.result = 77;
        perform(request, OperationRasterize);
        return request;
    }

    worker::Request requestFor(Vector2 corner1, Vector2 corner2) const
    {
        worker::Request request;
        request.rasterize.drawingFile = in("drawing");
        request.rasterize.penFile = in("pens");
        request.rasterize.rasterFile = in("raster");
        request.rasterize.corner1 = corner1;
        request.rasterize.corner2 = corner2;
        return request;
    }

    int inkInColumn(int x) const
    {
        int ink = 0;
        for (const std::string& row : picture("raster"))
            ink += row[std::size_t(x)] == '#';
        return ink;
    }
};

const Picture paper6x5(5, "......");

} // namespace

TEST_F(RasterizeTest, BurnsLinesAndAreasIntoWhatIsThere)
{
    EXPECT_EQ(burn(lineEntity("0.5,4.5", "3.5,4.5") + solidEntity(3, 0, 6, 2),
                   {"......", ".....#", "......", "......", "#....."})
                  .rasterize.result,
              0);
    EXPECT_EQ(picture("raster"), (Picture{"####..", ".....#", "......", "...###", "#..###"}));
    EXPECT_NEAR(imaging::inspectRaster(in("raster")).resolution.x, 254, 0.02);
}

TEST_F(RasterizeTest, AgreesWithAnotherLibrary)
{
    const std::string script = "tests/unit/worker_engine/burnt_samples.py";
    const std::string folder = "\"" + m_folder.path().string() + "\"";
    std::string output;
    ASSERT_TRUE(runPython(script, "make " + folder, output)) << output;
    int samples = 0;
    for (const std::filesystem::path& name : m_folder.names()) {
        if (name.extension() != ".dxf")
            continue;
        const std::string stem = name.stem().string();
        worker::Request request;
        request.rasterize = {.drawingFile = in(stem + ".dxf"),
                             .penFile = in(stem + ".pens"),
                             .rasterFile = in(stem + ".tif"),
                             .fontsDir = {},
                             .corner1 = {},
                             .corner2 = {},
                             .region = {}};
        std::istringstream(contentOf(in(stem + ".corners"))) >> request.rasterize.corner1.x >>
            request.rasterize.corner1.y >> request.rasterize.corner2.x >> request.rasterize.corner2.y;
        perform(request, OperationRasterize);
        ++samples;
    }
    EXPECT_GE(samples, 8);
    EXPECT_TRUE(runPython(script, "check " + folder, output)) << output;
}

TEST_F(RasterizeTest, PlacesByTheCornersAlsoMirrored)
{
    struct Case
    {
        Vector2 corner1;
        Vector2 corner2;
        Picture picture;
    };
    putBytes("drawing", drawingOf(solidEntity(100, 200, 102, 201) + solidEntity(104, 204, 106, 205)));
    putBytes("pens", "10");
    for (const Case& each : {Case{{100, 200}, {106, 205}, {"....##", "......", "......", "......", "##...."}},
                             Case{{106, 200}, {100, 205}, {"##....", "......", "......", "......", "....##"}},
                             Case{{100, 205}, {106, 200}, {"##....", "......", "......", "......", "....##"}},
                             Case{{98, 200}, {110, 210}, {"......", "......", "...#..", "......", ".#...."}}}) {
        put("raster", paper6x5, 254);
        worker::Request request = requestFor(each.corner1, each.corner2);
        perform(request, OperationRasterize);
        EXPECT_EQ(picture("raster"), each.picture) << each.corner1.x << " to " << each.corner2.x;
    }
}

TEST_F(RasterizeTest, DrawsEachColourWithItsPen)
{
    const std::string layer = "0 TABLE\n2 LAYER\n70 1\n0 LAYER\n2 walls\n70 0\n62 3\n6 CONTINUOUS\n0 ENDTAB\n";
    const std::string pens = "10\n50\n90\n130\n170\n210\n30"; // from index 7 on 3 pixels
    struct Case
    {
        std::string properties;
        int pixels;
    };
    for (const Case& each : {
             Case{"8 0\n62 1\n", 1},
             Case{"8 0\n62 2\n", 5},
             Case{"8 walls\n", 9},         // by its layer
             Case{"8 walls\n62 256\n", 9}, // the same
             Case{"8 walls\n62 2\n", 5},
             Case{"8 0\n62 200\n", 3}, // the last line holds on
             Case{"8 0\n62 254\n", 3},
             Case{"8 0\n62 255\n", 2},          // 18 hundredths of a millimetre
             Case{"8 0\n62 1\n420 255\n", 17},  // 0000FF: index 5
             Case{"8 0\n62 1\n420 65290\n", 9}, // 00FF0A comes nearest to index 3
             Case{"8 0\n62 1\n420 16711680\n", 1},
         }) {
        burn(lineEntity("0,15.5", "20,15.5", each.properties), Picture(31, std::string(20, '.')), pens, {}, layer);
        EXPECT_EQ(inkInColumn(10), each.pixels) << each.properties;
    }
}

TEST_F(RasterizeTest, ReadsAnyTableOfPens)
{
    struct Case
    {
        std::string text;
        int first, second, last; // of the indices 1, 2 and 254
    };
    std::string many;
    for (int i = 1; i <= 300; ++i)
        many += std::to_string(i) + "\n";
    for (const Case& each : {Case{"", 18, 18, 18}, Case{"25", 25, 25, 25}, Case{"25\n35\n", 25, 35, 35},
                             Case{"25\r\n 35 \r\n50\r\n", 25, 35, 50}, Case{"\n", 0, 0, 0}, Case{"x\n\n7", 0, 0, 7},
                             Case{"13mm\n+9", 13, 9, 9}, Case{"-5\n-99999999999\n-1", 0, 0, 0},
                             Case{"2147483648\n99999999999999999999\n0", 2147483647, 2147483647, 0},
                             Case{many, 1, 2, 254}, Case{std::string("\0\0\n9", 4), 0, 9, 9},
                             Case{std::string(1 << 20, '1'), 2147483647, 2147483647, 2147483647}}) {
        putBytes("pens", each.text);
        const worker::PenTable pens = worker::readPenTable(in("pens"));
        SCOPED_TRACE(each.text.substr(0, 20));
        EXPECT_EQ(pens.width(1), each.first);
        EXPECT_EQ(pens.width(2), each.second);
        EXPECT_EQ(pens.width(254), each.last);
        for (const int outside : {0, 255, 256, -1, std::numeric_limits<int>::min()})
            EXPECT_EQ(pens.width(outside), 18) << outside;
    }
    constexpr double infinite = std::numeric_limits<double>::infinity();
    struct Width
    {
        int hundredths;
        double dpi;
        int pixels;
    };
    for (const Width& each :
         {Width{18, 400, 3}, Width{18, 200, 1}, Width{50, 300, 6}, Width{0, 400, 1}, Width{100, 0, 1},
          Width{0, infinite, 1}, Width{2147483647, 400, worker::widestPen}, Width{18, 1e300, worker::widestPen}})
        EXPECT_EQ(worker::penPixels(each.hundredths, {each.dpi, each.dpi}), each.pixels) << each.hundredths;
}

TEST_F(RasterizeTest, DrawsInsideTheRegionAlone)
{
    const std::string everything = solidEntity(-10, -10, 50, 50);
    EXPECT_EQ(burn(everything, paper6x5, "10", Region::fromRects(std::vector{Rect{1, 1, 3, 2}, Rect{4, 3, 90, 90}}))
                  .rasterize.result,
              0);
    EXPECT_EQ(picture("raster"), (Picture{"......", ".##...", "......", "....##", "....##"}));
    EXPECT_EQ(burn(everything, paper6x5, "10", Region()).rasterize.result, -1) << "an empty region";
}

TEST_F(RasterizeTest, LeavesTheFileWhenNothingLiesOverIt)
{
    const std::string hiding = "0 TABLE\n2 LAYER\n70 2\n0 LAYER\n2 frozen\n70 1\n62 3\n6 CONTINUOUS\n"
                               "0 LAYER\n2 off\n70 0\n62 -3\n6 CONTINUOUS\n0 ENDTAB\n";
    for (const std::string& entities :
         {std::string(), lineEntity("-5,-5", "-1,20"), lineEntity("7,2", "90,2"), solidEntity(8, 1, 9, 2),
          lineEntity("0,2", "6,2", "8 frozen\n"), lineEntity("0,2", "6,2", "8 off\n"),
          lineEntity("0,2", "6,2", "8 0\n67 1\n"), // in paper space
          std::string("0 IMAGE\n100 AcDbRasterImage\n10 0\n20 0\n11 1\n12 0\n22 1\n13 6\n23 5\n70 1\n")}) {
        burn(entities, {"#.....", "......", "......", "......", "......"}, "10", {}, hiding);
        const std::string before = contentOf(in("raster"));
        worker::Request request = requestFor({0, 0}, {6, 5});
        perform(request, OperationRasterize);
        EXPECT_EQ(request.rasterize.result, -1) << entities;
        EXPECT_TRUE(before == contentOf(in("raster"))) << entities;
    }
    const std::string overInk = lineEntity("0.5,4.5", "0.6,4.5");
    EXPECT_EQ(burn(overInk, {"#.....", "......", "......", "......", "......"}).rasterize.result, 0)
        << "ink over ink is something";
    // The line ends half a pixel beside the region.
    EXPECT_EQ(burn(lineEntity("0.5,4.5", "2.9,4.5"), paper6x5, "10", Region(Rect{3, 0, 6, 5})).rasterize.result, -1);
    EXPECT_EQ(burn(lineEntity("0.5,4.5", "2.9,4.5"), paper6x5, "30", Region(Rect{3, 0, 6, 5})).rasterize.result, 0);
}

TEST_F(RasterizeTest, TellsThatSomethingWasLeftOut)
{
    const std::string endlesslyFine =
        "0 HATCH\n8 0\n10 0\n20 0\n30 0\n2 FINE\n70 0\n71 0\n91 1\n92 2\n72 0\n73 1\n93 4\n10 0\n20 0\n10 6\n20 0\n"
        "10 6\n20 5\n10 0\n20 5\n97 0\n75 1\n76 1\n52 0\n41 1\n77 0\n78 1\n53 0\n43 0\n44 0\n45 0\n46 1e-9\n79 0\n98 "
        "0\n";
    EXPECT_EQ(burn(endlesslyFine + lineEntity("0.5,4.5", "3.5,4.5"), paper6x5).rasterize.result, SomethingLeftOut);
    EXPECT_EQ(picture("raster"), (Picture{"####..", "......", "......", "......", "......"}));
    EXPECT_EQ(burn(endlesslyFine, paper6x5).rasterize.result, NothingOverRaster);
}

TEST_F(RasterizeTest, AbsurdCoordinatesAreHarmless)
{
    for (const std::string& each :
         {lineEntity("-1e300,2.5", "1e300,2.5"),
          lineEntity("1e300,1e300", "-1e300,1e300") + lineEntity("0,2.5", "6,2.5"),
          "0 CIRCLE\n8 0\n10 1e300\n20 0\n40 1e300\n" + lineEntity("0,2.5", "6,2.5"),
          "0 CIRCLE\n8 0\n10 0\n20 0\n40 1e-300\n" + lineEntity("0,2.5", "6,2.5"),
          "0 LWPOLYLINE\n8 0\n90 2\n70 0\n10 1e308\n20 1e308\n42 1e300\n10 -1e308\n20 -1e308\n" +
              lineEntity("0,2.5", "6,2.5")}) {
        burn(each, paper6x5);
        EXPECT_EQ(picture("raster")[2], "######") << each;
        EXPECT_EQ(picture("raster")[0].substr(1), ".....") << each;
    }
}

TEST_F(RasterizeTest, RefusesWhatCannotBeDoneAndLeavesTheFileWhole)
{
    const std::string line = drawingOf(lineEntity("0,2", "6,2"));
    putBytes("drawing", line);
    putBytes("pens", "10");
    put("raster", paper6x5, 254);
    constexpr double infinite = std::numeric_limits<double>::infinity();
    for (const auto& [corner1, corner2] : {std::pair<Vector2, Vector2>{{0, 0}, {0, 5}},
                                           {{0, 0}, {6, 0}},
                                           {{1, 1}, {1, 1}},
                                           {{0, 0}, {infinite, 5}},
                                           {{0, std::nan("")}, {6, 5}},
                                           {{-1.7e308, 0}, {1.7e308, 5}},
                                           {{0, 0}, {1e-310, 5}}})
        expectRefused(requestFor(corner1, corner2), OperationRasterize);
    for (const std::string name : {"drawing", "pens", "raster"}) {
        const std::string bytes = contentOf(in(name));
        std::filesystem::remove(in(name));
        expectRefused<std::runtime_error>(requestFor({0, 0}, {6, 5}), OperationRasterize);
        std::filesystem::create_directory(in(name));
        const worker::Request request = requestFor({0, 0}, {6, 5});
        EXPECT_THROW(perform(*std::make_unique<worker::Request>(request), OperationRasterize), std::runtime_error);
        std::filesystem::remove(in(name));
        putBytes(name, bytes);
    }
    for (const std::string& broken : {std::string("no drawing"), line.substr(0, 60), contentOf(in("raster"))}) {
        putBytes("drawing", broken);
        expectRefused<drawing::DrawingError>(requestFor({0, 0}, {6, 5}), OperationRasterize);
    }
    putBytes("drawing", line);
    putBytes("raster", contentOf(in("raster")).substr(0, 40));
    expectRefused(requestFor({0, 0}, {6, 5}), OperationRasterize);
}

TEST_F(RasterizeTest, DashesAndTextsAreDrawnWithThePen)
{
    const std::string dashed = "0 TABLE\n2 LTYPE\n70 1\n0 LTYPE\n2 DASHED\n70 0\n3 dashes\n72 65\n73 2\n40 6\n49 4\n"
                               "49 -2\n0 ENDTAB\n";
    // Dashes of 4 units with gaps of 2; the thin pen inks the pixels that hold the ends.
    burn(lineEntity("0.5,1.5", "15.5,1.5", "8 0\n6 DASHED\n"), Picture(3, std::string(17, '.')), "10", {}, dashed);
    EXPECT_EQ(picture("raster")[1], "#####.#####.####.");
    burn(lineEntity("0.5,1.5", "15.5,1.5", "8 0\n6 DASHED\n48 0.1\n"), Picture(3, std::string(17, '.')), "10", {},
         dashed);
    EXPECT_EQ(picture("raster")[1], "################.") << "too fine to be seen";

    // An I of the stroke font stands upright from the baseline to the height of capitals.
    const std::string letter = "0 TEXT\n8 0\n10 4\n20 4\n40 20\n1 I\n";
    EXPECT_EQ(burn(letter, Picture(30, std::string(30, '.')), "30").rasterize.result, 0);
    const Picture shown = picture("raster");
    EXPECT_NE(shown[15].find("###"), std::string::npos);
    EXPECT_EQ(shown[1].find('#'), std::string::npos) << "above the letter";
    EXPECT_EQ(shown[28].find('#'), std::string::npos) << "below the baseline";
}
