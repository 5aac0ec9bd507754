// The mouse tools' menus, as they pop up at a right click.

#include <utility>

#include "module/tools/CEditPasteTool.h"
#include "module/tools/CRasArrowTool.h"
#include "module/tools/RotateStart.h"
#include "module/tools/ToolMessageHook.h"
#include "tests/module/mouse_tools/mouse_fixture.h"

namespace {

using test::blank;

// What an entry says: greyed ones in brackets, checked ones with a star.
using Entries = std::vector<std::string>;

constexpr UINT getMenuHandle = 0x01E1; // MN_GETHMENU

// While it lives, calls `whenUp` once, from a timer in the menu's own loop, when a menu has popped up.
class MenuWatch
{
public:
    explicit MenuWatch(std::function<void(HMENU menu)> whenUp) : m_whenUp(std::move(whenUp))
    {
        current = this;
        m_timer = SetTimer(nullptr, 0, 10, look);
    }
    ~MenuWatch()
    {
        KillTimer(nullptr, m_timer);
        current = nullptr;
    }
    MenuWatch(const MenuWatch&) = delete;
    MenuWatch& operator=(const MenuWatch&) = delete;

    bool sawMenu() const { return !m_whenUp; }

private:
    static void CALLBACK look(HWND, UINT, UINT_PTR, DWORD)
    {
        const HWND window = FindWindowW(L"#32768", nullptr);
        if (!current || current->sawMenu() || !window || !IsWindowVisible(window))
            return;
        std::exchange(current->m_whenUp, nullptr)(reinterpret_cast<HMENU>(SendMessageW(window, getMenuHandle, 0, 0)));
    }

    static MenuWatch* current;
    std::function<void(HMENU)> m_whenUp; // empty once a menu was seen
    UINT_PTR m_timer = 0;
};

MenuWatch* MenuWatch::current = nullptr;

Entries entriesOf(HMENU menu)
{
    Entries entries;
    for (int position = 0; position < GetMenuItemCount(menu); ++position) {
        wchar_t text[64] = {};
        GetMenuStringW(menu, position, text, 64, MF_BYPOSITION);
        const UINT state = GetMenuState(menu, position, MF_BYPOSITION);
        std::string entry(text, text + wcslen(text));
        if (state & MF_CHECKED)
            entry += "*";
        entries.push_back(state & (MF_GRAYED | MF_DISABLED) ? "[" + entry + "]" : entry);
    }
    return entries;
}

class Menus : public test::MouseFixture
{
protected:
    // Right-clicks the view and does something while the menu is up, which has to close it.
    void rightClick(CPoint point, const std::function<void(HMENU menu)>& whenUp)
    {
        MenuWatch watch(whenUp);
        post(WM_RBUTTONDOWN, point);
        EXPECT_TRUE(watch.sawMenu());
        ASSERT_NE(g_pArxApp->m_pTool, nullptr);
        EXPECT_FALSE(g_pArxApp->m_pTool->m_bBusy) << "the mouse stays with a menu that is gone";
    }
    Entries menuAt(CPoint point)
    {
        Entries entries;
        rightClick(point, [&](HMENU menu) {
            entries = entriesOf(menu);
            EXPECT_TRUE(g_pArxApp->m_pTool->m_bBusy);
            EndMenu();
        });
        return entries;
    }
    // By the mouse, whose messages carry points of the screen while a menu is up.
    void choose(CPoint point, int position)
    {
        ButtonClickTimer.reset(); // no second press of a button
        rightClick(point, [&](HMENU menu) {
            RECT item = {};
            GetMenuItemRect(nullptr, menu, position, &item);
            const LPARAM middle = MAKELPARAM((item.left + item.right) / 2, (item.top + item.bottom) / 2);
            const LPARAM beside = MAKELPARAM(item.left - 10, item.top - 10); // where the right button comes up
            PostMessageW(view().m_hWnd, WM_RBUTTONUP, 0, beside);
            PostMessageW(view().m_hWnd, WM_MOUSEMOVE, 0, middle);
            PostMessageW(view().m_hWnd, WM_LBUTTONDOWN, MK_LBUTTON, middle);
            PostMessageW(view().m_hWnd, WM_LBUTTONUP, 0, middle);
        });
    }
    void startPaste() { ASSERT_TRUE((new CEditPasteTool)->Start()); }
    void startRotation(int code)
    {
        delete g_pArxApp->m_pTool;
        StartRotateToolLater(code);
        ASSERT_TRUE(test::pumpUntil([] { return g_pArxApp->m_pTool != nullptr; }));
    }
};

TEST_F(Menus, TheAreaMenuOffersWhatSelectionAndClipboardAllow)
{
    openRaster();
    SelectAreaCommand();
    const CPoint beside = at(60, 50);
    putOnClipboard(CF_UNICODETEXT, {'a', 0, 0, 0});
    EXPECT_EQ(menuAt(beside), (Entries{"[Cut]", "[Copy]", "[Paste]", "[Delete]", "[Invert select area]"}));
    putOnClipboard(CF_DIB, test::dibOf({"##"}));
    EXPECT_EQ(menuAt(beside), (Entries{"[Cut]", "[Copy]", "Paste", "[Delete]", "[Invert select area]"}));
    drag(at(10, 10), at(20, 15));
    EXPECT_EQ(menuAt(beside), (Entries{"Cut", "Copy", "Paste", "Delete", "Invert select area"}));
    emptyClipboard();
    EXPECT_EQ(menuAt(at(12, 12)), (Entries{"Cut", "Copy", "[Paste]", "Delete", "Invert select area"}));
}

TEST_F(Menus, ThePasteMenuTellsWhetherThePaperIsLeftOut)
{
    putOnClipboard(CF_DIB, test::dibOf({"##"}));
    openRaster();
    startPaste();
    EXPECT_EQ(menuAt(at(40, 30)), (Entries{"Transparent*"}));
    choose(at(40, 30), 0);
    EXPECT_EQ(menuAt(at(40, 30)), (Entries{"Transparent"}));
    startPaste();
    EXPECT_EQ(menuAt(at(40, 30)), (Entries{"Transparent*"})) << "each opening begins anew";

    closeRaster();
    openGrayRaster();
    startPaste();
    EXPECT_EQ(menuAt(at(40, 30)), (Entries{"Transparent"})) << "on a gray raster";
    choose(at(40, 30), 0);
    EXPECT_EQ(menuAt(at(40, 30)), (Entries{"Transparent*"}));
}

TEST_F(Menus, TheRotateMenuOffersTransparencyForAnAreaAlone)
{
    CAcraster& raster = openRaster();
    raster.GetRegion().SetRectRgn(38, 20, 43, 25);
    startRotation(RotateFreeWhole);
    EXPECT_EQ(menuAt(at(40, 30)), (Entries{"[Transparent*]", "Start rotation"}));
    startRotation(RotateFreeSelection);
    EXPECT_EQ(menuAt(at(40, 30)), (Entries{"Transparent*", "Start rotation"}));
    choose(at(40, 30), 0);
    EXPECT_EQ(menuAt(at(40, 30)), (Entries{"Transparent", "Start rotation"}));
}

// Writes down what reaches it.
class ListeningArea : public CRasArrowTool
{
public:
    explicit ListeningArea(std::vector<std::string>& heard) : m_heard(heard) {}
    int OnLButtonDown(CPoint, UINT) override { return hear("left down"); }
    int OnLButtonUp(CPoint, UINT) override { return hear("left up"); }
    int OnMouseMove(CPoint, UINT) override { return hear("move"); }
    int OnRButtonUp(CPoint, UINT) override { return hear("right up"); }
    int OnCommand(UINT) override { return hear("command"); }

private:
    int hear(const char* what)
    {
        m_heard.push_back(what);
        return 1;
    }
    std::vector<std::string>& m_heard;
};

TEST_F(Menus, UnderAMenuTheMouseBelongsToTheMenuButForTheRightButtonsRelease)
{
    CAcraster& raster = openRaster();
    raster.GetRegion().SetRectRgn(10, 10, 20, 15);
    std::vector<std::string> heard;
    ASSERT_TRUE((new ListeningArea(heard))->Start());
    choose(CPoint(100, 100), 0);
    EXPECT_EQ(heard, (std::vector<std::string>{"right up", "command"}));
    heard.clear();
    move(CPoint(30, 30));
    EXPECT_EQ(heard, std::vector<std::string>{"move"}) << "the mouse comes back to the tool";
}

TEST_F(Menus, AMenuLeavesNoPictureOfItselfUnderAPaste)
{
    openRaster();
    SelectAreaCommand();
    putOnClipboard(CF_DIB, test::dibOf(blank(4, 4)));
    const auto before = viewPixels();
    bool shown = false;
    CPoint corner(60, 60);
    choose(corner, 2);
    ASSERT_NE(g_pArxApp->m_pTool, nullptr);
    ASSERT_EQ(g_pArxApp->m_pTool->ToolId(), 7);
    const auto after = viewPixels();
    size_t different = 0;
    for (int y = 0; y < 300; ++y) {
        for (int x = 0; x < 400; ++x) {
            const bool floating = CRect(180, 130, 220, 170).PtInRect(CPoint(x, y)); // 4 by 4 pixels, and to spare
            const bool same = pixelOf(before, x, y) == pixelOf(after, x, y);
            shown = shown || (floating && !same);
            different += !floating && !same;
        }
    }
    EXPECT_TRUE(shown) << "nothing floats";
    EXPECT_EQ(different, 0u) << "pixels beside what floats";
}

} // namespace
