// From DXF to the host's binary form and back.

#include <cstdlib>
#include <gmock/gmock.h>

#include "made_drawing.h"
#include "tests/support/files.h"
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
    writeDrawing(document, *s_folder / "between.dwg", DrawingForm::Dwg);
    Notes notes;
    writeDrawing(readDrawing(*s_folder / "between.dwg", &notes), *s_folder / "after.dxf");
    EXPECT_THAT(notes, testing::IsEmpty());
    std::string output;
    EXPECT_TRUE(runPython("tests/unit/drawing_dwg/compare_objects.py",
                          (*s_folder / "before.dxf").string() + " " + (*s_folder / "after.dxf").string(), output))
        << output;
}

// Three independent programs find no fault in what we write, and the same image in it.
TEST(IndependentReaders, ReadWhatWeWrite)
{
    const TemporaryFolder folder;
    writeDrawing(Document(), folder / "empty.dwg", DrawingForm::Dwg);
    writeDrawing(makeDrawing(), folder / "one-of-each.dwg", DrawingForm::Dwg);
    const std::string log = (folder / "log").string();
    const std::string command = "env -u LD_PRELOAD \"" HALVORAN_SOURCE_DIR "/scripts/read-dwg\" " +
                                (folder / "empty.dwg").string() + " " + (folder / "one-of-each.dwg").string() +
                                " > \"" + log + "\" 2>&1";
    constexpr int leftOut = 77;
    const int status = std::system(command.c_str());
    const std::string said = contentOf(log);
    if (WEXITSTATUS(status) == leftOut) {
        GTEST_SKIP() << said;
    }
    EXPECT_EQ(WEXITSTATUS(status), 0) << said;
    EXPECT_THAT(said, testing::HasSubstr(R"("path":"C:\\Scans\\sheet.tif")"));
    EXPECT_THAT(said, testing::HasSubstr(R"("size":{"x":2000,"y":1400})"));
    EXPECT_THAT(said, testing::HasSubstr(R"("u":{"x":0.0635,"y":0,"z":0})"));
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
        writeDrawing(readDrawing(own / "back.dwg"), own / "back.dxf");
        EXPECT_TRUE(runPython("tests/unit/drawing_dwg/compare_objects.py",
                              (own / "read.dxf").string() + " " + (own / "back.dxf").string(), output))
            << entry.path() << "\n"
            << output;
        ++compared;
    }
    EXPECT_GT(compared, 0);
}

} // namespace drawing::test
