// The handlers of the raster commands, called in this program. The sessions give the commands as a draughtsman does.

#include "module/base/CArxApp.h"
#include "module/commands/EditCommands.h"
#include "module/commands/SaveCommand.h"
#include "module/raster/CCurentRaster.h"
#include "tests/module/support/desk_fixture.h"
#include "tests/module/support/dialog_driver.h"
#include "workerlink/SendToWorker.h"

namespace {

using test::Picture;
using test::pictureInDrawing;

const Picture steps = {
    "#....", //
    "##...", //
    "..#..",
};
const std::vector<std::wstring> oneCommit = {L"\t"};

class Commands : public test::DeskFixture
{};

TEST_F(Commands, EachChangesTheImageAndCommitsIt)
{
    struct Case
    {
        void (*command)();
        Picture wanted;
        int selected; // afterwards
    };
    const Case cases[] = {
        {FlipHorizontalCommand, {"....#", "...##", "..#.."}, 1},
        {FlipVerticalCommand, {"..#..", "##...", "#...."}, 1},
        {InvertCommand, {".####", "..###", "##.##"}, 1},
        {CropCommand, {"#.", ".#"}, 0},
    };
    for (const Case& row : cases) {
        CAcraster& raster = openCurrent(steps);
        raster.GetRegion().SetRectRgn(1, 1, 3, 3);
        row.command();
        EXPECT_EQ(pictureInDrawing(0), row.wanted);
        EXPECT_EQ(m_posted, oneCommit);
        EXPECT_EQ(raster.GetLockCount(), 0);
        raster.Lock(0);
        EXPECT_EQ(raster.HasSelection(), row.selected);
        raster.Unlock();
        DropCurrentRaster();
    }
}

TEST_F(Commands, WithoutARasterNothingHappensNorDoesACropWithoutASelection)
{
    openCurrent(steps);
    CropCommand();
    EXPECT_EQ(pictureInDrawing(0), steps);
    DropCurrentRaster();
    for (void (*command)() : {FlipHorizontalCommand, FlipVerticalCommand, InvertCommand, CropCommand, SaveAsCommand})
        command();
    EXPECT_TRUE(m_posted.empty());
}

TEST_F(Commands, SaveAsOffersTheRastersOwnNameAndLeavesTheDrawing)
{
    openCurrent(steps);
    const std::wstring target = file("copy.tif").wstring();
    test::DialogDriver driver;
    driver.expectDialog([&](HWND dialog) {
        EXPECT_EQ(test::nameIn(dialog), L"image0.tif");
        test::setName(dialog, target);
        test::press(dialog, IDOK);
    });
    SaveAsCommand();
    EXPECT_EQ(test::readPicture(target), steps);
    EXPECT_TRUE(m_posted.empty()) << "the drawing's image did not change";
}

} // namespace
