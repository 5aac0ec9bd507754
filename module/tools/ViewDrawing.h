// Drawing that several tools and the crawling frames share, most of it on the view.
#pragma once

#include "platform/platform.h"

/// Frames a region of the view with a pattern bitmap of the module's as brush, `thickness` pixels wide, in the
/// context's drawing mode. False if the bitmap can't be loaded.
bool FrameRegionWithPattern(CDC& view, CRgn& region, UINT bitmapId, CPoint brushOrigin, int thickness);

/// The four sides of a rectangle by lines, in the context's pen and mode: drawn twice in XOR mode they vanish.
void DrawOutline(CDC& context, const CRect& rect);
