#include "standin/desk/main_frame.h"

#include <map>
#include <windowsx.h>

#include "standin/desk/coordinate_input.h"
#include "standin/desk/crosshair.h"
#include "standin/desk/desk_resources.h"
#include "standin/desk/frame_lists.h"
#include "standin/desk/window_place.h"

namespace desk {
namespace {

constexpr UINT processInputMessage = WM_APP + 1;
constexpr UINT_PTR endOfScriptTimer = 1;

// What a menu entry types at the command line, after what runs has been cancelled.
const std::map<UINT, const wchar_t*> typedByMenu = {
    {ID_DESK_NEW, L"new "},
    {ID_DESK_OPEN, L"open "},
    {ID_DESK_CLOSE, L"close "},
    {ID_DESK_CLOSE_ALL, L"closeall "},
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
      m_statusPanel(m_fonts, [this] { onDeskCommand(ID_DESK_TOGGLE_SPACE); }),
      m_files({[this](const std::wstring& text) { typeCommand(text); },
               [this](const std::wstring& line) { print(line); }, [this](const std::wstring& text) { alert(text); }}),
      m_tabs(m_fonts, {[this](standin::DrawingId drawing) { m_editor.showDrawing(drawing); },
                       [this](standin::DrawingId drawing) { closeLater(drawing); }}),
      m_drawingWindows(*this, [this] { return makeView(); })
{}

MainFrame::~MainFrame()
{
    standin::setDeskServices(nullptr);
    DestroyIcon(m_bigIcon);
    DestroyIcon(m_smallIcon);
}

bool MainFrame::create(imaging::Size size)
{
    if (!LoadFrame(IDR_DESK, WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN))
        return false;
    m_bigIcon = makeProgramIcon(32);
    m_smallIcon = makeProgramIcon(16);
    SetIcon(m_bigIcon, TRUE);
    SetIcon(m_smallIcon, FALSE);
    // A drawing fills the client area: nothing to scroll, and no edge around it.
    CWnd* const client = CWnd::FromHandle(m_hWndMDIClient);
    client->ModifyStyle(WS_HSCROLL | WS_VSCROLL, 0, SWP_FRAMECHANGED);
    client->ModifyStyleEx(WS_EX_CLIENTEDGE, 0, SWP_FRAMECHANGED);
    // The status line first: it lies at the very foot, the command line above it, docked bars above both.
    if (!m_statusPanel.Create(this) || !m_commandPanel.Create(this))
        return false;
    EnableDocking(CBRS_ALIGN_ANY);
    // Behind the docked bars, so that the tabs lie next to the drawing.
    if (!m_tabs.Create(this))
        return false;
    m_dark = AfxGetApp()->GetProfileInt(L"View", L"DarkGround", 0) != 0;
    standin::setDeskServices(this);
    m_files.loadRecent();
    DragAcceptFiles(m_hWnd, TRUE);
    if (!size.empty()) {
        MoveWindow(0, 0, size.width, size.height);
    } else if (!restoreWindowPlace(m_hWnd)) {
        MoveWindow(0, 0, usualSize.width, usualSize.height);
    }
    RecalcLayout();
    stateChanged();
    return true;
}

// --- Layout ---

void MainFrame::RecalcLayout(BOOL bNotify)
{
    CMDIFrameWnd::RecalcLayout(bNotify);
    m_drawingWindows.fit();
}

DrawingView* MainFrame::makeView()
{
    return new DrawingView(
        m_editor, m_dark ? Palette::dark() : Palette::light(), [this](wchar_t key) { m_commandPanel.type(key); },
        [this](Vec2 at) { hovered(at); });
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
        if (view() != nullptr)
            view()->SetFocus();
        return 0;
    case WM_DROPFILES:
        SetForegroundWindow();
        m_files.takeDropped(reinterpret_cast<HDROP>(wParam));
        return 0;
    case WM_INITMENUPOPUP:
        if (HIWORD(lParam) == 0)
            fillMenuLists(reinterpret_cast<HMENU>(wParam));
        break;
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
bool MainFrame::keysAreForDesk(const MSG& message)
{
    return message.message >= WM_KEYFIRST && message.message <= WM_KEYLAST && view() != nullptr && IsWindowEnabled() &&
           message.hwnd != m_hWnd && ::GetAncestor(message.hwnd, GA_ROOT) == message.hwnd;
}

// The wheel goes to what lies under the mouse, wherever the keyboard is.
BOOL MainFrame::PreTranslateMessage(MSG* pMsg)
{
    if (keysAreForDesk(*pMsg))
        pMsg->hwnd = view()->m_hWnd;
    if (pMsg->message == WM_MOUSEWHEEL && view() != nullptr && pMsg->hwnd != view()->m_hWnd) {
        const POINT at{GET_X_LPARAM(pMsg->lParam), GET_Y_LPARAM(pMsg->lParam)};
        if (::WindowFromPoint(at) == view()->m_hWnd) {
            view()->SendMessage(WM_MOUSEWHEEL, pMsg->wParam, pMsg->lParam);
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
        typeCommand(m_editor.session().inModelSpace() ? L"layout " : L"model ");
        return;
    case ID_DESK_GUIDE:
        m_files.openGuide();
        return;
    case ID_DESK_NEXT_DRAWING:
        m_editor.showNextDrawing(1);
        return;
    case ID_DESK_PREVIOUS_DRAWING:
        m_editor.showNextDrawing(-1);
        return;
    }
    if (const auto typed = typedByMenu.find(id); typed != typedByMenu.end()) {
        typeCommand(typed->second);
    } else {
        chooseListed(id);
    }
}

void MainFrame::typeCommand(const std::wstring& text)
{
    m_editor.post(L"CANCELCMD");
    m_editor.post(text);
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
    case ID_DESK_GUIDE:
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
    case ID_DESK_NEXT_DRAWING:
    case ID_DESK_PREVIOUS_DRAWING:
        item->Enable(standin::openDrawings().size() > 1);
        break;
    default:
        item->Enable(open);
    }
    updateListed(*item);
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
    if (m_editor.mayDiscardAll())
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
    if (m_placeKept)
        saveWindowPlace(m_hWnd);
    while (standin::drawingOpen())
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
    m_drawingWindows.forEachView(
        [this](DrawingView& view) { view.setPalette(m_dark ? Palette::dark() : Palette::light()); });
}

void MainFrame::hovered(Vec2 view)
{
    m_statusPanel.showCoordinates(formatPoint(m_editor.view().toDrawing(view)));
}

} // namespace desk
