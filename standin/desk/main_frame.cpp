#include "standin/desk/main_frame.h"

#include <map>
#include <windowsx.h>

#include "standin/desk/coordinate_input.h"
#include "standin/desk/crosshair.h"
#include "standin/desk/desk_resources.h"

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
    : m_editor(*this),
      m_commandPanel(m_fonts, {[this] { m_editor.enterKey(); }, [this] { return m_editor.blanksAreText(); },
                               [this] { m_editor.escapeKey(); }, [this] { RecalcLayout(); }}),
      m_statusPanel(m_fonts, [this] { onDeskCommand(ID_DESK_TOGGLE_SPACE); })
{}

MainFrame::~MainFrame()
{
    standin::setDeskServices(nullptr);
    DestroyIcon(m_bigIcon);
    DestroyIcon(m_smallIcon);
}

bool MainFrame::create(int width, int height)
{
    if (!LoadFrame(IDR_DESK, WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN))
        return false;
    SetWindowText(programName);
    m_bigIcon = makeProgramIcon(32);
    m_smallIcon = makeProgramIcon(16);
    SetIcon(m_bigIcon, TRUE);
    SetIcon(m_smallIcon, FALSE);
    // One drawing fills the client area: nothing to scroll, and no edge around it.
    CWnd* const client = CWnd::FromHandle(m_hWndMDIClient);
    client->ModifyStyle(WS_HSCROLL | WS_VSCROLL, 0, SWP_FRAMECHANGED);
    client->ModifyStyleEx(WS_EX_CLIENTEDGE, 0, SWP_FRAMECHANGED);
    // The status line first: it lies at the very foot, the command line above it, docked bars above both.
    if (!m_statusPanel.Create(this) || !m_commandPanel.Create(this))
        return false;
    EnableDocking(CBRS_ALIGN_ANY);
    m_dark = AfxGetApp()->GetProfileInt(L"View", L"DarkGround", 0) != 0;
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
    if (m_child == nullptr || m_hWndMDIClient == nullptr)
        return;
    CRect client;
    ::GetClientRect(m_hWndMDIClient, &client);
    m_child->MoveWindow(&client);
}

void MainFrame::openDrawingWindow()
{
    if (m_view != nullptr)
        return;
    m_child = new CMDIChildWnd;
    m_child->Create(nullptr, L"Drawing", WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN, CRect(0, 0, 100, 100), this);
    m_child->ModifyStyle(WS_CAPTION | WS_THICKFRAME | WS_SYSMENU | WS_MINIMIZEBOX | WS_MAXIMIZEBOX | WS_BORDER, 0,
                         SWP_FRAMECHANGED);
    m_child->ModifyStyleEx(WS_EX_CLIENTEDGE | WS_EX_WINDOWEDGE, 0, SWP_FRAMECHANGED);
    m_view = new DrawingView(
        m_editor, m_dark ? Palette::dark() : Palette::light(), [this](wchar_t key) { m_commandPanel.type(key); },
        [this](Vec2 at) { hovered(at); });
    m_view->Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE, CRect(0, 0, 100, 100), m_child, AFX_IDW_PANE_FIRST);
    m_child->SetActiveView(m_view);
    RecalcLayout();
    m_child->RecalcLayout();
    // Whatever of the program is in front of the desk, a splash or a dialog, stays there.
    if (GetActiveWindow() == this)
        m_view->SetFocus();
}

void MainFrame::closeDrawingWindow()
{
    if (m_child == nullptr)
        return;
    m_view = nullptr;
    std::exchange(m_child, nullptr)->MDIDestroy();
}

// --- Messages ---

LRESULT MainFrame::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case processInputMessage:
        m_wakePosted = false;
        m_editor.processInput();
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
    case WM_SETMESSAGESTRING:
        showStatusText(static_cast<UINT>(wParam), reinterpret_cast<LPCWSTR>(lParam));
        return 0;
    case WM_SETFOCUS:
        if (m_view != nullptr)
            m_view->SetFocus();
        return 0;
    }
    return CMDIFrameWnd::WindowProc(message, wParam, lParam);
}

// Of the button or menu entry under the mouse; without one the status line tells the desk's state again.
void MainFrame::showStatusText(UINT id, LPCWSTR text)
{
    CString shown(text);
    if (text == nullptr && id != 0 && id != AFX_IDS_IDLEMESSAGE)
        GetMessageString(id, shown);
    if (shown.IsEmpty()) {
        stateChanged();
    } else {
        m_statusPanel.showState(shown.GetString());
    }
}

// Keys that a window in front of the desk would get, but has nothing to do with: a floating bar, a module's splash.
bool MainFrame::keysAreForDesk(const MSG& message) const
{
    return message.message >= WM_KEYFIRST && message.message <= WM_KEYLAST && m_view != nullptr && IsWindowEnabled() &&
           message.hwnd != m_hWnd && ::GetAncestor(message.hwnd, GA_ROOT) == message.hwnd;
}

// The wheel goes to what lies under the mouse, wherever the keyboard is.
BOOL MainFrame::PreTranslateMessage(MSG* pMsg)
{
    if (keysAreForDesk(*pMsg))
        pMsg->hwnd = m_view->m_hWnd;
    if (pMsg->message == WM_MOUSEWHEEL && m_view != nullptr && pMsg->hwnd != m_view->m_hWnd) {
        const POINT at{GET_X_LPARAM(pMsg->lParam), GET_Y_LPARAM(pMsg->lParam)};
        if (::WindowFromPoint(at) == m_view->m_hWnd) {
            m_view->SendMessage(WM_MOUSEWHEEL, pMsg->wParam, pMsg->lParam);
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
            m_editor.selectAll();
        return;
    case ID_DESK_SELECT_NONE:
        m_editor.selection().clear();
        return;
    case ID_DESK_DARK_GROUND:
        toggleGround();
        return;
    case ID_DESK_TRANSCRIPT:
        m_commandPanel.toggleHeight();
        return;
    case ID_DESK_TOGGLE_SPACE:
        m_editor.post(L"CANCELCMD");
        m_editor.post(m_editor.session().inModelSpace() ? L"layout " : L"model ");
        return;
    }
    if (const auto typed = typedByMenu.find(id); typed != typedByMenu.end()) {
        m_editor.post(L"CANCELCMD");
        m_editor.post(typed->second);
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
        item->SetCheck(m_dark ? 1 : 0);
        break;
    case ID_DESK_TOGGLE_SPACE:
        item->Enable(open);
        item->SetCheck(open && !m_editor.session().inModelSpace() ? 1 : 0);
        break;
    default:
        item->Enable(open);
    }
}

void MainFrame::onClose()
{
    if (m_editor.commandRunning()) {
        if (!m_editor.idle())
            return; // a module is at work
        m_editor.cancelCommand();
        PostMessage(WM_CLOSE);
        return;
    }
    if (m_editor.mayDiscard())
        shutDown();
}

// A command that waits for input is cancelled first, and the end comes once it has returned.
void MainFrame::closeAtOnce()
{
    if (!m_editor.commandRunning()) {
        shutDown();
        return;
    }
    m_editor.cancelCommand();
    SetTimer(endOfScriptTimer, 50, nullptr);
}

void MainFrame::shutDown()
{
    if (std::exchange(m_quitting, true))
        return;
    m_editor.closeDrawing();
    standin::unloadAllModules();
    if (m_closed)
        m_closed();
    DestroyWindow();
}

void MainFrame::close()
{
    PostMessage(WM_CLOSE);
}

void MainFrame::toggleGround()
{
    m_dark = !m_dark;
    AfxGetApp()->WriteProfileInt(L"View", L"DarkGround", m_dark ? 1 : 0);
    if (m_view != nullptr)
        m_view->setPalette(m_dark ? Palette::dark() : Palette::light());
}

void MainFrame::hovered(Vec2 view)
{
    m_statusPanel.showCoordinates(formatPoint(m_editor.view().toDrawing(view)));
}

} // namespace desk
