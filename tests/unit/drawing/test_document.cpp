// The document as a database: adding, finding, erasing and putting back.

#include "support.h"

#include <gmock/gmock.h>

namespace drawing::test {

TEST(DocumentObjects, NewDrawingIsCompleteAndEmpty)
{
    Document document;
    EXPECT_TRUE(document.modelSpace().entities.empty());
    EXPECT_EQ(document.activeViewport().recordName, "*Active");
    EXPECT_NE(document.findLayer("0"), nullptr);
    EXPECT_NE(document.findLinetype("BYLAYER"), nullptr);
    EXPECT_NE(document.rootDictionary().find("ACAD_LAYOUT"), 0u);
    EXPECT_EQ(document.imageDictionary(), nullptr);
    EXPECT_EQ(document.header.integer("$INSUNITS"), 4);
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
    auto layer = std::make_unique<Layer>();
    layer->recordName = "Plan";
    document.addRecord(std::move(layer));
    auto again = std::make_unique<Layer>();
    again->recordName = "PLAN";
    EXPECT_THROW(document.addRecord(std::move(again)), DrawingError);
}

TEST(DocumentObjects, EntityComesBackAtItsPlaceWithItsParts)
{
    Document document;
    Block& model = document.modelSpace();
    document.addEntity(model, std::make_unique<Line>());
    auto& polyline = document.addEntity(model, std::make_unique<HeavyPolyline>());
    document.addEntity(model, std::make_unique<Line>());
    document.addVertex(polyline, std::make_unique<Vertex>()).bulge = 0.5;
    const Handle handle = polyline.handle;
    const Handle vertex = polyline.vertices[0];
    const std::string before = writeDxf(document);

    Document::Erased erased = document.erase(handle);
    EXPECT_EQ(model.entities.size(), 2u);
    EXPECT_EQ(document.find(handle), nullptr);
    EXPECT_EQ(document.find(vertex), nullptr) << "the vertices go with their polyline";
    EXPECT_THROW(document.erase(handle), DrawingError);
    document.restore(std::move(erased));
    EXPECT_EQ(model.entities[1], handle);
    EXPECT_EQ(writeDxf(document), before);
}

TEST(DocumentObjects, ErasedVertexAndLayerComeBackToo)
{
    Document document;
    auto& polyline = document.addEntity(document.modelSpace(), std::make_unique<HeavyPolyline>());
    for (int i = 0; i < 3; ++i) {
        document.addVertex(polyline, std::make_unique<Vertex>());
    }
    auto layer = std::make_unique<Layer>();
    layer->recordName = "Plan";
    const Handle layerHandle = document.addRecord(std::move(layer)).handle;
    const std::string before = writeDxf(document);
    auto vertex = document.erase(polyline.vertices[1]);
    auto erasedLayer = document.erase(layerHandle);
    EXPECT_EQ(polyline.vertices.size(), 2u);
    EXPECT_EQ(document.findLayer("Plan"), nullptr);
    document.restore(std::move(erasedLayer));
    document.restore(std::move(vertex));
    EXPECT_EQ(writeDxf(document), before);
}

TEST(DocumentObjects, BlockTakesItsEntitiesAlong)
{
    Document document;
    Block& block = document.addBlock("DOOR");
    auto& reference = document.addEntity(block, std::make_unique<BlockReference>());
    document.addAttribute(reference, std::make_unique<Attribute>());
    const Handle attribute = reference.attributes[0];
    const std::string before = writeDxf(document);
    auto erased = document.erase(block.handle);
    EXPECT_EQ(document.find(attribute), nullptr);
    EXPECT_EQ(document.findBlock("DOOR"), nullptr);
    document.restore(std::move(erased));
    EXPECT_EQ(writeDxf(document), before);
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
