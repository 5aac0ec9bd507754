#pragma once

#include <windows.h>
#include <string>
#include <vector>

/// Looking around among the windows of the desk's thread, as a user's eyes do. All of it may be called from the script
/// thread: the windows belong to the same process.
namespace desk::script {

std::wstring windowText(HWND window);
std::wstring classOf(HWND window);

/// Visible top-level windows of the thread, the uppermost first.
std::vector<HWND> topWindows(DWORD threadId);
/// The uppermost dialog that can be worked with; null if there is none.
HWND openDialog(DWORD threadId);
/// A picture that a module shows over the desk for a while; null if there is none.
HWND openSplash(DWORD threadId);
/// A visible control with that id in the window or in a window within it; null if there is none.
HWND findControl(HWND parent, int id);

/// A message box's text, and whether the dialog is one.
bool isMessageBox(HWND dialog);
std::wstring messageBoxText(HWND box);
/// Where text typed into the control goes: the edit control of a combined box, or the control itself.
HWND editWithin(HWND control);
/// What the rows of a list or a tree say, those under closed branches left out; of a list with columns the fields with
/// a blank between them. Empty for any other control.
std::vector<std::wstring> rowTexts(HWND control);
/// The name box of a file dialog; null if the dialog is none.
HWND fileNameBox(HWND dialog);

struct ToolbarButton
{
    HWND toolbar = nullptr;
    RECT place{}; // client coordinates of the toolbar
    bool visible = false;
    bool enabled = false;
    bool checked = false;
    bool hasArrow = false;
};
/// Looks through all toolbars, hidden ones too; toolbar is null if none has the button.
ToolbarButton findToolbarButton(DWORD threadId, int id);

/// The first toolbar that is seen, or the frame that it floats in; null if there is none.
HWND visibleToolbar(DWORD threadId);

struct MenuItem
{
    bool found = false;
    bool enabled = false;
    bool checked = false;
    RECT place{}; // screen coordinates
};
/// The menu that has popped up last; null if there is none.
HMENU openMenu(DWORD threadId);
/// The windows of all menus that have popped up, the last one first.
std::vector<HWND> menuWindows(DWORD threadId);
MenuItem findMenuItem(HMENU menu, int id);
/// The window that menu input goes to.
HWND menuOwner(DWORD threadId);

GUITHREADINFO inputState(DWORD threadId);

} // namespace desk::script
