// The steps of a script that work the desk.

#include <commctrl.h>

#include "standin/desk/screenshot.h"
#include "standin/desk/script_player.h"
#include "standin/desk/text_encoding.h"

namespace desk::script {

void Player::act(const Type& type)
{
    HWND input = nullptr;
    bool reachable = false;
    m_foothold.ask([&] {
        input = m_frame.commandPanel().inputWindow();
        reachable = m_frame.IsWindowEnabled() != FALSE;
    });
    if (!reachable)
        throw Miss{L"the command line is out of reach: a dialog is open"};
    m_hand.type(input, type.text);
    m_hand.character(input, L'\r');
    settle();
}

void Player::act(const Click& click)
{
    const HWND view = viewForMouse();
    const POINT at = inView(click.place);
    mouseIsAt(at, {});
    m_hand.click(view, at, click.right, click.twice, {click.shift, click.control});
    settle();
}

void Player::act(const Drag& drag)
{
    const HWND view = viewForMouse();
    std::vector<POINT> points;
    for (const Place& place : drag.places)
        points.push_back(inView(place));
    mouseIsAt(points.back(), {});
    m_hand.drag(view, points, {drag.shift, drag.control});
    settle();
}

void Player::act(const Move& move)
{
    const HWND view = viewForMouse();
    const POINT at = inView(move.place);
    const Held held{move.shift, move.control, m_pressed};
    mouseIsAt(at, m_pressed ? held : Held{});
    m_hand.move(view, at, held);
    settle();
}

void Player::act(const Press& press)
{
    if (m_pressed)
        throw Miss{L"the button is held already"};
    const HWND view = viewForMouse();
    const POINT at = inView(press.place);
    mouseIsAt(at, {press.shift, press.control, true});
    m_hand.press(view, at, {press.shift, press.control});
    m_pressed = true;
    settle();
}

void Player::act(const Release& release)
{
    if (!m_pressed)
        throw Miss{L"the button is not held"};
    const HWND view = viewForMouse();
    const POINT at = inView(release.place);
    mouseIsAt(at, {});
    m_hand.move(view, at, {release.shift, release.control, true});
    m_hand.release(view, at, {release.shift, release.control});
    m_pressed = false;
    settle();
}

void Player::act(const ResizeView& resize)
{
    imaging::Size size;
    m_foothold.ask([&] {
        RECT frame{};
        GetWindowRect(m_frame.m_hWnd, &frame);
        size = m_frame.editor().view().client();
        m_frame.SetWindowPos(nullptr, 0, 0, frame.right - frame.left + resize.size.width - size.width,
                             frame.bottom - frame.top + resize.size.height - size.height,
                             SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    });
    settle();
    if (!comesTrue([&] { return (size = m_frame.editor().view().client()) == resize.size; }))
        throw Miss{L"the view measures " + std::to_wstring(size.width) + L"x" + std::to_wstring(size.height)};
}

void Player::act(const Key& key)
{
    const GUITHREADINFO state = inputState(m_foothold.threadId());
    HWND target = state.hwndFocus != nullptr ? state.hwndFocus : state.hwndActive;
    if (target == nullptr)
        m_foothold.ask([&] { target = m_frame.view() != nullptr ? m_frame.view()->m_hWnd : m_frame.m_hWnd; });
    if (key.virtualKey != 0) {
        m_hand.key(target, key.virtualKey);
    } else {
        m_hand.character(target, key.character);
    }
    settle();
}

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

void Player::act(const Button& button)
{
    const ToolbarButton found = usableButton(button.id);
    // On the left, as the arrow of a button that has one lies at its right.
    const POINT at{found.place.left + 8, (found.place.top + found.place.bottom) / 2};
    m_hand.click(found.toolbar, at, false, false);
    settle();
}

void Player::act(const DropArrow& arrow)
{
    const ToolbarButton found = usableButton(arrow.id);
    if (!found.hasArrow)
        throw Miss{L"the button has no arrow"};
    POINT at{found.place.right - 5, (found.place.top + found.place.bottom) / 2};
    m_hand.press(found.toolbar, at);
    if (!comesTrue([this] { return openMenu(m_foothold.threadId()) != nullptr; }))
        throw Miss{L"no menu popped up"};
    ClientToScreen(found.toolbar, &at);
    m_hand.releaseOverMenu(menuOwner(m_foothold.threadId()), at);
    settle();
}

void Player::act(const MenuEntry& entry)
{
    MenuItem item;
    if (!comesTrue([&] {
            const HMENU menu = openMenu(m_foothold.threadId());
            if (menu != nullptr)
                item = findMenuItem(menu, entry.id);
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

void Player::act(const WaitForDialog& wait)
{
    HWND dialog = nullptr;
    if (!comesTrue([&] {
            dialog = openDialog(m_foothold.threadId());
            return dialog != nullptr && windowText(dialog) == wait.title;
        }))
        throw Miss{dialog != nullptr ? L"the open dialog is \"" + windowText(dialog) + L"\"" : L"no dialog is open"};
}

void Player::act(const SetText& set)
{
    const HWND edit = editWithin(control(set.id));
    m_hand.typeInto(edit, set.text);
    settle();
}

void Player::act(const Check& check)
{
    const HWND box = control(check.id);
    const bool checked = SendMessageW(box, BM_GETCHECK, 0, 0) == BST_CHECKED;
    if (checked != check.on)
        pushControl(box);
    if (!comesTrue([&] { return (SendMessageW(box, BM_GETCHECK, 0, 0) == BST_CHECKED) == check.on; }))
        throw Miss{L"the check mark did not change"};
}

void Player::act(const Choose& choose)
{
    const HWND list = control(choose.id);
    const std::wstring kind = classOf(list);
    const bool combo = kind == L"ComboBox";
    if (!combo && kind != L"ListBox" && kind != WC_LISTVIEWW)
        throw Miss{L"control " + std::to_wstring(choose.id) + L" is no list but a " + kind};
    const UINT countMessage = combo ? CB_GETCOUNT : kind == L"ListBox" ? LB_GETCOUNT : LVM_GETITEMCOUNT;
    const int count = static_cast<int>(SendMessageW(list, countMessage, 0, 0));
    if (choose.index < 0 || choose.index >= count)
        throw Miss{L"the list has " + std::to_wstring(count) + L" entries"};
    if (combo) {
        // By keys, so that the dialog hears of the choice as it would from a user.
        PostMessageW(list, WM_SETFOCUS, 0, 0);
        const int present = static_cast<int>(SendMessageW(list, CB_GETCURSEL, 0, 0));
        for (int i = present; i != choose.index; i += i < choose.index ? 1 : -1)
            m_hand.key(list, i < choose.index ? VK_DOWN : VK_UP);
        settle();
        if (!comesTrue([&] { return SendMessageW(list, CB_GETCURSEL, 0, 0) == choose.index; }))
            throw Miss{L"the choice did not change"};
        return;
    }
    RECT place{};
    if (kind == L"ListBox") {
        SendMessageW(list, LB_SETTOPINDEX, static_cast<WPARAM>(choose.index), 0);
        SendMessageW(list, LB_GETITEMRECT, static_cast<WPARAM>(choose.index), reinterpret_cast<LPARAM>(&place));
    } else {
        SendMessageW(list, LVM_ENSUREVISIBLE, static_cast<WPARAM>(choose.index), FALSE);
        place.left = LVIR_LABEL;
        SendMessageW(list, LVM_GETITEMRECT, static_cast<WPARAM>(choose.index), reinterpret_cast<LPARAM>(&place));
    }
    m_hand.click(list, {place.left + 4, (place.top + place.bottom) / 2}, false, false);
    settle();
}

void Player::act(const Slide& slide)
{
    const HWND slider = control(slide.id);
    const auto position = [&] { return static_cast<int>(SendMessageW(slider, TBM_GETPOS, 0, 0)); };
    const int step = std::max(1, static_cast<int>(SendMessageW(slider, TBM_GETLINESIZE, 0, 0)));
    const int start = position();
    for (int i = 0; i < std::abs(slide.position - start) / step; ++i)
        m_hand.key(slider, slide.position > start ? VK_RIGHT : VK_LEFT);
    settle();
    if (!comesTrue([&] { return position() == slide.position; }))
        throw Miss{L"the slider stands at " + std::to_wstring(position())};
}

void Player::pushControl(HWND button) const
{
    m_hand.clickControl(button);
    settle();
}

void Player::act(const Push& push)
{
    pushControl(control(push.id));
}

void Player::act(const PickFile& pick)
{
    HWND dialog = nullptr, name = nullptr;
    if (!comesTrue([&] {
            dialog = openDialog(m_foothold.threadId());
            name = dialog != nullptr ? fileNameBox(dialog) : nullptr;
            return name != nullptr;
        }))
        throw Miss{L"no file dialog is open"};
    m_hand.typeInto(name, pick.path.wstring());
    m_foothold.waitForPosted();
    pushControl(GetDlgItem(dialog, IDOK));
    comesTrue([&] { return openDialog(m_foothold.threadId()) != dialog; });
    if (openDialog(m_foothold.threadId()) == dialog)
        throw Miss{L"the file dialog did not take the path"};
    settle();
}

void Player::act(const Answer& answer)
{
    const HWND box = dialogInFront();
    if (!isMessageBox(box))
        throw Miss{L"the open dialog is no message box but \"" + windowText(box) + L"\""};
    HWND button = GetDlgItem(box, answer.button);
    if (button == nullptr && answer.button == IDOK)
        button = GetDlgItem(box, IDCANCEL); // a box with a single button may give it this number
    if (button == nullptr)
        throw Miss{L"the message box has no such button"};
    pushControl(button);
    if (!comesTrue([&] { return !IsWindow(box) || !IsWindowVisible(box); }))
        throw Miss{L"the message box stayed open"};
    settle();
}

void Player::act(const Wait& wait)
{
    Sleep(static_cast<DWORD>(std::max(wait.milliseconds, 0)));
}

// Nothing queued, nothing running, nothing open, for longer than the shortest one-shot timers of a module.
void Player::act(const Idle&)
{
    constexpr int quietMilliseconds = 250;
    ULONGLONG quietSince = 0;
    const bool quiet = comesTrue([&] {
        const bool idle = m_frame.editor().idle() && !m_frame.editor().commandRunning() && m_frame.IsWindowEnabled() &&
                          openMenu(m_foothold.threadId()) == nullptr;
        if (!idle) {
            quietSince = 0;
            return false;
        }
        if (quietSince == 0)
            quietSince = GetTickCount64();
        return GetTickCount64() - quietSince >= quietMilliseconds;
    });
    if (!quiet)
        throw Miss{L"the desk did not come to rest"};
}

void Player::act(const Shot& shot)
{
    m_foothold.waitForPosted();
    std::string failure;
    m_foothold.ask([&] {
        try {
            savePicture(takePicture(m_frame.m_hWnd, m_foothold.threadId(), pointerOnScreen()), shot.path);
        } catch (const std::exception& error) {
            failure = error.what();
        }
    });
    if (!failure.empty())
        throw Miss{fromUtf8(failure)};
}

} // namespace desk::script
