// Dialogs, modal and not, with the exchange of their values; tooltips; the chain of resource modules.
#include "driver.h"
#include "extension_in_chain.h"

namespace {

enum Control
{
    sizeLabel = 1100,
    sizeEdit,
    hideBox,
    firstButton,
    secondButton
};

class Settings : public CDialog
{
public:
    Settings() : CDialog(105) {}

    double size = 2.5;
    int hide = 1;
    int choice = 1;
    CStatic label;
    int changes = 0;

protected:
    void DoDataExchange(CDataExchange* exchange) override
    {
        CDialog::DoDataExchange(exchange);
        DDX_Control(exchange, sizeLabel, label);
        DDX_Text(exchange, sizeEdit, size);
        DDV_MinMaxDouble(exchange, size, 0.0, 100.0);
        DDX_Check(exchange, hideBox, hide);
        DDX_Radio(exchange, firstButton, choice);
    }
    void OnChange() { ++changes; }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(Settings, CDialog)
ON_EN_CHANGE(sizeEdit, &Settings::OnChange)
END_MESSAGE_MAP()

class Dialog : public testing::Test
{
protected:
    CWinApp app{L"Test"};
    ExtensionInChain extension;
};

CString textOf(HWND window, int id)
{
    CString text;
    CWnd::FromHandle(window)->GetDlgItemText(id, text);
    return text;
}

TEST_F(Dialog, ShowsItsMembersAndTakesThemBackOnOk)
{
    Settings dialog;
    int changesAtStart = -1;
    Driver driver({atWindow(L"Settings", [&](HWND window) {
        EXPECT_EQ(CWnd::FromHandlePermanent(window), &dialog);
        EXPECT_TRUE(textOf(window, sizeEdit) == L"2.5");
        EXPECT_EQ(::IsDlgButtonChecked(window, hideBox), 1u);
        EXPECT_EQ(::IsDlgButtonChecked(window, firstButton), 0u);
        EXPECT_EQ(::IsDlgButtonChecked(window, secondButton), 1u);
        EXPECT_EQ(dialog.label.m_hWnd, ::GetDlgItem(window, sizeLabel));
        changesAtStart = dialog.changes;
        ::SetDlgItemTextW(window, sizeEdit, L"7.25");
        ::SendMessageW(::GetDlgItem(window, hideBox), BM_CLICK, 0, 0);
        ::SendMessageW(::GetDlgItem(window, firstButton), BM_CLICK, 0, 0);
        ::PostMessageW(::GetDlgItem(window, IDOK), BM_CLICK, 0, 0);
    })});
    EXPECT_EQ(dialog.DoModal(), IDOK);
    EXPECT_EQ(changesAtStart, 0) << "filling the field is not the user's change";
    EXPECT_EQ(dialog.changes, 1);
    EXPECT_EQ(dialog.size, 7.25);
    EXPECT_EQ(dialog.hide, 0);
    EXPECT_EQ(dialog.choice, 0);
    EXPECT_EQ(dialog.m_hWnd, nullptr);
    EXPECT_EQ(dialog.label.m_hWnd, nullptr);
}

TEST_F(Dialog, CancelAndEscapeKeepTheMembers)
{
    for (const bool escape : {false, true}) {
        Settings dialog;
        Driver driver({atWindow(L"Settings", [&](HWND window) {
            ::SetDlgItemTextW(window, sizeEdit, L"9");
            if (escape)
                ::PostMessageW(::GetDlgItem(window, sizeEdit), WM_KEYDOWN, VK_ESCAPE, 0);
            else
                ::PostMessageW(::GetDlgItem(window, IDCANCEL), BM_CLICK, 0, 0);
        })});
        EXPECT_EQ(dialog.DoModal(), IDCANCEL);
        EXPECT_EQ(dialog.size, 2.5);
    }
}

TEST_F(Dialog, ABadValueKeepsTheDialogOpen)
{
    for (const wchar_t* bad : {L"wide", L"", L"101"}) {
        Settings dialog;
        CString told;
        Driver driver({atWindow(L"Settings",
                                [&](HWND window) {
                                    ::SetDlgItemTextW(window, sizeEdit, bad);
                                    ::PostMessageW(::GetDlgItem(window, IDOK), BM_CLICK, 0, 0);
                                }),
                       atWindow(L"Test",
                                [&](HWND box) {
                                    told = textOf(box, 0xFFFF);
                                    ::PostMessageW(box, WM_COMMAND, IDOK, 0);
                                }),
                       [&] {
                           const HWND window = windowTitled(L"Settings");
                           if (!window || windowTitled(L"Test") || !::IsWindowEnabled(window))
                               return false;
                           EXPECT_EQ(::GetFocus(), ::GetDlgItem(window, sizeEdit));
                           ::PostMessageW(window, WM_COMMAND, IDCANCEL, 0);
                           return true;
                       }});
        EXPECT_EQ(dialog.DoModal(), IDCANCEL);
        EXPECT_NE(told.Find(L"Please enter a number"), -1) << CString(told).GetString();
    }
}

TEST_F(Dialog, TheOwnerSleepsWhileADialogIsUp)
{
    CWnd owner;
    ASSERT_TRUE(owner.CreateEx(0, AfxRegisterWndClass(0), L"owner", WS_POPUP | WS_VISIBLE, CRect(100, 100, 500, 400),
                               nullptr, 0));
    app.m_pMainWnd = &owner;
    Settings dialog;
    Driver driver({atWindow(L"Settings", [&](HWND window) {
        EXPECT_FALSE(owner.IsWindowEnabled());
        CRect placed;
        ::GetWindowRect(window, &placed);
        EXPECT_NEAR(placed.CenterPoint().x, 300, 1) << "in the middle of its owner";
        EXPECT_NEAR(placed.CenterPoint().y, 250, 1);
        ::PostMessageW(window, WM_COMMAND, IDCANCEL, 0);
    })});
    EXPECT_EQ(dialog.DoModal(), IDCANCEL);
    EXPECT_TRUE(owner.IsWindowEnabled());
    app.m_pMainWnd = nullptr;
    owner.DestroyWindow();
}

TEST_F(Dialog, ResourcesComeFromTheExtensionUntilItLeaves)
{
    CString text;
    EXPECT_EQ(AfxFindResourceHandle(MAKEINTRESOURCEW(105), RT_DIALOG), extension.module());
    EXPECT_TRUE(text.LoadString(17723));
    EXPECT_TRUE(text == L"Current raster");
    EXPECT_FALSE(text.LoadString(1));
    EXPECT_TRUE(text.IsEmpty());
    CMenu menu;
    ASSERT_TRUE(menu.LoadMenu(121));
    EXPECT_TRUE(menu.GetSubMenu(0)->GetMenuState(32830, MF_BYCOMMAND) & MF_GRAYED);
    menu.GetSubMenu(0)->EnableMenuItem(32830, MF_ENABLED);
    EXPECT_FALSE(menu.GetSubMenu(0)->GetMenuState(32830, MF_BYCOMMAND) & MF_GRAYED);
    CBitmap bitmap;
    ASSERT_TRUE(bitmap.LoadBitmap(29999));
    BITMAP info{};
    bitmap.GetBitmap(&info);
    EXPECT_EQ(info.bmWidth, 48);

    // Marked as current, a module is asked first: here one that has nothing of its own.
    AfxSetResourceHandle(::GetModuleHandleW(L"hvstandin.dll"));
    EXPECT_TRUE(text.LoadString(17723));
    AfxSetResourceHandle(nullptr);
    {
        AFX_EXTENSION_MODULE again{};
        AfxInitExtensionModule(again, extension.module());
        AfxTermExtensionModule(again);
    }
    EXPECT_FALSE(text.LoadString(17723)) << "the module has left the chain";
    EXPECT_EQ(AfxFindResourceHandle(MAKEINTRESOURCEW(105), RT_DIALOG), AfxGetResourceHandle());
}

TEST_F(Dialog, MessageBoxesTakeTextFromTheStringTable)
{
    CString shown;
    Driver driver({atWindow(L"HVA6", [&](HWND box) {
        shown = textOf(box, 0xFFFF);
        EXPECT_NE(::GetDlgItem(box, IDCANCEL), nullptr);
        ::PostMessageW(box, WM_COMMAND, IDCANCEL, 0);
    })});
    app.m_pszAppName = L"HVA6"; // as a module that makes its own names current
    EXPECT_EQ(AfxMessageBox(17723u, MB_OKCANCEL), IDCANCEL);
    EXPECT_TRUE(shown == L"Current raster");
}

} // namespace
