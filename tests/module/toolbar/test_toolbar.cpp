// The module's toolbar in a frame: what it shows, what its buttons do, and where it lies.

#include <gmock/gmock.h>

#include "module/base/CArxApp.h"
#include "module/base/CDefault.h"
#include "module/commands/ShellCommands.h"
#include "module/raster/CCurentRaster.h"
#include "module/tools/CTool.h"
#include "module/tools/ToolMessageHook.h"
#include "tests/module/support/dialog_driver.h"
#include "tests/module/toolbar/toolbar_fixture.h"

namespace {

using Texts = std::vector<std::wstring>;

class RecordingTool : public CTool
{
public:
    explicit RecordingTool(int id) : m_id(id) {}
    int ToolId() override { return m_id; }

private:
    int m_id;
};

class Toolbar : public test::ToolbarFixture
{};

constexpr UINT allButtons[] = {59999, 32809, 40009, 32800, 32795, 32797, 32799, 32798, 32810, 40001};

TEST_F(Toolbar, ItIsMadeAtTheFootOfTheFrameWithItsButtonsInOrder)
{
    LaMfcToolbar& bar = toolbar();
    EXPECT_EQ(GetDlgCtrlID(GetParent(bar)), 59422) << "the lower side of the frame";
    EXPECT_TRUE(bar.IsVisible());
    CString title;
    bar.GetWindowText(title);
    EXPECT_EQ(title, CString(L"HVA6"));
    constexpr UINT order[] = {59999, 32809, 40009, 0, 32800, 32795, 0, 32797, 32799, 32798, 32810, 0, 40001};
    ASSERT_EQ(bar.GetCount(), static_cast<int>(std::size(order)));
    for (int i = 0; i < bar.GetCount(); ++i)
        EXPECT_EQ(bar.GetItemID(i), order[i]) << i;
    for (const UINT id : allButtons) {
        const bool arrow = (bar.GetButtonStyle(bar.CommandToIndex(id)) & BTNS_DROPDOWN) != 0;
        EXPECT_EQ(arrow, id == 32810 || id == 40001) << id;
    }
    for (const UINT message : {TB_GETIMAGELIST, TB_GETDISABLEDIMAGELIST})
        EXPECT_EQ(ImageList_GetImageCount(reinterpret_cast<HIMAGELIST>(bar.SendMessage(message))), 10);
    EXPECT_TRUE(m_alerts.empty());
    LaMfcToolbar* const first = &bar;
    ShowToolbarCommand();
    EXPECT_EQ(g_pArxApp->m_pToolbar, first) << "one that is there is left alone";
}

TEST_F(Toolbar, TheSettingHidesItFromTheStart)
{
    CDefault::SetInteger(ShowToolbarSetting, 0);
    EXPECT_FALSE(toolbar().IsVisible());
    ShowToolbarCommand();
    EXPECT_FALSE(toolbar().IsVisible()) << "the command does not bring a hidden one into view";
    CDefault::SetInteger(ShowToolbarSetting, 1);
}

TEST_F(Toolbar, ThatCannotBeMadeIsSaidAndLeavesAnObjectWithoutAWindow)
{
    m_frameGone = true;
    EXPECT_EQ(CreateToolbar(), 0);
    EXPECT_EQ(m_alerts, Texts{L"Impossible to create toolbar."});
    ASSERT_TRUE(g_pArxApp->m_pToolbar);
    EXPECT_EQ(g_pArxApp->m_pToolbar->m_hWnd, nullptr);
    m_frameGone = false;
    ShowToolbarCommand();
    EXPECT_EQ(g_pArxApp->m_pToolbar->m_hWnd, nullptr) << "the object stands in the way of another one";
}

TEST_F(Toolbar, AClickPostsTheCommandOfItsButton)
{
    openCurrent(test::blank(4, 2));
    const std::pair<UINT, const wchar_t*> commands[] = {
        {59999, L"orvo_new "},     {32809, L"orvo_open "},   {40009, L"orvo_saveas "},  {32800, L"orvo_selras "},
        {32795, L"orvo_selarea "}, {32797, L"orvo_raspen "}, {32799, L"orvo_rasline "}, {32798, L"orvo_raseras "},
    };
    for (const auto& [id, text] : commands) {
        m_posted.clear();
        click(id);
        EXPECT_EQ(m_posted, (Texts{L"CANCELCMD", text}));
    }
    m_posted.clear();
    toolbar().SendMessage(WM_COMMAND, 40007); // of the settings menu
    EXPECT_EQ(m_posted, (Texts{L"CANCELCMD", L"orvo_about "}));
}

TEST_F(Toolbar, TheSettingsButtonRunsAWordThatIsNoCommandInTheHostsName)
{
    const LPCWSTR before = AfxGetApp()->m_pszRegistryKey;
    AfxGetApp()->m_pszRegistryKey = L"Host company";
    click(40001);
    AfxGetApp()->m_pszRegistryKey = before;
    EXPECT_EQ(m_posted, (Texts{L"CANCELCMD", L"orvo_prop "}));
    ASSERT_EQ(m_run.size(), 1u);
    // The bytes of "regen", two to a character.
    EXPECT_EQ(std::get<std::wstring>(m_run[0]), L"\x6572\x6567n");
    EXPECT_EQ(m_companyThen, CString(L"Host company"));
}

TEST_F(Toolbar, TheRasterButtonTurnsTheShownStateOver)
{
    click(32810);
    EXPECT_EQ(m_posted, Texts{L"\t\b"}) << "without a raster the characters are posted all the same";
    CAcraster& raster = openCurrent(test::blank(4, 2));
    for (const bool shown : {false, true}) {
        m_posted.clear();
        click(32810);
        EXPECT_EQ(m_posted, (Texts{L"\t", L"\t\b"})) << "a commit, and the characters";
        EXPECT_EQ(raster.IsShown(), shown);
        EXPECT_EQ(stateOf(32810), TBSTATE_ENABLED | (shown ? TBSTATE_CHECKED : 0));
        EXPECT_EQ(raster.GetLockCount(), 0);
    }
    EXPECT_EQ(g_pArxApp->m_pSaveList, nullptr) << "there is nothing to save";
}

TEST_F(Toolbar, WithoutADocumentOrWithSuspendedObjectsNothingReacts)
{
    openCurrent(test::blank(4, 2));
    g_pArxApp->m_bSuspended = true;
    for (const UINT id : allButtons)
        click(id);
    g_pArxApp->m_bSuspended = false;
    closeDocument();
    for (const UINT id : allButtons)
        click(id);
    EXPECT_EQ(m_posted, Texts{});
    EXPECT_TRUE(m_run.empty());
    openDocument();
}

TEST_F(Toolbar, StatesFollowTheRasterAndTheTool)
{
    constexpr LRESULT enabled = TBSTATE_ENABLED;
    constexpr LRESULT checked = TBSTATE_ENABLED | TBSTATE_CHECKED;
    const auto states = [this] {
        std::vector<LRESULT> seen;
        for (const UINT id : allButtons)
            seen.push_back(stateOf(id));
        return seen;
    };
    using States = std::vector<LRESULT>;
    //              new      insert   save     select   area     pen      line     eraser   raster   settings
    const States none = {enabled, enabled, 0, enabled, 0, 0, 0, 0, enabled, enabled};
    EXPECT_EQ(states(), none);
    States picking = none;
    picking[3] = checked;
    const auto* pick = new RecordingTool(1);
    EXPECT_EQ(states(), picking);
    delete pick;
    openCurrent(test::blank(4, 2));
    const States current = {enabled, enabled, enabled, checked, enabled, enabled, enabled, enabled, checked, enabled};
    EXPECT_EQ(states(), current);
    const std::pair<int, int> tools[] = {{2, 4}, {3, 5}, {4, 6}, {5, 7}, {7, -1}, {9, -1}, {0, -1}};
    for (const auto& [id, position] : tools) {
        States wanted = current;
        if (position >= 0)
            wanted[static_cast<std::size_t>(position)] = checked;
        const auto* tool = new RecordingTool(id);
        EXPECT_EQ(states(), wanted) << id;
        delete tool;
    }
    DropCurrentRaster();
    EXPECT_EQ(states(), none);
}

TEST_F(Toolbar, TipsAndStatusTextsAreParted)
{
    const std::pair<UINT, const wchar_t*> texts[] = {
        {59999, L"Create a new raster\nNew"},
        {32809, L"Insert raster file in current DWG\nInsert raster"},
        {40009, L"Save selected raster region to file\nSave raster as"},
        {32800, L"Select current raster\nSelect raster"},
        {32795, L"Select rectangular area\nSelect area"},
        {32797, L"Raster pen\nRaster pen"},
        {32799, L"Raster lines\nRaster lines"},
        {32798, L"Raster eraser\nRaster eraser"},
        {32810, L"Raster functions\nRaster on-off, raster functions"},
        {40001, L"Adjust program settings\nSettings"},
    };
    LaMfcToolbar& bar = toolbar();
    CWnd statusLine;
    statusLine.CreateEx(0, L"STATIC", L"", WS_CHILD, CRect(0, 0, 10, 10), frame(), AFX_IDW_STATUS_BAR);
    for (const auto& [id, text] : texts) {
        const std::wstring whole = text;
        NMTTDISPINFOW tip = {};
        tip.hdr = {reinterpret_cast<HWND>(bar.SendMessage(TB_GETTOOLTIPS)), id, static_cast<UINT>(TTN_GETDISPINFOW)};
        bar.SendMessage(WM_NOTIFY, id, reinterpret_cast<LPARAM>(&tip));
        EXPECT_EQ(std::wstring(tip.szText), whole.substr(whole.find(L'\n') + 1));
        NMTBHOTITEM hot = {};
        hot.hdr = {bar.m_hWnd, AFX_IDW_TOOLBAR, static_cast<UINT>(TBN_HOTITEMCHANGE)};
        hot.idNew = static_cast<int>(id);
        bar.SendMessage(WM_NOTIFY, AFX_IDW_TOOLBAR, reinterpret_cast<LPARAM>(&hot));
        CString status;
        statusLine.GetWindowText(status);
        EXPECT_EQ(std::wstring(status), whole.substr(0, whole.find(L'\n')));
    }
}

TEST_F(Toolbar, AFloatingFramesCloseBoxAsksAndStaysWhateverTheAnswer)
{
    LaMfcToolbar& bar = toolbar();
    EXPECT_FALSE(bar.IsFrameHooked());
    frame()->FloatControlBar(&bar, CPoint(200, 150));
    ASSERT_TRUE(bar.IsFrameHooked());
    const HWND floating = floatingFrame();
    const auto procedure = GetWindowLongPtrW(floating, GWLP_WNDPROC);
    frame()->FloatControlBar(&bar, CPoint(260, 180));
    EXPECT_EQ(GetWindowLongPtrW(floating, GWLP_WNDPROC), procedure) << "hooked once, however often it moves";

    openCurrent(test::blank(4, 2));
    const auto closeAndPress = [&](int answer) {
        test::DialogDriver driver;
        driver.expectDialog([answer](HWND box) {
            wchar_t text[200] = {};
            GetDlgItemTextW(box, 0xFFFF, text, 200);
            EXPECT_STREQ(text, L"Halvoran can be reloaded with the  \"HV2000\" command");
            test::press(box, answer);
        });
        SendMessageW(floating, WM_CLOSE, 0, 0);
    };
    closeAndPress(IDCANCEL);
    EXPECT_TRUE(g_pArxApp->m_pRaster);
    EXPECT_EQ(m_posted, Texts{});
    closeAndPress(IDOK);
    EXPECT_EQ(g_pArxApp->m_pRaster, nullptr);
    // The bytes of "HVA6_13_64.arx", two to a character, and nothing that would enter it.
    EXPECT_EQ(m_posted, Texts{L"arx u \x5648\x3641\x315F\x5F33\x3436\x612E\x7872"});
    EXPECT_TRUE(IsWindowVisible(floating));
    EXPECT_TRUE(bar.IsVisible());

    frame()->DockControlBar(&bar, AFX_IDW_DOCKBAR_LEFT);
    EXPECT_FALSE(IsWindow(floating));
    EXPECT_FALSE(bar.IsFrameHooked()) << "the hook goes with its frame";
    frame()->FloatControlBar(&bar, CPoint(200, 150));
    EXPECT_TRUE(bar.IsFrameHooked()) << "and comes with the next one";
}

TEST_F(Toolbar, DeletedWhileItFloatsItLeavesNoFrame)
{
    frame()->FloatControlBar(&toolbar(), CPoint(200, 150));
    const HWND floating = floatingFrame();
    delete std::exchange(g_pArxApp->m_pToolbar, nullptr);
    EXPECT_TRUE(test::pumpUntil([=] { return !IsWindow(floating); })) << "no box may come up either";
}

TEST_F(Toolbar, AWindowsEndInTheQueueUnhooksTheFrameWhileAToolLives)
{
    frame()->FloatControlBar(&toolbar(), CPoint(200, 150));
    new RecordingTool(3);
    MSG message = {};
    message.hwnd = frame()->m_hWnd;
    message.message = WM_DESTROY;
    ToolMessageHook(HC_ACTION, PM_REMOVE, reinterpret_cast<LPARAM>(&message));
    EXPECT_FALSE(toolbar().IsFrameHooked());
    EXPECT_EQ(message.message, UINT(WM_DESTROY)) << "the window gets it all the same";
    delete g_pArxApp->m_pTool;
}

// --- Menus ---

constexpr UINT rasterItems[] = {32830, 32831, 32832, 32812, 32813, 32814, 32823,
                                32815, 32816, 32817, 32818, 32825, 32822};

bool isGreyed(HMENU menu, UINT id)
{
    return (GetMenuState(menu, id, MF_BYCOMMAND) & MF_GRAYED) != 0;
}

bool isTicked(HMENU menu, UINT id)
{
    return (GetMenuState(menu, id, MF_BYCOMMAND) & MF_CHECKED) != 0;
}

TEST_F(Toolbar, TheRasterMenuOpensGreyWithoutARaster)
{
    openMenu(32810, [](HMENU menu) {
        std::vector<UINT> order;
        for (int i = 0; i < GetMenuItemCount(menu); ++i) {
            if (GetMenuItemID(menu, i) != 0)
                order.push_back(GetMenuItemID(menu, i));
        }
        EXPECT_THAT(order, testing::ElementsAreArray(rasterItems));
        EXPECT_EQ(GetMenuItemCount(menu), 17) << "four lines part them";
        for (const UINT id : rasterItems)
            EXPECT_TRUE(isGreyed(menu, id)) << id;
        ASSERT_TRUE(g_pArxApp->m_pTool);
        EXPECT_EQ(g_pArxApp->m_pTool->ToolId(), 0);
        EXPECT_TRUE(g_pArxApp->m_pTool->m_bBusy) << "the hook is to leave the mouse to the menu";
    });
    ASSERT_TRUE(g_pArxApp->m_pTool) << "what is chosen comes after the menu has closed";
    PostMessageW(view().m_hWnd, WM_LBUTTONDOWN, 0, 0);
    test::pumpAll();
    EXPECT_EQ(g_pArxApp->m_pTool, nullptr);
    EXPECT_EQ(m_posted, Texts{});
}

TEST_F(Toolbar, TheRasterMenuFollowsTheRastersState)
{
    CAcraster& raster = openCurrent(test::blank(4, 2), {.display = 7 + 8}); // transparent
    for (const bool selection : {false, true}) {
        if (selection)
            raster.GetRegion().SetRectRgn(1, 0, 3, 2);
        openMenu(32810, [&](HMENU menu) {
            for (const UINT id : rasterItems) {
                const bool frames = id == 32832; // the host is asked for images in words that it misreads
                EXPECT_EQ(isGreyed(menu, id), frames || (id == 32817 && !selection)) << id;
            }
            EXPECT_TRUE(isTicked(menu, 32830));
            EXPECT_TRUE(isTicked(menu, 32831));
            EXPECT_EQ(GetMenuDefaultItem(menu, FALSE, 0), 32830u);
            EXPECT_EQ(raster.GetLockCount(), 1);
        });
        EXPECT_EQ(raster.GetLockCount(), 0);
        EXPECT_FALSE(g_pArxApp->m_bSuspended);
    }
    toolbar().PostMessage(WM_COMMAND, 32812);
    test::pumpAll();
    EXPECT_EQ(g_pArxApp->m_pTool, nullptr) << "a choice ends the menu's tool";
    EXPECT_EQ(m_posted, (Texts{L"CANCELCMD", L"orvo_invert "}));
}

TEST_F(Toolbar, TheSettingsMenuOffersSettingsAndAbout)
{
    openMenu(40001, [](HMENU menu) {
        ASSERT_EQ(GetMenuItemCount(menu), 3);
        wchar_t text[40] = {};
        GetMenuStringW(menu, 40001, text, 40, MF_BYCOMMAND);
        EXPECT_STREQ(text, L"&Program settings");
        GetMenuStringW(menu, 40007, text, 40, MF_BYCOMMAND);
        EXPECT_STREQ(text, L"&About...");
        EXPECT_EQ(GetMenuDefaultItem(menu, FALSE, 0), 40001u);
    });
    EXPECT_EQ(g_pArxApp->m_pTool, nullptr);
}

} // namespace
