// Files that are damaged, cut off or malicious: an error in words, never a crash.

#include <gmock/gmock.h>

#include "drawing/flatten.h"
#include "support.h"

namespace drawing::test {

using testing::HasSubstr;

const char* const cyclicBlocks = "0 SECTION\n2 BLOCKS\n"
                                 "0 BLOCK\n8 0\n2 A\n10 0\n20 0\n0 INSERT\n8 0\n2 B\n10 0\n20 0\n0 ENDBLK\n"
                                 "0 BLOCK\n8 0\n2 B\n10 0\n20 0\n0 INSERT\n8 0\n2 a\n10 0\n20 0\n0 ENDBLK\n"
                                 "0 ENDSEC\n0 EOF";

std::string binary(const char* groups, std::size_t size)
{
    return std::string("AutoCAD Binary DXF\r\n\x1a\0", 22) + std::string(groups, size);
}

TEST(BrokenFile, IsRefusedWithLineAndReason)
{
    const struct
    {
        const char* name;
        std::string bytes;
        std::size_t line; // 0: the whole file is to blame
        const char* reason;
    } files[] = {
        {"empty", "", 0, "ends too early"},
        {"no drawing at all", "%PDF-1.4\nsomething\n", 1, "is no group code"},
        {"odd number of lines", "0\nSECTION\n2\nENTITIES\n0\nENDSEC\n0\n", 7, "in the middle of a group"},
        {"end before the objects",
         fromPairs("0 SECTION\n2 HEADER\n9 $ACADVER\n1 AC1015\n0 ENDSEC\n0 SECTION\n2 ENTITIES\n0 ENDSEC"), 16,
         "ends too early"},
        {"code out of range", "0\nSECTION\n2\nENTITIES\n5000\nx\n", 5, "is no group code"},
        {"word for a number", entitiesFile("0 CIRCLE\n8 0\n40 wide"), 10, "\"wide\" is no usable number"},
        {"not a number", entitiesFile("0 CIRCLE\n8 0\n40 nan"), 10, "is no usable number"},
        {"infinite", entitiesFile("0 CIRCLE\n8 0\n40 1e999"), 10, "is no usable number"},
        {"huge whole number", entitiesFile("0 CIRCLE\n8 0\n62 99999999999"), 10, "is no usable whole number"},
        {"handle that is none", entitiesFile("0 CIRCLE\n8 0\n5 XYZ"), 10, "is no handle"},
        {"handle of more than 64 bits", entitiesFile("0 CIRCLE\n8 0\n5 10000000000000000"), 10, "is no handle"},
        {"vertex on its own", entitiesFile("0 VERTEX\n8 0"), 6, "VERTEX is out of place"},
        {"open application group", entitiesFile("0 LINE\n102 {HV\n330 1\n8 0"), 8, "not closed"},
        {"section without a name", fromPairs("0 SECTION\n0 ENDSEC\n0 EOF"), 4, "no name"},
        {"section that does not end", fromPairs("0 SECTION\n2 OBJECTS\n0 EOF"), 6, "does not end"},
        {"something else than a section", fromPairs("0 LINE\n8 0\n0 EOF"), 2, "a section"},
        {"foreign record in a table",
         fromPairs("0 SECTION\n2 TABLES\n0 TABLE\n2 LAYER\n0 LTYPE\n2 X\n0 ENDTAB\n0 ENDSEC\n0 EOF"), 10,
         "the table LAYER holds a record LTYPE"},
        {"block defined twice",
         fromPairs("0 SECTION\n2 BLOCKS\n0 BLOCK\n2 A\n0 ENDBLK\n0 BLOCK\n2 a\n0 ENDBLK\n0 ENDSEC\n0 EOF"), 12,
         "is there twice"},
        {"block without end", fromPairs("0 SECTION\n2 BLOCKS\n0 BLOCK\n2 A\n0 ENDSEC\n0 EOF"), 10, "out of place"},
        {"blocks that hold each other", fromPairs(cyclicBlocks), 38, "a block holds itself"},
        {"release too old", fromPairs("0 SECTION\n2 HEADER\n9 $ACADVER\n1 AC1006\n0 ENDSEC\n0 EOF"), 0, "AC1006"},
        {"release not yet known", fromPairs("0 SECTION\n2 HEADER\n9 $ACADVER\n1 AC1099\n0 ENDSEC\n0 EOF"), 0, "AC1099"},
        {"binary form, nothing in it", binary("", 0), 0, "ends too early"},
        {"binary form, cut in a code", binary("\0", 1), 0, "middle of a group"},
        {"binary form, cut in a number", binary("\0\0SECTION\0\x0A\0\0\0\0", 15), 0, "middle of a group"},
        {"binary form, endless text", binary("\0\0SECTION", 9), 0, "the text of group 0 does not end"},
        {"binary form, chunk longer than the file",
         binary("\0\0A\0\x36\x01\xFF"
                "abc",
                10),
         0, "middle of a group"},
        {"binary form, code without meaning", binary("\0\0A\0\xF4\x01", 6), 0, "group 500 is none"},
        {"binary form, not a number", binary("\0\0A\0\x28\0\0\0\0\0\0\0\xF8\x7F", 14), 0, "no finite number"},
        {"the host's own form", std::string("AC1015\0\0\0\0\0\0\1", 13), 0, "own binary form"},
        {"endless line", "0\nSECTION\n2\n" + std::string(2u << 20, 'x') + "\n", 4, "longer than any"}};
    for (const auto& file : files) {
        SCOPED_TRACE(file.name);
        try {
            readDxf(file.bytes);
            ADD_FAILURE() << "the file was read as if it were sound";
        } catch (const DrawingError& error) {
            EXPECT_THAT(error.what(), HasSubstr(file.reason));
            EXPECT_EQ(error.line(), file.line) << error.what();
        }
    }
}

TEST(MendedFile, IsReadWholeAndSaysWhatWasMended)
{
    using Names = std::vector<std::string>;
    const std::string header = "0 SECTION\n2 HEADER\n9 $ACADVER\n1 AC1015\n";
    const std::string entities = "0 SECTION\n2 ENTITIES\n";
    const struct
    {
        const char* name;
        std::string pairs;
        Names entities; // of the model space
        std::string note;
    } files[] = {
        {"no end mark", entities + "0 LINE\n8 0\n0 ENDSEC", {"LINE"}, "The mark at the end of the file is missing."},
        {"no end mark of sequences",
         entities + "0 POLYLINE\n8 0\n0 VERTEX\n8 0\n0 INSERT\n2 A\n66 1\n0 ATTRIB\n8 0\n0 LINE\n0 ENDSEC\n0 EOF",
         {"POLYLINE", "INSERT", "LINE"},
         "2 polylines or block references had no end mark; it was added."},
        {"attributes announced but missing",
         entities + "0 INSERT\n66 1\n2 A\n0 LINE\n8 0\n0 ENDSEC\n0 EOF",
         {"INSERT", "LINE"},
         "A block reference announced attributes that are missing."},
        {"handle used more than once",
         entities + "0 POINT\n5 2F\n0 LINE\n5 2F\n0 LINE\n5 2F\n0 ENDSEC\n0 EOF",
         {"POINT", "LINE", "LINE"},
         "2 objects had the handle of another one; they were given new handles."},
        {"handle with none above it",
         entities + "0 POINT\n5 FFFFFFFFFFFFFFFF\n0 ENDSEC\n0 EOF",
         {"POINT"},
         "An object had a handle beyond all bounds; it was given a new handle."},
        {"seed with no handle above it",
         header + "9 $HANDSEED\n5 FFFFFFFFFFFFFFFF\n0 ENDSEC\n0 EOF",
         {},
         "The number for the next handle was of no use; it was counted anew."},
        {"owner that is no layout",
         header +
             "0 ENDSEC\n0 SECTION\n2 TABLES\n0 TABLE\n2 BLOCK_RECORD\n0 BLOCK_RECORD\n5 1F\n2 *U\n0 ENDTAB\n0 "
             "ENDSEC\n" +
             entities + "0 LINE\n330 1F\n0 ARC\n330 1F\n67 1\n0 ENDSEC\n0 EOF",
         {"LINE"},
         "2 entities named a block that is no layout as their owner; they were put into the space that they lie in."},
        {"code page that nobody knows",
         header + "9 $DWGCODEPAGE\n3 UNDEFINED\n0 ENDSEC\n" + entities + "0 TEXT\n1 77\xB0\n7 A\n0 ENDSEC\n0 EOF",
         {"TEXT"},
         "A text was read as Western European, because the drawing's code page is unknown."},
    };
    for (const auto& file : files) {
        SCOPED_TRACE(file.name);
        Notes notes;
        const Document document = readDxf(fromPairs(file.pairs), &notes);
        Names found;
        for (const Handle entity : document.modelSpace().entities) {
            found.emplace_back(document.find(entity)->name());
        }
        EXPECT_EQ(found, file.entities);
        EXPECT_EQ(notes, Notes{file.note});
        const std::string saved = writeDxf(document);
        EXPECT_TRUE(writeDxf(readDxf(saved, &notes)) == saved);
        EXPECT_EQ(notes, Notes{}) << "what was saved needs no mending";
    }
}

// A small drawing that has something of everything.
std::string smallDrawing()
{
    Document document;
    auto polyline = std::make_unique<HeavyPolyline>();
    auto& added = document.addEntity(document.modelSpace(), std::move(polyline));
    document.addVertex(added, std::make_unique<Vertex>());
    document.addBlock("DOOR");
    auto reference = std::make_unique<BlockReference>();
    reference->block = "DOOR";
    auto& inserted = document.addEntity(document.modelSpace(), std::move(reference));
    document.addAttribute(inserted, std::make_unique<Attribute>());
    auto& definition = document.addImageDefinition("scan", std::make_unique<ImageDefinition>());
    document.attachDefinition(document.addEntity(document.paperSpace(), std::make_unique<Image>()), definition);
    document.obtainRasterVariables();
    document.rawSections.push_back({"EXTRA", {{1, "x"}}});
    return writeDxf(document);
}

TEST(CutOffFile, IsRefusedUnlessAllOfTheDrawingIsThere)
{
    const std::string whole = smallDrawing();
    const Document expected = readDxf(whole);
    const std::string extra = "  0\nSECTION\n  2\nEXTRA";
    // After every line, and so also in the middle of every group; and in the middle of the lines of the last section.
    for (std::size_t end = 0; end < whole.size(); ++end) {
        if (whole[end] != '\n' && end < whole.size() - 400) {
            continue;
        }
        Notes notes;
        try {
            const Document document = readDxf(std::string_view(whole).substr(0, end), &notes);
            EXPECT_EQ(document.objects(), expected.objects()) << "cut at byte " << end;
            EXPECT_EQ(document.modelSpace().entities, expected.modelSpace().entities);
            EXPECT_GE(end, whole.find(extra) - 1) << "only what is no part of the drawing may be missing";
            EXPECT_EQ(notes.empty(), end >= whole.size() - 1);
        } catch (const DrawingError& error) {
            EXPECT_LT(end, whole.size() - 1) << error.what();
        }
    }
}

TEST(DamagedFile, EveryChangedByteIsEitherReadOrRefused)
{
    const std::string whole = smallDrawing();
    unsigned random = 12345;
    for (int round = 0; round < 1500; ++round) {
        std::string damaged = whole;
        for (int change = 0; change < 3; ++change) {
            random = random * 1664525u + 1013904223u;
            damaged[(random >> 8) % damaged.size()] = "\n0\xFF-9A{ "[random >> 29];
        }
        try {
            const Document document = readDxf(damaged);
            extentsOf(document, document.modelSpace());
            writeDxf(document);
        } catch (const DrawingError&) {
        }
    }
}

TEST(NestedBlocks, AHundredThousandDeepAreReadAndDrawnToTheLimit)
{
    std::string pairs = "0 SECTION\n2 BLOCKS\n";
    for (int i = 0; i < 100'000; ++i) {
        pairs += "0 BLOCK\n2 B" + std::to_string(i) + "\n0 INSERT\n2 B" + std::to_string(i + 1) + "\n0 ENDBLK\n";
    }
    pairs += "0 ENDSEC\n0 SECTION\n2 ENTITIES\n0 INSERT\n2 B0\n0 ENDSEC\n0 EOF";
    const Document document = readDxf(fromPairs(pairs));
    EXPECT_FALSE(flattenBlock(document, document.modelSpace(), {}, [](FlatItem&&) {}));
}

} // namespace drawing::test
