// The open drawing behind the desk: what of it can be selected, and whether it is saved.

#include <algorithm>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "drawing/drawing_file.h"
#include "standin/desk/drawing_session.h"
#include "tests/support/files.h"

namespace {

// A drawing whose groups stand one after the other, parted by blanks instead of line ends.
std::filesystem::path writeDrawing(const std::filesystem::path& file, std::string groups)
{
    std::replace(groups.begin(), groups.end(), ' ', '\n');
    std::ofstream(file, std::ios::binary) << groups << '\n';
    return file;
}

} // namespace

TEST(DrawingSession, AllIsWhatIsThereDrawnOrNotButForHiddenLayersAndTheSheetItself)
{
    const TemporaryFolder folder;
    const auto file =
        writeDrawing(folder / L"kinds.dxf",
                     "0 SECTION 2 TABLES 0 TABLE 2 LAYER 70 1 0 LAYER 2 COLD 70 1 62 7 6 CONTINUOUS 0 ENDTAB 0 ENDSEC "
                     "0 SECTION 2 ENTITIES "
                     "0 LINE 5 A1 8 0 10 0 20 0 11 5 21 5 "
                     "0 SHAPE 5 A2 8 0 10 0 20 0 40 1 2 BOLT " // the desk does not draw it
                     "0 LINE 5 A3 8 COLD 10 0 20 0 11 5 21 5 "
                     "0 VIEWPORT 5 A4 8 0 67 1 10 0 20 0 40 10 41 10 68 1 69 1 "
                     "0 VIEWPORT 5 A5 8 0 67 1 10 0 20 0 40 10 41 10 68 2 69 2 "
                     "0 ENDSEC 0 EOF");
    ASSERT_EQ(standin::openDrawing(file), std::nullopt);
    desk::DrawingSession session;
    EXPECT_THAT(session.entitiesOfSpace(), testing::ElementsAre(0xA1, 0xA2));
    ASSERT_TRUE(session.erase({0xA2}));
    EXPECT_THAT(session.entitiesOfSpace(), testing::ElementsAre(0xA1));
    ASSERT_TRUE(standin::setSystemVariable(L"TILEMODE", std::int16_t(0)));
    EXPECT_THAT(session.entitiesOfSpace(), testing::ElementsAre(0xA5));
    standin::closeDrawing();
}

// A file whose name says another form than its content has keeps its form, until it is saved under a path.
TEST(DrawingSession, SavingKeepsTheFormOfTheFileAndSavingUnderAPathTakesThatOfItsType)
{
    const TemporaryFolder folder;
    const struct
    {
        const wchar_t* name;
        drawing::DrawingForm stored;
        drawing::DrawingForm ofPath;
    } cases[] = {
        {L"a.dxf", drawing::DrawingForm::Dwg, drawing::DrawingForm::DxfText},
        {L"b.dwg", drawing::DrawingForm::DxfText, drawing::DrawingForm::Dwg},
        {L"c.dxf", drawing::DrawingForm::DxfBinary, drawing::DrawingForm::DxfText},
    };
    for (const auto& each : cases) {
        const std::filesystem::path file = folder / each.name;
        drawing::writeDrawing(drawing::Document(), file, each.stored);
        ASSERT_EQ(standin::openDrawing(file), std::nullopt);
        desk::DrawingSession session;
        const desk::ViewTransform shown;
        ASSERT_EQ(session.save(file, shown, standin::SaveForm::OfFile), std::nullopt);
        EXPECT_EQ(drawing::formOfFile(file), each.stored) << file;
        ASSERT_EQ(session.save(file, shown, standin::SaveForm::OfPath), std::nullopt);
        EXPECT_EQ(drawing::formOfFile(file), each.ofPath) << file;
        ASSERT_EQ(session.save(file, shown, standin::SaveForm::OfFile), std::nullopt);
        EXPECT_EQ(drawing::formOfFile(file), each.ofPath) << file;
        standin::closeDrawing();
    }
}
