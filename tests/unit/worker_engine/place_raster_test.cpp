// The drawings in which a new or inserted raster goes to the host.

#include <gmock/gmock.h>

#include "engine_fixture.h"
#include "tests/support/independent_readers.h"

TEST_F(EngineTest, DrawingsOfPlacedRastersAreReadByIndependentPrograms)
{
    put("scan.tif", {"..##", "#..#"}, 400);
    worker::Request made;
    made.newRaster = {.drawingFile = in("new.dwg"),
                      .rasterFile = in("new.tif"),
                      .formatCode = imaging::formatCode(imaging::Format::TiffGroup4),
                      .dotsPerInch = 200,
                      .pixels = {640, 480},
                      .scale = 2,
                      .insertion = {3, 4, 5},
                      .corner = {}};
    perform(made, OperationNewRaster);
    worker::Request inserted;
    inserted.insertRaster = {
        .drawingFile = in("inserted.dwg"), .rasterFile = in("scan.tif"), .scale = 1, .insertion = {}, .corner = {}};
    perform(inserted, OperationInsertRaster);
    for (const char* name : {"new.dwg", "inserted.dwg"}) {
        EXPECT_EQ(contentOf(in(name)).substr(0, 6), "AC1015");
    }
    const ReadersAnswer answer = readWithIndependentReaders({in("new.dwg"), in("inserted.dwg")});
    if (answer.leftOut) {
        GTEST_SKIP() << answer.said;
    }
    EXPECT_TRUE(answer.faultless) << answer.said;
    // 25.4 / 200 millimetres a pixel, twice as large in the drawing.
    EXPECT_THAT(answer.said, testing::HasSubstr(
                                 R"("size":{"x":640,"y":480},"u":{"x":0.254,"y":0,"z":0},"v":{"x":0,"y":0.254,"z":0},)"
                                 R"("position":{"x":3,"y":4,"z":5})"));
    EXPECT_THAT(answer.said, testing::HasSubstr(R"("size":{"x":4,"y":2},"u":{"x":0.0635,"y":0,"z":0})"));
    EXPECT_THAT(answer.said, testing::HasSubstr(in("new.tif").string()));
}
