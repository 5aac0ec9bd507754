// Works the dialogs that a call under test opens, by messages from a timer while they are up.
#pragma once

#include <windows.h>
#include <deque>
#include <functional>
#include <string>

namespace test {

class DialogDriver
{
public:
    using Work = std::function<void(HWND dialog)>;

    DialogDriver();
    // Fails the test if a dialog that was expected never came.
    ~DialogDriver();
    DialogDriver(const DialogDriver&) = delete;
    DialogDriver& operator=(const DialogDriver&) = delete;

    // What to do with the next dialog that comes up; the work must end it.
    void expectDialog(Work work) { m_works.push_back(std::move(work)); }

private:
    static void CALLBACK tick(HWND, UINT, UINT_PTR, DWORD);
    void workOn(HWND dialog);

    std::deque<Work> m_works;
    HWND m_last = nullptr; // worked, and about to go
    UINT_PTR m_timer;
};

// Presses a button of a dialog or message box, once the dialog's work is done.
void press(HWND dialog, int id);

// The name box of a file dialog.
std::wstring nameIn(HWND fileDialog);
void setName(HWND fileDialog, const std::wstring& name);
// The row of its list of types.
void chooseType(HWND fileDialog, int index);

} // namespace test
