// GDI objects: pens, brushes, bitmaps, fonts and palettes.
#pragma once

#include "standin/afx/afx_geometry.h"
#include "standin/afx/afx_object.h"
#include "standin/afx/afx_string.h"

class CDC;

/// Owns its handle: the destructor deletes it. Objects that FromHandle returns are temporary: they do not own the
/// handle and live until the program is next idle.
class HALVORAN_STANDIN_API CGdiObject : public CObject
{
    DECLARE_DYNCREATE(CGdiObject)
public:
    CGdiObject() = default;
    ~CGdiObject() override;

    operator HGDIOBJ() const { return m_hObject; }
    HGDIOBJ GetSafeHandle() const { return m_hObject; }
    static CGdiObject* FromHandle(HGDIOBJ hObject);
    static void DeleteTempMap();
    /// The object takes the handle; false when it is null.
    BOOL Attach(HGDIOBJ hObject);
    HGDIOBJ Detach();
    BOOL DeleteObject();
    int GetObject(int nCount, LPVOID lpObject) const;
    UINT GetObjectType() const;
    BOOL CreateStockObject(int nIndex);

    HGDIOBJ m_hObject = nullptr;
};

class HALVORAN_STANDIN_API CPen : public CGdiObject
{
    DECLARE_DYNAMIC(CPen)
public:
    CPen() = default;
    /// Throw CResourceException* when the pen cannot be made.
    CPen(int nPenStyle, int nWidth, COLORREF crColor);
    CPen(int nPenStyle, int nWidth, const LOGBRUSH* pLogBrush, int nStyleCount = 0, const DWORD* lpStyle = nullptr);

    operator HPEN() const { return static_cast<HPEN>(m_hObject); }
    static CPen* FromHandle(HPEN hPen);
    BOOL CreatePen(int nPenStyle, int nWidth, COLORREF crColor);
    BOOL CreatePen(int nPenStyle, int nWidth, const LOGBRUSH* pLogBrush, int nStyleCount = 0,
                   const DWORD* lpStyle = nullptr);
    int GetLogPen(LOGPEN* pLogPen) const;
};

class CBitmap;

class HALVORAN_STANDIN_API CBrush : public CGdiObject
{
    DECLARE_DYNAMIC(CBrush)
public:
    CBrush() = default;
    explicit CBrush(COLORREF crColor);
    /// The bitmap may be deleted after the brush.
    explicit CBrush(CBitmap* pBitmap);

    operator HBRUSH() const { return static_cast<HBRUSH>(m_hObject); }
    static CBrush* FromHandle(HBRUSH hBrush);
    BOOL CreateSolidBrush(COLORREF crColor);
    BOOL CreatePatternBrush(CBitmap* pBitmap);
};

class HALVORAN_STANDIN_API CFont : public CGdiObject
{
    DECLARE_DYNAMIC(CFont)
public:
    CFont() = default;
    operator HFONT() const { return static_cast<HFONT>(m_hObject); }
    static CFont* FromHandle(HFONT hFont);
    BOOL CreateFontIndirect(const LOGFONTW* lpLogFont);
    /// In tenths of a point of the given device, or of the screen.
    BOOL CreateFont(int nHeight, int nWidth, int nEscapement, int nOrientation, int nWeight, BYTE bItalic,
                    BYTE bUnderline, BYTE cStrikeOut, BYTE nCharSet, BYTE nOutPrecision, BYTE nClipPrecision,
                    BYTE nQuality, BYTE nPitchAndFamily, LPCWSTR lpszFacename);
};

class HALVORAN_STANDIN_API CBitmap : public CGdiObject
{
    DECLARE_DYNAMIC(CBitmap)
public:
    CBitmap() = default;
    operator HBITMAP() const { return static_cast<HBITMAP>(m_hObject); }
    static CBitmap* FromHandle(HBITMAP hBitmap);
    int GetBitmap(BITMAP* pBitMap) const;
    /// From the module that AfxFindResourceHandle names.
    BOOL LoadBitmap(LPCWSTR lpszResourceName);
    BOOL LoadBitmap(UINT nIDResource);
    BOOL CreateBitmap(int nWidth, int nHeight, UINT nPlanes, UINT nBitcount, const void* lpBits);
    BOOL CreateCompatibleBitmap(CDC* pDC, int nWidth, int nHeight);
    DWORD GetBitmapBits(DWORD dwCount, LPVOID lpBits) const;
};

class HALVORAN_STANDIN_API CPalette : public CGdiObject
{
    DECLARE_DYNAMIC(CPalette)
public:
    CPalette() = default;
    operator HPALETTE() const { return static_cast<HPALETTE>(m_hObject); }
    static CPalette* FromHandle(HPALETTE hPalette);
    BOOL CreatePalette(LPLOGPALETTE lpLogPalette);
    int GetEntryCount();
};
