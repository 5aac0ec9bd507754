// Where the pixels of an image lie in the drawing.
#include "tests/standin/arx/drawing_fixture.h"

namespace {

using ImagePlacementTest = DrawingTest;

struct Placement
{
    const char* what;
    drawing::Vector3 origin, u, v; // u and v of one pixel; the image has 4 by 2 of them
    AcGePoint3d topLeft;           // image coordinates (-0.5, -0.5)
    AcGePoint3d bottomRight;       // (3.5, 1.5)
    AcGePoint3d firstPixel;        // (0, 0), its centre
};

const Placement placements[] = {
    {"upright, pixels of 1", {10, 20, 0}, {1, 0, 0}, {0, 1, 0}, {10, 22, 0}, {14, 20, 0}, {10.5, 21.5, 0}},
    {"scaled by 3 and 5", {0, 0, 0}, {3, 0, 0}, {0, 5, 0}, {0, 10, 0}, {12, 0, 0}, {1.5, 7.5, 0}},
    {"turned by 90 degrees, pixels of 2", {0, 0, 0}, {0, 2, 0}, {-2, 0, 0}, {-4, 0, 0}, {0, 8, 0}, {-3, 1, 0}},
    {"turned by 180 degrees", {4, 2, 0}, {-1, 0, 0}, {0, -1, 0}, {4, 0, 0}, {0, 2, 0}, {3.5, 0.5, 0}},
    {"mirrored left to right", {10, 0, 0}, {-1, 0, 0}, {0, 1, 0}, {10, 2, 0}, {6, 0, 0}, {9.5, 1.5, 0}},
    {"mirrored top to bottom", {0, 5, 0}, {1, 0, 0}, {0, -1, 0}, {0, 3, 0}, {4, 5, 0}, {0.5, 3.5, 0}},
    {"raised above the plane", {1, 1, 7}, {1, 0, 0}, {0, 1, 0}, {1, 3, 7}, {5, 1, 7}, {1.5, 2.5, 7}},
    {"turned so that u is (3, 4)", {100, 0, 0}, {3, 4, 0}, {-4, 3, 0}, {92, 6, 0}, {112, 16, 0}, {95.5, 6.5, 0}},
};

TEST_F(ImagePlacementTest, PixelCoordinatesGoToTheDrawingAndBack)
{
    for (const Placement& row : placements) {
        SCOPED_TRACE(row.what);
        auto* image = open<AcDbRasterImage>(idOf(addImage("none.tif", row.origin, row.u, row.v)), AcDb::kForRead);
        AcGeMatrix3d toModel;
        ASSERT_EQ(image->getPixelToModelTransform(toModel), Acad::eOk);
        image->close();
        const auto check = [&](AcGePoint3d pixel, const AcGePoint3d& model) {
            AcGePoint3d there = pixel;
            expectPoint(there.transformBy(toModel), model.x, model.y, model.z);
            expectPoint(there.transformBy(toModel.inverse()), pixel.x, pixel.y, pixel.z);
        };
        check({-0.5, -0.5, 0}, row.topLeft);
        check({3.5, 1.5, 0}, row.bottomRight);
        check({0, 0, 0}, row.firstPixel);
    }
}

TEST_F(ImagePlacementTest, OrientationSpeaksOfWholeEdges)
{
    const DocumentLock lock;
    auto* image = open<AcDbRasterImage>(idOf(addImage("none.tif", {1, 2, 0}, {0, 3, 0}, {-5, 0, 0})), AcDb::kForWrite);
    AcGePoint3d origin;
    AcGeVector3d u, v;
    image->getOrientation(origin, u, v);
    expectPoint(origin, 1, 2);
    expectPoint(AcGePoint3d::kOrigin + u, 0, 12);
    expectPoint(AcGePoint3d::kOrigin + v, -10, 0);

    EXPECT_TRUE(image->setOrientation({8, 9, 0}, {40, 0, 0}, {0, 20, 0}));
    const auto* record = standin::document().find<drawing::Image>(image->objectId().handle());
    EXPECT_EQ(record->u, (drawing::Vector3{10, 0, 0})) << "the file form holds the edge of one pixel";
    EXPECT_EQ(record->v, (drawing::Vector3{0, 10, 0}));
    EXPECT_EQ(record->position, (drawing::Vector3{8, 9, 0}));
    EXPECT_FALSE(image->setOrientation({0, 0, 0}, {0, 0, 0}, {0, 20, 0})) << "an edge without length";
    image->close();
}

TEST_F(ImagePlacementTest, AChangedNumberOfPixelsKeepsTheSizeOfAPixel)
{
    const standin::Handle handle =
        addImage(writeRaster("a.tif", drawn({"####", "...."})).string(), {0, 0, 0}, {2, 0, 0}, {0, 2, 0});
    const DocumentLock lock;
    auto* definition = openDefinition(handle);
    ASSERT_EQ(definition->load(), Acad::eOk);
    Atil::Image* image = nullptr;
    ASSERT_EQ(definition->openImage(image), Acad::eOk);
    const Atil::BitonalModel model;
    *image = Atil::Image(Atil::Size(3, 5), &model, Atil::ImagePixel(), Atil::kDefaultTileSize);
    EXPECT_EQ(definition->closeImage(), Acad::eOk);
    EXPECT_EQ(definition->size().x, 3);
    EXPECT_EQ(definition->size().y, 5);
    definition->close();

    auto* entity = open<AcDbRasterImage>(idOf(handle), AcDb::kForRead);
    AcGePoint3d origin;
    AcGeVector3d u, v;
    entity->getOrientation(origin, u, v);
    EXPECT_EQ(u.x, 6) << "3 pixels of 2 drawing units";
    EXPECT_EQ(v.y, 10) << "5 pixels of 2 drawing units";
    AcGeMatrix3d toModel;
    entity->getPixelToModelTransform(toModel);
    expectPoint(AcGePoint3d(-0.5, -0.5, 0).transformBy(toModel), 0, 10);
    entity->close();

    const auto* record = standin::document().find<drawing::Image>(handle);
    EXPECT_EQ(record->pixels, (drawing::Vector2{3, 5}));
    EXPECT_EQ(record->clip, (std::vector<drawing::Vector2>{{-0.5, -0.5}, {2.5, 4.5}}))
        << "the clip was the whole image";
}

// The record's edges are 8 by 4 drawing units from (10, 20); the file has twice the pixels across and three times down.
class OtherSizeTest : public ImagePlacementTest
{
protected:
    OtherSizeTest()
    {
        file = writeRaster("other.tif", imaging::Bitmap({8, 6}));
        image = addImage("other.tif", {10, 20, 0}, {2, 0, 0}, {0, 2, 0});
        standin::document().find<drawing::Image>(image)->clip = {{-0.5, -0.5}, {1.5, 0.5}};
        EXPECT_EQ(standin::saveDrawing(folder / "site.dxf"), std::nullopt);
    }

    void expectPlace(const char* when)
    {
        SCOPED_TRACE(when);
        auto* entity = open<AcDbRasterImage>(idOf(image), AcDb::kForRead);
        AcGePoint3d origin;
        AcGeVector3d u, v;
        entity->getOrientation(origin, u, v);
        expectPoint(origin, 10, 20);
        expectPoint(AcGePoint3d::kOrigin + u, 8, 0);
        expectPoint(AcGePoint3d::kOrigin + v, 0, 4);
        AcGeMatrix3d toModel;
        entity->getPixelToModelTransform(toModel);
        expectPoint(AcGePoint3d(-0.5, -0.5, 0).transformBy(toModel), 10, 24);
        expectPoint(AcGePoint3d(7.5, 5.5, 0).transformBy(toModel), 18, 20);
        entity->close();
    }

    // What the file form says, with the top left quarter seen: 2 by 1 of the 4 by 2 pixels at first.
    void expectRecord(drawing::Vector2 pixels, drawing::Vector2 seen)
    {
        const auto* record = standin::document().find<drawing::Image>(image);
        EXPECT_EQ(record->pixels, pixels);
        EXPECT_NEAR(record->u.x * pixels.x, 8, 1e-9);
        EXPECT_NEAR(record->v.y * pixels.y, 4, 1e-9);
        EXPECT_EQ(record->clip, (std::vector<drawing::Vector2>{{-0.5, -0.5}, seen}));
        const auto* definition = standin::document().find<drawing::ImageDefinition>(record->definition);
        EXPECT_EQ(definition->pixels, pixels);
    }

    std::filesystem::path file;
    standin::Handle image = 0;
};

TEST_F(OtherSizeTest, KeepsThePlaceInTheDrawing)
{
    ASSERT_EQ(standin::saveDrawing(folder / "never painted.dxf"), std::nullopt);
    expectRecord({4, 2}, {1.5, 0.5});
    expectPlace("before the first painting");
    ASSERT_EQ(standin::imagePixels(image)->size(), (imaging::Size{8, 6}));
    expectPlace("painted");
    expectRecord({8, 6}, {3.5, 2.5});
    EXPECT_NE(standin::imagePixels(image), nullptr);
    expectPlace("painted again");
    EXPECT_FALSE(standin::drawingModified()) << "the next opening finds the same file";
    ASSERT_EQ(standin::saveDrawing(folder / "painted.dxf"), std::nullopt);
    for (const char* name : {"never painted.dxf", "painted.dxf"}) {
        ASSERT_EQ(standin::openDrawing(folder / name), std::nullopt);
        expectPlace(name);
        expectRecord({8, 6}, {3.5, 2.5});
    }
}

TEST_F(OtherSizeTest, KeepsThePlaceOfAnUnloadedImageThatIsLoaded)
{
    const DocumentLock lock;
    auto* definition = openDefinition(image);
    definition->unload(true);
    EXPECT_EQ(definition->size().x, 4) << "as the drawing knows it";
    EXPECT_EQ(definition->load(), Acad::eOk);
    EXPECT_EQ(definition->size().x, 8);
    definition->close();
    expectPlace("loaded");
}

TEST_F(OtherSizeTest, ADroppedCommitGivesBackThePixelsAsTheyWere)
{
    const DocumentLock lock;
    auto* definition = openDefinition(image);
    const Atil::BitonalModel model;
    const auto commitAndReload = [&](auto between) {
        Atil::Image* pixels = nullptr;
        ASSERT_EQ(definition->openImage(pixels), Acad::eOk);
        *pixels = Atil::Image(Atil::Size(4, 3), &model, Atil::ImagePixel(), Atil::kDefaultTileSize);
        definition->closeImage();
        definition->unload(true);
        between();
        ASSERT_EQ(definition->load(), Acad::eOk);
    };
    commitAndReload([] {});
    EXPECT_EQ(definition->size().x, 8);
    expectPlace("the file was left as it is");
    commitAndReload([&] { writeRaster("other.tif", imaging::Bitmap({4, 3})); });
    const auto* record = standin::document().find<drawing::Image>(image);
    EXPECT_EQ(record->pixels, (drawing::Vector2{4, 3})) << "the file took the commit";
    EXPECT_NEAR(record->u.x, 1, 1e-9);
    EXPECT_NEAR(record->v.y, 2.0 / 3, 1e-9);
    definition->close();
}

} // namespace
