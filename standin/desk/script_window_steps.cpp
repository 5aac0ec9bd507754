// The steps of a script that work dialogs, and those that wait.

#include <windows.h>
#include <commctrl.h>
#include <shlobj.h>

#include "standin/desk/screenshot.h"
#include "standin/desk/script_player.h"
#include "standin/text.h"

namespace desk::script {

void Player::waitForDialog(const std::wstring& title)
{
    HWND dialog = nullptr;
    if (!comesTrue([&] {
            dialog = openDialog(m_foothold.threadId());
            return dialog != nullptr && windowText(dialog) == title;
        }))
        throw Miss{dialog != nullptr ? L"the open dialog is \"" + windowText(dialog) + L"\"" : L"no dialog is open"};
}

void Player::setText(const ControlText& text)
{
    const HWND edit = editWithin(control(text.id));
    m_hand.typeInto(edit, text.text);
    settle();
}

void Player::setCheckMark(const ControlNumber& mark)
{
    const HWND box = control(mark.id);
    const auto isRight = [&] { return (SendMessageW(box, BM_GETCHECK, 0, 0) == BST_CHECKED) == (mark.value != 0); };
    if (!isRight())
        pushControl(box);
    if (!comesTrue(isRight))
        throw Miss{L"the check mark did not change"};
}

void Player::chooseEntry(const ControlNumber& entry)
{
    const HWND list = control(entry.id);
    const std::wstring kind = classOf(list);
    const bool combo = kind == L"ComboBox";
    if (!combo && kind != L"ListBox" && kind != WC_LISTVIEWW)
        throw Miss{L"control " + std::to_wstring(entry.id) + L" is no list but a " + kind};
    const UINT countMessage = combo ? CB_GETCOUNT : kind == L"ListBox" ? LB_GETCOUNT : LVM_GETITEMCOUNT;
    const int count = static_cast<int>(SendMessageW(list, countMessage, 0, 0));
    if (entry.value < 0 || entry.value >= count)
        throw Miss{L"the list has " + std::to_wstring(count) + L" entries"};
    if (combo) {
        pickInComboBox(list, entry.value);
    } else {
        pickInList(list, entry.value);
    }
}

// By keys, so that the dialog hears of the choice as it would from a user.
void Player::pickInComboBox(HWND list, int index) const
{
    PostMessageW(list, WM_SETFOCUS, 0, 0);
    const int present = static_cast<int>(SendMessageW(list, CB_GETCURSEL, 0, 0));
    for (int i = present; i != index; i += i < index ? 1 : -1)
        m_hand.key(list, i < index ? VK_DOWN : VK_UP);
    settle();
    if (!comesTrue([&] { return SendMessageW(list, CB_GETCURSEL, 0, 0) == index; }))
        throw Miss{L"the choice did not change"};
}

void Player::pickInList(HWND list, int index) const
{
    const bool plain = classOf(list) == L"ListBox";
    RECT place{};
    place.left = plain ? 0 : LVIR_LABEL;
    SendMessageW(list, plain ? LB_SETTOPINDEX : LVM_ENSUREVISIBLE, static_cast<WPARAM>(index), FALSE);
    SendMessageW(list, plain ? LB_GETITEMRECT : LVM_GETITEMRECT, static_cast<WPARAM>(index),
                 reinterpret_cast<LPARAM>(&place));
    m_hand.click(list, {place.left + 4, (place.top + place.bottom) / 2});
    settle();
}

void Player::moveSlider(const ControlNumber& slider)
{
    const HWND window = control(slider.id);
    const auto position = [&] { return static_cast<int>(SendMessageW(window, TBM_GETPOS, 0, 0)); };
    const int step = std::max(1, static_cast<int>(SendMessageW(window, TBM_GETLINESIZE, 0, 0)));
    const int start = position();
    for (int i = 0; i < std::abs(slider.value - start) / step; ++i)
        m_hand.key(window, slider.value > start ? VK_RIGHT : VK_LEFT);
    settle();
    if (!comesTrue([&] { return position() == slider.value; }))
        throw Miss{L"the slider stands at " + std::to_wstring(position())};
}

void Player::pushControl(HWND button) const
{
    m_hand.clickControl(button);
    settle();
}

void Player::pushButton(int id)
{
    pushControl(control(id));
}

void Player::acceptFile(const std::filesystem::path& path)
{
    HWND dialog = nullptr, name = nullptr;
    if (!comesTrue([&] {
            dialog = openDialog(m_foothold.threadId());
            name = dialog != nullptr ? fileNameBox(dialog) : nullptr;
            return name != nullptr;
        }))
        throw Miss{L"no file dialog is open"};
    m_hand.typeInto(name, path.wstring());
    m_foothold.waitForPosted();
    pushControl(GetDlgItem(dialog, IDOK));
    comesTrue([&] { return openDialog(m_foothold.threadId()) != dialog; });
    if (openDialog(m_foothold.threadId()) == dialog)
        throw Miss{L"the file dialog did not take the path"};
    settle();
}

// As the system's file manager does it: the list of files lies in memory that the desk frees.
void Player::dropFile(const std::filesystem::path& path)
{
    const std::wstring names = path.wstring() + std::wstring(2, L'\0');
    const HGLOBAL memory = GlobalAlloc(GHND, sizeof(DROPFILES) + names.size() * sizeof(wchar_t));
    auto* const list = static_cast<DROPFILES*>(GlobalLock(memory));
    list->pFiles = sizeof(DROPFILES);
    list->fWide = TRUE;
    std::copy(names.begin(), names.end(), reinterpret_cast<wchar_t*>(list + 1));
    GlobalUnlock(memory);
    PostMessageW(m_frame.m_hWnd, WM_DROPFILES, reinterpret_cast<WPARAM>(memory), 0);
    m_foothold.waitForPosted();
    settle();
}

void Player::answerBox(int id)
{
    const HWND box = dialogInFront();
    if (!isMessageBox(box))
        throw Miss{L"the open dialog is no message box but \"" + windowText(box) + L"\""};
    HWND button = GetDlgItem(box, id);
    if (button == nullptr && id == IDOK)
        button = GetDlgItem(box, IDCANCEL); // a box with a single button may give it this number
    if (button == nullptr)
        throw Miss{L"the message box has no such button"};
    pushControl(button);
    if (!comesTrue([&] { return !IsWindow(box) || !IsWindowVisible(box); }))
        throw Miss{L"the message box stayed open"};
    settle();
}

void Player::wait(int milliseconds)
{
    Sleep(static_cast<DWORD>(std::max(milliseconds, 0)));
}

// Nothing queued, nothing running, nothing open, for longer than the shortest one-shot timers of a module.
void Player::waitForRest()
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

imaging::Rect Player::partOnScreen(const PicturePart& part) const
{
    using What = PicturePart::What;
    if (part.what == What::view)
        return viewPartOnScreen(part.box);
    const DWORD threadId = m_foothold.threadId();
    std::vector<HWND> windows;
    if (part.what == What::menu) {
        windows = menuWindows(threadId);
    } else {
        windows.push_back(part.what == What::dialog    ? openDialog(threadId)
                          : part.what == What::toolbar ? visibleToolbar(threadId)
                          : part.what == What::splash  ? openSplash(threadId)
                                                       : m_frame.m_hWnd);
    }
    imaging::Rect whole;
    for (const HWND window : windows) {
        RECT place{};
        GetWindowRect(window, &place);
        whole = whole.unite({place.left, place.top, place.right, place.bottom});
    }
    if (whole.empty())
        throw Miss{L"what the picture is to show is not there"};
    return whole;
}

imaging::Rect Player::viewPartOnScreen(const imaging::Rect& box) const
{
    if (m_frame.view() == nullptr)
        throw Miss{L"no drawing is open"};
    RECT client{};
    GetClientRect(m_frame.view()->m_hWnd, &client);
    const imaging::Rect all{0, 0, client.right, client.bottom};
    const imaging::Rect part = box.empty() ? all : box;
    if (part.unite(all) != all)
        throw Miss{L"the box reaches beyond the view"};
    POINT corner{0, 0};
    ClientToScreen(m_frame.view()->m_hWnd, &corner);
    return part.offset(corner.x, corner.y);
}

// Whatever comes behind this step in the script is not played.
void Player::kill()
{
    m_console.line(L"The desk is killed.");
    TerminateProcess(GetCurrentProcess(), static_cast<UINT>(outcome()));
}

void Player::takeShot(const Shot& shot)
{
    m_foothold.waitForPosted();
    imaging::Rect part;
    for (const PicturePart& each : shot.parts)
        part = part.unite(partOnScreen(each));
    std::string failure;
    m_foothold.ask([&] {
        try {
            const Picture picture = shot.parts.empty()
                                        ? takePicture(m_frame.m_hWnd, m_foothold.threadId(), pointerOnScreen())
                                        : takeFramedPicture(part, m_foothold.threadId(), pointerOnScreen());
            savePicture(picture, shot.path);
        } catch (const std::exception& error) {
            failure = error.what();
        }
    });
    if (!failure.empty())
        throw Miss{standin::fromUtf8(failure)};
}

} // namespace desk::script
