// Drawings of all releases as another maker's library writes them.

#include <algorithm>

#include "drawing/hatch.h"
#include "support.h"

namespace drawing::test {

// The samples are made once for all tests.
class OtherMakersFile : public testing::TestWithParam<const char*>
{
protected:
    static void SetUpTestSuite()
    {
        s_folder = std::make_unique<TemporaryFolder>();
        std::string output;
        ASSERT_TRUE(runScript("make_samples.py", s_folder->path().string(), output)) << output;
    }
    static void TearDownTestSuite() { s_folder.reset(); }

    std::filesystem::path path() const { return *s_folder / (std::string(GetParam()) + ".dxf"); }
    bool old() const { return GetParam() == std::string("R12"); }

    template <class T> const T& entity(const Document& document, std::size_t number) const
    {
        const T* found = nullptr;
        std::size_t count = 0;
        for (const Entity* each : document.drawOrder(document.modelSpace())) {
            const T* candidate = dynamic_cast<const T*>(each);
            if (candidate && count++ == number) {
                found = candidate;
            }
        }
        if (!found) {
            throw std::runtime_error("an entity of the sample is missing");
        }
        return *found;
    }

    static std::unique_ptr<TemporaryFolder> s_folder;
};

std::unique_ptr<TemporaryFolder> OtherMakersFile::s_folder;

INSTANTIATE_TEST_SUITE_P(All, OtherMakersFile,
                         testing::Values("R12", "R2000", "R2004", "R2007", "R2010", "R2013", "R2018"),
                         [](const auto& release) { return std::string(release.param); });

TEST_P(OtherMakersFile, LosesNothingOnItsWayThrough)
{
    writeDrawing(readDrawing(path()), *s_folder / "after.dxf");
    std::string output;
    EXPECT_TRUE(runScript("compare_drawings.py", path().string() + " " + (*s_folder / "after.dxf").string(), output))
        << output;
}

TEST_P(OtherMakersFile, BinaryFormHoldsTheSame)
{
    const auto binary = *s_folder / (std::string(GetParam()) + "-binary.dxf");
    const Document document = readDrawing(binary);
    writeDrawing(document, *s_folder / "after.dxf", DrawingForm::DxfBinary);
    EXPECT_EQ(writeDxf(readDrawing(*s_folder / "after.dxf")), writeDxf(document));
    std::string output;
    EXPECT_TRUE(runScript("compare_drawings.py", binary.string() + " " + (*s_folder / "after.dxf").string(), output))
        << output;
}

TEST_P(OtherMakersFile, SecondSaveWritesTheSameBytes)
{
    const std::string once = writeDxf(readDrawing(path()));
    EXPECT_EQ(writeDxf(readDxf(once)), once);
}

// What the drawing's own writer is checked for (see check_written.py) comes back right if nothing is lost on the way;
// here stands what only the reading tells.
TEST_P(OtherMakersFile, PlainEntitiesHaveTheirValues)
{
    const Document document = readDrawing(path());
    const auto& circle = entity<Circle>(document, 0);
    EXPECT_EQ(circle.center, (Vector3{10, 20, 0}));
    EXPECT_EQ(circle.radius, 2.5);
    const auto& arc = entity<Arc>(document, 0);
    EXPECT_EQ(arc.linetype, "DASHED");
    EXPECT_EQ(arc.linetypeScale, old() ? 1 : 2) << "the release 12 has a scale for the whole drawing only";
    EXPECT_TRUE(entity<Solid>(document, 1).isTrace);
    const auto& text = entity<Text>(document, 0);
    EXPECT_EQ(text.text, "Größe %%c40 ± 5");
    EXPECT_EQ(text.rotation, 15);
    EXPECT_EQ(text.style, "ROMAN");
}

TEST_P(OtherMakersFile, OldPolylinesHaveTheirVertices)
{
    const Document document = readDrawing(path());
    const auto& flat = entity<HeavyPolyline>(document, 0);
    EXPECT_EQ(flat.flags & HeavyPolyline::closedFlag, 1);
    ASSERT_EQ(flat.vertices.size(), 3u);
    EXPECT_EQ(document.find<Vertex>(flat.vertices[0])->bulge, 0.5);
    EXPECT_EQ(document.find<Vertex>(flat.vertices[2])->bulge, -1);
    const auto& spatial = entity<HeavyPolyline>(document, 1);
    EXPECT_TRUE(spatial.flags & HeavyPolyline::inSpace);
    EXPECT_EQ(document.find<Vertex>(spatial.vertices[1])->position, (Vector3{1, 1, 2}));
    const auto& mesh = entity<HeavyPolyline>(document, 2);
    EXPECT_EQ(mesh.meshCountM, 2);
    EXPECT_EQ(mesh.meshCountN, 3);
    ASSERT_EQ(mesh.vertices.size(), 6u);
    EXPECT_EQ(document.find<Vertex>(mesh.vertices[5])->position, (Vector3{9, 9, 9}));
    const auto& faces = entity<HeavyPolyline>(document, 3);
    ASSERT_EQ(faces.vertices.size(), 4u) << "three corners and a face";
    EXPECT_EQ(document.find<Vertex>(faces.vertices[3])->face, (std::array{1, 2, 3, 0}));
}

TEST_P(OtherMakersFile, BlocksAndTablesHaveTheirValues)
{
    const Document document = readDrawing(path());
    const auto& reference = entity<BlockReference>(document, 0);
    EXPECT_EQ(reference.block, "PAIR");
    EXPECT_EQ(reference.columnSpacing, 10);
    ASSERT_EQ(reference.attributes.size(), 1u);
    EXPECT_EQ(document.find<Attribute>(reference.attributes[0])->text, "42");
    const Block& door = *document.findBlock("DOOR");
    EXPECT_EQ(document.find<BlockBracket>(door.begin)->basePoint, (Vector3{1, 1, 0}));
    ASSERT_EQ(door.entities.size(), 3u);
    EXPECT_EQ(document.find<Line>(door.entities[0])->color, colorByBlock);
    EXPECT_EQ(document.find<AttributeDefinition>(door.entities[2])->prompt, "Door number");
    EXPECT_FALSE(document.findLayer("WALLS")->on);
    EXPECT_EQ(document.findLayer("WALLS")->color, 3);
    EXPECT_TRUE(document.findLayer("Möbel")->frozen());
    EXPECT_TRUE(document.findLayer("Möbel")->locked());
    EXPECT_EQ(document.findTextStyle("ROMAN")->font, "romans.shx");
    EXPECT_EQ(document.findTextStyle("ROMAN")->widthFactor, 0.8);
    EXPECT_FALSE(document.findLinetype("DASHED")->elements.empty());
    EXPECT_EQ(document.header.integer("$TILEMODE"), 1);
    ASSERT_GE(document.paperSpace().entities.size(), 1u);
    const auto isLine = [&](Handle handle) { return document.find<Line>(handle) != nullptr; };
    const auto& sheet = document.paperSpace().entities;
    const auto line = std::find_if(sheet.begin(), sheet.end(), isLine);
    ASSERT_NE(line, sheet.end());
    EXPECT_EQ(document.find<Line>(*line)->end, (Vector3{297, 210, 0}));
}

TEST_P(OtherMakersFile, NewerEntitiesHaveTheirValues)
{
    if (old()) {
        GTEST_SKIP() << "the release 12 has none of them";
    }
    const Document document = readDrawing(path());
    const auto& constant = entity<LightPolyline>(document, 1);
    EXPECT_EQ(constant.constantWidth, 0.7);
    EXPECT_EQ(constant.elevation, 5);
    EXPECT_EQ(constant.extendedData, (Groups{{1001, "ACAD"}, {1000, "kept"}, {1070, "7"}}));
    EXPECT_EQ(entity<Ellipse>(document, 0).majorAxis, (Vector3{3, 0, 0}));
    const auto& mtext = entity<MText>(document, 0);
    EXPECT_EQ(mtext.text.size(), std::string("{\\fArial|b1;bold}\\Pnext ").size() + 5 * 120);
    EXPECT_EQ(mtext.attachment, 5);
    EXPECT_NEAR(mtext.baseline().x, 0, 1e-9);
    const auto& image = entity<Image>(document, 0);
    EXPECT_EQ(image.clip.at(1), (Vector2{110, 20}));
    const auto* definition = document.find<ImageDefinition>(image.definition);
    ASSERT_NE(definition, nullptr);
    EXPECT_EQ(document.imageDictionary()->find("PLAN"), definition->handle);
}

} // namespace drawing::test
