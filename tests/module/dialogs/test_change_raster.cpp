// The dialog that changes a raster's size and resolution.

#include "module/base/CArxApp.h"
#include "module/dialogs/CDChras.h"
#include "module/raster/CCurentRaster.h"
#include "module/resources/resource.h"
#include "tests/module/dialogs/dialog_fields.h"
#include "tests/module/support/desk_fixture.h"
#include "tests/module/support/dialog_driver.h"

namespace {

using namespace test;

class ChangeRaster : public DeskFixture
{
protected:
    CAcraster& open(int width, int height, double dotsPerInch)
    {
        return openCurrent(blank(width, height), {}, dotsPerInch);
    }
    // Runs the dialog; the work ends it.
    static void run(DialogDriver& driver, const DialogDriver::Work& work)
    {
        driver.expectDialog(work);
        CDChras dialog;
        dialog.DoModal();
    }
    static void expectNewSize(HWND dialog, const wchar_t* width, const wchar_t* height, const wchar_t* dpi)
    {
        EXPECT_EQ(text(dialog, IDC_CHANGE_WIDTH), width);
        EXPECT_EQ(text(dialog, IDC_CHANGE_HEIGHT), height);
        EXPECT_EQ(text(dialog, IDC_CHANGE_DPI), dpi);
    }
};

TEST_F(ChangeRaster, OffersThePageThatTheRasterNearlyHas)
{
    struct Row
    {
        int width;
        int height;
        double dotsPerInch;
        std::int16_t units;
        const wchar_t* format;
        int page;
        const wchar_t* current; // width
        const wchar_t* newWidth;
    };
    const Row rows[] = {
        {2480, 3508, 300, 2, L"A4S  ", 2, L"210 mm", L"210 mm"},
        {2480, 3508, 300, 4, L"A4S  ", 2, L"8.27\"", L"8.27\""},
        {1100, 850, 100, 2, L"ANSI A ", 18, L"279 mm", L"279 mm"},
        {100, 100, 100, 2, L"Altered", -1, L"25 mm", L"25 mm"},
    };
    for (const Row& row : rows) {
        open(row.width, row.height, row.dotsPerInch);
        standin::setSystemVariable(L"LUNITS", row.units);
        DialogDriver driver;
        run(driver, [&row](HWND dialog) {
            EXPECT_EQ(text(dialog, IDC_CHANGE_CURRENT_PAGE), row.format);
            EXPECT_EQ(text(dialog, IDC_CHANGE_CURRENT_WIDTH), row.current);
            EXPECT_EQ(chosen(dialog, IDC_CHANGE_PAGE), row.page);
            EXPECT_EQ(text(dialog, IDC_CHANGE_WIDTH), row.newWidth);
            press(dialog, IDCANCEL);
        });
    }
}

// At 254 dpi ten pixels are a millimetre.
TEST_F(ChangeRaster, APageIsMetWithinLessThanFiveMillimetres)
{
    for (const int tenths : {49, 51}) {
        open(2100 + tenths, 2970 - tenths, 254);
        DialogDriver driver;
        run(driver, [tenths](HWND dialog) {
            const bool isNear = tenths < 50;
            EXPECT_EQ(text(dialog, IDC_CHANGE_CURRENT_PAGE), isNear ? L"A4S  " : L"Altered");
            EXPECT_EQ(text(dialog, IDC_CHANGE_CURRENT_WIDTH), L"215 mm");
            expectNewSize(dialog, isNear ? L"210 mm" : L"215 mm", isNear ? L"297 mm" : L"292 mm", L"254");
            press(dialog, IDCANCEL);
        });
    }
}

TEST_F(ChangeRaster, KeepsTheFieldsWithinTheLimits)
{
    open(1000, 1000, 254);
    DialogDriver driver;
    // The resolution is out of range after the last step; the way to Cancel does not ask about it.
    run(driver, [](HWND dialog) {
        enter(dialog, IDC_CHANGE_WIDTH, L"0");
        expectNewSize(dialog, L"1 mm", L"100 mm", L"254");
        enter(dialog, IDC_CHANGE_HEIGHT, L"20000");
        // 10000 mm at 254 dpi are too high a raster: 832281.8 / 10000, cut.
        expectNewSize(dialog, L"1 mm", L"10,000 mm", L"83");
        choose(dialog, IDC_CHANGE_PAGE, 13);
        enter(dialog, IDC_CHANGE_DPI, L"1000");
        expectNewSize(dialog, L"1,189 mm", L"841 mm", L"989");
        const std::wstring endless(40000, L'9');
        for (const wchar_t* hostile : {L"", L"letters", L"-5", endless.c_str(), L"1e308"})
            enter(dialog, IDC_CHANGE_WIDTH, hostile);
        expectNewSize(dialog, L"10,000 mm", L"841 mm", L"166");
        press(dialog, IDCANCEL);
    });
}

TEST_F(ChangeRaster, ChangesThePixelsAndTheResolutionAndKeepsTheProportions)
{
    struct Row
    {
        const wchar_t* width;
        const wchar_t* height;
        const wchar_t* dpi;
        CSize pixels;
        bool changes = true;
    };
    const Row rows[] = {
        {L"100", L"50", L"254", CSize(1000, 500), false},   // as it is
        {L"100.4", L"50", L"254", CSize(1000, 500), false}, // the same in whole millimetres
        {L"50", L"25", L"254", CSize(500, 250)},            // half of it
        {L"50", L"50", L"254", CSize(500, 250)},            // the width decides
        {L"100", L"50", L"127", CSize(500, 250)},           // coarser
        {L"10000", L"50", L"254", CSize(1000, 500)},        // the height decides, and with it the width can be
    };
    for (const Row& row : rows) {
        CAcraster& raster = open(1000, 500, 254);
        {
            DialogDriver driver;
            run(driver, [&row](HWND dialog) {
                SetDlgItemTextW(dialog, IDC_CHANGE_WIDTH, row.width);
                SetDlgItemTextW(dialog, IDC_CHANGE_HEIGHT, row.height);
                SetDlgItemTextW(dialog, IDC_CHANGE_DPI, row.dpi);
                press(dialog, IDOK);
            });
        }
        raster.Lock(1);
        EXPECT_EQ(raster.GetSize(), row.pixels);
        EXPECT_EQ(raster.GetDpi(), _wtoi(row.dpi));
        EXPECT_FALSE(raster.HasSelection());
        raster.Unlock();
        EXPECT_EQ(g_pArxApp->m_pSaveList != nullptr, row.changes) << "what changed nothing is nothing to save";
    }
}

TEST_F(ChangeRaster, ARasterThatCannotBeIsNotMade)
{
    // A strip so flat that the height would come out as no pixel.
    CAcraster& raster = open(1000, 2, 254);
    DialogDriver driver;
    run(driver, [](HWND dialog) {
        SetDlgItemTextW(dialog, IDC_CHANGE_WIDTH, L"5");
        press(dialog, IDOK);
    });
    raster.Lock(1);
    EXPECT_EQ(raster.GetSize(), CSize(1000, 2));
    raster.Unlock();
    ASSERT_FALSE(m_said.empty());
    EXPECT_EQ(m_said.back(), L"The raster was not changed: there can be none of that size.");
}

TEST_F(ChangeRaster, AResolutionOutOfRangeIsToldAndKeepsTheDialogOpen)
{
    CAcraster& raster = open(1000, 500, 254);
    DialogDriver driver;
    const auto told = [](HWND box) {
        EXPECT_EQ(text(box, 0xFFFF), L"Please enter an integer between 20 and 2000.");
        press(box, IDOK);
    };
    driver.expectDialog([](HWND dialog) {
        SetDlgItemTextW(dialog, IDC_CHANGE_DPI, L"10");
        press(dialog, IDOK);
    });
    driver.expectDialog(told); // before the work
    driver.expectDialog(told); // at the closing
    driver.expectDialog([](HWND dialog) { press(dialog, IDCANCEL); });
    CDChras dialog;
    EXPECT_EQ(dialog.DoModal(), IDCANCEL);
    raster.Lock(1);
    EXPECT_EQ(raster.GetSize(), CSize(39, 20)) << "the work goes on with what the field held: 100 by 50 mm at 10 dpi";
    raster.Unlock();
}

} // namespace
