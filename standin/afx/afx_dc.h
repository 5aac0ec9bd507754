// Device contexts.
#pragma once

#include "standin/afx/afx_gdi.h"
#include "standin/afx/afx_geometry.h"
#include "standin/afx/afx_region.h"

class CWnd;

/// Owns its handle once attached or created; FromHandle gives a temporary that does not.
class HALVORAN_STANDIN_API CDC : public CObject
{
    DECLARE_DYNCREATE(CDC)
public:
    CDC() = default;
    ~CDC() override;

    operator HDC() const { return m_hDC; }
    HDC GetSafeHdc() const { return m_hDC; }
    CWnd* GetWindow() const;
    static CDC* FromHandle(HDC hDC);
    static void DeleteTempMap();
    BOOL Attach(HDC hDC);
    HDC Detach();
    BOOL CreateCompatibleDC(CDC* pDC);
    BOOL DeleteDC();
    int SaveDC();
    BOOL RestoreDC(int nSavedDC);
    int GetDeviceCaps(int nIndex) const;

    /// Each returns the object that was selected before, as a temporary; null when it failed.
    CGdiObject* SelectStockObject(int nIndex);
    CPen* SelectObject(CPen* pPen);
    CBrush* SelectObject(CBrush* pBrush);
    CFont* SelectObject(CFont* pFont);
    CBitmap* SelectObject(CBitmap* pBitmap);
    /// The kind of the resulting clip region.
    int SelectObject(CRgn* pRgn);
    CGdiObject* SelectObject(CGdiObject* pObject);
    CPalette* SelectPalette(CPalette* pPalette, BOOL bForceBackground);
    UINT RealizePalette();
    CPen* GetCurrentPen() const;

    int SetROP2(int nDrawMode);
    int GetROP2() const;
    int SetBkMode(int nBkMode);
    int GetBkMode() const;
    COLORREF SetBkColor(COLORREF crColor);
    COLORREF GetBkColor() const;
    COLORREF SetTextColor(COLORREF crColor);
    COLORREF GetTextColor() const;
    CPoint SetBrushOrg(int x, int y);
    CPoint SetBrushOrg(POINT point);

    int GetClipBox(LPRECT lpRect) const;
    int SelectClipRgn(CRgn* pRgn);
    int SelectClipRgn(CRgn* pRgn, int nMode);
    int IntersectClipRect(int x1, int y1, int x2, int y2);
    int IntersectClipRect(LPCRECT lpRect);
    int ExcludeClipRect(int x1, int y1, int x2, int y2);
    int ExcludeClipRect(LPCRECT lpRect);

    CPoint GetCurrentPosition() const;
    CPoint MoveTo(int x, int y);
    CPoint MoveTo(POINT point);
    BOOL LineTo(int x, int y);
    BOOL LineTo(POINT point);
    BOOL Arc(int x1, int y1, int x2, int y2, int x3, int y3, int x4, int y4);
    BOOL Arc(LPCRECT lpRect, POINT ptStart, POINT ptEnd);
    BOOL Polyline(const POINT* lpPoints, int nCount);
    BOOL Polygon(const POINT* lpPoints, int nCount);
    BOOL Rectangle(int x1, int y1, int x2, int y2);
    BOOL Rectangle(LPCRECT lpRect);

    void FillRect(LPCRECT lpRect, CBrush* pBrush);
    void FrameRect(LPCRECT lpRect, CBrush* pBrush);
    void FillSolidRect(LPCRECT lpRect, COLORREF clr);
    void FillSolidRect(int x, int y, int cx, int cy, COLORREF clr);
    void Draw3dRect(LPCRECT lpRect, COLORREF clrTopLeft, COLORREF clrBottomRight);
    BOOL FrameRgn(CRgn* pRgn, CBrush* pBrush, int nWidth, int nHeight);

    BOOL PatBlt(int x, int y, int nWidth, int nHeight, DWORD dwRop);
    BOOL BitBlt(int x, int y, int nWidth, int nHeight, CDC* pSrcDC, int xSrc, int ySrc, DWORD dwRop);
    BOOL StretchBlt(int x, int y, int nWidth, int nHeight, CDC* pSrcDC, int xSrc, int ySrc, int nSrcWidth,
                    int nSrcHeight, DWORD dwRop);
    COLORREF GetPixel(int x, int y) const;
    COLORREF GetPixel(POINT point) const;
    COLORREF SetPixel(int x, int y, COLORREF crColor);
    COLORREF SetPixel(POINT point, COLORREF crColor);
    BOOL SetPixelV(int x, int y, COLORREF crColor);

    BOOL TextOut(int x, int y, LPCWSTR lpszString, int nCount);
    BOOL TextOut(int x, int y, const CString& str);
    int DrawText(LPCWSTR lpszString, int nCount, LPRECT lpRect, UINT nFormat);
    int DrawText(const CString& str, LPRECT lpRect, UINT nFormat);
    CSize GetTextExtent(LPCWSTR lpszString, int nCount) const;
    CSize GetTextExtent(const CString& str) const;
    BOOL GetTextMetrics(LPTEXTMETRICW lpMetrics) const;

    HDC m_hDC = nullptr;
};

/// These take the context of a window when made and give it back when they end; they throw CResourceException* when
/// there is no such context. With a null window CClientDC and CWindowDC draw on the whole screen.
class HALVORAN_STANDIN_API CClientDC : public CDC
{
    DECLARE_DYNAMIC(CClientDC)
public:
    explicit CClientDC(CWnd* pWnd);
    ~CClientDC() override;

protected:
    HWND m_hWnd;
};

class HALVORAN_STANDIN_API CWindowDC : public CDC
{
    DECLARE_DYNAMIC(CWindowDC)
public:
    explicit CWindowDC(CWnd* pWnd);
    ~CWindowDC() override;

protected:
    HWND m_hWnd;
};

/// For WM_PAINT alone: begins and ends painting.
class HALVORAN_STANDIN_API CPaintDC : public CDC
{
    DECLARE_DYNAMIC(CPaintDC)
public:
    explicit CPaintDC(CWnd* pWnd);
    ~CPaintDC() override;

    PAINTSTRUCT m_ps;

protected:
    HWND m_hWnd;
};
