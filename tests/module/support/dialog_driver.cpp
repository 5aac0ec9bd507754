#include "tests/module/support/dialog_driver.h"

#include <dlgs.h> // stands on windows.h
#include <gtest/gtest.h>

namespace test {

namespace {

DialogDriver* current = nullptr;

bool isDialog(HWND window)
{
    wchar_t name[32] = {};
    GetClassNameW(window, name, 32);
    return std::wstring(name) == L"#32770" && IsWindowVisible(window) && IsWindowEnabled(window);
}

BOOL CALLBACK findDialog(HWND window, LPARAM found)
{
    if (!isDialog(window))
        return TRUE;
    *reinterpret_cast<HWND*>(found) = window;
    return FALSE;
}

HWND nameBox(HWND dialog)
{
    const HWND combo = GetDlgItem(dialog, cmb13);
    return combo ? combo : GetDlgItem(dialog, edt1);
}

std::wstring textOf(HWND window)
{
    wchar_t text[600] = {};
    GetWindowTextW(window, text, 600);
    return text;
}

} // namespace

DialogDriver::DialogDriver() : m_timer(SetTimer(nullptr, 0, 20, tick))
{
    current = this;
}

DialogDriver::~DialogDriver()
{
    KillTimer(nullptr, m_timer);
    current = nullptr;
    EXPECT_TRUE(m_works.empty()) << m_works.size() << " dialogs that were expected never came up";
}

void CALLBACK DialogDriver::tick(HWND, UINT, UINT_PTR, DWORD)
{
    HWND dialog = nullptr;
    EnumThreadWindows(GetCurrentThreadId(), findDialog, reinterpret_cast<LPARAM>(&dialog));
    if (current && dialog && dialog != current->m_last)
        current->workOn(dialog);
}

void DialogDriver::workOn(HWND dialog)
{
    m_last = dialog;
    if (m_works.empty()) {
        ADD_FAILURE() << "a dialog came up that nobody expected";
        press(dialog, IDCANCEL);
        return;
    }
    const Work work = std::move(m_works.front());
    m_works.pop_front();
    work(dialog);
}

void press(HWND dialog, int id)
{
    PostMessageW(dialog, WM_COMMAND, MAKEWPARAM(id, BN_CLICKED), reinterpret_cast<LPARAM>(GetDlgItem(dialog, id)));
}

std::wstring nameIn(HWND fileDialog)
{
    return textOf(nameBox(fileDialog));
}

void setName(HWND fileDialog, const std::wstring& name)
{
    SetWindowTextW(nameBox(fileDialog), name.c_str());
}

void chooseType(HWND fileDialog, int index)
{
    const HWND types = GetDlgItem(fileDialog, cmb1);
    SendMessageW(types, CB_SETCURSEL, index, 0);
    // What a choice by hand ends with; systems differ in which of the two they act on.
    for (const int notification : {CBN_SELENDOK, CBN_SELCHANGE})
        SendMessageW(fileDialog, WM_COMMAND, MAKEWPARAM(cmb1, notification), reinterpret_cast<LPARAM>(types));
}

} // namespace test
