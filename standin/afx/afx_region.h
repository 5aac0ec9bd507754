// CRgn: a Win32 region.
#pragma once

#include "standin/afx/afx_gdi.h"

class HALVORAN_STANDIN_API CRgn : public CGdiObject
{
    DECLARE_DYNAMIC(CRgn)
public:
    CRgn() = default;
    operator HRGN() const { return static_cast<HRGN>(m_hObject); }
    static CRgn* FromHandle(HRGN hRgn);

    BOOL CreateRectRgn(int x1, int y1, int x2, int y2);
    BOOL CreateRectRgnIndirect(LPCRECT lpRect);
    BOOL CreateEllipticRgn(int x1, int y1, int x2, int y2);
    BOOL CreateFromData(const XFORM* lpXForm, int nCount, const RGNDATA* pRgnData);

    void SetRectRgn(int x1, int y1, int x2, int y2);
    void SetRectRgn(LPCRECT lpRect);
    /// This region must exist; it receives the result, and may be one of the sources.
    int CombineRgn(const CRgn* pRgn1, const CRgn* pRgn2, int nCombineMode);
    int CopyRgn(const CRgn* pRgnSrc);
    BOOL EqualRgn(const CRgn* pRgn) const;
    int OffsetRgn(int x, int y);
    int OffsetRgn(POINT point);
    int GetRgnBox(LPRECT lpRect) const;
    BOOL PtInRegion(int x, int y) const;
    BOOL PtInRegion(POINT point) const;
    BOOL RectInRegion(LPCRECT lpRect) const;
    /// Bytes copied; with lpRgnData null the bytes needed.
    int GetRegionData(LPRGNDATA lpRgnData, int nDataSize) const;
};
