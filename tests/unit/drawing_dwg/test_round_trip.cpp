// From DXF to the host's binary form and back.

#include <cstdlib>
#include <gmock/gmock.h>

#include "drawing/binary_part.h"
#include "opened_file.h"
#include "tests/support/files.h"
#include "tests/support/independent_readers.h"
#include "tests/support/python.h"

namespace drawing::test {

// A drawing without what a save may change: the next handle.
std::string dxfOf(Document& document)
{
    document.raiseHandleSeed(0x100000);
    return writeDxf(document);
}

TEST(RoundTrip, SecondOneChangesNothing)
{
    Document once = readDrawingBytes(dwgOf(makeDrawing()));
    Document twice = readDrawingBytes(dwgOf(once));
    EXPECT_EQ(dxfOf(twice), dxfOf(once));
}

TEST(RoundTrip, PlotStyleOfNewObjectsIsKeptByItsHandle)
{
    Document document;
    document.header.setInteger("$CEPSNTYPE", 3, 380);
    document.header.setText("$CEPSNID", "F", 390);
    const Document read = readDrawingBytes(dwgOf(document));
    EXPECT_EQ(read.header.integer("$CEPSNTYPE"), 3);
    EXPECT_EQ(read.header.text("$CEPSNID"), "F");
}

class OtherMakersDrawing : public testing::TestWithParam<const char*>
{
protected:
    static void SetUpTestSuite()
    {
        s_folder = std::make_unique<TemporaryFolder>();
        std::string output;
        ASSERT_TRUE(runPython("tests/unit/drawing/make_samples.py", "\"" + s_folder->path().string() + "\"", output))
            << output;
    }
    static void TearDownTestSuite() { s_folder.reset(); }
    static std::unique_ptr<TemporaryFolder> s_folder;
};

std::unique_ptr<TemporaryFolder> OtherMakersDrawing::s_folder;

INSTANTIATE_TEST_SUITE_P(All, OtherMakersDrawing, testing::Values("R12", "R2000", "R2004", "R2007", "R2010"));

// Another maker's library compares the drawing that we save as DXF with the one that has gone through the binary form.
// What was left out on the way is given back.
Notes expectNothingLost(const std::filesystem::path& drawing)
{
    const TemporaryFolder folder;
    Notes leftOut;
    const Document document = readDrawing(drawing);
    writeDrawing(document, folder / "before.dxf");
    writeDrawing(document, folder / "between.dwg", DrawingForm::Dwg, &leftOut);
    Notes notes;
    const Document back = readDrawing(folder / "between.dwg", &notes);
    EXPECT_THAT(notes, testing::IsEmpty()) << drawing;
    writeDrawing(back, folder / "after.dxf", DrawingForm::DxfText, &notes);
    EXPECT_THAT(notes, testing::IsEmpty()) << drawing;
    std::string output;
    EXPECT_TRUE(runPython("tests/unit/drawing_dwg/compare_objects.py",
                          (folder / "before.dxf").string() + " " + (folder / "after.dxf").string(), output))
        << drawing << "\n"
        << output;
    return leftOut;
}

TEST_P(OtherMakersDrawing, LosesNothingThatBothFormsKnow)
{
    expectNothingLost(*s_folder / (std::string(GetParam()) + ".dxf"));
}

TEST(RoundTrip, LosesNothingOfTheExamples)
{
    int seen = 0;
    for (const char* folder : {"examples", "tests/session", "tests/random_user"}) {
        const std::filesystem::recursive_directory_iterator inside(std::filesystem::path(HALVORAN_SOURCE_DIR) / folder);
        for (const auto& entry : inside) {
            if (entry.path().extension() == ".dxf") {
                expectNothingLost(entry.path());
                ++seen;
            }
        }
    }
    EXPECT_GT(seen, 0);
}

TEST(RoundTrip, LosesNothingOfEveryKindAndSaysWhatHasNoPlace)
{
    const TemporaryFolder folder;
    std::string output;
    const std::filesystem::path file = folder / "kinds.dxf";
    ASSERT_TRUE(runPython("tests/unit/drawing_dwg/make_every_kind.py", file.string(), output)) << output;
    const Notes leftOut = expectNothingLost(file);
    EXPECT_THAT(leftOut,
                testing::ElementsAre(
                    "Left out, as the binary form has no place for them: 1 ARC_DIMENSION, 1 HELIX, 3 MATERIAL, "
                    "1 MLEADERSTYLE, 1 MPOLYGON, 1 SHAPE."));
}

TEST(RoundTrip, ReferenceToAMissingBlockKeepsItsNameAndItsAttributes)
{
    Document document;
    for (const char* text : {"12", "13"}) {
        auto& reference = add<BlockReference>(document, document.modelSpace());
        reference.block = "of no file";
        document.addAttribute(reference, std::make_unique<Attribute>()).text = text;
    }
    Notes notes;
    const Document read = readDrawingBytes(writeDrawingBytes(document, DrawingForm::Dwg, &notes));
    EXPECT_THAT(notes, testing::ElementsAre("A block that is shown is missing; it was written empty."));
    const auto* reference = read.find<BlockReference>(read.modelSpace().entities.back());
    ASSERT_NE(reference, nullptr);
    EXPECT_EQ(reference->block, "of no file");
    EXPECT_EQ(read.find<Attribute>(reference->attributes.at(0))->text, "13");
    EXPECT_TRUE(read.findBlock("of no file")->entities.empty());
}

// Kinds that every file knows by a number, a proxy, and kinds of classes that the file tells of.
TEST(RoundTrip, UnknownKindsComeBackBitForBitAndAreNamedWhereDxfHasNoPlaceForThem)
{
    Document document;
    for (int i = 0; i < 4; ++i) {
        add<Line>(document, document.modelSpace());
    }
    const std::vector<Handle> entities = document.modelSpace().entities;
    const Handle layer = document.findLayer("0")->handle;
    document.classes = {{{1, "MULTILEADER"}, {2, "AcDbMLeader"}, {3, "ACDB_MLEADER_CLASS"}, {281, "1"}},
                        {{1, "MATERIAL"}, {2, "AcDbMaterial"}, {3, "ObjectDBX Classes"}, {281, "0"}}};
    const int types[] = {0x21, 0x4A, 498, 500}; // a shape, a frame of another program, a proxy, the first class
    const std::string bytes = "\xA5\x5A of one's own";
    const auto fields = [&](BitWriter& bits) {
        bits.raw(bytes);
        bits.bits(5, 3);
    };
    OpenedFile file(document);
    for (std::size_t i = 0; i < entities.size(); ++i) {
        const Handle before = i == 0 ? 0 : entities[i - 1];
        const Handle behind = i + 1 == entities.size() ? 0 : entities[i + 1];
        file.objects[entities[i]] = entityBits(types[i], entities[i], layer, before, behind, fields, {0x1234, layer});
    }
    file.objects[0xF00] = plainBits(501, 0xF00, fields, 1);
    file.objects[0xF01] = plainBits(0x51, 0xF01, fields, 1);
    const Document once = readDrawingBytes(file.closed());
    const Document twice = readDrawingBytes(dwgOf(once));
    const auto check = [&](const Document& read, Handle handle, const std::string& name,
                           const std::vector<BinaryPart::Reference>& references) {
        const Object* object = read.find(handle);
        ASSERT_TRUE(object != nullptr && isOnlyBinary(*object)) << name;
        EXPECT_EQ(object->name(), name);
        EXPECT_EQ(object->binary->bitCount, 8 * bytes.size() + 3);
        EXPECT_EQ(object->binary->bits, bytes + '\xA0');
        EXPECT_EQ(object->binary->references, references) << name;
    };
    for (const Document* read : {&once, &twice}) {
        EXPECT_EQ(read->modelSpace().entities, entities);
        const char* const names[] = {"SHAPE", "OLE2FRAME", "ACAD_PROXY_ENTITY", "MULTILEADER"};
        for (std::size_t i = 0; i < entities.size(); ++i) {
            check(*read, entities[i], names[i], {{4, 0x1234}, {4, layer}});
        }
        check(*read, 0xF00, "MATERIAL", {{4, 0}});
        check(*read, 0xF01, "VBA_PROJECT", {{4, 0}});
    }
    Notes notes;
    writeDrawingBytes(twice, DrawingForm::DxfText, &notes);
    EXPECT_THAT(notes, testing::ElementsAre("Left out, as a DXF file has no place for them: 1 ACAD_PROXY_ENTITY, 1 "
                                            "MATERIAL, 1 MULTILEADER, 1 OLE2FRAME, 1 SHAPE, 1 VBA_PROJECT."));
}

// Three independent programs find no fault in what we write, and the same image and the same numbers of entities in it.
TEST(IndependentReaders, ReadWhatWeWrite)
{
    const TemporaryFolder folder;
    writeDrawing(Document(), folder / "empty.dwg", DrawingForm::Dwg);
    writeDrawing(makeDrawing(), folder / "one-of-each.dwg", DrawingForm::Dwg);
    std::string output;
    ASSERT_TRUE(runPython("tests/unit/drawing_dwg/make_every_kind.py", (folder / "kinds.dxf").string(), output))
        << output;
    writeDrawing(readDrawing(folder / "kinds.dxf"), folder / "kinds.dwg", DrawingForm::Dwg);
    Document large;
    for (int i = 0; i < 20'000; ++i) {
        add<Line>(large, large.modelSpace()).end = {i + 0.1, i / 7.0, 0};
    }
    writeDrawing(large, folder / "large.dwg", DrawingForm::Dwg);
    const ReadersAnswer answer = readWithIndependentReaders(
        {folder / "empty.dwg", folder / "one-of-each.dwg", folder / "kinds.dwg", folder / "large.dwg"});
    if (answer.leftOut) {
        GTEST_SKIP() << answer.said;
    }
    EXPECT_TRUE(answer.faultless) << answer.said;
    for (const char* part :
         {R"("path":"C:\\Scans\\sheet.tif")", R"("size":{"x":2000,"y":1400})", R"("u":{"x":0.0635,"y":0,"z":0})",
          R"("MLINE":2,"3DSOLID":1,"REGION":1,"BODY":1,"MESH":1,"PDFUNDERLAY":1)", R"({"LINE":20000})",
          R"("libdxfrw":{"faults":[],"entities":20000})"}) {
        EXPECT_THAT(answer.said, testing::HasSubstr(part));
    }
}

// What nobody here understands is the same in both.
void expectSameBits(const Document& a, const Document& b, Handle handle)
{
    const Object* one = a.find(handle);
    const Object* other = b.find(handle);
    ASSERT_NE(other, nullptr) << one->name();
    ASSERT_EQ(one->binary == nullptr, other->binary == nullptr) << one->name();
    EXPECT_TRUE(!one->binary || *one->binary == *other->binary) << one->name();
}

// HALVORAN_HOST_DRAWINGS names a folder with drawings that the host itself wrote, each as .dwg and as .dxf.
TEST(HostDrawings, AreReadObjectForObjectAndComeBack)
{
    const char* folder = std::getenv("HALVORAN_HOST_DRAWINGS");
    if (folder == nullptr) {
        GTEST_SKIP() << "HALVORAN_HOST_DRAWINGS names no folder";
    }
    int compared = 0;
    const TemporaryFolder own;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        if (entry.path().extension() != ".dwg") {
            continue;
        }
        std::string output;
        const Document read = readDrawing(entry.path());
        writeDrawing(read, own / "read.dxf");
        auto twin = entry.path();
        twin.replace_extension(".dxf");
        EXPECT_TRUE(runPython("tests/unit/drawing_dwg/compare_objects.py",
                              twin.string() + " " + (own / "read.dxf").string(), output))
            << entry.path() << "\n"
            << output;
        writeDrawing(read, own / "back.dwg", DrawingForm::Dwg);
        const Document back = readDrawing(own / "back.dwg");
        for (const Handle handle : read.objects()) {
            expectSameBits(read, back, handle);
        }
        for (const Handle block : read.table("BLOCK_RECORD").records) {
            for (const Handle handle : read.find<Block>(block)->entities) {
                expectSameBits(read, back, handle);
            }
        }
        writeDrawing(back, own / "back.dxf");
        EXPECT_TRUE(runPython("tests/unit/drawing_dwg/compare_objects.py",
                              (own / "read.dxf").string() + " " + (own / "back.dxf").string(), output))
            << entry.path() << "\n"
            << output;
        expectNothingLost(twin);
        ++compared;
    }
    EXPECT_GT(compared, 0);
}

} // namespace drawing::test
