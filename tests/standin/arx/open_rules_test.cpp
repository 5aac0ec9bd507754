#include <functional>

#include "tests/standin/arx/drawing_fixture.h"

namespace {

using OpenRulesTest = DrawingTest;

struct Opening
{
    const char* why;
    std::vector<AcDb::OpenMode> before;
    AcDb::OpenMode mode;
    Acad::ErrorStatus expected;
    bool breach;
};

TEST_F(OpenRulesTest, AnObjectIsReadByManyOrWrittenByOne)
{
    const AcDbObjectId id = idOf(addImage("none.tif"));
    const DocumentLock lock;
    const Opening table[] = {
        {"first reader", {}, AcDb::kForRead, Acad::eOk, false},
        {"second reader", {AcDb::kForRead}, AcDb::kForRead, Acad::eOk, false},
        {"writer alone", {}, AcDb::kForWrite, Acad::eOk, false},
        {"writer beside a reader", {AcDb::kForRead}, AcDb::kForWrite, Acad::eWasOpenForRead, true},
        {"second writer", {AcDb::kForWrite}, AcDb::kForWrite, Acad::eWasOpenForWrite, true},
        {"reader beside a writer", {AcDb::kForWrite}, AcDb::kForRead, Acad::eWasOpenForWrite, true},
    };
    for (const Opening& row : table) {
        SCOPED_TRACE(row.why);
        standin::clearBreaches();
        std::vector<AcDbObject*> opened;
        for (const AcDb::OpenMode mode : row.before)
            opened.push_back(open<AcDbObject>(id, mode));
        AcDbObject* object = nullptr;
        EXPECT_EQ(acdbOpenAcDbObject(object, id, row.mode, AcDbRasterImage::desc()), row.expected);
        EXPECT_EQ(object != nullptr, row.expected == Acad::eOk);
        EXPECT_EQ(standin::breaches().size(), row.breach ? 1u : 0u);
        if (object)
            opened.push_back(object);
        EXPECT_EQ(standin::openObjects(), 1);
        for (AcDbObject* each : opened)
            EXPECT_EQ(each->close(), Acad::eOk);
        EXPECT_EQ(standin::openObjects(), 0);
    }
}

TEST_F(OpenRulesTest, CallsOnAClosedObjectOrInTheWrongModeAreBreaches)
{
    auto* image = open<AcDbRasterImage>(idOf(addImage("none.tif")), AcDb::kForRead);
    image->setDisplayOpt(AcDbRasterImage::kTransparent, true);
    EXPECT_FALSE(image->isSetDisplayOpt(AcDbRasterImage::kTransparent)) << "open for read, yet it was changed";
    EXPECT_EQ(standin::breaches().size(), 1u);
    EXPECT_EQ(image->close(), Acad::eOk);
    AcGeMatrix3d matrix;
    EXPECT_EQ(image->getPixelToModelTransform(matrix), Acad::eNotOpenForRead);
    EXPECT_EQ(image->close(), Acad::eNotOpenForRead);
    ASSERT_EQ(standin::breaches().size(), 3u);
    EXPECT_NE(standin::breaches()[2].find("IMAGE"), std::string::npos) << standin::breaches()[2];
    open<AcDbRasterImage>(idOf(addImage("none.tif")), AcDb::kForRead);
    standin::closeDrawing();
    EXPECT_EQ(standin::breaches().size(), 4u) << "the drawing went with an object open";
    EXPECT_EQ(standin::openObjects(), 0);
}

TEST_F(OpenRulesTest, WhatCannotBeOpened)
{
    const AcDbObjectId line = idOf(addLine());
    const AcDbObjectId erased = idOf(addImage("none.tif"));
    ASSERT_TRUE(standin::eraseEntity(erased.handle()));
    AcDbObject* object = nullptr;
    EXPECT_EQ(acdbOpenAcDbObject(object, AcDbObjectId(), AcDb::kForRead, nullptr), Acad::eNullObjectId);
    EXPECT_EQ(acdbOpenAcDbObject(object, line, AcDb::kForRead, AcDbRasterImage::desc()), Acad::eNotThatKindOfClass);
    EXPECT_EQ(acdbOpenAcDbObject(object, line, AcDb::kForWrite, AcDbEntity::desc()), Acad::eLockViolation);
    EXPECT_EQ(acdbOpenAcDbObject(object, erased, AcDb::kForRead, nullptr), Acad::eWasErased);
    EXPECT_EQ(standin::openObjects(), 0);

    EXPECT_EQ(acdbOpenAcDbObject(object, erased, AcDb::kForRead, nullptr, true), Acad::eOk);
    EXPECT_TRUE(object->isErased());
    object->close();
}

TEST_F(OpenRulesTest, AnErasedImageComesBackWithItsPlaceAndItsTie)
{
    const standin::Handle below = addImage("none.tif", {7, 8, 0});
    addLine();
    const auto* record = standin::document().find<drawing::Image>(below);
    const drawing::Handle tie = record->definitionReactor;
    ASSERT_NE(standin::document().find(tie), nullptr);

    ASSERT_TRUE(standin::eraseEntity(below));
    EXPECT_TRUE(standin::entityErased(below));
    EXPECT_EQ(standin::document().find(below), nullptr);
    EXPECT_EQ(standin::document().find(tie), nullptr) << "the definition still answers to an image that has gone";
    EXPECT_FALSE(standin::eraseEntity(below)) << "erased twice";

    ASSERT_TRUE(standin::restoreEntity(below));
    EXPECT_EQ(standin::document().modelSpace().entities.front(), below);
    EXPECT_NE(standin::document().find(tie), nullptr);
}

TEST_F(OpenRulesTest, OldIdsAndNamesStaySafeAfterTheDrawingHasGone)
{
    const AcDbObjectId id = idOf(addImage("none.tif"));
    ads_name name;
    ASSERT_EQ(acdbGetAdsName(name, id), Acad::eOk);
    standin::newDrawing();
    EXPECT_FALSE(id.isValid());
    AcDbObject* object = nullptr;
    EXPECT_EQ(acdbOpenAcDbObject(object, id, AcDb::kForRead, nullptr), Acad::eNoDatabase);
    AcDbObjectId again;
    EXPECT_EQ(acdbGetObjectId(again, name), Acad::eInvalidAdsName);
    const ads_name nonsense = {12345, 0};
    EXPECT_EQ(acdbGetObjectId(again, nonsense), Acad::eInvalidAdsName);
}

TEST_F(OpenRulesTest, ReactorsHearOfChangesAtTheClosing)
{
    struct Watcher final : AcDbObjectReactor
    {
        void modified(const AcDbObject*) override { heard += "modified "; }
        void erased(const AcDbObject*, Adesk::Boolean erasing) override { heard += erasing ? "erased " : "restored "; }
        void objectClosed(const AcDbObjectId) override { heard += "closed "; }
        std::string heard;
    } watcher;
    const standin::Handle handle = addImage("none.tif");
    const DocumentLock lock;
    auto* image = open<AcDbRasterImage>(idOf(handle), AcDb::kForWrite);
    EXPECT_EQ(image->addReactor(&watcher), Acad::eOk);
    EXPECT_EQ(image->addReactor(&watcher), Acad::eDuplicateKey);
    const int before = desk.redraws;
    image->setDisplayOpt(AcDbRasterImage::kTransparent, true);
    EXPECT_EQ(watcher.heard, "");
    image->close();
    EXPECT_EQ(watcher.heard, "modified closed ");
    EXPECT_EQ(desk.redraws, before + 1);

    watcher.heard.clear();
    image = open<AcDbRasterImage>(idOf(handle), AcDb::kForRead);
    image->close();
    EXPECT_EQ(watcher.heard, "closed ");

    watcher.heard.clear();
    standin::eraseEntity(handle);
    standin::restoreEntity(handle);
    EXPECT_EQ(watcher.heard, "erased modified closed restored modified closed ");
    EXPECT_EQ(image->removeReactor(&watcher), Acad::eOk);
    EXPECT_EQ(image->removeReactor(&watcher), Acad::eKeyNotFound);
}

TEST_F(OpenRulesTest, AnEntityOnALockedLayerIsOnlyRead)
{
    auto layer = std::make_unique<drawing::Layer>();
    layer->recordName = "Survey";
    layer->flags = drawing::Layer::lockedFlag;
    drawing::Layer& locked = standin::document().addRecord(std::move(layer));
    const standin::Handle line = addLine();
    standin::document().find<drawing::Line>(line)->layer = "SURVEY";
    const AcDbObjectId id = idOf(line);
    const DocumentLock lock;
    AcDbEntity* entity = nullptr;
    EXPECT_EQ(acdbOpenObject(entity, id, AcDb::kForWrite), Acad::eOnLockedLayer);
    ASSERT_EQ(acdbOpenObject(entity, id, AcDb::kForRead), Acad::eOk);
    EXPECT_EQ(entity->upgradeOpen(), Acad::eOnLockedLayer);
    EXPECT_EQ(entity->close(), Acad::eOk) << "still open for read";
    EXPECT_FALSE(standin::eraseEntity(line));
    EXPECT_TRUE(standin::eraseEntity(line, standin::LayerLock::overridden));
    EXPECT_TRUE(standin::restoreEntity(line));
    EXPECT_TRUE(standin::breaches().empty()) << "to be refused is no breach";

    locked.flags = 0;
    ASSERT_EQ(acdbOpenObject(entity, id, AcDb::kForWrite), Acad::eOk);
    entity->close();
}

TEST_F(OpenRulesTest, OnlyARealChangeIsToBeSaved)
{
    const std::filesystem::path raster = writeRaster("sheet.tif", drawn({"#..#", ".##."}));
    const standin::Handle loaded = addImage(raster.string());
    const standin::Handle unloaded = addImage(raster.string());
    auto* record = standin::document().find<drawing::Image>(unloaded);
    standin::document().find<drawing::ImageDefinition>(record->definition)->loaded = false;
    const auto withImage = [&](auto call) {
        return [this, loaded, call] {
            auto* image = open<AcDbRasterImage>(idOf(loaded), AcDb::kForWrite);
            call(*image);
            image->close();
        };
    };
    const auto withDefinition = [&](standin::Handle image, auto call) {
        return [this, image, call] {
            auto* definition = openDefinition(image);
            call(*definition);
            definition->close();
        };
    };
    using Image = AcDbRasterImage;
    using Definition = AcDbRasterImageDef;
    struct
    {
        const char* what;
        std::function<void()> act;
        bool modified;
    } const table[] = {
        {"opened for write", withImage([](Image&) {}), false},
        {"shown as before", withImage([](Image& image) { image.setDisplayOpt(Image::kShow, true); }), false},
        {"hidden", withImage([](Image& image) { image.setDisplayOpt(Image::kShow, false); }), true},
        {"placed as before", withImage([](Image& image) {
             image.setOrientation({0, 0, 0}, {4, 0, 0}, {0, 2, 0});
         }),
         false},
        {"moved", withImage([](Image& image) {
             image.setOrientation({1, 0, 0}, {4, 0, 0}, {0, 2, 0});
         }),
         true},
        {"painted", [&] { standin::imagePixels(loaded); }, false},
        {"copied", withDefinition(loaded, [](Definition& one) { delete one.imageCopy(true); }), false},
        {"unloaded and loaded again",
         withDefinition(loaded,
                        [](Definition& one) {
                            one.unload(true);
                            one.load();
                        }),
         false},
        {"unloaded for now", withDefinition(loaded, [](Definition& one) { one.unload(false); }), false},
        {"loaded and left so", withDefinition(unloaded, [](Definition& one) { one.load(); }), true},
        {"unloaded", withDefinition(unloaded, [](Definition& one) { one.unload(true); }), true},
        {"loaded and unloaded again",
         withDefinition(unloaded,
                        [](Definition& one) {
                            one.load();
                            one.unload(true);
                        }),
         false},
        {"erased", [&] { standin::eraseEntity(loaded); }, true},
        {"another variable's value", [] { standin::setSystemVariable(L"LUPREC", std::int16_t(7)); }, true},
        {"the same value", [] { standin::setSystemVariable(L"LUPREC", std::int16_t(7)); }, false},
    };
    const DocumentLock lock;
    for (const auto& row : table) {
        ASSERT_EQ(standin::saveDrawing(folder / "site.dxf"), std::nullopt);
        EXPECT_FALSE(standin::drawingModified());
        row.act();
        EXPECT_EQ(standin::drawingModified(), row.modified) << row.what;
    }
}

} // namespace
