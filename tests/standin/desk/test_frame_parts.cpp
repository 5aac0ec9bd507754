// What the desk keeps from run to run, and the lists in its menus.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "standin/afx/afx.h"
#include "standin/desk/menu_list.h"
#include "standin/desk/outside_files.h"
#include "standin/desk/window_place.h"
#include "tests/support/files.h"

namespace {

CWinApp testProgram(L"Halvoran Desk test");

bool operator==(const RECT& one, const RECT& other)
{
    return EqualRect(&one, &other) != FALSE;
}

class Profile : public testing::Test
{
protected:
    Profile()
    {
        testProgram.m_pszRegistryKey = L"HalvoranDeskTest";
        testProgram.m_pszProfileName = L"Desk";
    }
    ~Profile() override { RegDeleteTreeW(HKEY_CURRENT_USER, L"Software\\HalvoranDeskTest"); }
};

// The menu's texts from the top, a greyed one in brackets.
std::vector<std::wstring> textsOf(HMENU menu)
{
    std::vector<std::wstring> texts;
    for (int i = 0; i < GetMenuItemCount(menu); ++i) {
        wchar_t text[200] = {};
        GetMenuStringW(menu, static_cast<UINT>(i), text, 200, MF_BYPOSITION);
        const bool grey = (GetMenuState(menu, static_cast<UINT>(i), MF_BYPOSITION) & MF_GRAYED) != 0;
        texts.push_back(grey ? L"[" + std::wstring(text) + L"]" : text);
    }
    return texts;
}

} // namespace

TEST(WindowPlace, LiesWhollyOnTheScreenThatIsThere)
{
    const RECT screen{0, 30, 1000, 800};
    const struct
    {
        const char* what;
        RECT place, fitted;
    } table[] = {
        {"as it was", {100, 100, 500, 400}, {100, 100, 500, 400}},
        {"right of a screen that is narrower now", {1500, 100, 1900, 400}, {600, 100, 1000, 400}},
        {"above and left of it", {-500, -300, -100, 0}, {0, 30, 400, 330}},
        {"larger than it in both ways", {-10, -10, 3000, 2000}, {0, 30, 1000, 800}},
        {"under its foot", {100, 700, 500, 1000}, {100, 500, 500, 800}},
    };
    for (const auto& row : table)
        EXPECT_TRUE(desk::movedInto(row.place, screen) == row.fitted) << row.what;
}

TEST(MenuList, TakesThePlaceOfWhatStoodThereBefore)
{
    using testing::ElementsAre;
    const desk::MenuList list{50, 52};
    const HMENU menu = CreatePopupMenu();
    AppendMenuW(menu, MF_STRING, 10, L"Next");
    AppendMenuW(menu, MF_STRING, 50, L"none");
    AppendMenuW(menu, MF_STRING, 11, L"Exit");
    desk::fillMenuList(menu, list, {L"a.dxf", L"b & c.dxf", L"d", L"too much"}, L"none");
    EXPECT_THAT(textsOf(menu), ElementsAre(L"Next", L"&1 a.dxf", L"&2 b && c.dxf", L"&3 d", L"Exit"));
    EXPECT_EQ(GetMenuItemID(menu, 3), 52u);
    desk::fillMenuList(menu, list, {}, L"none");
    EXPECT_THAT(textsOf(menu), ElementsAre(L"Next", L"[none]", L"Exit"));
    desk::fillMenuList(menu, {60, 61}, {L"elsewhere"}, L"none");
    EXPECT_EQ(GetMenuItemCount(menu), 3) << "it belongs to another menu";
    DestroyMenu(menu);
}

TEST_F(Profile, RecentFilesComeBackLatestFirstEachOnce)
{
    using testing::ElementsAre;
    desk::RecentFiles files;
    files.add(L"C:\\plans\\a.dxf");
    files.add(L"C:\\plans\\b.dxf");
    files.add(L"c:\\PLANS\\x\\..\\A.dxf");
    files.save();
    desk::RecentFiles later;
    later.load();
    EXPECT_THAT(later.files(), ElementsAre(L"c:\\PLANS\\A.dxf", L"C:\\plans\\b.dxf"));
    for (int i = 0; i < 20; ++i)
        later.add(L"C:\\" + std::to_wstring(i) + L".dxf");
    EXPECT_EQ(later.files().size(), desk::RecentFiles::most);
    EXPECT_EQ(later.files().front(), L"C:\\19.dxf");
    later.remove(L"C:\\19.DXF");
    later.save();
    files.load();
    EXPECT_EQ(files.files().size(), desk::RecentFiles::most - 1);
}

TEST_F(Profile, ARecentFileThatIsGoneIsToldOfAndLeavesTheList)
{
    const TemporaryFolder folder;
    std::vector<std::wstring> typed, alerts;
    desk::OutsideFiles files({[&](const std::wstring& text) { typed.push_back(text); },
                              {},
                              [&](const std::wstring& text) { alerts.push_back(text); }});
    const std::filesystem::path kept = folder / L"kept one.dxf", gone = folder / L"gone.dxf";
    std::ofstream(kept) << "0\nEOF\n";
    files.used(kept);
    files.used(gone);
    files.openRecent(0);
    EXPECT_THAT(alerts, testing::ElementsAre(gone.wstring() + L" is not there any more."));
    EXPECT_TRUE(typed.empty());
    files.openRecent(0);
    files.openRecent(1);
    EXPECT_THAT(typed, testing::ElementsAre(L"-open " + kept.wstring() + L"\r"));
}

TEST_F(Profile, AWindowComesUpWhereItWas)
{
    const HWND window =
        CreateWindowExW(0, L"STATIC", L"", WS_OVERLAPPEDWINDOW, 60, 70, 640, 480, nullptr, nullptr, nullptr, nullptr);
    EXPECT_FALSE(desk::restoreWindowPlace(window)) << "nothing is known yet";
    desk::saveWindowPlace(window);
    MoveWindow(window, 0, 0, 300, 300, FALSE);
    EXPECT_TRUE(desk::restoreWindowPlace(window));
    RECT place{};
    GetWindowRect(window, &place);
    EXPECT_TRUE(place == (RECT{60, 70, 700, 550})) << place.left << ' ' << place.top;
    AfxGetApp()->WriteProfileInt(L"Window", L"Width", -5);
    EXPECT_FALSE(desk::restoreWindowPlace(window)) << "that is no place";
    DestroyWindow(window);
}
