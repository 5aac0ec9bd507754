#include "module/dialogs/PenSwatches.h"

#include "module/resources/resource.h"

namespace {

constexpr int side = 16;
constexpr int longestList = 256;
constexpr int indexOfForeground = 7;

// The foreground is drawn in black on the dialog's light ground.
COLORREF ColorOfIndex(int index)
{
    if (index == indexOfForeground)
        return 0;
    const Adesk::UInt32 rgb = AcCmEntityColor::lookUpRGB(static_cast<Adesk::UInt8>(index));
    return RGB(rgb >> 16 & 0xFF, rgb >> 8 & 0xFF, rgb & 0xFF);
}

// Lays a picture of one swatch over each cell of the strip.
void CombineCells(CDC& strip, int count, UINT pictureId, DWORD rasterOperation)
{
    CBitmap picture;
    CDC source;
    if (!picture.LoadBitmap(pictureId) || !source.CreateCompatibleDC(&strip))
        return;
    CBitmap* former = source.SelectObject(&picture);
    for (int cell = 0; cell < count; ++cell)
        strip.BitBlt(cell * side, 0, side, side, &source, 0, 0, rasterOperation);
    source.SelectObject(former);
}

} // namespace

// The square of the swatch is white in the paint mask and black in the and mask, and the other way round outside it.
void MakePenSwatches(CImageList& swatches, int count)
{
    swatches.Create(side, side, ILC_COLOR24 | ILC_MASK, longestList, 1);
    CClientDC screen(nullptr);
    CDC strip;
    CBitmap colors;
    CBitmap mask;
    if (!strip.CreateCompatibleDC(&screen) || !colors.CreateCompatibleBitmap(&screen, count * side, side) ||
        !mask.CreateBitmap(count * side, side, 1, 1, nullptr))
        return;
    CBitmap* former = strip.SelectObject(&colors);
    for (int cell = 0; cell < count; ++cell)
        strip.FillSolidRect(CRect(CPoint(cell * side, 0), CSize(side, side)), ColorOfIndex(cell + 1));
    CombineCells(strip, count, IDB_SWATCH_PAINT, SRCAND);
    strip.SelectObject(&mask);
    CombineCells(strip, count, IDB_SWATCH_AND, SRCCOPY);
    strip.SelectObject(former);
    swatches.Add(&colors, &mask);
}
