// The dialog itself is the operating system's: it is worked by messages from a timer while it is up.

#include "module/shell/CFileDialogEx.h"
#include "tests/module/support/desk_fixture.h"
#include "tests/module/support/dialog_driver.h"

namespace {

using test::chooseType;
using test::nameIn;
using test::press;
using test::setName;

constexpr LPCWSTR filter = L"TIFF (*.tif)|*.tif|PNG (*.png)|*.png|All (*.*)|*.*||";

class FileDialog : public test::DeskFixture
{
protected:
    void SetUp() override
    {
        DeskFixture::SetUp();
        m_owner.CreateEx(0, L"STATIC", L"owner", WS_POPUP | WS_VISIBLE, CRect(500, 10, 600, 60), nullptr, 0);
    }
    void TearDown() override
    {
        m_owner.DestroyWindow();
        DeskFixture::TearDown();
    }

    CWnd m_owner;
};

// A save dialog with a buffer for its name.
struct SaveDialog
{
    SaveDialog(const std::wstring& preset, CWnd& owner) : dialog(FALSE, OFN_HIDEREADONLY, filter, &owner)
    {
        lstrcpynW(name, preset.c_str(), MAX_PATH);
        dialog.GetOFN().lpstrFile = name;
        dialog.GetOFN().nMaxFile = MAX_PATH;
        dialog.GetOFN().nFilterIndex = 1;
        dialog.GetOFN().lpstrInitialDir = L"C:\\";
    }
    INT_PTR run(test::DialogDriver::Work work)
    {
        test::DialogDriver driver;
        driver.expectDialog(std::move(work));
        return dialog.DoModal();
    }

    wchar_t name[MAX_PATH];
    CFileDialogEx dialog;
};

// The folder in which the dialog stands.
std::filesystem::path folderOf(HWND dialog)
{
    wchar_t folder[MAX_PATH] = {};
    SendMessageW(dialog, CDM_GETFOLDERPATH, MAX_PATH, reinterpret_cast<LPARAM>(folder));
    return folder;
}

bool sameFolder(std::filesystem::path a, std::filesystem::path b)
{
    // With one separator at the end of each.
    return lstrcmpiW((a / "").make_preferred().c_str(), (b / "").make_preferred().c_str()) == 0;
}

TEST_F(FileDialog, APresetPathOpensItsFolderWithItsNameAgainAndAgain)
{
    const std::filesystem::path folder = file("plans");
    std::filesystem::create_directories(folder);
    struct Case
    {
        std::wstring preset;
        std::wstring name;
    };
    for (const Case& row : {Case{(folder / "site.tif").wstring(), L"site.tif"}, Case{folder.wstring() + L"\\", L""}}) {
        SaveDialog save(row.preset, m_owner);
        for (int showing = 1; showing <= 2; ++showing) {
            SCOPED_TRACE(showing);
            const INT_PTR result = save.run([&](HWND window) {
                EXPECT_TRUE(sameFolder(folderOf(window), folder)) << folderOf(window);
                EXPECT_EQ(nameIn(window), row.name);
                EXPECT_FALSE(IsWindowEnabled(m_owner.m_hWnd));
                press(window, IDCANCEL);
            });
            EXPECT_EQ(result, IDCANCEL);
            EXPECT_TRUE(IsWindowEnabled(m_owner.m_hWnd));
            const LPCWSTR initial = save.dialog.GetOFN().lpstrInitialDir;
            EXPECT_TRUE(initial && sameFolder(initial, folder));
        }
    }
}

TEST_F(FileDialog, TheNameFollowsTheType)
{
    struct Case
    {
        LPCWSTR name;
        int type;
        std::wstring wanted;
    };
    const Case cases[] = {
        {L"site.tif", 1, L"site.png"}, {L"site", 1, L"site.png"},  {L"site.v2.tif", 1, L"site.v2.png"},
        {L"site.tif", 2, L"site.*"},   {L"site.", 1, L"site.png"}, {L"site.tif", 0, L"site.tif"},
    };
    for (const Case& row : cases) {
        SaveDialog(file("start.tif"), m_owner).run([&](HWND window) {
            setName(window, row.name);
            chooseType(window, row.type);
            EXPECT_EQ(nameIn(window), row.wanted) << "type " << row.type;
            press(window, IDCANCEL);
        });
    }
}

TEST_F(FileDialog, AnAcceptedNameComesBackWithItsType)
{
    SaveDialog save(file("start.tif"), m_owner);
    const INT_PTR result = save.run([](HWND window) {
        chooseType(window, 1);
        press(window, IDOK);
    });
    EXPECT_EQ(result, IDOK);
    EXPECT_EQ(save.dialog.GetOFN().nFilterIndex, 2u);
    EXPECT_EQ(std::filesystem::path(save.dialog.GetPathName().GetString()).filename(), "start.png");
}

TEST_F(FileDialog, TheFramePaintsItsControlsOnTheModulesColour)
{
    SaveDialog(L"", m_owner).run([](HWND window) {
        const HDC context = GetDC(window);
        const auto brush = reinterpret_cast<LRESULT>(FileDialogBrush());
        for (const UINT message : {WM_CTLCOLORBTN, WM_CTLCOLORDLG, WM_CTLCOLORSCROLLBAR, WM_CTLCOLORSTATIC}) {
            SetBkMode(context, OPAQUE);
            EXPECT_EQ(SendMessageW(window, message, reinterpret_cast<WPARAM>(context), 0), brush);
            EXPECT_EQ(GetBkMode(context), TRANSPARENT);
        }
        for (const UINT message : {WM_CTLCOLOREDIT, WM_CTLCOLORLISTBOX})
            EXPECT_NE(SendMessageW(window, message, reinterpret_cast<WPARAM>(context), 0), brush);
        ReleaseDC(window, context);
        press(window, IDCANCEL);
    });
}

TEST_F(FileDialog, NestedDialogsShareOneBrushToTheLast)
{
    ASSERT_EQ(FileDialogBrush(), nullptr);
    {
        const CFileDialogEx outer(TRUE, 0, filter, nullptr);
        const HBRUSH brush = FileDialogBrush();
        ASSERT_NE(brush, nullptr);
        LOGBRUSH look = {};
        GetObjectW(brush, sizeof(look), &look);
        EXPECT_EQ(look.lbColor, GetSysColor(COLOR_BTNFACE));
        EXPECT_EQ(ModuleBackColor, GetSysColor(COLOR_BTNFACE));
        {
            const CFileDialogEx inner(FALSE, 0, filter, nullptr);
            EXPECT_EQ(FileDialogBrush(), brush);
        }
        EXPECT_EQ(FileDialogBrush(), brush) << "the outer dialog still needs it";
    }
    EXPECT_EQ(FileDialogBrush(), nullptr);
}

LRESULT CALLBACK answerSeven(HWND, UINT, WPARAM, LPARAM)
{
    return 7;
}

TEST_F(FileDialog, ASubclassedWindowGetsBackWhatItHad)
{
    const HWND window = m_owner.m_hWnd;
    SetWindowLongPtrW(window, GWLP_USERDATA, 99);
    const LONG_PTR procedure = GetWindowLongPtrW(window, GWLP_WNDPROC);
    {
        const CSubCwnd subclass(window, answerSeven);
        EXPECT_EQ(SendMessageW(window, WM_USER, 0, 0), 7);
        EXPECT_EQ(GetWindowLongPtrW(window, GWLP_USERDATA), procedure);
    }
    EXPECT_EQ(GetWindowLongPtrW(window, GWLP_WNDPROC), procedure);
    EXPECT_EQ(GetWindowLongPtrW(window, GWLP_USERDATA), 99);
}

} // namespace
