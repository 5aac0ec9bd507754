// From DXF to the host's binary form and back.

#include <cstdlib>
#include <gmock/gmock.h>

#include "made_drawing.h"
#include "tests/support/files.h"
#include "tests/support/python.h"

namespace drawing::test {

// A drawing without what a save may change: the next handle.
std::string dxfOf(Document document)
{
    document.raiseHandleSeed(0x100000);
    return writeDxf(document);
}

TEST(RoundTrip, SecondOneChangesNothing)
{
    const Document once = readDrawingBytes(dwgOf(makeDrawing()));
    const Document twice = readDrawingBytes(dwgOf(once));
    EXPECT_EQ(dxfOf(twice), dxfOf(once));
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
TEST_P(OtherMakersDrawing, LosesNothingThatBothFormsKnow)
{
    const Document document = readDrawing(*s_folder / (std::string(GetParam()) + ".dxf"));
    writeDrawing(document, *s_folder / "before.dxf");
    Notes notes;
    writeDrawing(document, *s_folder / "between.dwg", DrawingForm::Dwg, &notes);
    EXPECT_THAT(notes, testing::IsEmpty());
    writeDrawing(readDrawing(*s_folder / "between.dwg", &notes), *s_folder / "after.dxf");
    EXPECT_THAT(notes, testing::IsEmpty());
    std::string output;
    EXPECT_TRUE(runPython("tests/unit/drawing/compare_drawings.py",
                          (*s_folder / "before.dxf").string() + " " + (*s_folder / "after.dxf").string(), output))
        << output;
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
        EXPECT_EQ(dxfOf(readDrawing(own / "back.dwg")), dxfOf(readDrawing(entry.path()))) << entry.path();
        ++compared;
    }
    EXPECT_GT(compared, 0);
}

} // namespace drawing::test
