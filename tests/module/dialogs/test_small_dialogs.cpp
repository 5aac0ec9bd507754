// Properties, the sizes of specks and holes, and the widths of pen and eraser.

#include <commctrl.h>

#include "module/base/CTempMFC.h"
#include "module/dialogs/CDDespecle.h"
#include "module/dialogs/CDErasPen.h"
#include "module/dialogs/CDFill.h"
#include "module/dialogs/CDProperties.h"
#include "module/dialogs/CDRasPen.h"
#include "module/resources/resource.h"
#include "tests/module/dialogs/dialog_fields.h"
#include "tests/module/support/desk_fixture.h"
#include "tests/module/support/dialog_driver.h"

namespace {

using namespace test;

class SmallDialogs : public DeskFixture
{
protected:
    static void setUnits(std::int16_t units) { standin::setSystemVariable(L"LUNITS", units); }
};

// The rows of a tree that show, each with a mark for its image and blanks for its depth.
std::vector<std::wstring> visibleRows(HWND tree)
{
    std::vector<std::wstring> rows;
    auto item = reinterpret_cast<HTREEITEM>(SendMessageW(tree, TVM_GETNEXTITEM, TVGN_ROOT, 0));
    while (item) {
        wchar_t label[600] = {};
        TVITEMW row{};
        row.mask = TVIF_TEXT | TVIF_IMAGE | TVIF_HANDLE;
        row.hItem = item;
        row.pszText = label;
        row.cchTextMax = 600;
        SendMessageW(tree, TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&row));
        rows.push_back(L"RLG"[row.iImage] + std::wstring(L" ") + label);
        item = reinterpret_cast<HTREEITEM>(
            SendMessageW(tree, TVM_GETNEXTITEM, TVGN_NEXTVISIBLE, reinterpret_cast<LPARAM>(item)));
    }
    return rows;
}

void expandAll(HWND tree)
{
    auto item = reinterpret_cast<HTREEITEM>(SendMessageW(tree, TVM_GETNEXTITEM, TVGN_ROOT, 0));
    for (; item; item = reinterpret_cast<HTREEITEM>(
                     SendMessageW(tree, TVM_GETNEXTITEM, TVGN_NEXTVISIBLE, reinterpret_cast<LPARAM>(item))))
        SendMessageW(tree, TVM_EXPAND, TVE_EXPAND, reinterpret_cast<LPARAM>(item));
}

TEST_F(SmallDialogs, PropertiesTellTheFactsInTheirOrder)
{
    openCurrent(blank(2480, 3508), {.x = 12.344, .y = -3}, 300);
    const std::wstring path = file("image0.tif").wstring();
    const std::wstring length = std::to_wstring(std::filesystem::file_size(path));
    const std::vector<std::wstring> opened = {
        L"R Current raster",
        L"L File name: " + path,
        L"L File size: " + length + L" bytes",
        L"L File type: ",
        L"L Resolution: 300 dpi",
        L"L Number of colors: 2 (1 bit)",
        L"L Raster size: 1087480 bytes",
        L"G Size in DWG units",
        L"G Document size",
    };
    for (const std::int16_t units : {2, 4}) {
        setUnits(units);
        std::vector<std::wstring> all = opened;
        // The image is one drawing unit a pixel; in an inch drawing its size is converted all the same.
        const bool metric = units == 2;
        all.insert(all.end() - 1,
                   {L"L Insertion point: 12.34:-3.00", metric ? L"L Width: 2,480.00" : L"L Width: 97.6378",
                    metric ? L"L Height: 3,508.00" : L"L Height: 138.1102"});
        all.insert(all.end(), {metric ? L"L Width: 210 mm" : L"L Width: 8.27\"",
                               metric ? L"L Height: 297 mm" : L"L Height: 11.69\"", L"L Width: 2480 pixel",
                               L"L Height: 3508 pixel"});
        DialogDriver driver;
        driver.expectDialog([&](HWND dialog) {
            const HWND tree = GetDlgItem(dialog, IDC_PROPERTIES_TREE);
            EXPECT_EQ(visibleRows(tree), opened);
            expandAll(tree);
            EXPECT_EQ(visibleRows(tree), all);
            press(dialog, IDOK);
        });
        CDProperties dialog;
        dialog.DoModal();
    }
}

template <typename Dialog> void checkFilterDialog(const wchar_t* title, const wchar_t* inches)
{
    for (const bool selection : {false, true}) {
        for (const std::int16_t units : {2, 4}) {
            standin::setSystemVariable(L"LUNITS", units);
            DialogDriver driver;
            driver.expectDialog([&](HWND dialog) {
                EXPECT_EQ(enabled(dialog, IDC_FILTER_ONLY_SELECTION), selection);
                EXPECT_EQ(IsDlgButtonChecked(dialog, IDC_FILTER_ONLY_SELECTION), selection ? 1u : 0u);
                wchar_t caption[100] = {};
                GetWindowTextW(dialog, caption, 100);
                EXPECT_EQ(std::wstring(caption), title);
                const HWND slider = GetDlgItem(dialog, IDC_FILTER_SIZE);
                RedrawWindow(dialog, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_ALLCHILDREN);
                EXPECT_EQ(text(dialog, IDC_FILTER_LABEL), units == 2 ? L"1.0 mm" : inches);
                SendMessageW(slider, TBM_SETPOS, TRUE, 21);
                press(dialog, IDOK);
            });
            Dialog dialog;
            dialog.m_bOnlySelection = selection;
            EXPECT_EQ(dialog.DoModal(), IDOK);
            EXPECT_EQ(dialog.m_nSize, 20) << "the slider ends there";
            EXPECT_EQ(dialog.m_bOnlySelection, selection);
        }
    }
}

TEST_F(SmallDialogs, SpecksAndHolesAreSizedByASliderInTheDrawingsUnit)
{
    openCurrent(blank(8, 8));
    checkFilterDialog<CDDespecle>(L"Despeckles", L"0.039\"");
    checkFilterDialog<CDFill>(L"Fill", L"0.039\"");
}

TEST_F(SmallDialogs, TheEraserTellsItsWidthAsALengthAndTakesNoOther)
{
    openCurrent(blank(8, 8), {}, 300);
    for (const std::int16_t units : {2, 4}) {
        setUnits(units);
        const auto length = [units](const wchar_t* metric, const wchar_t* inch) { return units == 2 ? metric : inch; };
        DialogDriver driver;
        driver.expectDialog([&](HWND dialog) {
            RECT place;
            GetWindowRect(dialog, &place);
            EXPECT_EQ(CPoint(place.left, place.top), CPoint(70, 90));
            EXPECT_EQ(text(dialog, IDC_BRUSH_WIDTH), L"10");
            EXPECT_EQ(text(dialog, IDC_BRUSH_LENGTH), length(L"0.85 mm", L"0.0333\""));
            EXPECT_EQ(GetFocus(), GetDlgItem(dialog, IDC_BRUSH_WIDTH));
            // What the spin button does not accept is put back at once.
            for (const wchar_t* hostile : {L"", L"0", L"101", L"-3", L"letters", L"99999999999999999999"}) {
                SetDlgItemTextW(dialog, IDC_BRUSH_WIDTH, hostile);
                EXPECT_EQ(text(dialog, IDC_BRUSH_WIDTH), L"10") << std::filesystem::path(hostile);
            }
            SetDlgItemTextW(dialog, IDC_BRUSH_WIDTH, L"100");
            EXPECT_EQ(text(dialog, IDC_BRUSH_LENGTH), length(L"8.47 mm", L"0.3333\""));
            press(dialog, IDOK);
        });
        CDErasPen dialog;
        dialog.m_position = CPoint(70, 90);
        dialog.m_nWidth = 10;
        EXPECT_EQ(dialog.DoModal(), IDOK);
        EXPECT_EQ(dialog.m_nWidth, 100);
    }
}

TEST_F(SmallDialogs, ThePenOffersTheTwoColoursOfTheRaster)
{
    openCurrent(blank(8, 8));
    DialogDriver driver;
    driver.expectDialog([](HWND dialog) {
        EXPECT_EQ(SendDlgItemMessageW(dialog, IDC_PEN_COLOR, CB_GETCOUNT, 0, 0), 2);
        EXPECT_EQ(chosen(dialog, IDC_PEN_COLOR), 0);
        choose(dialog, IDC_PEN_COLOR, 1);
        press(dialog, IDOK);
    });
    CDRasPen dialog;
    dialog.m_nWidth = 3;
    EXPECT_EQ(dialog.DoModal(), IDOK);
    EXPECT_EQ(dialog.m_nColor, 1);
    EXPECT_EQ(dialog.m_nWidth, 3);
}

TEST_F(SmallDialogs, OpenOnARasterThatHasGoneWithEmptyFields)
{
    openDrawing({blank(4, 4)});
    const CTempMFC resources;
    DialogDriver driver;
    driver.expectDialog([](HWND dialog) {
        EXPECT_TRUE(visibleRows(GetDlgItem(dialog, IDC_PROPERTIES_TREE)).empty());
        press(dialog, IDOK);
    });
    CDProperties properties;
    properties.DoModal();
    driver.expectDialog([](HWND dialog) {
        EXPECT_EQ(text(dialog, IDC_BRUSH_LENGTH), L"");
        EXPECT_EQ(SendDlgItemMessageW(dialog, IDC_PEN_COLOR, CB_GETCOUNT, 0, 0), 0);
        press(dialog, IDCANCEL);
    });
    CDRasPen pen;
    pen.DoModal();
}

} // namespace
