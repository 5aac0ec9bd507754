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

TEST(Reading, HeaderVariablesKeepTheirValues)
{
    const Document document =
        readDxf(fromPairs("0 SECTION\n2 HEADER\n9 $ACADVER\n1 AC1009\n9 $EXTMAX\n10 12.5\n20 7\n30 -1\n"
                          "9 $CLAYER\n8 WALLS\n9 $TILEMODE\n70      1\n9 $LTSCALE\n40 0.5\n"
                          "9 $OWN\n1 a\n2 b\n9 $HANDSEED\n5 7000\n0 ENDSEC\n0 EOF"));
    EXPECT_EQ(document.header.point("$EXTMAX"), (Vector3{12.5, 7, -1}));
    EXPECT_EQ(document.header.text("$CLAYER"), "WALLS");
    EXPECT_EQ(document.header.integer("$TILEMODE"), 1);
    EXPECT_EQ(document.header.real("$LTSCALE"), 0.5);
    EXPECT_EQ(document.header.integer("$MISSING", -7), -7);
    EXPECT_EQ(document.header.integer("$CLAYER", -7), -7) << "a name is no number";
    EXPECT_GE(document.handleSeed(), 0x7000u);
    EXPECT_THAT(writeDxf(document), testing::HasSubstr("$OWN\n  1\na\n  2\nb\n"));
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
        {"AC1009", "ANSI_1250", "\xBE\xF3\xB3w", "ľółw"},
        {"AC1018", "ANSI_1251", "\xD7\xE5\xF0\xF2\xB8\xE6", "Чертёж"},
        {"AC1021", "ANSI_1252", "Größe", "Größe"},
        {"AC1032", "ANSI_1251", "Чертёж", "Чертёж"},
        {"AC1021", "ANSI_1252", "mislabelled \xE9", "mislabelled é"},
        {"AC1015", "ANSI_1252", "\\U+2205 20 \\U+00b0", "∅ 20 °"},
        {"AC1015", "ANSI_1252", "\\U+D83D\\U+DE00", "😀"},
        {"AC1015", "ANSI_1252", "\\U+12 \\U+D83D \\U+000A", "\\U+12 \\U+D83D \\U+000A"},
        {"AC1015", "ANSI_932", "plain \\U+00e9", "plain é"},
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
