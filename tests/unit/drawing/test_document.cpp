// The document as a database: adding, finding, erasing and putting back.

#include <gmock/gmock.h>

#include "support.h"

namespace drawing::test {

Layer& addLayer(Document& document, const char* name)
{
    auto layer = std::make_unique<Layer>();
    layer->recordName = name;
    return document.addRecord(std::move(layer));
}

TEST(DocumentObjects, HandlesAreUniqueAndGrow)
{
    Document document;
    const Handle before = document.handleSeed();
    auto& first = document.addEntity(document.modelSpace(), std::make_unique<Line>());
    EXPECT_GE(first.handle, before);
    EXPECT_GT(document.handleSeed(), first.handle);
    auto same = std::make_unique<Line>();
    same->handle = first.handle;
    EXPECT_THROW(document.addEntity(document.modelSpace(), std::move(same)), DrawingError);
    EXPECT_EQ(document.modelSpace().entities.size(), 1u) << "a refused entity is not in the list";
    EXPECT_EQ(document.find<Circle>(first.handle), nullptr) << "a line is no circle";
    EXPECT_EQ(document.find<Line>(first.handle), &first);
    EXPECT_EQ(document.find(0), nullptr);
}

TEST(DocumentObjects, NamesInATableAreUniqueWithoutRegardToCase)
{
    Document document;
    addLayer(document, "Plan");
    EXPECT_THROW(addLayer(document, "PLAN"), DrawingError);
}

TEST(DocumentObjects, WhatIsErasedTakesItsPartsAlongAndComesBackAtItsPlace)
{
    Document document;
    Block& model = document.modelSpace();
    document.addEntity(model, std::make_unique<Line>());
    auto& polyline = document.addEntity(model, std::make_unique<HeavyPolyline>());
    document.addEntity(model, std::make_unique<Line>());
    for (int i = 0; i < 3; ++i) {
        document.addVertex(polyline, std::make_unique<Vertex>()).bulge = i;
    }
    Block& block = document.addBlock("DOOR");
    auto& reference = document.addEntity(block, std::make_unique<BlockReference>());
    const Handle attribute = document.addAttribute(reference, std::make_unique<Attribute>()).handle;
    const Handle vertex = polyline.vertices[1];
    const Handle blockHandle = block.handle;
    auto& extension = document.addObject(std::make_unique<Dictionary>(), polyline.handle);
    polyline.extensionDictionary = extension.handle;
    const Handle note = document.addObject(std::make_unique<RawObject>("XRECORD"), extension.handle).handle;
    extension.set("NOTE", note);
    document.addObject(std::make_unique<RawObject>("XRECORD"), document.rootDictionary().handle);
    const Handle layer = addLayer(document, "Plan").handle;
    const struct
    {
        const char* what;
        Handle erased, part;
    } cases[] = {{"a polyline with its vertices", polyline.handle, vertex},
                 {"a polyline with what its extension dictionary holds", polyline.handle, note},
                 {"a vertex", vertex, vertex},
                 {"a layer", layer, 0},
                 {"a block with the attributes of its entities", blockHandle, attribute}};
    for (const auto& each : cases) {
        SCOPED_TRACE(each.what);
        const std::string whole = writeDxf(document);
        Document::Erased erased = document.erase(each.erased);
        EXPECT_EQ(document.find(each.erased), nullptr);
        EXPECT_EQ(document.find(each.part), nullptr);
        EXPECT_EQ(document.findLayer("Plan") == nullptr, each.erased == layer);
        EXPECT_EQ(document.findBlock("DOOR") == nullptr, each.erased == blockHandle);
        EXPECT_FALSE(writeDxf(document) == whole);
        EXPECT_THROW(document.erase(each.erased), DrawingError);
        document.restore(std::move(erased));
        EXPECT_TRUE(writeDxf(document) == whole);
    }
}

TEST(DocumentObjects, WhatADrawingCannotBeWithoutIsNotErased)
{
    Document document;
    EXPECT_THROW(document.erase(document.modelSpace().handle), DrawingError);
    EXPECT_THROW(document.erase(document.rootDictionary().handle), DrawingError);
    EXPECT_THROW(document.erase(document.table("LAYER").handle), DrawingError);
    EXPECT_NO_THROW(writeDxf(document));
}

class DocumentImages : public testing::Test
{
protected:
    ImageDefinition& addDefinition(const std::string& name)
    {
        return document.addImageDefinition(name, std::make_unique<ImageDefinition>());
    }
    Image& addImage(ImageDefinition& definition)
    {
        Image& image = document.addEntity(document.modelSpace(), std::make_unique<Image>());
        document.attachDefinition(image, definition);
        return image;
    }

    Document document;
};

TEST_F(DocumentImages, ImageMovesFromOneDefinitionToAnother)
{
    ImageDefinition& first = addDefinition("first");
    ImageDefinition& second = addDefinition("second");
    Image& image = addImage(first);
    const Handle reactor = image.definitionReactor;
    EXPECT_THAT(first.reactors, testing::ElementsAre(document.imageDictionary()->handle, reactor));
    document.attachDefinition(image, second);
    EXPECT_THAT(first.reactors, testing::ElementsAre(document.imageDictionary()->handle));
    EXPECT_THAT(second.reactors, testing::ElementsAre(document.imageDictionary()->handle, image.definitionReactor));
    EXPECT_EQ(image.definitionReactor, reactor) << "one image has one reactor";
    EXPECT_EQ(image.definition, second.handle);
}

TEST_F(DocumentImages, ErasedImageTakesItsReactorAlongAndBringsItBack)
{
    ImageDefinition& definition = addDefinition("scan");
    Image& image = addImage(definition);
    const Handle reactor = image.definitionReactor;
    auto erased = document.erase(image.handle);
    EXPECT_EQ(document.find(reactor), nullptr);
    EXPECT_THAT(definition.reactors, testing::Not(testing::Contains(reactor)));
    EXPECT_THAT(document.objects(), testing::Not(testing::Contains(reactor)));
    document.restore(std::move(erased));
    EXPECT_THAT(definition.reactors, testing::Contains(reactor));
    EXPECT_THAT(document.objects(), testing::Contains(reactor));
}

TEST_F(DocumentImages, NameOfADefinitionIsTakenOnce)
{
    addDefinition("scan");
    EXPECT_THROW(addDefinition("SCAN"), DrawingError);
    const Handle variables = document.obtainRasterVariables().handle;
    EXPECT_EQ(document.obtainRasterVariables().handle, variables);
}

TEST(DrawOrder, FollowsTheOrderThatTheDrawingHolds)
{
    Document document;
    Block& model = document.modelSpace();
    std::vector<Handle> handles;
    for (int i = 0; i < 3; ++i) {
        handles.push_back(document.addEntity(model, std::make_unique<Line>()).handle);
    }
    const auto order = [&] {
        std::vector<Handle> result;
        for (const Entity* entity : document.drawOrder(model)) {
            result.push_back(entity->handle);
        }
        return result;
    };
    EXPECT_EQ(order(), handles);
    // The host stores a changed order as pairs of an entity and the handle by which it is to be sorted.
    const auto hex = [](Handle handle) {
        std::ostringstream text;
        text << std::hex << handle;
        return text.str();
    };
    auto& extension = document.addObject(std::make_unique<Dictionary>(), model.handle);
    model.extensionDictionary = extension.handle;
    auto table = std::make_unique<RawObject>("SORTENTSTABLE");
    table->kept = {{"AcDbSortentsTable",
                    {{330, hex(model.handle)},
                     {331, hex(handles[0])},
                     {5, hex(handles[2])},
                     {331, hex(handles[2])},
                     {5, hex(handles[0])}}}};
    extension.set("ACAD_SORTENTS", document.addObject(std::move(table), extension.handle).handle);
    EXPECT_THAT(order(), testing::ElementsAre(handles[2], handles[1], handles[0]));
}

} // namespace drawing::test
