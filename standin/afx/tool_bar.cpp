#include <algorithm>

#include "standin/afx/afx_module.h"
#include "standin/afx/afx_tool_bar.h"

IMPLEMENT_DYNAMIC(CToolBar, CControlBar)

BEGIN_MESSAGE_MAP(CToolBar, CControlBar)
ON_WM_NCCALCSIZE()
ON_WM_NCPAINT()
ON_WM_NCHITTEST()
ON_WM_PAINT()
ON_WM_ERASEBKGND()
END_MESSAGE_MAP()

CToolBar::CToolBar() = default;

CToolBar::~CToolBar()
{
    if (m_hWnd)
        DestroyWindow();
}

BOOL CToolBar::Create(CWnd* pParentWnd, DWORD dwStyle, UINT nID)
{
    return CreateEx(pParentWnd, 0, dwStyle, m_borders, nID);
}

BOOL CToolBar::CreateEx(CWnd* pParentWnd, DWORD dwCtrlStyle, DWORD dwStyle, CRect rcBorders, UINT nID)
{
    SetBorders(&rcBorders);
    m_dwStyle = dwStyle & CBRS_ALL;
    // The frame's layout places the bar, so the control must not.
    DWORD style = (dwStyle & ~static_cast<DWORD>(CBRS_ALL)) | WS_CHILD | CCS_NOPARENTALIGN | CCS_NOMOVEY |
                  CCS_NODIVIDER | CCS_NORESIZE | dwCtrlStyle;
    if (m_dwStyle & CBRS_TOOLTIPS)
        style |= TBSTYLE_TOOLTIPS;
    if (!CWnd::CreateEx(0, TOOLBARCLASSNAMEW, nullptr, style, CRect(0, 0, 0, 0), pParentWnd, nID))
        return FALSE;
    control(TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON));
    SetSizes(m_sizeButton, m_sizeImage);
    return TRUE;
}

LRESULT CToolBar::control(UINT message, WPARAM wParam, LPARAM lParam) const
{
    return ::SendMessageW(m_hWnd, message, wParam, lParam);
}

namespace {

// The form of a toolbar template: a fixed head, then the commands, 0 for a separator.
#pragma pack(push, 2)
struct ToolBarTemplate
{
    WORD version;
    WORD width;
    WORD height;
    WORD itemCount;
};
#pragma pack(pop)

const LPCWSTR toolBarType = MAKEINTRESOURCEW(241);

} // namespace

BOOL CToolBar::LoadToolBar(UINT nIDResource)
{
    return LoadToolBar(MAKEINTRESOURCEW(nIDResource));
}

BOOL CToolBar::LoadToolBar(LPCWSTR lpszResourceName)
{
    const HINSTANCE module = AfxFindResourceHandle(lpszResourceName, toolBarType);
    const HRSRC found = ::FindResourceW(module, lpszResourceName, toolBarType);
    const HGLOBAL loaded = found ? ::LoadResource(module, found) : nullptr;
    const ToolBarTemplate* head = loaded ? static_cast<const ToolBarTemplate*>(::LockResource(loaded)) : nullptr;
    const DWORD size = found ? ::SizeofResource(module, found) : 0;
    if (!head || size < sizeof *head || size < sizeof *head + head->itemCount * sizeof(WORD) || head->width == 0 ||
        head->height == 0)
        return FALSE;
    const WORD* items = reinterpret_cast<const WORD*>(head + 1);
    const std::vector<UINT> ids(items, items + head->itemCount);
    if (!SetButtons(ids.data(), static_cast<int>(ids.size())))
        return FALSE;
    // A button is its image with room for the edges around it.
    SetSizes(CSize(head->width + 7, head->height + 7), CSize(head->width, head->height));

    CBitmap bitmap;
    return bitmap.LoadBitmap(lpszResourceName) && useBitmap(bitmap);
}

BOOL CToolBar::LoadBitmap(UINT nIDResource)
{
    CBitmap bitmap;
    return bitmap.LoadBitmap(nIDResource) && useBitmap(bitmap);
}

BOOL CToolBar::useBitmap(CBitmap& bitmap)
{
    BITMAP info{};
    bitmap.GetBitmap(&info);
    TBADDBITMAP add{nullptr, reinterpret_cast<UINT_PTR>(bitmap.m_hObject)};
    if (control(TB_ADDBITMAP, static_cast<WPARAM>(info.bmWidth / m_sizeImage.cx), reinterpret_cast<LPARAM>(&add)) < 0)
        return FALSE;
    m_bitmap.DeleteObject();
    m_bitmap.Attach(bitmap.Detach());
    return TRUE;
}

BOOL CToolBar::SetButtons(const UINT* lpIDArray, int nIDCount)
{
    while (GetCount() > 0)
        control(TB_DELETEBUTTON, 0);
    constexpr int separatorWidth = 8;
    int image = 0;
    for (int i = 0; i < nIDCount; ++i) {
        TBBUTTON button{};
        button.fsState = TBSTATE_ENABLED;
        button.idCommand = static_cast<int>(lpIDArray[i]);
        button.iString = -1;
        if (lpIDArray[i] == 0) {
            button.fsStyle = TBSTYLE_SEP;
            button.iBitmap = separatorWidth;
        } else {
            button.fsStyle = TBSTYLE_BUTTON;
            button.iBitmap = image++;
        }
        if (!control(TB_ADDBUTTONSW, 1, reinterpret_cast<LPARAM>(&button)))
            return FALSE;
    }
    return TRUE;
}

void CToolBar::SetSizes(SIZE sizeButton, SIZE sizeImage)
{
    m_sizeButton = sizeButton;
    m_sizeImage = sizeImage;
    if (!m_hWnd)
        return;
    control(TB_SETBITMAPSIZE, 0, MAKELPARAM(sizeImage.cx, sizeImage.cy));
    control(TB_SETBUTTONSIZE, 0, MAKELPARAM(sizeButton.cx, sizeButton.cy));
}

int CToolBar::GetCount() const
{
    return static_cast<int>(control(TB_BUTTONCOUNT));
}

int CToolBar::CommandToIndex(UINT nIDFind) const
{
    return static_cast<int>(control(TB_COMMANDTOINDEX, nIDFind));
}

namespace {

TBBUTTON buttonOf(HWND bar, int index)
{
    TBBUTTON button{};
    ::SendMessageW(bar, TB_GETBUTTON, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&button));
    return button;
}

// The control has no call that changes a button's command and style together, so the button is made anew.
void replaceButton(HWND bar, int index, const TBBUTTON& button)
{
    ::SendMessageW(bar, TB_DELETEBUTTON, static_cast<WPARAM>(index), 0);
    ::SendMessageW(bar, TB_INSERTBUTTONW, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&button));
}

} // namespace

UINT CToolBar::GetItemID(int nIndex) const
{
    return static_cast<UINT>(buttonOf(m_hWnd, nIndex).idCommand);
}

void CToolBar::GetItemRect(int nIndex, LPRECT lpRect) const
{
    if (!control(TB_GETITEMRECT, static_cast<WPARAM>(nIndex), reinterpret_cast<LPARAM>(lpRect)))
        ::SetRectEmpty(lpRect);
}

UINT CToolBar::GetButtonStyle(int nIndex) const
{
    const TBBUTTON button = buttonOf(m_hWnd, nIndex);
    return MAKELONG(button.fsStyle, button.fsState);
}

void CToolBar::SetButtonStyle(int nIndex, UINT nStyle)
{
    TBBUTTON button = buttonOf(m_hWnd, nIndex);
    button.fsStyle = static_cast<BYTE>(LOWORD(nStyle));
    button.fsState = static_cast<BYTE>(HIWORD(nStyle));
    replaceButton(m_hWnd, nIndex, button);
}

void CToolBar::GetButtonInfo(int nIndex, UINT& nID, UINT& nStyle, int& iImage) const
{
    const TBBUTTON button = buttonOf(m_hWnd, nIndex);
    nID = static_cast<UINT>(button.idCommand);
    nStyle = MAKELONG(button.fsStyle, button.fsState);
    iImage = button.iBitmap;
}

void CToolBar::SetButtonInfo(int nIndex, UINT nID, UINT nStyle, int iImage)
{
    TBBUTTON button = buttonOf(m_hWnd, nIndex);
    button.idCommand = static_cast<int>(nID);
    button.fsStyle = static_cast<BYTE>(LOWORD(nStyle));
    button.fsState = static_cast<BYTE>(HIWORD(nStyle));
    button.iBitmap = iImage;
    replaceButton(m_hWnd, nIndex, button);
}
