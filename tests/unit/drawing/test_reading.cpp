// Reading of hand-written files.

#include "support.h"

#include <gmock/gmock.h>

namespace drawing::test {

TEST(Reading, ReadsALineOfTheOldestReleaseWithoutHandlesOrMarkers)
{
    const Document document = readDxf(entitiesFile(R"(
        0 LINE
        8 WALLS
        62 5
        39 0.25
        10 1.5
        20 -2
        30 3
        11 1e3
        21 +7.
        31 .5)"));
    const Line& line = onlyEntity<Line>(document);
    EXPECT_EQ(line.layer, "WALLS");
    EXPECT_EQ(line.color, 5);
    EXPECT_EQ(line.thickness, 0.25);
    EXPECT_EQ(line.start, (Vector3{1.5, -2, 3}));
    EXPECT_EQ(line.end, (Vector3{1000, 7, 0.5}));
    EXPECT_NE(line.handle, 0u) << "an entity without a handle is given one";
    EXPECT_EQ(line.owner, document.modelSpace().handle);
    EXPECT_NE(document.findLayer("0"), nullptr) << "the layer 0 is there even if the file has no tables";
}

TEST(Reading, NewHandlesStayClearOfThoseOfTheFile)
{
    const Document document = readDxf(entitiesFile("0 POINT\n 8 0\n 10 0\n 20 0\n 0 POINT\n 5 1\n 8 0\n 10 1\n 20 1\n"
                                                   "0 POINT\n 5 AB0\n 8 0\n 10 2\n 20 2"));
    const auto& entities = document.modelSpace().entities;
    ASSERT_EQ(entities.size(), 3u);
    EXPECT_EQ(entities[1], 0x1u);
    EXPECT_EQ(entities[2], 0xAB0u);
    EXPECT_GT(entities[0], 0xAB0u);
    EXPECT_GT(document.handleSeed(), entities[0]);
}

TEST(Reading, HandleSeedOfTheFileIsKeptAboveAllHandles)
{
    const Document document =
        readDxf(fromPairs("0 SECTION\n2 HEADER\n9 $HANDSEED\n5 7000\n0 ENDSEC\n0 SECTION\n2 ENTITIES\n0 POINT\n5 30\n"
                          "8 0\n10 0\n20 0\n0 ENDSEC\n0 EOF"));
    EXPECT_GE(document.handleSeed(), 0x7000u);
}

TEST(Reading, OldPolylineKeepsItsVerticesWithBulgesAndWidths)
{
    const Document document = readDxf(entitiesFile(R"(
        0 POLYLINE
        8 0
        66 1
        10 0
        20 0
        30 2.5
        70 1
        40 0.3
        41 0.4
        0 VERTEX
        8 0
        10 1
        20 2
        42 -0.5
        0 VERTEX
        8 0
        10 3
        20 4
        40 0.7
        41 0.8
        0 SEQEND
        8 0)"));
    const auto& polyline = onlyEntity<HeavyPolyline>(document);
    EXPECT_EQ(polyline.flags, HeavyPolyline::kClosed);
    EXPECT_EQ(polyline.elevation, 2.5);
    EXPECT_EQ(polyline.startWidth, 0.3);
    EXPECT_EQ(polyline.endWidth, 0.4);
    ASSERT_EQ(polyline.vertices.size(), 2u);
    const auto& first = *document.find<Vertex>(polyline.vertices[0]);
    const auto& second = *document.find<Vertex>(polyline.vertices[1]);
    EXPECT_EQ(first.position, (Vector3{1, 2, 0}));
    EXPECT_EQ(first.bulge, -0.5);
    EXPECT_FALSE(first.startWidth) << "a vertex without a width takes the polyline's";
    EXPECT_EQ(second.endWidth, 0.8);
    EXPECT_EQ(second.owner, polyline.handle);
    EXPECT_NE(document.find<SequenceEnd>(polyline.sequenceEnd), nullptr);
}

TEST(Reading, LightPolylineGivesEachPointItsOwnWidthAndBulge)
{
    const Document document = readDxf(entitiesFile(
        "0 LWPOLYLINE\n8 0\n90 3\n70 129\n38 4\n10 1\n20 2\n10 3\n20 4\n40 0.1\n41 0.2\n42 1\n10 5\n20 6\n42 -1"));
    const auto& polyline = onlyEntity<LightPolyline>(document);
    EXPECT_TRUE(polyline.closed);
    EXPECT_TRUE(polyline.generateLinetype);
    EXPECT_EQ(polyline.elevation, 4);
    EXPECT_EQ(polyline.points,
              (std::vector<PolylinePoint>{{{1, 2}, 0, 0, 0}, {{3, 4}, 0.1, 0.2, 1}, {{5, 6}, 0, 0, -1}}));
}

TEST(Reading, BlockReferenceCarriesItsAttributes)
{
    const Document document = readDxf(fromPairs(R"(
        0 SECTION
        2 BLOCKS
        0 BLOCK
        8 0
        2 Door
        70 2
        10 5
        20 6
        30 0
        0 CIRCLE
        8 0
        10 0
        20 0
        40 2
        0 ENDBLK
        0 ENDSEC
        0 SECTION
        2 ENTITIES
        0 INSERT
        8 0
        66 1
        2 DOOR
        10 100
        20 200
        41 -2
        50 45
        70 3
        44 12.5
        0 ATTRIB
        8 0
        10 1
        20 1
        40 2.5
        1 left
        2 SIDE
        70 1
        72 2
        74 3
        11 9
        21 8
        0 SEQEND
        0 ENDSEC
        0 EOF)"));
    const auto& reference = onlyEntity<BlockReference>(document);
    const Block* block = document.findBlock(reference.block);
    ASSERT_NE(block, nullptr) << "block names are found without regard to case";
    EXPECT_EQ(document.find<BlockBracket>(block->begin)->basePoint, (Vector3{5, 6, 0}));
    EXPECT_EQ(block->entities.size(), 1u);
    EXPECT_EQ(reference.scale, (Vector3{-2, 1, 1}));
    EXPECT_EQ(reference.columns, 3);
    EXPECT_EQ(reference.rows, 1);
    EXPECT_EQ(reference.columnSpacing, 12.5);
    ASSERT_EQ(reference.attributes.size(), 1u);
    const auto& attribute = *document.find<Attribute>(reference.attributes[0]);
    EXPECT_EQ(attribute.text, "left");
    EXPECT_EQ(attribute.tag, "SIDE");
    EXPECT_EQ(attribute.flags, Attribute::kInvisible);
    EXPECT_EQ(attribute.horizontal, HorizontalAlignment::Right);
    EXPECT_EQ(attribute.vertical, VerticalAlignment::Top);
    EXPECT_EQ(attribute.alignmentPoint, (Vector3{9, 8, 0}));
}

TEST(Reading, EntitiesOfPaperSpaceAreKeptApart)
{
    const Document document = readDxf(entitiesFile("0 POINT\n8 0\n67 1\n10 1\n20 2\n0 CIRCLE\n8 0\n10 0\n20 0\n40 1"));
    EXPECT_EQ(document.modelSpace().entities.size(), 1u);
    ASSERT_EQ(document.paperSpace().entities.size(), 1u);
    EXPECT_EQ(document.find<Point>(document.paperSpace().entities[0])->position, (Vector3{1, 2, 0}));
}

TEST(Reading, HeaderVariablesKeepTheirValues)
{
    const Document document =
        readDxf(fromPairs("0 SECTION\n2 HEADER\n9 $ACADVER\n1 AC1009\n9 $EXTMAX\n10 12.5\n20 7\n30 -1\n"
                          "9 $CLAYER\n8 WALLS\n9 $TILEMODE\n70      1\n9 $LTSCALE\n40 0.5\n"
                          "9 $OWN\n1 a\n2 b\n0 ENDSEC\n0 EOF"));
    EXPECT_EQ(document.header.point("$EXTMAX"), (Vector3{12.5, 7, -1}));
    EXPECT_EQ(document.header.text("$CLAYER"), "WALLS");
    EXPECT_EQ(document.header.integer("$TILEMODE"), 1);
    EXPECT_EQ(document.header.real("$LTSCALE"), 0.5);
    EXPECT_EQ(document.header.integer("$MISSING", -7), -7);
    EXPECT_EQ(document.header.integer("$CLAYER", -7), -7) << "a name is no number";
    EXPECT_THAT(writeDxf(document), testing::HasSubstr("$OWN\n  1\na\n  2\nb\n"));
}

TEST(Reading, LayerIsOffWhenItsColourIsNegative)
{
    const Document document = readDxf(fromPairs("0 SECTION\n2 TABLES\n0 TABLE\n2 LAYER\n70 3\n"
                                                "0 LAYER\n2 A\n70 0\n62 -3\n6 CONTINUOUS\n"
                                                "0 LAYER\n2 B\n70 5\n62 4\n6 CONTINUOUS\n0 ENDTAB\n0 ENDSEC\n0 EOF"));
    const Layer& a = *document.findLayer("a");
    EXPECT_FALSE(a.on);
    EXPECT_EQ(a.color, 3);
    const Layer& b = *document.findLayer("B");
    EXPECT_TRUE(b.on);
    EXPECT_TRUE(b.frozen());
    EXPECT_TRUE(b.locked());
}

struct EncodingCase
{
    const char* release;
    const char* codePage;
    const char* bytes;
    const char* text; ///< UTF-8
};

class ReadingText : public testing::TestWithParam<EncodingCase>
{};

TEST_P(ReadingText, DecodesTheFilesCodePage)
{
    const EncodingCase& each = GetParam();
    const Document document = readDxf(fromPairs(
        std::string("0 SECTION\n2 HEADER\n9 $ACADVER\n1 ") + each.release + "\n9 $DWGCODEPAGE\n3 " + each.codePage +
        "\n0 ENDSEC\n0 SECTION\n2 ENTITIES\n0 TEXT\n8 0\n10 0\n20 0\n40 1\n1 " + each.bytes + "\n0 ENDSEC\n0 EOF"));
    EXPECT_EQ(onlyEntity<Text>(document).text, each.text);
}

INSTANTIATE_TEST_SUITE_P(All, ReadingText,
                         testing::Values(EncodingCase{"AC1015", "ANSI_1252",
                                                      "Gr\xF6\xDF"
                                                      "e \x80",
                                                      "Größe €"},
                                         EncodingCase{"AC1009", "ANSI_1250", "\xBE\xF3\xB3w", "ľółw"},
                                         EncodingCase{"AC1018", "ANSI_1251", "\xD7\xE5\xF0\xF2\xB8\xE6", "Чертёж"},
                                         EncodingCase{"AC1021", "ANSI_1252", "Größe", "Größe"},
                                         EncodingCase{"AC1032", "ANSI_1251", "Чертёж", "Чертёж"},
                                         EncodingCase{"AC1021", "ANSI_1252", "mislabelled \xE9", "mislabelled é"},
                                         EncodingCase{"AC1015", "ANSI_1252", "\\U+2205 20 \\U+00b0", "∅ 20 °"},
                                         EncodingCase{"AC1015", "ANSI_1252", "\\U+D83D\\U+DE00", "😀"},
                                         EncodingCase{"AC1015", "ANSI_1252", "\\U+12 \\U+D83D \\U+000A",
                                                      "\\U+12 \\U+D83D \\U+000A"},
                                         EncodingCase{"AC1015", "ANSI_932", "plain \\U+00e9", "plain é"}));

TEST(Reading, TakesCarriageReturnsByteOrderMarkAndComments)
{
    const Document document = readDxf("\xEF\xBB\xBF"
                                      "999\r\na remark\r\n  0\r\nSECTION\r\n  2\r\nENTITIES\r\n  0\r\nTEXT\r\n"
                                      "999\r\nanother\r\n  8\r\n0\r\n 10\r\n0\r\n 20\r\n0\r\n 40\r\n1\r\n  1\r\n é \r\n"
                                      "  0\r\nENDSEC\r\n  0\r\nEOF");
    EXPECT_EQ(onlyEntity<Text>(document).text, " é ") << "blanks around a text belong to it";
}

} // namespace drawing::test
