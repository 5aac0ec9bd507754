#include "standin/afx/afx_dc.h"
#include "standin/afx/afx_exception.h"
#include "standin/afx/afx_gdi.h"
#include "standin/afx/state.h"

IMPLEMENT_DYNCREATE(CGdiObject, CObject)
IMPLEMENT_DYNAMIC(CPen, CGdiObject)
IMPLEMENT_DYNAMIC(CBrush, CGdiObject)
IMPLEMENT_DYNAMIC(CFont, CGdiObject)
IMPLEMENT_DYNAMIC(CBitmap, CGdiObject)
IMPLEMENT_DYNAMIC(CPalette, CGdiObject)

namespace {

CGdiObject* newOfKind(HGDIOBJ handle)
{
    switch (::GetObjectType(handle)) {
    case OBJ_PEN:
    case OBJ_EXTPEN:
        return new CPen;
    case OBJ_BRUSH:
        return new CBrush;
    case OBJ_FONT:
        return new CFont;
    case OBJ_BITMAP:
        return new CBitmap;
    case OBJ_PAL:
        return new CPalette;
    case OBJ_REGION:
        return new CRgn;
    default:
        return new CGdiObject;
    }
}

template <typename Object> Object* fromHandle(HGDIOBJ handle)
{
    return DYNAMIC_DOWNCAST(Object, CGdiObject::FromHandle(handle));
}

void requireMade(BOOL made)
{
    if (!made)
        AfxThrowResourceException();
}

} // namespace

CGdiObject::~CGdiObject()
{
    DeleteObject();
}

CGdiObject* CGdiObject::FromHandle(HGDIOBJ hObject)
{
    return afx::threadState().gdiObjects.any(hObject, [=] {
        CGdiObject* object = newOfKind(hObject);
        object->m_hObject = hObject;
        return object;
    });
}

void CGdiObject::DeleteTempMap()
{
    afx::threadState().gdiObjects.deleteTemporary([](CGdiObject* object) { object->m_hObject = nullptr; });
}

BOOL CGdiObject::Attach(HGDIOBJ hObject)
{
    if (!hObject)
        return FALSE;
    m_hObject = hObject;
    afx::threadState().gdiObjects.setPermanent(hObject, this);
    return TRUE;
}

HGDIOBJ CGdiObject::Detach()
{
    const HGDIOBJ handle = m_hObject;
    if (handle)
        afx::threadState().gdiObjects.removePermanent(handle);
    m_hObject = nullptr;
    return handle;
}

BOOL CGdiObject::DeleteObject()
{
    return m_hObject && ::DeleteObject(Detach());
}

int CGdiObject::GetObject(int nCount, LPVOID lpObject) const
{
    return ::GetObjectW(m_hObject, nCount, lpObject);
}

UINT CGdiObject::GetObjectType() const
{
    return ::GetObjectType(m_hObject);
}

BOOL CGdiObject::CreateStockObject(int nIndex)
{
    return Attach(::GetStockObject(nIndex));
}

CPen::CPen(int nPenStyle, int nWidth, COLORREF crColor)
{
    requireMade(CreatePen(nPenStyle, nWidth, crColor));
}

CPen::CPen(int nPenStyle, int nWidth, const LOGBRUSH* pLogBrush, int nStyleCount, const DWORD* lpStyle)
{
    requireMade(CreatePen(nPenStyle, nWidth, pLogBrush, nStyleCount, lpStyle));
}

CPen* CPen::FromHandle(HPEN hPen)
{
    return fromHandle<CPen>(hPen);
}

BOOL CPen::CreatePen(int nPenStyle, int nWidth, COLORREF crColor)
{
    return Attach(::CreatePen(nPenStyle, nWidth, crColor));
}

BOOL CPen::CreatePen(int nPenStyle, int nWidth, const LOGBRUSH* pLogBrush, int nStyleCount, const DWORD* lpStyle)
{
    return Attach(::ExtCreatePen(static_cast<DWORD>(nPenStyle), static_cast<DWORD>(nWidth), pLogBrush,
                                 static_cast<DWORD>(nStyleCount), lpStyle));
}

int CPen::GetLogPen(LOGPEN* pLogPen) const
{
    return GetObject(sizeof *pLogPen, pLogPen);
}

CBrush::CBrush(COLORREF crColor)
{
    requireMade(CreateSolidBrush(crColor));
}

CBrush::CBrush(CBitmap* pBitmap)
{
    requireMade(CreatePatternBrush(pBitmap));
}

CBrush* CBrush::FromHandle(HBRUSH hBrush)
{
    return fromHandle<CBrush>(hBrush);
}

BOOL CBrush::CreateSolidBrush(COLORREF crColor)
{
    return Attach(::CreateSolidBrush(crColor));
}

BOOL CBrush::CreatePatternBrush(CBitmap* pBitmap)
{
    return Attach(::CreatePatternBrush(*pBitmap));
}

CFont* CFont::FromHandle(HFONT hFont)
{
    return fromHandle<CFont>(hFont);
}

BOOL CFont::CreateFontIndirect(const LOGFONTW* lpLogFont)
{
    return Attach(::CreateFontIndirectW(lpLogFont));
}

BOOL CFont::CreateFont(int nHeight, int nWidth, int nEscapement, int nOrientation, int nWeight, BYTE bItalic,
                       BYTE bUnderline, BYTE cStrikeOut, BYTE nCharSet, BYTE nOutPrecision, BYTE nClipPrecision,
                       BYTE nQuality, BYTE nPitchAndFamily, LPCWSTR lpszFacename)
{
    return Attach(::CreateFontW(nHeight, nWidth, nEscapement, nOrientation, nWeight, bItalic, bUnderline, cStrikeOut,
                                nCharSet, nOutPrecision, nClipPrecision, nQuality, nPitchAndFamily, lpszFacename));
}

CBitmap* CBitmap::FromHandle(HBITMAP hBitmap)
{
    return fromHandle<CBitmap>(hBitmap);
}

int CBitmap::GetBitmap(BITMAP* pBitMap) const
{
    return GetObject(sizeof *pBitMap, pBitMap);
}

BOOL CBitmap::LoadBitmap(LPCWSTR lpszResourceName)
{
    return Attach(::LoadBitmapW(AfxFindResourceHandle(lpszResourceName, RT_BITMAP), lpszResourceName));
}

BOOL CBitmap::LoadBitmap(UINT nIDResource)
{
    return LoadBitmap(MAKEINTRESOURCEW(nIDResource));
}

BOOL CBitmap::CreateBitmap(int nWidth, int nHeight, UINT nPlanes, UINT nBitcount, const void* lpBits)
{
    return Attach(::CreateBitmap(nWidth, nHeight, nPlanes, nBitcount, lpBits));
}

BOOL CBitmap::CreateCompatibleBitmap(CDC* pDC, int nWidth, int nHeight)
{
    return Attach(::CreateCompatibleBitmap(pDC->m_hDC, nWidth, nHeight));
}

DWORD CBitmap::GetBitmapBits(DWORD dwCount, LPVOID lpBits) const
{
    return static_cast<DWORD>(::GetBitmapBits(*this, static_cast<LONG>(dwCount), lpBits));
}

CPalette* CPalette::FromHandle(HPALETTE hPalette)
{
    return fromHandle<CPalette>(hPalette);
}

BOOL CPalette::CreatePalette(LPLOGPALETTE lpLogPalette)
{
    return Attach(::CreatePalette(lpLogPalette));
}

int CPalette::GetEntryCount()
{
    WORD count = 0;
    GetObject(sizeof count, &count);
    return count;
}
