#pragma once

#include "platform/platform.h"

/// A cursor that is drawn at run time: a picture from the module's bitmaps, and around its hot spot a square of the
/// brush's size, black inside white, so that it shows on any background.
class CAppCursor
{
public:
    /// Without a square at first. Pixels of the bitmap in 0xFFFF00 (cyan) are transparent.
    CAppCursor(UINT bitmapId, CPoint hotSpot);
    virtual ~CAppCursor();
    CAppCursor(const CAppCursor&) = delete;
    CAppCursor& operator=(const CAppCursor&) = delete;

    /// Draws the square half a size of so many pixels and makes it the current cursor; 0 draws none. Nothing happens
    /// if it is the size that was drawn last.
    void Rebuild(int halfSize);
    void Set() const { SetCursor(m_hCursor); }

    UINT m_nBitmapId;
    HCURSOR m_hCursor = nullptr; // owned
    int m_nHalfSize = -1;        // drawn last
    COLORREF m_keyColor = 0xFFFF00;
    CPoint m_hotSpot;
};
