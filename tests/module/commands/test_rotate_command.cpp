// The rotate command with its dialog.

#include "module/base/CArxApp.h"
#include "module/commands/RotateCommand.h"
#include "module/dialogs/CDrotate.h"
#include "module/raster/CCurentRaster.h"
#include "module/resources/resource.h"
#include "module/tools/CBaseRotateTool.h"
#include "module/tools/CFreeRotateTool.h"
#include "module/tools/RotateStart.h"
#include "standin/desk/gdi_count.h"
#include "tests/module/support/desk_fixture.h"
#include "tests/module/support/dialog_driver.h"

namespace {

using test::Picture;
using test::pictureInDrawing;

const Picture flag = {
    "####.", //
    "#..#.", //
    "#.#..",
};

class RotateDialog : public test::DeskFixture
{
protected:
    CAcraster& open(bool selected)
    {
        CAcraster& raster = openCurrent(flag);
        if (selected)
            raster.GetRegion().SetRectRgn(1, 0, 3, 2);
        return raster;
    }
    // Runs the command and answers its dialog.
    void rotate(int mode, int button = IDOK, bool onlySelection = true)
    {
        test::DialogDriver driver;
        driver.expectDialog([=](HWND dialog) {
            CheckRadioButton(dialog, IDC_ROTATE_MODE, IDC_ROTATE_MODE + CDrotate::Free, IDC_ROTATE_MODE + mode);
            if (!onlySelection)
                CheckDlgButton(dialog, IDC_ROTATE_ONLY_SELECTION, BST_UNCHECKED);
            test::press(dialog, button);
        });
        RotateCommand();
    }
    // Whether a tool comes up later than the command.
    static bool toolComes()
    {
        EXPECT_EQ(g_pArxApp->m_pTool, nullptr) << "the dialog has to be off the screen first";
        return test::pumpUntil([] { return g_pArxApp->m_pTool != nullptr; });
    }
};

TEST_F(RotateDialog, OffersTheSelectedAreaOnlyWhereThereIsOne)
{
    for (const bool selected : {false, true}) {
        open(selected);
        test::DialogDriver driver;
        driver.expectDialog([=](HWND dialog) {
            const wchar_t* const labels[] = {L"90°", L"-90°", L"180°", L"Free"};
            for (int mode = 0; mode < 4; ++mode) {
                wchar_t label[100] = {};
                GetDlgItemTextW(dialog, IDC_ROTATE_MODE + mode, label, 100);
                EXPECT_EQ(std::wstring(label), labels[mode]);
                EXPECT_EQ(IsDlgButtonChecked(dialog, IDC_ROTATE_MODE + mode), mode == 0 ? 1u : 0u);
            }
            EXPECT_EQ(IsDlgButtonChecked(dialog, IDC_ROTATE_ONLY_SELECTION), selected ? 1u : 0u);
            EXPECT_EQ(IsWindowEnabled(GetDlgItem(dialog, IDC_ROTATE_ONLY_SELECTION)), selected);
            test::press(dialog, IDCANCEL);
        });
        RotateCommand();
        DropCurrentRaster();
    }
}

TEST_F(RotateDialog, ItsPicturesGoWithIt)
{
    open(false);
    rotate(CDrotate::Free, IDCANCEL);
    const int before = gdiObjects();
    for (int round = 0; round < 5; ++round)
        rotate(CDrotate::Free, IDCANCEL);
    EXPECT_EQ(gdiObjects(), before);
}

TEST_F(RotateDialog, StartsTheToolForTheSelectedAreaAndForAnyAngle)
{
    struct Case
    {
        int mode;
        bool selected;
        bool free;
    };
    for (const Case& row : {Case{CDrotate::QuarterClockwise, true, false}, Case{CDrotate::HalfTurn, true, false},
                            Case{CDrotate::Free, true, true}, Case{CDrotate::Free, false, true}}) {
        open(row.selected);
        rotate(row.mode);
        ASSERT_TRUE(toolComes()) << row.mode;
        EXPECT_TRUE(
            g_pArxApp->m_pTool->IsKindOf(row.free ? RUNTIME_CLASS(CFreeRotateTool) : RUNTIME_CLASS(CBaseRotateTool)));
        delete g_pArxApp->m_pTool;
        EXPECT_EQ(pictureInDrawing(0), flag) << "nothing turns before the tool is used";
        EXPECT_TRUE(m_posted.empty()) << "no commit";
        DropCurrentRaster();
    }
}

TEST_F(RotateDialog, GivenUpOrWithoutARasterChangesNothing)
{
    CAcraster& raster = open(true);
    rotate(CDrotate::HalfTurn, IDCANCEL, false);
    EXPECT_EQ(pictureInDrawing(0), flag);
    EXPECT_EQ(raster.GetLockCount(), 0);
    EXPECT_TRUE(m_posted.empty());

    DropCurrentRaster();
    const test::DialogDriver nobodyExpectsADialog;
    RotateCommand();
    EXPECT_TRUE(m_posted.empty());
}

} // namespace
