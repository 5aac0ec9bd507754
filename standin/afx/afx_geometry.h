// CPoint, CSize and CRect over the Win32 structures of the same shape.
#pragma once

#include "standin/afx/afx_base.h"

class CPoint;

class CSize : public SIZE
{
public:
    CSize() : SIZE{0, 0} {}
    CSize(int width, int height) { SetSize(width, height); }
    CSize(SIZE size) : SIZE(size) {}
    CSize(POINT point) : SIZE{point.x, point.y} {}
    explicit CSize(DWORD packed) : SIZE{static_cast<short>(LOWORD(packed)), static_cast<short>(HIWORD(packed))} {}

    bool operator==(const SIZE& other) const { return cx == other.cx && cy == other.cy; }
    void operator+=(SIZE other) { SetSize(cx + other.cx, cy + other.cy); }
    void operator-=(SIZE other) { SetSize(cx - other.cx, cy - other.cy); }
    void SetSize(int width, int height)
    {
        cx = width;
        cy = height;
    }
    CSize operator+(SIZE other) const { return CSize(cx + other.cx, cy + other.cy); }
    CSize operator-(SIZE other) const { return CSize(cx - other.cx, cy - other.cy); }
    CSize operator-() const { return CSize(-cx, -cy); }
};

class CPoint : public POINT
{
public:
    CPoint() : POINT{0, 0} {}
    CPoint(int px, int py) { SetPoint(px, py); }
    CPoint(POINT point) : POINT(point) {}
    CPoint(SIZE size) { SetPoint(size.cx, size.cy); }
    /// From a message's lParam: both halves signed.
    explicit CPoint(LPARAM packed) { SetPoint(static_cast<short>(LOWORD(packed)), static_cast<short>(HIWORD(packed))); }

    void Offset(int dx, int dy)
    {
        x += dx;
        y += dy;
    }
    void Offset(POINT by) { Offset(by.x, by.y); }
    void SetPoint(int px, int py)
    {
        x = px;
        y = py;
    }
    bool operator==(const POINT& other) const { return x == other.x && y == other.y; }
    void operator+=(SIZE by) { Offset(by.cx, by.cy); }
    void operator-=(SIZE by) { Offset(-by.cx, -by.cy); }
    void operator+=(POINT by) { Offset(by.x, by.y); }
    void operator-=(POINT by) { Offset(-by.x, -by.y); }
    CPoint operator+(SIZE by) const { return CPoint(x + by.cx, y + by.cy); }
    CPoint operator-(SIZE by) const { return CPoint(x - by.cx, y - by.cy); }
    CPoint operator+(POINT by) const { return CPoint(x + by.x, y + by.y); }
    CSize operator-(POINT by) const { return CSize(x - by.x, y - by.y); }
    CPoint operator-() const { return CPoint(-x, -y); }
};

/// Right and bottom are exclusive. Most operations expect a normalised rectangle.
class CRect : public RECT
{
public:
    CRect() : RECT{0, 0, 0, 0} {}
    CRect(int l, int t, int r, int b) : RECT{l, t, r, b} {}
    CRect(const RECT& rect) : RECT(rect) {}
    CRect(LPCRECT rect) : RECT(*rect) {}
    CRect(POINT corner, SIZE size) { SetRect(corner.x, corner.y, corner.x + size.cx, corner.y + size.cy); }
    CRect(POINT topLeft, POINT bottomRight) { SetRect(topLeft.x, topLeft.y, bottomRight.x, bottomRight.y); }

    int Width() const { return right - left; }
    int Height() const { return bottom - top; }
    CSize Size() const { return CSize(Width(), Height()); }
    CPoint TopLeft() const { return CPoint(left, top); }
    CPoint BottomRight() const { return CPoint(right, bottom); }
    CPoint CenterPoint() const { return CPoint((left + right) / 2, (top + bottom) / 2); }
    operator LPRECT() { return this; }
    operator LPCRECT() const { return this; }

    BOOL IsRectEmpty() const { return ::IsRectEmpty(this); }
    BOOL IsRectNull() const { return left == 0 && right == 0 && top == 0 && bottom == 0; }
    BOOL PtInRect(POINT point) const { return ::PtInRect(this, point); }
    void SetRect(int l, int t, int r, int b) { ::SetRect(this, l, t, r, b); }
    void SetRectEmpty() { ::SetRectEmpty(this); }
    void CopyRect(LPCRECT source) { ::CopyRect(this, source); }
    BOOL EqualRect(LPCRECT other) const { return ::EqualRect(this, other); }
    void InflateRect(int x, int y) { ::InflateRect(this, x, y); }
    void InflateRect(int l, int t, int r, int b) { SetRect(left - l, top - t, right + r, bottom + b); }
    void DeflateRect(int x, int y) { ::InflateRect(this, -x, -y); }
    void DeflateRect(int l, int t, int r, int b) { SetRect(left + l, top + t, right - r, bottom - b); }
    void OffsetRect(int x, int y) { ::OffsetRect(this, x, y); }
    void OffsetRect(POINT by) { ::OffsetRect(this, by.x, by.y); }
    void OffsetRect(SIZE by) { ::OffsetRect(this, by.cx, by.cy); }
    void MoveToXY(int x, int y) { OffsetRect(x - left, y - top); }
    void NormalizeRect();
    BOOL IntersectRect(LPCRECT a, LPCRECT b) { return ::IntersectRect(this, a, b); }
    BOOL UnionRect(LPCRECT a, LPCRECT b) { return ::UnionRect(this, a, b); }
    BOOL SubtractRect(LPCRECT a, LPCRECT b) { return ::SubtractRect(this, a, b); }

    bool operator==(const RECT& other) const { return ::EqualRect(this, &other); }
    void operator+=(POINT by) { OffsetRect(by); }
    void operator-=(POINT by) { OffsetRect(-by.x, -by.y); }
    void operator&=(const RECT& other) { ::IntersectRect(this, this, &other); }
    void operator|=(const RECT& other) { ::UnionRect(this, this, &other); }
    CRect operator+(POINT by) const
    {
        CRect moved(*this);
        moved.OffsetRect(by);
        return moved;
    }
};

inline void CRect::NormalizeRect()
{
    if (left > right) {
        const LONG swapped = left;
        left = right;
        right = swapped;
    }
    if (top > bottom) {
        const LONG swapped = top;
        top = bottom;
        bottom = swapped;
    }
}
