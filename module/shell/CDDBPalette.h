#pragma once

#include "platform/platform.h"

/// The module's picture, bitmap IDB_SPLASH of 256 colours, with the palette that it needs on a display of as many.
class CDDBPalette : public CPalette
{
public:
    /// Without the picture in that module the palette stays empty and nothing is drawn.
    explicit CDDBPalette(HINSTANCE module);

    /// Draws the picture with its upper left corner there.
    void Draw(CDC& context, CPoint corner);
    /// Width and height in pixels.
    CSize GetSize() const;

private:
    const BITMAPINFO* m_pPicture; // locked in the module: header, 256 colours, pixels
};
