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

} // namespace
