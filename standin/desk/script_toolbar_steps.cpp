// The steps of a script that work a module's toolbar and menus.

#include <windows.h>
#include <commctrl.h>

#include "standin/desk/module_toolbar.h"
#include "standin/desk/script_player.h"

namespace desk::script {
namespace {

// What is expected has this long to come true.
constexpr int patience = 5'000;

const wchar_t* sideName(Side side)
{
    constexpr const wchar_t* names[] = {L"upper", L"lower", L"left", L"right"};
    return names[static_cast<int>(side)];
}

UINT dockBarOf(Side side)
{
    constexpr UINT bars[] = {AFX_IDW_DOCKBAR_TOP, AFX_IDW_DOCKBAR_BOTTOM, AFX_IDW_DOCKBAR_LEFT, AFX_IDW_DOCKBAR_RIGHT};
    return bars[static_cast<int>(side)];
}

// A point of the bar where there is no button to press, in its client coordinates.
std::optional<POINT> blankPoint(HWND toolbar)
{
    const int count = static_cast<int>(SendMessageW(toolbar, TB_BUTTONCOUNT, 0, 0));
    for (int index = 0; index < count; ++index) {
        TBBUTTON button{};
        RECT place{};
        SendMessageW(toolbar, TB_GETBUTTON, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&button));
        SendMessageW(toolbar, TB_GETITEMRECT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&place));
        if ((button.fsStyle & BTNS_SEP) != 0)
            return POINT{(place.left + place.right) / 2, (place.top + place.bottom) / 2};
    }
    return std::nullopt;
}

bool isIn(const ControlInState& expected, bool enabled, bool checked)
{
    switch (expected.state) {
    case ControlState::usable:
        return enabled;
    case ControlState::greyed:
        return !enabled;
    case ControlState::ticked:
        return checked;
    default:
        return !checked;
    }
}

std::wstring stateText(bool enabled, bool checked)
{
    return std::wstring(enabled ? L"usable" : L"greyed") + (checked ? L" and ticked" : L" and clear");
}

} // namespace

ToolbarButton Player::usableButton(int id) const
{
    ToolbarButton button;
    comesTrue([&] {
        button = findToolbarButton(m_foothold.threadId(), id);
        return button.toolbar != nullptr && button.visible && button.enabled;
    });
    if (button.toolbar == nullptr)
        throw Miss{L"no toolbar has that button"};
    if (!button.visible)
        throw Miss{L"the toolbar is hidden"};
    if (!button.enabled)
        throw Miss{L"the button is greyed"};
    return button;
}

void Player::pressToolbarButton(int id)
{
    const ToolbarButton found = usableButton(id);
    // On the left, as the arrow of a button that has one lies at its right.
    const POINT at{found.place.left + 8, (found.place.top + found.place.bottom) / 2};
    m_hand.click(found.toolbar, at);
    settle();
}

void Player::pressToolbarArrow(int id)
{
    const ToolbarButton found = usableButton(id);
    if (!found.hasArrow)
        throw Miss{L"the button has no arrow"};
    POINT at{found.place.right - 5, (found.place.top + found.place.bottom) / 2};
    m_hand.press(found.toolbar, at, MouseButton::left);
    if (!comesTrue([this] { return openMenu(m_foothold.threadId()) != nullptr; }))
        throw Miss{L"no menu popped up"};
    ClientToScreen(found.toolbar, &at);
    m_hand.releaseOverMenu(menuOwner(m_foothold.threadId()), at);
    settle();
}

// Drags the toolbar by a blank part to a point of the screen.
void Player::dragToolbar(POINT target) const
{
    const HWND toolbar = findToolbarButton(m_foothold.threadId(), saveRasterButton).toolbar;
    const auto grip = toolbar != nullptr ? blankPoint(toolbar) : std::nullopt;
    if (!grip || !IsWindowVisible(toolbar))
        throw Miss{L"there is no toolbar to be seen"};
    ScreenToClient(toolbar, &target);
    m_hand.drag(toolbar, {*grip, target}, MouseButton::left, {});
    settle();
}

void Player::dockToolbar(Side side)
{
    RECT place{};
    m_foothold.ask([&] {
        if (const CWnd* bar = m_frame.GetControlBar(dockBarOf(side)))
            bar->GetWindowRect(&place);
    });
    dragToolbar({(place.left + place.right) / 2, (place.top + place.bottom) / 2});
    if (!comesTrue([&] {
            const HWND toolbar = findToolbarButton(m_foothold.threadId(), saveRasterButton).toolbar;
            return toolbar != nullptr && GetDlgCtrlID(GetParent(toolbar)) == static_cast<int>(dockBarOf(side));
        }))
        throw Miss{L"the toolbar is not docked at the " + std::wstring(sideName(side)) + L" edge"};
}

void Player::floatToolbar(const Place& place)
{
    const HWND view = viewForMouse();
    POINT target = inView(place);
    ClientToScreen(view, &target);
    dragToolbar(target);
    if (!comesTrue([&] {
            const HWND toolbar = findToolbarButton(m_foothold.threadId(), saveRasterButton).toolbar;
            return toolbar != nullptr && GetAncestor(toolbar, GA_ROOT) != m_frame.m_hWnd;
        }))
        throw Miss{L"the toolbar does not float"};
}

void Player::closeToolbar()
{
    const HWND toolbar = findToolbarButton(m_foothold.threadId(), saveRasterButton).toolbar;
    const HWND frame = toolbar != nullptr ? GetAncestor(toolbar, GA_ROOT) : nullptr;
    if (frame == nullptr || frame == m_frame.m_hWnd)
        throw Miss{L"no toolbar floats"};
    PostMessageW(frame, WM_SYSCOMMAND, SC_CLOSE, 0);
    settle();
}

void Player::chooseMenuEntry(int id)
{
    MenuItem item;
    if (!comesTrue([&] {
            const HMENU menu = openMenu(m_foothold.threadId());
            if (menu != nullptr)
                item = findMenuItem(menu, id);
            return menu != nullptr;
        }))
        throw Miss{L"no menu is open"};
    if (!item.found)
        throw Miss{L"the menu has no such entry"};
    if (!item.enabled)
        throw Miss{L"the entry is greyed"};
    const POINT middle{(item.place.left + item.place.right) / 2, (item.place.top + item.place.bottom) / 2};
    m_hand.clickMenu(menuOwner(m_foothold.threadId()), middle);
    if (!comesTrue([this] { return openMenu(m_foothold.threadId()) == nullptr; }))
        throw Miss{L"the menu stayed open"};
    settle();
}

void Player::expectToolbarToBe(bool visible)
{
    if (!comesTrue([&] { return m_eye.button(saveRasterButton).visible == visible; }, patience))
        throw Miss{visible ? L"there is no toolbar to be seen" : L"the toolbar is to be seen"};
}

void Player::expectButton(const ControlInState& expected)
{
    ToolbarButton button;
    if (!comesTrue(
            [&] {
                button = m_eye.button(expected.id);
                return button.visible && isIn(expected, button.enabled, button.checked);
            },
            patience)) {
        throw Miss{button.visible ? L"the button is " + stateText(button.enabled, button.checked)
                                  : L"there is no such button to be seen"};
    }
}

void Player::expectEntry(const ControlInState& expected)
{
    MenuItem item;
    if (!comesTrue(
            [&] {
                const HMENU menu = openMenu(m_foothold.threadId());
                item = menu != nullptr ? findMenuItem(menu, expected.id) : MenuItem{};
                return item.found && isIn(expected, item.enabled, item.checked);
            },
            patience)) {
        throw Miss{item.found ? L"the entry is " + stateText(item.enabled, item.checked)
                              : L"no open menu has such an entry"};
    }
}

} // namespace desk::script
