// Entities on their way from one drawing into another.
#include "drawing/drawing_file.h"
#include "standin/arx/object_store.h"
#include "tests/standin/arx/drawing_fixture.h"

namespace {

class InsertTest : public DrawingTest
{
protected:
    // A drawing file that stands aside, to be filled and then read by the host's call.
    AcDbDatabase& side(const drawing::Document& content)
    {
        const std::filesystem::path path = folder / "side drawing without extension";
        drawing::writeDrawing(content, path);
        source = std::make_unique<AcDbDatabase>(false, true);
        EXPECT_EQ(source->readDwgFile(path.c_str(), 32, false, nullptr), Acad::eOk);
        return *source;
    }
    AcDbDatabase& working() { return *acdbHostApplicationServices()->workingDatabase(); }

    static drawing::Image& addSideImage(drawing::Document& document, const char* name, const std::string& path)
    {
        auto definition = std::make_unique<drawing::ImageDefinition>();
        definition->path = path;
        definition->pixels = {4, 2};
        drawing::ImageDefinition& added = document.addImageDefinition(name, std::move(definition));
        auto image = std::make_unique<drawing::Image>();
        image->pixels = {4, 2};
        image->u = {0.5, 0, 0};
        image->v = {0, 0.5, 0};
        image->resetClip();
        drawing::Image& entity = document.addEntity(document.modelSpace(), std::move(image));
        document.attachDefinition(entity, added);
        return entity;
    }

    std::unique_ptr<AcDbDatabase> source;
};

const drawing::ImageDefinition* definitionOf(const drawing::Document& document, drawing::Handle image)
{
    const auto* entity = document.find<drawing::Image>(image);
    return entity ? document.find<drawing::ImageDefinition>(entity->definition) : nullptr;
}

TEST_F(InsertTest, AnImageComesWithItsDefinition)
{
    const standin::Handle present = addImage("old.tif");
    drawing::Document other;
    addSideImage(other, "image0", "new.tif").position = {5, 6, 0};
    const DocumentLock lock;
    ASSERT_EQ(working().insert(AcGeMatrix3d(), &side(other), true), Acad::eOk);

    drawing::Document& document = standin::document();
    ASSERT_EQ(document.modelSpace().entities.size(), 2u);
    const drawing::Handle added = document.modelSpace().entities.back();
    ASSERT_NE(definitionOf(document, added), nullptr);
    EXPECT_EQ(definitionOf(document, added)->path, "new.tif") << "the name image0 was taken by another file";
    EXPECT_EQ(definitionOf(document, present)->path, "old.tif");
    EXPECT_EQ(document.imageDictionary()->entries.size(), 2u);

    auto* image = open<AcDbRasterImage>(idOf(added), AcDb::kForRead);
    AcGePoint3d origin;
    AcGeVector3d u, v;
    image->getOrientation(origin, u, v);
    expectPoint(origin, 5, 6);
    EXPECT_EQ(u.x, 2);
    EXPECT_EQ(v.y, 1);
    image->close();

    // The same file once more shares its definition.
    ASSERT_EQ(working().insert(AcGeMatrix3d(), source.get(), true), Acad::eOk);
    const drawing::Handle again = document.modelSpace().entities.back();
    EXPECT_EQ(document.find<drawing::Image>(again)->definition, document.find<drawing::Image>(added)->definition);
    EXPECT_EQ(document.imageDictionary()->entries.size(), 2u);
    EXPECT_EQ(source->state().document.modelSpace().entities.size(), 1u) << "the source stays as it was";
}

TEST_F(InsertTest, WhatTheEntitiesNeedComesAlong)
{
    drawing::Document other;
    auto layer = std::make_unique<drawing::Layer>();
    layer->recordName = "Walls";
    layer->color = 3;
    other.addRecord(std::move(layer));
    drawing::Block& door = other.addBlock("Door");
    other.find<drawing::BlockBracket>(door.begin)->basePoint = {1, 2, 0};
    auto leaf = std::make_unique<drawing::Line>();
    leaf->end = {9, 0, 0};
    other.addEntity(door, std::move(leaf));
    auto reference = std::make_unique<drawing::BlockReference>();
    reference->block = "Door";
    reference->layer = "Walls";
    drawing::BlockReference& placed = other.addEntity(other.modelSpace(), std::move(reference));
    auto number = std::make_unique<drawing::Attribute>();
    number->tag = "NUMBER";
    number->text = "12";
    other.addAttribute(placed, std::move(number));
    drawing::HeavyPolyline& fence = other.addEntity(other.modelSpace(), std::make_unique<drawing::HeavyPolyline>());
    for (const double x : {0.0, 1.0, 2.0}) {
        auto vertex = std::make_unique<drawing::Vertex>();
        vertex->position = {x, x * x, 0};
        other.addVertex(fence, std::move(vertex));
    }

    drawing::Document& document = standin::document();
    auto kept = std::make_unique<drawing::Layer>();
    kept->recordName = "0wn";
    document.addRecord(std::move(kept));
    const DocumentLock lock;
    ASSERT_EQ(working().insert(AcGeMatrix3d(), &side(other), true), Acad::eOk);

    ASSERT_NE(document.findLayer("walls"), nullptr);
    EXPECT_EQ(document.findLayer("walls")->color, 3);
    const drawing::Block* block = document.findBlock("Door");
    ASSERT_NE(block, nullptr);
    EXPECT_EQ(document.find<drawing::BlockBracket>(block->begin)->basePoint, (drawing::Vector3{1, 2, 0}));
    ASSERT_EQ(block->entities.size(), 1u);
    EXPECT_EQ(document.find<drawing::Line>(block->entities[0])->end, (drawing::Vector3{9, 0, 0}));
    ASSERT_EQ(document.modelSpace().entities.size(), 2u);
    const auto* inserted = document.find<drawing::BlockReference>(document.modelSpace().entities[0]);
    ASSERT_EQ(inserted->attributes.size(), 1u);
    EXPECT_EQ(document.find<drawing::Attribute>(inserted->attributes[0])->text, "12");
    const auto* polyline = document.find<drawing::HeavyPolyline>(document.modelSpace().entities[1]);
    ASSERT_EQ(polyline->vertices.size(), 3u);
    EXPECT_EQ(document.find<drawing::Vertex>(polyline->vertices[2])->position, (drawing::Vector3{2, 4, 0}));

    // What was merged must make a drawing that can be saved and read.
    ASSERT_EQ(standin::saveDrawing(folder / "merged.dxf"), std::nullopt);
    EXPECT_EQ(drawing::readDrawing(folder / "merged.dxf").modelSpace().entities.size(), 2u);
}

TEST_F(InsertTest, WhatIsThereAlreadyKeepsItsMeaning)
{
    const auto withLayer = [](drawing::Document& document, int color) {
        auto layer = std::make_unique<drawing::Layer>();
        layer->recordName = "Walls";
        layer->color = color;
        document.addRecord(std::move(layer));
    };
    withLayer(standin::document(), 1);
    standin::document().addBlock("*D1");
    drawing::Document other;
    withLayer(other, 3);
    other.addBlock("*D1");
    auto reference = std::make_unique<drawing::BlockReference>();
    reference->block = "*D1";
    other.addEntity(other.modelSpace(), std::move(reference));
    const DocumentLock lock;
    ASSERT_EQ(working().insert(AcGeMatrix3d(), &side(other), true), Acad::eOk);
    EXPECT_EQ(standin::document().findLayer("Walls")->color, 1);
    const drawing::Handle added = standin::document().modelSpace().entities.back();
    EXPECT_EQ(standin::document().find<drawing::BlockReference>(added)->block, "*D2") << "nameless blocks never meet";
}

TEST_F(InsertTest, InsertingNeedsALockAndTheIdentity)
{
    AcDbDatabase& other = side(drawing::Document());
    EXPECT_EQ(working().insert(AcGeMatrix3d(), &other, true), Acad::eLockViolation);
    EXPECT_EQ(standin::breaches().size(), 1u);
    const DocumentLock lock;
    AcGeMatrix3d scaling;
    scaling(0, 0) = 2;
    EXPECT_EQ(working().insert(scaling, &other, true), Acad::eNotApplicable);
    EXPECT_EQ(working().insert(AcGeMatrix3d(), nullptr, true), Acad::eInvalidInput);
}

TEST_F(InsertTest, ReadingADrawingFileThatIsNone)
{
    AcDbDatabase database(false, true);
    EXPECT_EQ(database.readDwgFile((folder / "missing").c_str(), 32), Acad::eFileNotFound);
    const std::filesystem::path raster = writeRaster("a.tif", drawn({"#"}));
    EXPECT_EQ(database.readDwgFile(raster.c_str(), 32), Acad::eDwgNeedsRecovery);
}

TEST_F(InsertTest, ChosenEntitiesMakeADrawingOfTheirOwn)
{
    addImage("unwanted.tif");
    const standin::Handle first = addLine();
    addLine();
    const standin::Handle second = addImage("wanted.tif");
    AcDbObjectIdArray ids;
    ids.append(idOf(second));
    ids.append(idOf(first));
    AcDbDatabase* made = nullptr;
    ASSERT_EQ(working().wblock(made, ids, AcGePoint3d(1, 2, 0)), Acad::eOk);
    const std::unique_ptr<AcDbDatabase> owned(made);
    const std::filesystem::path path = folder / "HVtemporary";
    ASSERT_EQ(made->saveAs(path.c_str(), false, AcDb::kDHL_1015, nullptr), Acad::eOk);

    const drawing::Document read = drawing::readDrawing(path);
    EXPECT_EQ(read.modelSpace().entities, (std::vector<drawing::Handle>{first, second})) << "in the order of drawing";
    ASSERT_NE(definitionOf(read, second), nullptr);
    EXPECT_EQ(definitionOf(read, second)->path, "wanted.tif");
    EXPECT_EQ(read.imageDictionary()->entries.size(), 1u) << "the image that was not chosen leaves nothing behind";
    EXPECT_EQ(read.header.point("$INSBASE"), (drawing::Vector3{1, 2, 0}));
    EXPECT_EQ(standin::document().modelSpace().entities.size(), 4u) << "the drawing itself is as it was";
}

TEST_F(InsertTest, AnExportIsAnnouncedLikeASaving)
{
    struct Watcher final : AcEditorReactor2
    {
        Watcher() { acedEditor->addReactor(this); }
        ~Watcher() override { acedEditor->removeReactor(this); }
        void databaseConstructed(AcDbDatabase*) override { heard += L"constructed "; }
        void databaseToBeDestroyed(AcDbDatabase*) override { heard += L"destroyed "; }
        void beginSave(AcDbDatabase*, const ACHAR*) override { heard += L"begin "; }
        void saveComplete(AcDbDatabase*, const ACHAR* name) override
        {
            heard += L"complete " + std::filesystem::path(name).filename().wstring() + L' ';
        }
        std::wstring heard;
    };
    AcDbObjectIdArray ids;
    ids.append(idOf(addLine()));
    Watcher watcher;
    AcDbDatabase* made = nullptr;
    ASSERT_EQ(working().wblock(made, ids, AcGePoint3d::kOrigin), Acad::eOk);
    EXPECT_EQ(made->saveAs((folder / "out.tmp").c_str(), false, AcDb::kDHL_1015), Acad::eOk);
    delete made;
    EXPECT_EQ(watcher.heard, L"constructed begin complete out.tmp destroyed ");
}

} // namespace
