// The handlers of the raster commands, called in this program.

#include "host/CArxApp.h"
#include "host/EditCommands.h"
#include "host/SaveCommand.h"
#include "imaging/raster_file.h"
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

class Commands : public test::DeskFixture
{
protected:
    CAcraster& openSteps()
    {
        openDrawing({steps});
        return makeCurrent(0);
    }
};

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
        CAcraster& raster = openSteps();
        raster.GetRegion().SetRectRgn(1, 1, 3, 3);
        m_posted.clear();
        row.command();
        EXPECT_EQ(pictureInDrawing(0), row.wanted);
        EXPECT_EQ(m_posted, std::vector<std::wstring>{L"\t"}) << "one commit";
        EXPECT_EQ(raster.GetLockCount(), 0);
        raster.Lock(0);
        EXPECT_EQ(raster.HasSelection(), row.selected);
        raster.Unlock();
        g_pArxApp->DropRaster();
    }
}

TEST_F(Commands, WithoutARasterNothingHappens)
{
    openDrawing({steps});
    for (void (*command)() : {FlipHorizontalCommand, FlipVerticalCommand, InvertCommand, CropCommand, SaveAsCommand})
        command();
    EXPECT_TRUE(m_posted.empty());
    EXPECT_EQ(pictureInDrawing(0), steps);
}

TEST_F(Commands, ARasterThatWasErasedIsDroppedQuietly)
{
    openSteps();
    ASSERT_TRUE(standin::eraseEntity(test::imageHandle(0)));
    FlipHorizontalCommand();
    EXPECT_EQ(g_pArxApp->m_pRaster, nullptr);
    EXPECT_TRUE(m_posted.empty());
    EXPECT_TRUE(m_alerts.empty());
    m_locksLeft = 1;
}

TEST_F(Commands, CropWithoutASelectionCommitsNothing)
{
    openSteps();
    CropCommand();
    EXPECT_TRUE(m_posted.empty());
    EXPECT_EQ(pictureInDrawing(0), steps);
}

TEST_F(Commands, AnInversionThatFailsIsCommittedAllTheSame)
{
    openSteps();
    SetWorkerPath(file("no worker.exe").c_str());
    InvertCommand();
    EXPECT_EQ(pictureInDrawing(0), steps);
    EXPECT_EQ(m_posted, std::vector<std::wstring>{L"\t"});
}

Picture readPicture(const std::filesystem::path& path)
{
    const imaging::Bitmap bitmap = imaging::readRaster(path).bitmap;
    Picture picture = test::blank(bitmap.width(), bitmap.height());
    for (int y = 0; y < bitmap.height(); ++y) {
        for (int x = 0; x < bitmap.width(); ++x)
            picture[y][x] = bitmap.ink(x, y) ? '#' : '.';
    }
    return picture;
}

TEST_F(Commands, SaveAsOffersTheRastersOwnNameAndWritesTheChosenFile)
{
    openSteps();
    const std::wstring target = file("copy.tif").wstring();
    test::DialogDriver driver;
    driver.expectDialog([&](HWND dialog) {
        wchar_t title[100] = {};
        GetWindowTextW(dialog, title, 100);
        EXPECT_EQ(std::wstring(title), L"Save raster as");
        EXPECT_EQ(test::nameIn(dialog), L"image0.tif");
        test::setName(dialog, target);
        test::press(dialog, IDOK);
    });
    SaveAsCommand();
    EXPECT_EQ(readPicture(target), steps);
    EXPECT_TRUE(m_posted.empty()) << "the drawing's image did not change";
}

TEST_F(Commands, SaveAsAsksWhetherToSaveTheSelectionOnly)
{
    struct Case
    {
        int answer;
        Picture wanted;
    };
    const Case cases[] = {{IDYES, {"#.", ".#"}}, {IDNO, steps}};
    for (const Case& row : cases) {
        openSteps().GetRegion().SetRectRgn(1, 1, 3, 3);
        const std::wstring target = file(row.answer == IDYES ? "part.tif" : "all.tif").wstring();
        test::DialogDriver driver;
        driver.expectDialog([&](HWND box) {
            EXPECT_EQ(test::boxText(box), L"Save only selected area?");
            test::press(box, row.answer);
        });
        driver.expectDialog([&](HWND dialog) {
            test::setName(dialog, target);
            test::press(dialog, IDOK);
        });
        SaveAsCommand();
        EXPECT_EQ(readPicture(target), row.wanted);
        g_pArxApp->DropRaster();
    }
}

TEST_F(Commands, TheChosenTypeDecidesTheFormat)
{
    openSteps();
    int pngRow = -1;
    {
        CAcraster& raster = *g_pArxApp->m_pRaster;
        raster.Lock(0);
        const CString filter = raster.QueryFormats().filter;
        raster.Unlock();
        CString pattern;
        for (int i = 0; AfxExtractSubString(pattern, filter, 2 * i + 1, L'|') && !pattern.IsEmpty(); ++i) {
            if (pattern == L"*.png")
                pngRow = i;
        }
    }
    ASSERT_GE(pngRow, 0);
    test::DialogDriver driver;
    driver.expectDialog([&](HWND dialog) {
        test::setName(dialog, file("copy.tif").wstring());
        test::chooseType(dialog, pngRow);
        test::press(dialog, IDOK);
    });
    SaveAsCommand();
    EXPECT_EQ(readPicture(file("copy.png")), steps);
    EXPECT_EQ(imaging::inspectRaster(file("copy.png")).format, imaging::Format::Png);
}

TEST_F(Commands, SaveAsThatIsGivenUpWritesNothing)
{
    openSteps();
    test::DialogDriver driver;
    driver.expectDialog([](HWND dialog) { test::press(dialog, IDCANCEL); });
    SaveAsCommand();
    EXPECT_EQ(readPicture(file("image0.tif")), steps);
}

} // namespace
