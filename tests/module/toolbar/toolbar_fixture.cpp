#include "tests/module/toolbar/toolbar_fixture.h"

#include "module/base/CArxApp.h"
#include "module/raster/CCurentRaster.h"

namespace test {

namespace {

std::function<void(HMENU)> lookAtMenu;

// While the menu is up it takes the thread's messages, timers among them.
void CALLBACK lookAtOpenMenu(HWND, UINT, UINT_PTR timer, DWORD)
{
    constexpr UINT getMenuHandle = 0x01E1; // MN_GETHMENU
    const HWND popUp = FindWindowW(L"#32768", nullptr);
    if (!popUp || !IsWindowVisible(popUp))
        return;
    KillTimer(nullptr, timer);
    lookAtMenu(reinterpret_cast<HMENU>(SendMessageW(popUp, getMenuHandle, 0, 0)));
    EndMenu();
}

} // namespace

void ToolbarFixture::SetUp()
{
    DeskFixture::SetUp();
    RegDeleteTreeW(HKEY_CURRENT_USER, settingsKey);
    m_frame = new CMDIFrameWnd;
    ASSERT_TRUE(m_frame->Create(nullptr, L"desk", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, CRect(20, 20, 620, 420)));
    m_frame->ShowWindow(SW_SHOWNA);
    m_frame->EnableDocking(CBRS_ALIGN_ANY);
    openDocument();
}

void ToolbarFixture::TearDown()
{
    forgetEdits();
    delete g_pArxApp;
    g_pArxApp = nullptr;
    m_frame->DestroyWindow();
    RegDeleteTreeW(HKEY_CURRENT_USER, settingsKey);
    DeskFixture::TearDown();
}

bool ToolbarFixture::runDeskCommand(const std::vector<standin::CommandArgument>& arguments)
{
    m_run = arguments;
    m_companyThen = AfxGetApp()->m_pszRegistryKey;
    return false;
}

LaMfcToolbar& ToolbarFixture::toolbar()
{
    EXPECT_EQ(CreateToolbar(), 1);
    return static_cast<LaMfcToolbar&>(*g_pArxApp->m_pToolbar);
}

void ToolbarFixture::openDocument()
{
    m_document = new CMDIChildWnd;
    ASSERT_TRUE(m_document->Create(nullptr, L"drawing", WS_CHILD | WS_VISIBLE | WS_OVERLAPPEDWINDOW,
                                   CFrameWnd::rectDefault, m_frame));
}

void ToolbarFixture::closeDocument()
{
    m_document->MDIDestroy();
    m_document = nullptr;
}

void ToolbarFixture::click(UINT id)
{
    LaMfcToolbar& bar = toolbar();
    AfxGetApp()->m_pMainWnd = m_frame;
    AfxGetThread()->OnIdle(0);
    AfxGetApp()->m_pMainWnd = nullptr;
    CRect button;
    bar.GetItemRect(bar.CommandToIndex(id), &button);
    const LPARAM at = MAKELPARAM(button.left + 8, button.CenterPoint().y);
    bar.SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, at);
    bar.SendMessage(WM_LBUTTONUP, 0, at);
}

LRESULT ToolbarFixture::stateOf(UINT id)
{
    LaMfcToolbar& bar = toolbar();
    bar.SendMessage(WM_IDLEUPDATECMDUI, TRUE);
    return bar.SendMessage(TB_GETSTATE, id) & (TBSTATE_ENABLED | TBSTATE_CHECKED);
}

void ToolbarFixture::openMenu(UINT id, const std::function<void(HMENU menu)>& look)
{
    int looks = 0;
    lookAtMenu = [&](HMENU menu) {
        ++looks;
        look(menu);
    };
    NMTOOLBARW arrow = {};
    arrow.hdr = {toolbar().m_hWnd, AFX_IDW_TOOLBAR, static_cast<UINT>(TBN_DROPDOWN)};
    arrow.iItem = static_cast<int>(id);
    const UINT_PTR timer = SetTimer(nullptr, 0, 20, lookAtOpenMenu);
    EXPECT_EQ(toolbar().SendMessage(WM_NOTIFY, AFX_IDW_TOOLBAR, reinterpret_cast<LPARAM>(&arrow)), TBDDRET_DEFAULT);
    KillTimer(nullptr, timer);
    EXPECT_EQ(looks, 1) << "no menu came up";
}

} // namespace test
