#include "module/tools/ViewDrawing.h"

bool FrameRegionWithPattern(CDC& view, CRgn& region, UINT bitmapId, CPoint brushOrigin, int thickness)
{
    CBitmap pattern;
    if (!pattern.LoadBitmap(bitmapId))
        return false;
    CBrush brush(&pattern);
    view.SetBrushOrg(brushOrigin);
    view.FrameRgn(&region, &brush, thickness, thickness);
    return true;
}

void DrawOutline(CDC& context, const CRect& rect)
{
    context.MoveTo(rect.left, rect.top);
    context.LineTo(rect.right, rect.top);
    context.LineTo(rect.right, rect.bottom);
    context.LineTo(rect.left, rect.bottom);
    context.LineTo(rect.left, rect.top);
}
