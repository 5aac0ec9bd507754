// The rasterizing job up to the worker. What is burnt is judged in the sessions.

#include "module/base/CArxApp.h"
#include "module/commands/RasterizeCommand.h"
#include "module/raster/CCheckDef.h"
#include "module/raster/CDocumentLock.h"
#include "module/resources/resource.h"
#include "tests/module/dialogs/dialog_fields.h"
#include "tests/module/support/desk_fixture.h"
#include "tests/module/support/dialog_driver.h"
#include "workerlink/SendToWorker.h"

namespace {

using namespace test;

const Picture steps = {
    "........", //
    ".##.....", //
    "...##...", //
    ".....#..",
};

class Rasterizing : public DeskFixture
{
protected:
    // The steps are current; beside them lies another image.
    void SetUp() override
    {
        DeskFixture::SetUp();
        openDrawing({steps, blank(3, 3)}, {{}, {.x = 20}});
        makeCurrent(0);
        g_pArxApp->m_pReactor = new CCheckDef;
    }
    void TearDown() override
    {
        EXPECT_EQ(pictureInDrawing(0), steps);
        ASSERT_NE(g_pArxApp->m_pRaster, nullptr);
        EXPECT_EQ(g_pArxApp->m_pRaster->GetLockCount(), 0);
        EXPECT_NE(g_pArxApp->m_pSaveList, nullptr) << "the raster is committed whatever came of the job";
        DeskFixture::TearDown();
    }
    std::optional<std::vector<standin::Handle>> selectEntities() override
    {
        EXPECT_EQ(standin::openObjects(), 0) << "the host selects while the raster is suspended";
        return m_selected;
    }
    std::vector<standin::Handle> currentSelection() override { return m_selected.value_or(m_before); }

    static void run()
    {
        const CDocumentLock lock;
        RasterizeCommand();
    }

    std::optional<std::vector<standin::Handle>> m_selected; // nothing: the user gives up
    std::vector<standin::Handle> m_before;
};

TEST_F(Rasterizing, EndsSilentlyWhereThereIsNothingToBurn)
{
    m_before = {imageHandle(1)};
    run();
    m_selected = {{imageHandle(0)}};
    run(); // the raster alone
}

TEST_F(Rasterizing, ACancelledDialogChangesNothing)
{
    m_selected = {{imageHandle(0), imageHandle(1)}};
    DialogDriver driver;
    driver.expectDialog([](HWND dialog) {
        EXPECT_FALSE(enabled(dialog, IDC_RASTERIZE_ONLY_SELECTION));
        press(dialog, IDCANCEL);
    });
    run();
    g_pArxApp->m_pRaster->GetRegion().SetRectRgn(0, 0, 2, 2);
    driver.expectDialog([](HWND dialog) {
        EXPECT_TRUE(enabled(dialog, IDC_RASTERIZE_ONLY_SELECTION));
        EXPECT_EQ(IsDlgButtonChecked(dialog, IDC_RASTERIZE_ONLY_SELECTION), 1u);
        press(dialog, IDCANCEL);
    });
    run();
}

TEST_F(Rasterizing, ARasterThatNothingLiesOverIsToldOf)
{
    m_selected = {{imageHandle(1)}};
    DialogDriver driver;
    driver.expectDialog([](HWND dialog) { press(dialog, IDOK); });
    driver.expectDialog([](HWND box) {
        EXPECT_EQ(text(box, 0xFFFF), L"No raster under the entities");
        press(box, IDOK);
    });
    run();
    EXPECT_TRUE(m_said.empty());
}

TEST_F(Rasterizing, AWorkerThatFailsLeavesAllAsItWas)
{
    m_selected = {{imageHandle(1)}};
    planWorker({"dies", "dies"});
    DialogDriver driver;
    driver.expectDialog([](HWND dialog) { press(dialog, IDOK); });
    run();
    EXPECT_TRUE(standin::drawingOpen());
}

} // namespace
