#include "standin/desk/main_frame.h"

#include "standin/desk/coordinate_input.h"
#include "standin/desk/crosshair.h"
#include "standin/desk/desk_resources.h"

#include <map>

#include <windowsx.h>

namespace desk {
namespace {

constexpr UINT processInputMessage = WM_APP + 1;
constexpr UINT_PTR endOfScriptTimer = 1;
const wchar_t* const programName = L"Halvoran Desk";

// What a menu entry types at the command line, after what runs has been cancelled.
const std::map<UINT, const wchar_t*> typedByMenu = {
    {ID_DESK_NEW, L"new "},
    {ID_DESK_OPEN, L"open "},
    {ID_DESK_SAVE, L"save "},
    {ID_DESK_SAVE_AS, L"saveas "},
    {ID_DESK_LOAD_MODULE, L"appload "},
    {ID_DESK_UNLOAD_MODULE, L"arx u "},
    {ID_DESK_UNDO, L"u "},
    {ID_DESK_REDO, L"redo "},
    {ID_DESK_ERASE, L"erase "},
    {ID_DESK_ZOOM_EXTENTS, L"zoom e "},
    {ID_DESK_ZOOM_WINDOW, L"zoom w "},
    {ID_DESK_ZOOM_PREVIOUS, L"zoom p "},
    {ID_DESK_ZOOM_IN, L"zoom 2x "},
    {ID_DESK_ZOOM_OUT, L"zoom 0.5x "},
    {ID_DESK_PAN, L"pan "},
    {ID_DESK_REGEN, L"regen "},
    {ID_DESK_LINE, L"line "},
    {ID_DESK_POLYLINE, L"pline "},
    {ID_DESK_CIRCLE, L"circle "},
    {ID_DESK_TEXT, L"text "},
    {ID_DESK_LIST, L"list "},
    {ID_DESK_HELP, L"help "},
};

} // namespace

BEGIN_MESSAGE_MAP(MainFrame, CMDIFrameWnd)
ON_COMMAND_RANGE(ID_DESK_FIRST, ID_DESK_LAST, &MainFrame::onDeskCommand)
ON_UPDATE_COMMAND_UI_RANGE(ID_DESK_FIRST, ID_DESK_LAST, &MainFrame::onUpdateDeskCommand)
END_MESSAGE_MAP()

MainFrame::MainFrame()
    : editor_(*this), commandPanel_(fonts_, {[this] { editor_.enterKey(); }, [this] { return editor_.blanksAreText(); },
                                             [this] { editor_.escapeKey(); }, [this] { RecalcLayout(); }}),
      statusPanel_(fonts_, [this] { onDeskCommand(ID_DESK_TOGGLE_SPACE); })
{}

MainFrame::~MainFrame()
{
    standin::setDeskServices(nullptr);
    DestroyIcon(bigIcon_);
    DestroyIcon(smallIcon_);
}

bool MainFrame::create(int width, int height)
{
    if (!LoadFrame(IDR_DESK, WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN))
        return false;
    SetWindowText(programName);
    bigIcon_ = makeProgramIcon(32);
    smallIcon_ = makeProgramIcon(16);
    SetIcon(bigIcon_, TRUE);
    SetIcon(smallIcon_, FALSE);
    // One drawing fills the client area: nothing to scroll, and no edge around it.
    CWnd* const client = CWnd::FromHandle(m_hWndMDIClient);
    client->ModifyStyle(WS_HSCROLL | WS_VSCROLL, 0, SWP_FRAMECHANGED);
    client->ModifyStyleEx(WS_EX_CLIENTEDGE, 0, SWP_FRAMECHANGED);
    // The status line first: it lies at the very foot, the command line above it, docked bars above both.
    if (!statusPanel_.Create(this) || !commandPanel_.Create(this))
        return false;
    EnableDocking(CBRS_ALIGN_ANY);
    dark_ = AfxGetApp()->GetProfileInt(L"View", L"DarkGround", 0) != 0;
    standin::setDeskServices(this);
    MoveWindow(0, 0, width, height);
    RecalcLayout();
    stateChanged();
    return true;
}

// --- Layout ---

void MainFrame::RecalcLayout(BOOL bNotify)
{
    CMDIFrameWnd::RecalcLayout(bNotify);
    fitDrawingWindow();
}

// The one drawing window fills the client area without a frame of its own.
void MainFrame::fitDrawingWindow()
{
    if (child_ == nullptr || m_hWndMDIClient == nullptr)
        return;
    CRect client;
    ::GetClientRect(m_hWndMDIClient, &client);
    child_->MoveWindow(&client);
}

void MainFrame::openDrawingWindow()
{
    if (view_ != nullptr)
        return;
    child_ = new CMDIChildWnd;
    child_->Create(nullptr, L"Drawing", WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN, CRect(0, 0, 100, 100), this);
    child_->ModifyStyle(WS_CAPTION | WS_THICKFRAME | WS_SYSMENU | WS_MINIMIZEBOX | WS_MAXIMIZEBOX | WS_BORDER, 0,
                        SWP_FRAMECHANGED);
    child_->ModifyStyleEx(WS_EX_CLIENTEDGE | WS_EX_WINDOWEDGE, 0, SWP_FRAMECHANGED);
    view_ = new DrawingView(
        editor_, dark_ ? Palette::dark() : Palette::light(), [this](wchar_t key) { commandPanel_.type(key); },
        [this](Vec2 at) { hovered(at); });
    view_->Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE, CRect(0, 0, 100, 100), child_, AFX_IDW_PANE_FIRST);
    child_->SetActiveView(view_);
    RecalcLayout();
    child_->RecalcLayout();
    view_->SetFocus();
}

void MainFrame::closeDrawingWindow()
{
    if (child_ == nullptr)
        return;
    view_ = nullptr;
    std::exchange(child_, nullptr)->MDIDestroy();
}

// --- Messages ---

LRESULT MainFrame::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case processInputMessage:
        wakePosted_ = false;
        editor_.processInput();
        return 0;
    case WM_CLOSE:
        onClose();
        return 0;
    case WM_TIMER:
        if (wParam != endOfScriptTimer)
            break;
        KillTimer(endOfScriptTimer);
        closeAtOnce();
        return 0;
    case endOfScriptMessage:
        closeAtOnce();
        return 0;
    case WM_SETFOCUS:
        if (view_ != nullptr)
            view_->SetFocus();
        return 0;
    }
    return CMDIFrameWnd::WindowProc(message, wParam, lParam);
}

// The wheel goes to what lies under the mouse, wherever the keyboard is.
BOOL MainFrame::PreTranslateMessage(MSG* pMsg)
{
    if (pMsg->message == WM_MOUSEWHEEL && view_ != nullptr && pMsg->hwnd != view_->m_hWnd) {
        const POINT at{GET_X_LPARAM(pMsg->lParam), GET_Y_LPARAM(pMsg->lParam)};
        if (::WindowFromPoint(at) == view_->m_hWnd) {
            view_->SendMessage(WM_MOUSEWHEEL, pMsg->wParam, pMsg->lParam);
            return TRUE;
        }
    }
    return CMDIFrameWnd::PreTranslateMessage(pMsg);
}

void MainFrame::onDeskCommand(UINT id)
{
    switch (id) {
    case ID_DESK_EXIT:
        PostMessage(WM_CLOSE);
        return;
    case ID_DESK_SELECT_ALL:
        if (standin::drawingOpen())
            editor_.selectAll();
        return;
    case ID_DESK_SELECT_NONE:
        editor_.clearSelection();
        return;
    case ID_DESK_DARK_GROUND:
        toggleGround();
        return;
    case ID_DESK_TRANSCRIPT:
        commandPanel_.toggleHeight();
        return;
    case ID_DESK_TOGGLE_SPACE:
        editor_.post(L"CANCELCMD");
        editor_.post(editor_.inModelSpace() ? L"layout " : L"model ");
        return;
    }
    if (const auto typed = typedByMenu.find(id); typed != typedByMenu.end()) {
        editor_.post(L"CANCELCMD");
        editor_.post(typed->second);
    }
}

void MainFrame::onUpdateDeskCommand(CCmdUI* item)
{
    const bool open = standin::drawingOpen();
    switch (item->m_nID) {
    case ID_DESK_NEW:
    case ID_DESK_OPEN:
    case ID_DESK_LOAD_MODULE:
    case ID_DESK_EXIT:
    case ID_DESK_HELP:
    case ID_DESK_TRANSCRIPT:
        item->Enable(TRUE);
        break;
    case ID_DESK_UNLOAD_MODULE:
        item->Enable(!standin::loadedModules().empty());
        break;
    case ID_DESK_DARK_GROUND:
        item->SetCheck(dark_ ? 1 : 0);
        break;
    case ID_DESK_TOGGLE_SPACE:
        item->Enable(open);
        item->SetCheck(open && !editor_.inModelSpace() ? 1 : 0);
        break;
    default:
        item->Enable(open);
    }
}

void MainFrame::onClose()
{
    if (editor_.commandRunning()) {
        if (!editor_.idle())
            return; // a module is at work
        editor_.cancelCommand();
        PostMessage(WM_CLOSE);
        return;
    }
    if (editor_.mayDiscard())
        shutDown();
}

// A command that waits for input is cancelled first, and the end comes once it has returned.
void MainFrame::closeAtOnce()
{
    if (!editor_.commandRunning()) {
        shutDown();
        return;
    }
    editor_.cancelCommand();
    SetTimer(endOfScriptTimer, 50, nullptr);
}

void MainFrame::shutDown()
{
    if (std::exchange(quitting_, true))
        return;
    editor_.closeDrawing();
    standin::unloadAllModules();
    if (closed_)
        closed_();
    DestroyWindow();
}

void MainFrame::close()
{
    PostMessage(WM_CLOSE);
}

void MainFrame::toggleGround()
{
    dark_ = !dark_;
    AfxGetApp()->WriteProfileInt(L"View", L"DarkGround", dark_ ? 1 : 0);
    if (view_ != nullptr)
        view_->setPalette(dark_ ? Palette::dark() : Palette::light());
}

void MainFrame::hovered(Vec2 view)
{
    statusPanel_.showCoordinates(formatPoint(editor_.view().toDrawing(view)));
}

} // namespace desk
