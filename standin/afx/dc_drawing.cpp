// CDC: lines, shapes, images and text.
#include "standin/afx/afx_dc.h"

namespace {

HBRUSH handleOf(CBrush* brush)
{
    return brush ? static_cast<HBRUSH>(*brush) : nullptr;
}

HRGN handleOf(CRgn* region)
{
    return region ? static_cast<HRGN>(*region) : nullptr;
}

HDC handleOf(CDC* context)
{
    return context ? context->m_hDC : nullptr;
}

} // namespace

CPoint CDC::GetCurrentPosition() const
{
    POINT position{};
    ::GetCurrentPositionEx(m_hDC, &position);
    return position;
}

CPoint CDC::MoveTo(int x, int y)
{
    POINT former{};
    ::MoveToEx(m_hDC, x, y, &former);
    return former;
}

CPoint CDC::MoveTo(POINT point)
{
    return MoveTo(point.x, point.y);
}

BOOL CDC::LineTo(int x, int y)
{
    return ::LineTo(m_hDC, x, y);
}

BOOL CDC::LineTo(POINT point)
{
    return ::LineTo(m_hDC, point.x, point.y);
}

BOOL CDC::Arc(int x1, int y1, int x2, int y2, int x3, int y3, int x4, int y4)
{
    return ::Arc(m_hDC, x1, y1, x2, y2, x3, y3, x4, y4);
}

BOOL CDC::Arc(LPCRECT lpRect, POINT ptStart, POINT ptEnd)
{
    return ::Arc(m_hDC, lpRect->left, lpRect->top, lpRect->right, lpRect->bottom, ptStart.x, ptStart.y, ptEnd.x,
                 ptEnd.y);
}

BOOL CDC::Polyline(const POINT* lpPoints, int nCount)
{
    return ::Polyline(m_hDC, lpPoints, nCount);
}

BOOL CDC::Polygon(const POINT* lpPoints, int nCount)
{
    return ::Polygon(m_hDC, lpPoints, nCount);
}

BOOL CDC::Rectangle(int x1, int y1, int x2, int y2)
{
    return ::Rectangle(m_hDC, x1, y1, x2, y2);
}

BOOL CDC::Rectangle(LPCRECT lpRect)
{
    return ::Rectangle(m_hDC, lpRect->left, lpRect->top, lpRect->right, lpRect->bottom);
}

void CDC::FillRect(LPCRECT lpRect, CBrush* pBrush)
{
    ::FillRect(m_hDC, lpRect, handleOf(pBrush));
}

void CDC::FrameRect(LPCRECT lpRect, CBrush* pBrush)
{
    ::FrameRect(m_hDC, lpRect, handleOf(pBrush));
}

void CDC::FillSolidRect(LPCRECT lpRect, COLORREF clr)
{
    // Opaque empty text fills the rectangle without a brush of its own.
    const COLORREF former = ::SetBkColor(m_hDC, clr);
    ::ExtTextOutW(m_hDC, 0, 0, ETO_OPAQUE, lpRect, nullptr, 0, nullptr);
    ::SetBkColor(m_hDC, former);
}

void CDC::FillSolidRect(int x, int y, int cx, int cy, COLORREF clr)
{
    const RECT rect{x, y, x + cx, y + cy};
    FillSolidRect(&rect, clr);
}

void CDC::Draw3dRect(LPCRECT lpRect, COLORREF clrTopLeft, COLORREF clrBottomRight)
{
    const int x = lpRect->left;
    const int y = lpRect->top;
    const int width = lpRect->right - x;
    const int height = lpRect->bottom - y;
    FillSolidRect(x, y, width - 1, 1, clrTopLeft);
    FillSolidRect(x, y, 1, height - 1, clrTopLeft);
    FillSolidRect(x + width, y, -1, height, clrBottomRight);
    FillSolidRect(x, y + height, width, -1, clrBottomRight);
}

BOOL CDC::FrameRgn(CRgn* pRgn, CBrush* pBrush, int nWidth, int nHeight)
{
    return ::FrameRgn(m_hDC, handleOf(pRgn), handleOf(pBrush), nWidth, nHeight);
}

BOOL CDC::PatBlt(int x, int y, int nWidth, int nHeight, DWORD dwRop)
{
    return ::PatBlt(m_hDC, x, y, nWidth, nHeight, dwRop);
}

BOOL CDC::BitBlt(int x, int y, int nWidth, int nHeight, CDC* pSrcDC, int xSrc, int ySrc, DWORD dwRop)
{
    return ::BitBlt(m_hDC, x, y, nWidth, nHeight, handleOf(pSrcDC), xSrc, ySrc, dwRop);
}

BOOL CDC::StretchBlt(int x, int y, int nWidth, int nHeight, CDC* pSrcDC, int xSrc, int ySrc, int nSrcWidth,
                     int nSrcHeight, DWORD dwRop)
{
    return ::StretchBlt(m_hDC, x, y, nWidth, nHeight, handleOf(pSrcDC), xSrc, ySrc, nSrcWidth, nSrcHeight, dwRop);
}

COLORREF CDC::GetPixel(int x, int y) const
{
    return ::GetPixel(m_hDC, x, y);
}

COLORREF CDC::GetPixel(POINT point) const
{
    return ::GetPixel(m_hDC, point.x, point.y);
}

COLORREF CDC::SetPixel(int x, int y, COLORREF crColor)
{
    return ::SetPixel(m_hDC, x, y, crColor);
}

COLORREF CDC::SetPixel(POINT point, COLORREF crColor)
{
    return ::SetPixel(m_hDC, point.x, point.y, crColor);
}

BOOL CDC::SetPixelV(int x, int y, COLORREF crColor)
{
    return ::SetPixelV(m_hDC, x, y, crColor);
}

BOOL CDC::TextOut(int x, int y, LPCWSTR lpszString, int nCount)
{
    return ::TextOutW(m_hDC, x, y, lpszString, nCount);
}

BOOL CDC::TextOut(int x, int y, const CString& str)
{
    return TextOut(x, y, str, str.GetLength());
}

int CDC::DrawText(LPCWSTR lpszString, int nCount, LPRECT lpRect, UINT nFormat)
{
    return ::DrawTextW(m_hDC, lpszString, nCount, lpRect, nFormat);
}

int CDC::DrawText(const CString& str, LPRECT lpRect, UINT nFormat)
{
    return DrawText(str, str.GetLength(), lpRect, nFormat);
}

CSize CDC::GetTextExtent(LPCWSTR lpszString, int nCount) const
{
    SIZE size{};
    ::GetTextExtentPoint32W(m_hDC, lpszString, nCount, &size);
    return size;
}

CSize CDC::GetTextExtent(const CString& str) const
{
    return GetTextExtent(str, str.GetLength());
}

BOOL CDC::GetTextMetrics(LPTEXTMETRICW lpMetrics) const
{
    return ::GetTextMetricsW(m_hDC, lpMetrics);
}
