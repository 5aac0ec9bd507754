// Reading of hand-written files.

#include <gmock/gmock.h>

#include "support.h"

namespace drawing::test {

TEST(Reading, ReadsALineOfTheOldestReleaseWithoutHandlesOrMarkers)
{
    const Document document =
        readDxf(entitiesFile("0 LINE\n8 WALLS\n62 5\n39 0.25\n10 1.5\n20 -2\n30 3\n11 1e3\n21 +7.\n31 .5"));
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

TEST(Reading, OldPolylineKeepsItsVerticesWithBulgesAndWidths)
{
    const Document document = readDxf(entitiesFile("0 POLYLINE\n8 0\n66 1\n10 0\n20 0\n30 2.5\n70 1\n40 0.3\n41 0.4\n"
                                                   "0 VERTEX\n8 0\n10 1\n20 2\n42 -0.5\n"
                                                   "0 VERTEX\n8 0\n10 3\n20 4\n40 0.7\n41 0.8\n0 SEQEND\n8 0"));
    const auto& polyline = onlyEntity<HeavyPolyline>(document);
    EXPECT_EQ(polyline.flags, HeavyPolyline::closedFlag);
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

TEST(Reading, PropertiesOfAllEntitiesAreFoundWhereverTheyStand)
{
    const struct
    {
        const char* where;
        const char* pairs;
    } cases[] = {
        {"in their place", "100 AcDbEntity\n8 WALLS\n62 1\n370 50\n100 AcDbLine\n10 1\n20 2"},
        {"behind the second marker", "100 AcDbEntity\n100 AcDbLine\n8 WALLS\n62 1\n370 50\n10 1\n20 2"},
        {"among the entity's own", "100 AcDbEntity\n62 1\n100 AcDbLine\n62 9\n10 1\n20 2\n370 50\n8 WALLS"},
        {"before the first marker", "8 WALLS\n62 1\n100 AcDbEntity\n370 50\n100 AcDbLine\n10 1\n20 2"},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(each.where);
        const Document document = readDxf(entitiesFile(std::string("0 LINE\n5 30\n") + each.pairs));
        const Line& line = onlyEntity<Line>(document);
        EXPECT_EQ(line.layer, "WALLS");
        EXPECT_EQ(line.color, 1);
        EXPECT_EQ(line.lineweight, 50);
        EXPECT_EQ(line.start, (Vector3{1, 2, 0}));
    }
    // What an unknown kind has further on under its own marker is its own.
    const Document document =
        readDxf(entitiesFile("0 ODD\n5 30\n100 AcDbEntity\n100 AcDbOdd\n8 WALLS\n70 0\n62 1\n6 X"));
    const auto& odd = onlyEntity<RawEntity>(document);
    EXPECT_EQ(odd.layer, "WALLS");
    EXPECT_EQ(odd.color, colorByLayer);
    EXPECT_EQ(odd.kept, (std::vector<KeptGroups>{{"AcDbOdd", {{70, "0"}, {62, "1"}, {6, "X"}}}}));
}

TEST(Reading, HandlesMayHave64Bits)
{
    Document document = readDxf(entitiesFile("0 LINE\n5 D9B071D01A0ACD1B\n8 0\n0 LINE\n8 0"));
    EXPECT_EQ(document.modelSpace().entities,
              (std::vector<Handle>{0xD9B071D01A0ACD1B, document.modelSpace().entities[1]}));
    EXPECT_GT(document.modelSpace().entities[1], 0xD9B071D01A0ACD1B) << "new ones lie above";
    EXPECT_GT(document.handleSeed(), document.modelSpace().entities[1]);
}

TEST(Reading, ImageWithoutABoundaryIsShownWhole)
{
    const Document document = readDxf(entitiesFile("0 IMAGE\n8 0\n13 88\n23 80\n70 7\n280 1"));
    const auto& image = onlyEntity<Image>(document);
    EXPECT_FALSE(image.clipped);
    EXPECT_EQ(image.clip, (std::vector<Vector2>{{-0.5, -0.5}, {87.5, 79.5}}));
}

TEST(Reading, HeaderVariablesKeepTheirValues)
{
    const Document document = readDxf(
        fromPairs("0 SECTION\n2 HEADER\n9 $ACADVER\n1 AC1009\n9 $EXTMAX\n10 12.5\n20 7\n30 -1\n"
                  "9 $CLAYER\n8 WALLS\n9 $TILEMODE\n70      1\n9 $LTSCALE\n40 0.5\n"
                  "9 $OWN\n1 a\n2 b\n9 $CUSTOMPROPERTYTAG\n1 Client\n9 $CUSTOMPROPERTY\n1 A\n"
                  "9 $CUSTOMPROPERTYTAG\n1 Scale\n9 $CUSTOMPROPERTY\n1 B\n9 $HANDSEED\n5 7000\n0 ENDSEC\n0 EOF"));
    EXPECT_EQ(document.header.point("$EXTMAX"), (Vector3{12.5, 7, -1}));
    EXPECT_EQ(document.header.text("$CLAYER"), "WALLS");
    EXPECT_EQ(document.header.integer("$TILEMODE"), 1);
    EXPECT_EQ(document.header.real("$LTSCALE"), 0.5);
    EXPECT_EQ(document.header.integer("$MISSING", -7), -7);
    EXPECT_EQ(document.header.integer("$CLAYER", -7), -7) << "a name is no number";
    EXPECT_GE(document.handleSeed(), 0x7000u);
    EXPECT_THAT(
        writeDxf(document),
        testing::HasSubstr("$OWN\n  1\na\n  2\nb\n  9\n$CUSTOMPROPERTYTAG\n  1\nClient\n  9\n$CUSTOMPROPERTY\n  "
                           "1\nA\n  9\n$CUSTOMPROPERTYTAG\n  1\nScale\n  9\n$CUSTOMPROPERTY\n  1\nB\n"));
}

TEST(Reading, TextIsDecodedFromTheFilesCodePage)
{
    const struct
    {
        const char* release;
        const char* codePage;
        const char* bytes;
        const char* text; // UTF-8
    } cases[] = {
        {"AC1015", "ANSI_1252", "Gr\xF6\xDF\x65 \x80", "Größe €"},
        {"AC1009", "dos850", "Gr\x94\xE1\x65", "Größe"},
        {"AC1018", "ANSI_932", "\x83\x5c\x83\x7d \\U+00e9", "ソマ é"},
        {"AC1032", "ANSI_1251", "Чертёж", "Чертёж"},
        {"AC1021", "ANSI_1252", "mislabelled \xE9", "mislabelled é"},
        {"AC1015", "ANSI_1252", "\\U+2205 20 \\U+00b0", "∅ 20 °"},
        {"AC1015", "ANSI_1252", "\\U+12 \\U+D83D \\U+000A", "\\U+12 \\U+D83D \\U+000A"},
    };
    for (const auto& each : cases) {
        const std::string header = std::string("0 SECTION\n2 HEADER\n9 $ACADVER\n1 ") + each.release +
                                   "\n9 $DWGCODEPAGE\n3 " + each.codePage + "\n0 ENDSEC\n";
        const std::string entity = std::string("0 TEXT\n8 0\n10 0\n20 0\n40 1\n1 ") + each.bytes;
        EXPECT_EQ(onlyEntity<Text>(readDxf(fromPairs(header) + entitiesFile(entity))).text, each.text);
    }
}

TEST(Reading, TakesCarriageReturnsByteOrderMarkAndComments)
{
    const Document document = readDxf("\xEF\xBB\xBF"
                                      "999\r\na remark\r\n  0\r\nSECTION\r\n  2\r\nENTITIES\r\n  0\r\nTEXT\r\n"
                                      "999\r\nanother\r\n  8\r\n0\r\n 10\r\n0\r\n 20\r\n0\r\n 40\r\n1\r\n  1\r\n é \r\n"
                                      "  0\r\nENDSEC\r\n  0\r\nEOF");
    EXPECT_EQ(onlyEntity<Text>(document).text, " é ") << "blanks around a text belong to it";
}

} // namespace drawing::test
