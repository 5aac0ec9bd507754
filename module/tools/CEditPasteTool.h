#pragma once

#include "module/tools/CTool.h"

class CAcraster;
class ClipboardDib;

/// Floats the clipboard's bitmap over the view at the size that it will have in the raster. It is dragged into place
/// and goes into the raster with a click beside it. What floats is a picture in view pixels for show, which stands
/// upright also over an image that is turned or mirrored in the drawing: place and size are those that the pixels will
/// have. The true pixels stay on the clipboard, from where the worker takes them.
class CEditPasteTool : public CTool
{
    DECLARE_DYNAMIC(CEditPasteTool)

public:
    CEditPasteTool();
    ~CEditPasteTool() override;
    int Start() override;
    void Stop() override;
    int ToolId() override;
    void UpdateCursor() override;
    int OnLButtonDown(CPoint point, UINT flags) override;
    int OnRButtonDown(CPoint point, UINT flags) override;
    int OnLButtonUp(CPoint point, UINT flags) override;
    int OnMouseMove(CPoint point, UINT flags) override;
    int OnCommand(UINT id) override;

    /// Draws the floating image at a rectangle of the view.
    void DrawFloating(const CRect& viewRect);
    const CRect& FloatingRect() const { return m_floating; }

private:
    bool BuildFloatingBitmap(const CAcraster& raster, const ClipboardDib& dib);
    void DragTo(const CAcraster& raster, CPoint point);
    void Commit(CAcraster& raster);

    CPoint m_grabPixel; // image pixel that the drag was at last
    bool m_bDragging = false;
    CRect m_floating;                    // in image pixels
    UINT m_cursorId = 0;                 // 0 beside the floating image
    CBitmap m_bitmap;                    // in view pixels, selected into PasteDC
    HGDIOBJ m_hPreviousBitmap = nullptr; // what PasteDC held before; null until the bitmap is built
    CPoint m_menuPoint;                  // view point of the last right click
};

/// Whether the clipboard's background lets the raster show through. Each paste begins with it set.
extern bool PasteTransparent;
