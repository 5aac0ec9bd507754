// Writing: what a saved file says, literally and as another maker's library reads it.

#include <gmock/gmock.h>
#include <limits>

#include "support.h"
#include "tests/support/drawings.h"

namespace drawing::test {

using testing::HasSubstr;

void addCurves(Document& document, Block& model)
{
    addLineOnLayer(document);
    auto& circle = add<Circle>(document, model);
    circle.radius = 4;
    circle.color = 3;
    circle.extrusion = {0, 0, -1};
    auto& arc = add<Arc>(document, model);
    arc.radius = 2.5;
    arc.startAngle = 10;
    arc.endAngle = 190;
    auto& ellipse = add<Ellipse>(document, model);
    ellipse.ratio = 0.25;
    ellipse.startParameter = 1;
    ellipse.endParameter = 2;
    add<Point>(document, model).visible = false;
    add<Solid>(document, model).corners = {Vector3{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 1, 0}};
    auto& light = add<LightPolyline>(document, model);
    light.closed = true;
    light.points = {{{0, 0}, 0.5, 0.25, 1}, {{10, 0}, 0, 0, 0}, {{10, 10}, 0, 0, -0.3}};
    auto& heavy = add<HeavyPolyline>(document, model);
    heavy.flags = HeavyPolyline::closedFlag;
    document.addVertex(heavy, std::make_unique<Vertex>()).position = {1, 2, 0};
    document.addVertex(heavy, std::make_unique<Vertex>()).position = {3, 4, 0};
    document.find<Vertex>(heavy.vertices[0])->bulge = 0.5;
}

void addTexts(Document& document, Block& model)
{
    auto& text = add<Text>(document, model);
    text.text = "Größe ∅ 5 Ω";
    text.height = 2;
    text.horizontal = HorizontalAlignment::Center;
    text.vertical = VerticalAlignment::Middle;
    text.alignmentPoint = Vector3{3, 4, 0};
    auto& mtext = add<MText>(document, model);
    mtext.height = 2;
    mtext.text = "line\\P";
    for (int i = 0; i < 200; ++i) {
        mtext.text += "Ωmega ";
    }
}

void addReference(Document& document, Block& model)
{
    Block& door = document.addBlock("DOOR");
    add<Line>(document, door);
    add<AttributeDefinition>(document, door).tag = "NUMBER";
    auto& reference = add<BlockReference>(document, model);
    reference.block = "DOOR";
    reference.scale.x = -2;
    reference.rotation = 30;
    reference.rows = 2;
    reference.columns = 3;
    reference.rowSpacing = 7.5;
    auto& attribute = document.addAttribute(reference, std::make_unique<Attribute>());
    attribute.tag = "NUMBER";
    attribute.text = "42";
    attribute.height = 1;
}

void addImage(Document& document, Block& model)
{
    auto made = std::make_unique<ImageDefinition>();
    made->path = "C:\\Pläne\\sheet.tif";
    made->pixels = {20000, 14000};
    made->pixelSize = {0.0635, 0.0635};
    made->units = ImageDefinition::Units::Inch;
    auto& definition = document.addImageDefinition("sheet", std::move(made));
    auto& image = add<Image>(document, model);
    image.position = {100, 200, 0};
    image.u = {0.0635, 0, 0};
    image.v = {0, 0.0635, 0};
    image.pixels = {20000, 14000};
    image.display = Image::showFlag | Image::showUnaligned | Image::clipFlag | Image::transparent;
    image.clipped = true;
    image.clipType = Image::ClipType::Polygon;
    image.clip = {{-0.5, -0.5}, {99.5, -0.5}, {50, 80}, {-0.5, -0.5}};
    image.brightness = 45;
    image.contrast = 55;
    image.fade = 5;
    document.attachDefinition(image, definition);
    RasterVariables& variables = document.obtainRasterVariables();
    variables.frame = RasterVariables::frameOff;
    variables.units = 1;
}

// Its values are those that check_written.py expects.
Document makeDrawing()
{
    Document document;
    Block& model = document.modelSpace();
    addCurves(document, model);
    addTexts(document, model);
    addReference(document, model);
    addImage(document, model);
    document.activeViewport().center = {11, 12};
    document.activeViewport().height = 13;
    return document;
}

TEST(Writing, AnotherMakersLibraryFindsEveryValueAndNothingToMend)
{
    const TemporaryFolder folder;
    writeDrawing(makeDrawing(), folder / "made.dxf");
    std::string output;
    EXPECT_TRUE(runScript("check_written.py", (folder / "made.dxf").string(), output)) << output;
    // And once more after a round trip.
    writeDrawing(readDrawing(folder / "made.dxf"), folder / "again.dxf");
    EXPECT_TRUE(runScript("check_written.py", (folder / "again.dxf").string(), output)) << output;
}

TEST(Writing, EmptyDrawingPassesTheAuditOfAnotherMaker)
{
    const TemporaryFolder folder;
    writeDrawing(Document(), folder / "empty.dxf");
    std::string output;
    const std::string path = (folder / "empty.dxf").string();
    EXPECT_TRUE(runScript("compare_drawings.py", path + " " + path, output)) << output;
}

TEST(Writing, GroupsThatNobodyUnderstandsStayUnderTheirMarkers)
{
    const std::string entity =
        "0 LINE\n5 ABC\n102 {HV_APP\n70 1\n102 }\n102 {ACAD_XDICTIONARY\n360 A1\n102 }\n"
        "102 {ACAD_REACTORS\n330 A2\n330 A3\n102 }\n330 17\n"
        "100 AcDbEntity\n8 0\n440 33554559\n100 AcDbLine\n10 1.0\n20 2.0\n30 0.0\n11 3.0\n21 4.0\n"
        "31 0.0\n7 odd\n100 HvNotes\n1 note\n70 3\n1001 ACAD\n1000 mine\n1040 2.50\n";
    const std::string file =
        fromPairs("0 SECTION\n2 TABLES\n0 TABLE\n2 BLOCK_RECORD\n5 9\n330 0\n100 AcDbSymbolTable\n70 1\n"
                  "0 BLOCK_RECORD\n5 17\n330 9\n100 AcDbSymbolTableRecord\n100 AcDbBlockTableRecord\n"
                  "2 *Model_Space\n0 ENDTAB\n0 ENDSEC\n0 SECTION\n2 ENTITIES\n" +
                  entity + "0 ENDSEC\n0 EOF");
    EXPECT_EQ(writtenRecord(writeDxf(readDxf(file)), "LINE"), entity);
}

TEST(Writing, TextIsWrittenInTheDrawingsCodePageOnWindowsWithEscapesForTheRest)
{
    Document document;
    document.header.setText("$DWGCODEPAGE", "dos852", 3);
    auto& text = add<Text>(document, document.modelSpace());
    text.text = "łódź Ω 😀";
    const std::string file = writeDxf(document);
    EXPECT_THAT(file, HasSubstr("$DWGCODEPAGE\n  3\nANSI_1250\n"));
    EXPECT_THAT(file, HasSubstr("\xB3\xF3"
                                "d\x9F \\U+03A9 \\U+D83D\\U+DE00\n"));
    EXPECT_EQ(onlyEntity<Text>(readDxf(file)).text, text.text);
}

TEST(Writing, LineBreakInATextCannotBreakTheFile)
{
    Document document;
    add<Text>(document, document.modelSpace()).text = "one\r\ntwo";
    EXPECT_EQ(onlyEntity<Text>(readDxf(writeDxf(document))).text, "one^M^Jtwo");
}

TEST(Writing, SavedDrawingReplacesTheFormerUnlessAValueIsNoNumber)
{
    const TemporaryFolder folder;
    const auto path = folder / "zeichnung ü.dxf";
    writeDrawing(Document(), path);
    Document document = makeDrawing();
    writeDrawing(document, path);
    const std::string before = contentOf(path);
    EXPECT_EQ(readDxf(before).modelSpace().entities.size(), 12u);
    add<Circle>(document, document.modelSpace()).radius = std::numeric_limits<double>::quiet_NaN();
    EXPECT_THROW(writeDrawing(document, path), DrawingError);
    EXPECT_EQ(contentOf(path), before);
    EXPECT_EQ(folder.names().size(), 1u) << "nothing else is left behind";
}

TEST(Writing, FailureNamesTheFileAndLeavesNothing)
{
    const TemporaryFolder folder;
    std::filesystem::create_directory(folder / "plan.dxf");
    try {
        writeDrawing(Document(), folder / "plan.dxf");
        FAIL() << "a folder was replaced by a drawing";
    } catch (const DrawingError& error) {
        EXPECT_THAT(error.what(), HasSubstr("plan.dxf"));
    }
    EXPECT_EQ(folder.names().size(), 1u);
    EXPECT_THROW(writeDrawing(Document(), folder / "missing" / "plan.dxf"), DrawingError);
    EXPECT_THROW(readDrawing(folder / "missing.dxf"), DrawingError);
    EXPECT_THROW(readDrawing(folder.path()), DrawingError);
}

} // namespace drawing::test
