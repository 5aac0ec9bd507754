#include "standin/afx/afx_dc.h"
#include "standin/afx/afx_region.h"

IMPLEMENT_DYNAMIC(CRgn, CGdiObject)

CRgn* CRgn::FromHandle(HRGN hRgn)
{
    return DYNAMIC_DOWNCAST(CRgn, CGdiObject::FromHandle(hRgn));
}

BOOL CRgn::CreateRectRgn(int x1, int y1, int x2, int y2)
{
    return Attach(::CreateRectRgn(x1, y1, x2, y2));
}

BOOL CRgn::CreateRectRgnIndirect(LPCRECT lpRect)
{
    return Attach(::CreateRectRgnIndirect(lpRect));
}

BOOL CRgn::CreateEllipticRgn(int x1, int y1, int x2, int y2)
{
    return Attach(::CreateEllipticRgn(x1, y1, x2, y2));
}

BOOL CRgn::CreateFromData(const XFORM* lpXForm, int nCount, const RGNDATA* pRgnData)
{
    // Not every version of the operating system checks that the rectangles lie within the block.
    const DWORD size = static_cast<DWORD>(nCount);
    if (nCount < 0 || size < sizeof(RGNDATAHEADER) ||
        pRgnData->rdh.nCount > (size - sizeof(RGNDATAHEADER)) / sizeof(RECT))
        return FALSE;
    return Attach(::ExtCreateRegion(lpXForm, size, pRgnData));
}

void CRgn::SetRectRgn(int x1, int y1, int x2, int y2)
{
    ::SetRectRgn(*this, x1, y1, x2, y2);
}

void CRgn::SetRectRgn(LPCRECT lpRect)
{
    ::SetRectRgn(*this, lpRect->left, lpRect->top, lpRect->right, lpRect->bottom);
}

int CRgn::CombineRgn(const CRgn* pRgn1, const CRgn* pRgn2, int nCombineMode)
{
    return ::CombineRgn(*this, pRgn1 ? static_cast<HRGN>(*pRgn1) : nullptr, pRgn2 ? static_cast<HRGN>(*pRgn2) : nullptr,
                        nCombineMode);
}

int CRgn::CopyRgn(const CRgn* pRgnSrc)
{
    return CombineRgn(pRgnSrc, nullptr, RGN_COPY);
}

BOOL CRgn::EqualRgn(const CRgn* pRgn) const
{
    return ::EqualRgn(*this, *pRgn);
}

int CRgn::OffsetRgn(int x, int y)
{
    return ::OffsetRgn(*this, x, y);
}

int CRgn::OffsetRgn(POINT point)
{
    return ::OffsetRgn(*this, point.x, point.y);
}

int CRgn::GetRgnBox(LPRECT lpRect) const
{
    return ::GetRgnBox(*this, lpRect);
}

BOOL CRgn::PtInRegion(int x, int y) const
{
    return ::PtInRegion(*this, x, y);
}

BOOL CRgn::PtInRegion(POINT point) const
{
    return ::PtInRegion(*this, point.x, point.y);
}

BOOL CRgn::RectInRegion(LPCRECT lpRect) const
{
    return ::RectInRegion(*this, lpRect);
}

int CRgn::GetRegionData(LPRGNDATA lpRgnData, int nDataSize) const
{
    return static_cast<int>(::GetRegionData(*this, static_cast<DWORD>(nDataSize), lpRgnData));
}
