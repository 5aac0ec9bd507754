// Windows with objects attached: maps, subclassing, message maps, commands, exceptions.
#include <gtest/gtest.h>

#include "driver.h"
#include "standin/afx/afx.h"

namespace {

constexpr UINT askMessage = WM_APP + 1;

class Base : public CWnd
{
    DECLARE_DYNAMIC(Base)
public:
    std::wstring heard;
    bool* gone = nullptr;

protected:
    afx_msg int OnCreate(LPCREATESTRUCT create)
    {
        heard += L"create ";
        return CWnd::OnCreate(create);
    }
    afx_msg void OnDestroy()
    {
        heard += L"destroy ";
        CWnd::OnDestroy();
    }
    afx_msg void OnSize(UINT, int cx, int cy) { heard += std::to_wstring(cx) + L"x" + std::to_wstring(cy) + L" "; }
    afx_msg void OnLButtonDown(UINT flags, CPoint point)
    {
        heard += L"down " + std::to_wstring(flags) + L":" + std::to_wstring(point.x) + L"," + std::to_wstring(point.y) +
                 L" ";
    }
    afx_msg LRESULT OnAsk(WPARAM wParam, LPARAM lParam) { return static_cast<LRESULT>(wParam) * 10 + lParam; }
    void OnBase() { heard += L"base "; }
    void OnShared() { heard += L"shared-base "; }
    void PostNcDestroy() override
    {
        if (gone)
            *gone = true;
    }
    DECLARE_MESSAGE_MAP()
};

class Derived : public Base
{
    DECLARE_DYNAMIC(Derived)
public:
    bool enabled = true;

protected:
    void OnShared() { heard += L"shared-derived "; }
    void OnRange(UINT id) { heard += L"range " + std::to_wstring(id) + L" "; }
    void OnUpdateShared(CCmdUI* state) { state->Enable(enabled); }
    void OnTold(NMHDR* header, LRESULT* result)
    {
        heard += L"notify " + std::to_wstring(static_cast<int>(header->code)) + L" ";
        *result = 42;
    }
    void OnThrow() { AfxThrowUserException(); }
    void OnFail() { throw std::runtime_error("the scan is broken"); }
    DECLARE_MESSAGE_MAP()
};

IMPLEMENT_DYNAMIC(Base, CWnd)
IMPLEMENT_DYNAMIC(Derived, Base)

BEGIN_MESSAGE_MAP(Base, CWnd)
ON_WM_CREATE()
ON_WM_DESTROY()
ON_WM_SIZE()
ON_WM_LBUTTONDOWN()
ON_MESSAGE(askMessage, &Base::OnAsk)
ON_COMMAND(100, &Base::OnBase)
ON_COMMAND(101, &Base::OnShared)
END_MESSAGE_MAP()

BEGIN_MESSAGE_MAP(Derived, Base)
ON_COMMAND(101, &Derived::OnShared)
ON_COMMAND_RANGE(200, 210, &Derived::OnRange)
ON_UPDATE_COMMAND_UI(101, &Derived::OnUpdateShared)
ON_NOTIFY(NM_CLICK, 300, &Derived::OnTold)
ON_COMMAND(400, &Derived::OnThrow)
ON_COMMAND(401, &Derived::OnFail)
END_MESSAGE_MAP()

class Window : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(window.CreateEx(0, AfxRegisterWndClass(0), L"test", WS_POPUP, CRect(0, 0, 80, 60), nullptr, 0));
        window.heard.clear();
    }
    CWinApp app{L"Test"};
    Derived window;
};

TEST(WindowCreation, TheObjectHearsItsWindowFromTheFirstMessageToTheLast)
{
    Derived window;
    bool gone = false;
    window.gone = &gone;
    ASSERT_TRUE(window.CreateEx(0, AfxRegisterWndClass(0), L"", WS_POPUP, CRect(0, 0, 80, 60), nullptr, 0));
    EXPECT_EQ(window.heard, L"create 80x60 ");
    const HWND handle = window;
    EXPECT_EQ(CWnd::FromHandlePermanent(handle), &window);
    EXPECT_TRUE(window.DestroyWindow());
    EXPECT_EQ(window.heard, L"create 80x60 destroy ");
    EXPECT_TRUE(gone);
    EXPECT_EQ(window.m_hWnd, nullptr);
    EXPECT_EQ(CWnd::FromHandlePermanent(handle), nullptr);
    EXPECT_FALSE(window.DestroyWindow());
}

TEST(WindowCreation, AFailedCreationAlsoEndsInPostNcDestroy)
{
    Derived window;
    bool gone = false;
    window.gone = &gone;
    EXPECT_FALSE(window.CreateEx(0, L"no such class", L"", WS_POPUP, CRect(0, 0, 8, 8), nullptr, 0));
    EXPECT_TRUE(gone);
    EXPECT_EQ(window.m_hWnd, nullptr);
}

TEST_F(Window, TemporaryObjectsLiveUntilTheProgramIsIdle)
{
    const HWND plain =
        ::CreateWindowExW(0, L"STATIC", L"label", WS_CHILD, 0, 0, 5, 5, window, nullptr, nullptr, nullptr);
    CWnd* temporary = CWnd::FromHandle(plain);
    ASSERT_NE(temporary, nullptr);
    EXPECT_EQ(CWnd::FromHandle(plain), temporary);
    EXPECT_EQ(CWnd::FromHandlePermanent(plain), nullptr);
    CString text;
    temporary->GetWindowText(text);
    EXPECT_TRUE(text == L"label");
    app.OnIdle(0);
    app.OnIdle(1);
    EXPECT_TRUE(::IsWindow(plain)) << "the object goes, the window stays";
    EXPECT_EQ(CWnd::FromHandle(nullptr), nullptr);
}

TEST_F(Window, MessagesReachTheNearestHandler)
{
    EXPECT_EQ(window.SendMessage(askMessage, 4, 2), 42);
    window.SendMessage(WM_LBUTTONDOWN, MK_LBUTTON | MK_SHIFT, MAKELPARAM(-3, 7));
    EXPECT_EQ(window.heard, L"down 5:-3,7 ");
    window.heard.clear();
    window.SendMessage(WM_COMMAND, 100);
    window.SendMessage(WM_COMMAND, 101);
    window.SendMessage(WM_COMMAND, 200);
    window.SendMessage(WM_COMMAND, 210);
    window.SendMessage(WM_COMMAND, 211);
    window.enabled = false;
    window.SendMessage(WM_COMMAND, 101);
    EXPECT_EQ(window.heard, L"base shared-derived range 200 range 210 ") << "a disabled command is swallowed";
}

TEST_F(Window, NotificationsAreAnswered)
{
    NMHDR header{window, 300, static_cast<UINT>(NM_CLICK)};
    EXPECT_EQ(window.SendMessage(WM_NOTIFY, 300, reinterpret_cast<LPARAM>(&header)), 42);
    header.code = static_cast<UINT>(NM_DBLCLK);
    EXPECT_EQ(window.SendMessage(WM_NOTIFY, 300, reinterpret_cast<LPARAM>(&header)), 0);
    EXPECT_EQ(window.heard, L"notify -2 ");
}

TEST_F(Window, AMenuShowsTheStatesOfItsCommands)
{
    CMenu menu;
    menu.CreatePopupMenu();
    menu.AppendMenu(MF_STRING, 101, L"shared");
    CCmdUI state;
    state.m_pMenu = &menu;
    state.m_nID = 101;
    window.enabled = false;
    state.DoUpdate(&window, TRUE);
    EXPECT_TRUE(menu.GetMenuState(101, MF_BYCOMMAND) & MF_GRAYED);
    window.enabled = true;
    state.DoUpdate(&window, TRUE);
    EXPECT_FALSE(menu.GetMenuState(101, MF_BYCOMMAND) & MF_GRAYED);
    menu.AppendMenu(MF_STRING, 999, L"nobody's");
    state.m_nID = 999;
    state.m_nIndex = 1;
    state.DoUpdate(&window, TRUE);
    EXPECT_TRUE(menu.GetMenuState(999, MF_BYCOMMAND) & MF_GRAYED) << "a command without a handler";
}

TEST_F(Window, AnExceptionIsShownAndGoesNoFurther)
{
    CString shown;
    Driver driver({atWindow(L"Test", [&](HWND box) {
        CWnd::FromHandle(box)->GetDlgItemText(0xFFFF, shown);
        ::PostMessageW(box, WM_COMMAND, IDOK, 0);
    })});
    EXPECT_EQ(window.SendMessage(WM_COMMAND, 400), 1) << "a user's exception ends the command in silence";
    window.SendMessage(WM_COMMAND, 401);
    EXPECT_TRUE(shown == L"the scan is broken") << CString(shown).GetString();
}

class Shouting : public CWnd
{
protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        if (message == WM_GETTEXTLENGTH)
            return CWnd::WindowProc(message, wParam, lParam) * 100;
        return CWnd::WindowProc(message, wParam, lParam);
    }
};

TEST_F(Window, SubclassingSitsBeforeTheFormerProcedureAndGivesItBack)
{
    const HWND edit = ::CreateWindowExW(0, L"EDIT", L"abc", WS_CHILD, 0, 0, 50, 20, window, nullptr, nullptr, nullptr);
    const LONG_PTR procedure = ::GetWindowLongPtrW(edit, GWLP_WNDPROC);
    Shouting object;
    ASSERT_TRUE(object.SubclassWindow(edit));
    EXPECT_EQ(::SendMessageW(edit, WM_GETTEXTLENGTH, 0, 0), 300);
    EXPECT_EQ(CWnd::FromHandlePermanent(edit), &object);
    EXPECT_EQ(object.UnsubclassWindow(), edit);
    EXPECT_EQ(::SendMessageW(edit, WM_GETTEXTLENGTH, 0, 0), 3);
    EXPECT_EQ(::GetWindowLongPtrW(edit, GWLP_WNDPROC), procedure);
    ASSERT_TRUE(object.SubclassWindow(edit));
    ::DestroyWindow(edit);
    EXPECT_EQ(object.m_hWnd, nullptr) << "the end of the window detaches the object";
    EXPECT_FALSE(object.SubclassWindow(nullptr));
}

} // namespace
