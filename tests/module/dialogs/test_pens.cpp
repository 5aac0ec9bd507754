// The pen table: its settings, its files, and the dialog that shows it.

#include <commctrl.h>
#include <fstream>
#include <numeric>
#include <sstream>

#include "module/base/CTempMFC.h"
#include "module/dialogs/CDRasterize.h"
#include "module/raster/CPenList.h"
#include "module/resources/resource.h"
#include "tests/module/dialogs/dialog_fields.h"
#include "tests/module/support/desk_fixture.h"
#include "tests/module/support/dialog_driver.h"

namespace {

using namespace test;

constexpr const wchar_t* section = L"ProgramDefault";
constexpr const wchar_t* settingsKey = L"Software\\Halvoran tests\\Pens";

// Settings of the tests' own in place of the module's.
class Pens : public DeskFixture
{
protected:
    void SetUp() override
    {
        DeskFixture::SetUp();
        openDrawing({blank(4, 4)});
        CTempMFC::SetModule(GetModuleHandleW(nullptr), L"Halvoran tests", L"Pens");
        RegDeleteTreeW(HKEY_CURRENT_USER, settingsKey);
        m_resources = std::make_unique<CTempMFC>();
    }
    void TearDown() override
    {
        m_resources.reset();
        RegDeleteTreeW(HKEY_CURRENT_USER, settingsKey);
        DeskFixture::TearDown();
    }
    static void store(const wchar_t* name, const CString& value)
    {
        AfxGetApp()->WriteProfileString(section, name, value);
    }
    static CString stored(const wchar_t* name) { return AfxGetApp()->GetProfileString(section, name); }

    std::string contentOf(const std::string& name) const
    {
        std::ostringstream text;
        text << std::ifstream(file(name), std::ios::binary).rdbuf();
        return text.str();
    }
    void put(const std::string& name, const std::string& text) const
    {
        std::ofstream(file(name), std::ios::binary) << text;
    }
    std::unique_ptr<CTempMFC> m_resources;
};

CString repeated(const wchar_t* group, int count)
{
    CString text;
    for (int i = 0; i < count; ++i)
        text += group;
    return text;
}

TEST_F(Pens, WithoutSettingsAllAreEighteenAndMissingPartsTwenty)
{
    struct Row
    {
        CString first;
        CString second;
        CString third;
        int width0;
        int width84;
        int width85;
        int width169;
        int width170;
        int width253;
    };
    const CString whole = repeated(L"00a", 85);
    const CString last = repeated(L"00c", 84);
    const Row rows[] = {
        {L"", L"", L"", 18, 18, 18, 18, 18, 18},
        {L"", whole, last, 18, 18, 18, 18, 18, 18},
        {whole, L"", last, 10, 10, 20, 20, 20, 20},
        {whole, repeated(L"1F4", 85), L"", 10, 10, 500, 500, 20, 20},
        {whole, whole, last, 10, 10, 10, 10, 12, 12},
        // Garbage that breaks off: what can't be read has the width of a pen that nobody set.
        {L"00bxyz", whole, last, 11, 18, 10, 10, 12, 12},
    };
    for (const Row& row : rows) {
        store(L"Penlist11", row.first);
        store(L"Penlist12", row.second);
        store(L"Penlist13", row.third);
        const CPenList pens(section, 1);
        EXPECT_EQ((std::vector<int>{pens.Width(0), pens.Width(84), pens.Width(85), pens.Width(169), pens.Width(170),
                                    pens.Width(253)}),
                  (std::vector<int>{row.width0, row.width84, row.width85, row.width169, row.width170, row.width253}));
    }
    EXPECT_EQ(CPenList(L"", 1).Width(0), 18) << "without a section nobody looks at the settings";
}

TEST_F(Pens, SettingsAreThreeDigitsAPen)
{
    CPenList pens(L"", 2.5);
    std::iota(pens.m_widths.begin(), pens.m_widths.end(), 0);
    pens.StoreSettings(section);
    EXPECT_EQ(stored(L"Penlist11").GetLength(), 255);
    EXPECT_EQ(stored(L"Penlist12").GetLength(), 255);
    EXPECT_EQ(stored(L"Penlist13").GetLength(), 252);
    EXPECT_EQ(stored(L"Penlist12").Left(9), L"055056057");
    EXPECT_EQ(CPenList(section, 1).m_widths, pens.m_widths);
    EXPECT_EQ(pens.Width(3), 8) << "7.5 and a half, cut";
    EXPECT_EQ(pens.Width(9999), 633) << "an index beyond means the last pen: 632.5 and a half";
}

TEST_F(Pens, FilesLeaveOutTheRepeatedTail)
{
    struct Row
    {
        int last; // the highest pen that differs from the one before
        std::size_t lines;
    };
    for (const Row& row : {Row{0, 1}, Row{1, 2}, Row{100, 101}, Row{253, 254}}) {
        CPenList pens(L"", 1);
        for (int pen = row.last; row.last > 0 && pen < CPenList::Count; ++pen)
            pens.m_widths[static_cast<std::size_t>(pen)] = 70;
        ASSERT_EQ(pens.WriteFile(file("pens.pen").c_str()), 1);
        const std::string text = contentOf("pens.pen");
        EXPECT_EQ(static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n')), row.lines);
        EXPECT_EQ(text.substr(0, 4), "18\r\n");
        CPenList again(L"", 1);
        again.m_widths.fill(-1);
        ASSERT_EQ(again.ReadFile(file("pens.pen").c_str()), 1);
        EXPECT_EQ(again.m_widths, pens.m_widths);
    }
}

TEST_F(Pens, FilesAreReadWhateverIsInThem)
{
    struct Row
    {
        std::string text;
        int width0;
        int width1;
        int width2;
        int width253;
    };
    std::string many;
    for (int line = 0; line < 300; ++line)
        many += std::to_string(line) + "\n";
    const Row rows[] = {
        {"10\n20\n30\n", 10, 20, 30, 30},
        {"10\r\n20\r\n30", 10, 20, 30, 30},
        {"abc\n7\n", 0, 7, 7, 7},
        {"-5\n99999999999999999999\n", -5, _wtoi(L"99999999999999999999"), _wtoi(L"99999999999999999999"),
         _wtoi(L"99999999999999999999")},
        {many, 0, 1, 2, 253},
        {"", 18, 18, 18, 18},
        {std::string(40000, '7') + "\n5\n", _wtoi(std::wstring(64, L'7').c_str()), 5, 5, 5},
        {std::string(3 << 20, 'x'), 0, 0, 0, 0},
    };
    for (const Row& row : rows) {
        put("hostile.pen", row.text);
        CPenList pens(L"", 1);
        EXPECT_EQ(pens.ReadFile(file("hostile.pen").c_str()), 1);
        EXPECT_EQ((std::vector<int>{pens.m_widths[0], pens.m_widths[1], pens.m_widths[2], pens.m_widths[253]}),
                  (std::vector<int>{row.width0, row.width1, row.width2, row.width253}))
            << row.text.substr(0, 20);
    }
}

TEST_F(Pens, AFileThatCannotBeWrittenStaysAsItWas)
{
    put("kept.pen", "10\r\n");
    SetFileAttributesW(file("kept.pen").c_str(), FILE_ATTRIBUTE_READONLY);
    CPenList pens(L"", 1);
    for (const char* name : {"kept.pen", "no such folder/pens.pen"}) {
        try {
            pens.WriteFile(file(name).c_str());
            ADD_FAILURE() << "nothing was thrown for " << name;
        } catch (CFileException* exception) {
            exception->Delete();
        }
    }
    EXPECT_EQ(contentOf("kept.pen"), "10\r\n");
    SetFileAttributesW(file("kept.pen").c_str(), FILE_ATTRIBUTE_NORMAL);
    EXPECT_THROW(pens.ReadFile(file("missing.pen").c_str()), CFileException*);
}

std::wstring cell(HWND dialog, int row, int column)
{
    wchar_t shown[100] = {};
    LVITEMW item{};
    item.iSubItem = column;
    item.pszText = shown;
    item.cchTextMax = 100;
    SendDlgItemMessageW(dialog, IDC_RASTERIZE_PENS, LVM_GETITEMTEXTW, static_cast<WPARAM>(row),
                        reinterpret_cast<LPARAM>(&item));
    return shown;
}

// Types a width into a row, as F2 begins it.
void edit(HWND dialog, int row, const std::wstring& typed)
{
    const HWND list = GetDlgItem(dialog, IDC_RASTERIZE_PENS);
    SetFocus(list);
    LVITEMW item{};
    item.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
    item.state = LVIS_SELECTED | LVIS_FOCUSED;
    SendMessageW(list, LVM_SETITEMSTATE, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
    SendMessageW(list, WM_KEYDOWN, VK_F2, 0);
    const auto label = reinterpret_cast<HWND>(SendMessageW(list, LVM_GETEDITCONTROL, 0, 0));
    ASSERT_NE(label, nullptr) << "F2 edits the row";
    SetWindowTextW(label, typed.c_str());
    SendMessageW(label, WM_KEYDOWN, VK_RETURN, 0);
}

TEST_F(Pens, TheDialogTakesWidthsThatAPenCanHave)
{
    DialogDriver driver;
    driver.expectDialog([](HWND dialog) {
        EXPECT_EQ(SendDlgItemMessageW(dialog, IDC_RASTERIZE_PENS, LVM_GETITEMCOUNT, 0, 0), 254);
        EXPECT_EQ(cell(dialog, 253, 0), L"0.18 mm");
        EXPECT_EQ(cell(dialog, 253, 1), L"254");
        EXPECT_FALSE(enabled(dialog, IDC_RASTERIZE_SAVE));
        EXPECT_FALSE(enabled(dialog, IDC_RASTERIZE_ONLY_SELECTION));
        for (const wchar_t* refused : {L"0", L"5", L"-1", L"", L"letters", L"1e308"})
            edit(dialog, 2, refused);
        EXPECT_EQ(cell(dialog, 2, 0), L"0.18 mm");
        EXPECT_FALSE(enabled(dialog, IDC_RASTERIZE_SAVE)) << "nothing was accepted so far";
        edit(dialog, 0, L"4.99");
        edit(dialog, 1, L"0.29 mm");
        EXPECT_EQ(cell(dialog, 0, 0), L"4.99 mm");
        EXPECT_EQ(cell(dialog, 1, 0), L"0.29 mm");
        EXPECT_TRUE(enabled(dialog, IDC_RASTERIZE_SAVE));
        notify(dialog, IDC_RASTERIZE_SAVE, BN_CLICKED);
        EXPECT_FALSE(enabled(dialog, IDC_RASTERIZE_SAVE));
        press(dialog, IDCANCEL);
    });
    CDRasterize dialog;
    EXPECT_EQ(dialog.DoModal(), IDCANCEL);
    const CPenList pens(section, 1);
    EXPECT_EQ(pens.m_widths[0], 499);
    EXPECT_EQ(pens.m_widths[1], 28) << "0.29 times 100 is a little less than 29, and is cut";
    EXPECT_EQ(pens.m_widths[2], 18);
}

TEST_F(Pens, TheDialogsTableGoesToAFileAndBackAndStartStoresIt)
{
    put("three.pen", "30\n40\n50\n");
    DialogDriver driver;
    driver.expectDialog([](HWND dialog) { press(dialog, IDC_RASTERIZE_FROM_FILE); });
    driver.expectDialog([this](HWND fileDialog) {
        setName(fileDialog, file("three.pen").wstring());
        press(fileDialog, IDOK);
    });
    driver.expectDialog([](HWND dialog) {
        EXPECT_EQ(cell(dialog, 1, 0), L"0.40 mm");
        EXPECT_EQ(cell(dialog, 253, 0), L"0.50 mm");
        EXPECT_TRUE(enabled(dialog, IDC_RASTERIZE_SAVE));
        EXPECT_TRUE(enabled(dialog, IDC_RASTERIZE_ONLY_SELECTION));
        press(dialog, IDC_RASTERIZE_TO_FILE);
    });
    driver.expectDialog([this](HWND fileDialog) {
        setName(fileDialog, file("copy").wstring());
        press(fileDialog, IDOK);
    });
    driver.expectDialog([](HWND dialog) { press(dialog, IDOK); });
    CDRasterize dialog;
    dialog.m_bOnlySelection = 1;
    EXPECT_EQ(dialog.DoModal(), IDOK);
    EXPECT_EQ(contentOf("copy.pen"), "30\r\n40\r\n50\r\n");
    EXPECT_EQ(CPenList(section, 1).Width(2), 50);
}

} // namespace
