#include "module/toolbar/LaMfcToolbar.h"

#include <algorithm>
#include <iterator>

#include "module/base/CArxApp.h"
#include "module/base/CDefault.h"
#include "module/base/CTempMFC.h"
#include "module/base/MisreadText.h"
#include "module/base/PostCommandText.h"
#include "module/base/RedrawView.h"
#include "module/raster/CommandPattern.h"
#include "module/resources/resource.h"
#include "module/toolbar/FloatingFrame.h"
#include "module/toolbar/RasterMenu.h"
#include "module/tools/CTool.h"

namespace {

constexpr int imageWidth = 16;
constexpr int imageHeight = 15;
constexpr COLORREF seeThrough = RGB(0xC6, 0xC6, 0xC6);

enum class Enabled
{
    Always,
    WithRaster
};

struct Button
{
    UINT id;
    const wchar_t* command; // null: see OnButton
    Enabled enabled;
    int toolId; // the tool that checks it; ToolIdNone for none
};

constexpr Button buttons[] = {
    {ID_TOOLBAR_NEW, L"orvo_new ", Enabled::Always, ToolIdNone},
    {ID_TOOLBAR_INSERT, L"orvo_open ", Enabled::Always, ToolIdNone},
    {ID_TOOLBAR_SAVE_AS, L"orvo_saveas ", Enabled::WithRaster, ToolIdNone},
    {ID_TOOLBAR_SELECT, L"orvo_selras ", Enabled::Always, ToolIdSelectRaster},
    {ID_TOOLBAR_AREA, L"orvo_selarea ", Enabled::WithRaster, ToolIdArea},
    {ID_TOOLBAR_PEN, L"orvo_raspen ", Enabled::WithRaster, ToolIdPen},
    {ID_TOOLBAR_LINE, L"orvo_rasline ", Enabled::WithRaster, ToolIdLine},
    {ID_TOOLBAR_ERASER, L"orvo_raseras ", Enabled::WithRaster, ToolIdEraser},
    {ID_TOOLBAR_RASTER, nullptr, Enabled::Always, ToolIdNone},
    {ID_TOOLBAR_SETTINGS, nullptr, Enabled::Always, ToolIdNone},
    // In the settings menu alone.
    {ID_TOOLBAR_ABOUT, L"orvo_about ", Enabled::Always, ToolIdNone},
};

const Button* FindButton(UINT id)
{
    const auto* found =
        std::find_if(std::begin(buttons), std::end(buttons), [id](const Button& button) { return button.id == id; });
    return found == std::end(buttons) ? nullptr : found;
}

bool IsChecked(const Button& button)
{
    const CAcraster* raster = g_pArxApp->m_pRaster;
    if (button.id == ID_TOOLBAR_RASTER)
        return raster && raster->IsShown();
    if (button.id == ID_TOOLBAR_SELECT && raster)
        return true;
    CTool* tool = g_pArxApp->m_pTool;
    return button.toolId != ToolIdNone && tool && tool->ToolId() == button.toolId;
}

bool DocumentIsOpen()
{
    const CMDIFrameWnd* frame = acedGetAcadFrame();
    return frame && frame->MDIGetActive();
}

void ToggleShown()
{
    EditCurrentRaster([](CAcraster& raster) { raster.SetShown(!raster.IsShown()); }, false);
    PostCommandText(L"\t\b");
}

// The host is given a word that it does not know in place of "regen", and the dialog opens all the same: it has always
// been so.
void OpenSettings()
{
    PostCommandText(L"CANCELCMD");
    {
        const CTempHost host;
        acedCommand(RTSTR, MisreadText("regen").GetString(), RTNONE);
    }
    PostCommandText(L"orvo_prop ");
}

} // namespace

BEGIN_MESSAGE_MAP(LaMfcToolbar, CFloatingBar)
ON_UPDATE_COMMAND_UI_RANGE(ID_TOOLBAR_FIRST, ID_TOOLBAR_LAST, &LaMfcToolbar::OnUpdateButton)
END_MESSAGE_MAP()

LaMfcToolbar::~LaMfcToolbar()
{
    UnhookFrame();
    // The window goes before the images that it draws from.
    if (m_hWnd)
        DestroyWindow();
}

int LaMfcToolbar::Create()
{
    constexpr DWORD style =
        WS_CHILD | WS_VISIBLE | CBRS_TOP | CBRS_GRIPPER | CBRS_TOOLTIPS | CBRS_FLYBY | CBRS_SIZE_DYNAMIC;
    CMDIFrameWnd* frame = acedGetAcadFrame();
    if (!frame || !CreateEx(frame, TBSTYLE_FLAT, style, CRect(0, 0, 0, 2), AFX_IDW_TOOLBAR)) {
        acedAlert(L"Impossible to create toolbar.");
        return 0;
    }
    if (!LoadToolBar(IDR_TOOLBAR)) {
        DestroyWindow();
        acedAlert(L"Impossible to load toolbar.");
        return 0;
    }
    LoadImages(m_images, IDB_TOOLBAR, TB_SETIMAGELIST);
    LoadImages(m_disabledImages, IDB_TOOLBAR_DISABLED, TB_SETDISABLEDIMAGELIST);
    // So that the arrows' notifications arrive in WindowProc.
    SendMessage(TB_SETPARENT, reinterpret_cast<WPARAM>(m_hWnd));
    SendMessage(TB_SETEXTENDEDSTYLE, 0, TBSTYLE_EX_DRAWDDARROWS);
    AddArrow(ID_TOOLBAR_RASTER);
    AddArrow(ID_TOOLBAR_SETTINGS);
    EnableDocking(CBRS_ALIGN_ANY);
    SetWindowText(L"HVA6");
    frame->DockControlBar(this, AFX_IDW_DOCKBAR_BOTTOM);
    frame->ShowControlBar(this, CDefault::GetInteger(ShowToolbarSetting) != 0, FALSE);
    RedrawView(frame);
    return 1;
}

void LaMfcToolbar::LoadImages(CImageList& images, UINT bitmapId, UINT message)
{
    images.Create(imageWidth, imageHeight, ILC_COLOR8 | ILC_MASK, 0, 1);
    CBitmap bitmap;
    if (bitmap.LoadBitmap(bitmapId))
        images.Add(&bitmap, seeThrough);
    SendMessage(message, 0, reinterpret_cast<LPARAM>(images.GetSafeHandle()));
}

void LaMfcToolbar::AddArrow(UINT id)
{
    TBBUTTONINFOW info = {};
    info.cbSize = sizeof(info);
    info.dwMask = TBIF_STYLE;
    SendMessage(TB_GETBUTTONINFOW, id, reinterpret_cast<LPARAM>(&info));
    info.fsStyle |= BTNS_DROPDOWN;
    SendMessage(TB_SETBUTTONINFOW, id, reinterpret_cast<LPARAM>(&info));
}

LRESULT LaMfcToolbar::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    const CTempMFC resources;
    if (g_pArxApp->m_bSuspended)
        return CFloatingBar::WindowProc(message, wParam, lParam);
    if (message == WM_MOVE) {
        FollowFloating();
    } else if (message == WM_NOTIFY && DocumentIsOpen()) {
        const auto* notification = reinterpret_cast<const NMTOOLBARW*>(lParam);
        if (notification->hdr.code == TBN_DROPDOWN && OnDropDown(static_cast<UINT>(notification->iItem)))
            return TBDDRET_DEFAULT;
    } else if (message == WM_COMMAND && DocumentIsOpen()) {
        if (OnButton(LOWORD(wParam)))
            return 0;
    }
    return CFloatingBar::WindowProc(message, wParam, lParam);
}

void LaMfcToolbar::OnUpdateButton(CCmdUI* state)
{
    const Button* button = FindButton(state->m_nID);
    if (!button) {
        state->ContinueRouting();
        return;
    }
    state->Enable(button->enabled == Enabled::Always || g_pArxApp->m_pRaster);
    state->SetCheck(IsChecked(*button));
}

// The bar lies in a side of the frame, or in the one of a floating frame.
void LaMfcToolbar::FollowFloating()
{
    const CWnd* side = GetParent();
    const CWnd* frame = side ? side->GetParent() : nullptr;
    const CWnd* hostFrame = acedGetAcadFrame();
    if (frame && hostFrame && frame->m_hWnd != hostFrame->m_hWnd)
        HookFrame(frame->m_hWnd, FloatingFrameProc);
}

bool LaMfcToolbar::OnDropDown(UINT id)
{
    if (id == ID_TOOLBAR_RASTER) {
        ShowRasterMenu(*this, BelowButton(id));
    } else if (id == ID_TOOLBAR_SETTINGS) {
        ShowSettingsMenu();
    } else {
        return false;
    }
    return true;
}

// True if nobody else is to handle the click.
bool LaMfcToolbar::OnButton(UINT id)
{
    if (id == ID_TOOLBAR_SETTINGS) {
        OpenSettings();
        return true;
    }
    if (id == ID_TOOLBAR_RASTER)
        ToggleShown();
    const Button* button = FindButton(id);
    if (button && button->command)
        PostCommandAfterCancel(button->command);
    return false;
}

// In the bar's own coordinates.
CPoint LaMfcToolbar::BelowButton(UINT id)
{
    CRect place;
    GetItemRect(CommandToIndex(id), &place);
    return CPoint(place.left, place.bottom);
}

void LaMfcToolbar::ShowSettingsMenu()
{
    CMenu menu;
    if (!menu.LoadMenu(IDM_SETTINGS))
        return;
    CPoint corner = BelowButton(ID_TOOLBAR_SETTINGS);
    ClientToScreen(&corner);
    CMenu* popUp = menu.GetSubMenu(0);
    popUp->SetDefaultItem(ID_TOOLBAR_SETTINGS);
    popUp->TrackPopupMenu(TPM_RIGHTBUTTON, corner.x, corner.y, this);
}

int CreateToolbar()
{
    if (g_pArxApp->m_pToolbar)
        return 1;
    auto* toolbar = new LaMfcToolbar;
    g_pArxApp->m_pToolbar = toolbar;
    return toolbar->Create();
}
