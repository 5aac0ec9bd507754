#include "standin/afx/afx_dc.h"
#include "standin/afx/afx_exception.h"
#include "standin/afx/state.h"

IMPLEMENT_DYNCREATE(CDC, CObject)
IMPLEMENT_DYNAMIC(CClientDC, CDC)
IMPLEMENT_DYNAMIC(CWindowDC, CDC)
IMPLEMENT_DYNAMIC(CPaintDC, CDC)

CDC::~CDC()
{
    DeleteDC();
}

CWnd* CDC::GetWindow() const
{
    return CWnd::FromHandle(::WindowFromDC(m_hDC));
}

CDC* CDC::FromHandle(HDC hDC)
{
    return afx::threadState().contexts.any(hDC, [=] {
        CDC* context = new CDC;
        context->m_hDC = hDC;
        return context;
    });
}

void CDC::DeleteTempMap()
{
    afx::threadState().contexts.deleteTemporary([](CDC* context) { context->m_hDC = nullptr; });
}

BOOL CDC::Attach(HDC hDC)
{
    if (!hDC)
        return FALSE;
    m_hDC = hDC;
    afx::threadState().contexts.setPermanent(hDC, this);
    return TRUE;
}

HDC CDC::Detach()
{
    const HDC handle = m_hDC;
    if (handle)
        afx::threadState().contexts.removePermanent(handle);
    m_hDC = nullptr;
    return handle;
}

BOOL CDC::CreateCompatibleDC(CDC* pDC)
{
    return Attach(::CreateCompatibleDC(pDC ? pDC->m_hDC : nullptr));
}

BOOL CDC::DeleteDC()
{
    return m_hDC && ::DeleteDC(Detach());
}

int CDC::SaveDC()
{
    return ::SaveDC(m_hDC);
}

BOOL CDC::RestoreDC(int nSavedDC)
{
    return ::RestoreDC(m_hDC, nSavedDC);
}

int CDC::GetDeviceCaps(int nIndex) const
{
    return ::GetDeviceCaps(m_hDC, nIndex);
}

namespace {

HDC screenOrWindow(CWnd* window, HDC (*get)(HWND), HWND& owner)
{
    owner = window ? window->m_hWnd : nullptr;
    return get(owner);
}

} // namespace

CClientDC::CClientDC(CWnd* pWnd)
{
    if (!Attach(screenOrWindow(pWnd, ::GetDC, m_hWnd)))
        AfxThrowResourceException();
}

CClientDC::~CClientDC()
{
    ::ReleaseDC(m_hWnd, Detach());
}

CWindowDC::CWindowDC(CWnd* pWnd)
{
    if (!Attach(screenOrWindow(pWnd, ::GetWindowDC, m_hWnd)))
        AfxThrowResourceException();
}

CWindowDC::~CWindowDC()
{
    ::ReleaseDC(m_hWnd, Detach());
}

CPaintDC::CPaintDC(CWnd* pWnd) : m_hWnd(pWnd->m_hWnd)
{
    if (!Attach(::BeginPaint(m_hWnd, &m_ps)))
        AfxThrowResourceException();
}

CPaintDC::~CPaintDC()
{
    ::EndPaint(m_hWnd, &m_ps);
    Detach();
}

// --- selecting objects

namespace {

template <typename Object> Object* selectInto(HDC context, CGdiObject* object)
{
    const HGDIOBJ former = ::SelectObject(context, object ? object->m_hObject : nullptr);
    return DYNAMIC_DOWNCAST(Object, CGdiObject::FromHandle(former));
}

} // namespace

CGdiObject* CDC::SelectStockObject(int nIndex)
{
    return CGdiObject::FromHandle(::SelectObject(m_hDC, ::GetStockObject(nIndex)));
}

CPen* CDC::SelectObject(CPen* pPen)
{
    return selectInto<CPen>(m_hDC, pPen);
}

CBrush* CDC::SelectObject(CBrush* pBrush)
{
    return selectInto<CBrush>(m_hDC, pBrush);
}

CFont* CDC::SelectObject(CFont* pFont)
{
    return selectInto<CFont>(m_hDC, pFont);
}

CBitmap* CDC::SelectObject(CBitmap* pBitmap)
{
    return selectInto<CBitmap>(m_hDC, pBitmap);
}

int CDC::SelectObject(CRgn* pRgn)
{
    return SelectClipRgn(pRgn);
}

CGdiObject* CDC::SelectObject(CGdiObject* pObject)
{
    return selectInto<CGdiObject>(m_hDC, pObject);
}

CPalette* CDC::SelectPalette(CPalette* pPalette, BOOL bForceBackground)
{
    return CPalette::FromHandle(
        ::SelectPalette(m_hDC, pPalette ? static_cast<HPALETTE>(*pPalette) : nullptr, bForceBackground));
}

UINT CDC::RealizePalette()
{
    return ::RealizePalette(m_hDC);
}

CPen* CDC::GetCurrentPen() const
{
    return CPen::FromHandle(static_cast<HPEN>(::GetCurrentObject(m_hDC, OBJ_PEN)));
}

// --- attributes

int CDC::SetROP2(int nDrawMode)
{
    return ::SetROP2(m_hDC, nDrawMode);
}

int CDC::GetROP2() const
{
    return ::GetROP2(m_hDC);
}

int CDC::SetBkMode(int nBkMode)
{
    return ::SetBkMode(m_hDC, nBkMode);
}

int CDC::GetBkMode() const
{
    return ::GetBkMode(m_hDC);
}

COLORREF CDC::SetBkColor(COLORREF crColor)
{
    return ::SetBkColor(m_hDC, crColor);
}

COLORREF CDC::GetBkColor() const
{
    return ::GetBkColor(m_hDC);
}

COLORREF CDC::SetTextColor(COLORREF crColor)
{
    return ::SetTextColor(m_hDC, crColor);
}

COLORREF CDC::GetTextColor() const
{
    return ::GetTextColor(m_hDC);
}

CPoint CDC::SetBrushOrg(int x, int y)
{
    POINT former{};
    ::SetBrushOrgEx(m_hDC, x, y, &former);
    return former;
}

CPoint CDC::SetBrushOrg(POINT point)
{
    return SetBrushOrg(point.x, point.y);
}

// --- mapping

// --- clipping

int CDC::GetClipBox(LPRECT lpRect) const
{
    return ::GetClipBox(m_hDC, lpRect);
}

int CDC::SelectClipRgn(CRgn* pRgn)
{
    return ::SelectClipRgn(m_hDC, pRgn ? static_cast<HRGN>(*pRgn) : nullptr);
}

int CDC::SelectClipRgn(CRgn* pRgn, int nMode)
{
    return ::ExtSelectClipRgn(m_hDC, pRgn ? static_cast<HRGN>(*pRgn) : nullptr, nMode);
}

int CDC::IntersectClipRect(int x1, int y1, int x2, int y2)
{
    return ::IntersectClipRect(m_hDC, x1, y1, x2, y2);
}

int CDC::IntersectClipRect(LPCRECT lpRect)
{
    return ::IntersectClipRect(m_hDC, lpRect->left, lpRect->top, lpRect->right, lpRect->bottom);
}

int CDC::ExcludeClipRect(int x1, int y1, int x2, int y2)
{
    return ::ExcludeClipRect(m_hDC, x1, y1, x2, y2);
}

int CDC::ExcludeClipRect(LPCRECT lpRect)
{
    return ::ExcludeClipRect(m_hDC, lpRect->left, lpRect->top, lpRect->right, lpRect->bottom);
}
