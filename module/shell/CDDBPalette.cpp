#include "module/shell/CDDBPalette.h"

#include <cstddef>
#include <vector>

#include "module/resources/resource.h"

namespace {

constexpr int colorCount = 256;
constexpr WORD paletteVersion = 0x300;

const BITMAPINFO* LockPicture(HINSTANCE module)
{
    const HRSRC found = FindResourceW(module, MAKEINTRESOURCEW(IDB_SPLASH), RT_BITMAP);
    const HGLOBAL loaded = found ? LoadResource(module, found) : nullptr;
    return loaded ? static_cast<const BITMAPINFO*>(LockResource(loaded)) : nullptr;
}

} // namespace

CDDBPalette::CDDBPalette(HINSTANCE module) : m_pPicture(LockPicture(module))
{
    if (!m_pPicture)
        return;
    const WORD count = LOWORD(m_pPicture->bmiHeader.biClrUsed);
    std::vector<std::byte> memory(sizeof(LOGPALETTE) + count * sizeof(PALETTEENTRY));
    auto* palette = reinterpret_cast<LOGPALETTE*>(memory.data());
    palette->palVersion = paletteVersion;
    palette->palNumEntries = count;
    for (WORD i = 0; i < count; ++i) {
        const RGBQUAD& color = m_pPicture->bmiColors[i];
        palette->palPalEntry[i] = {color.rgbRed, color.rgbGreen, color.rgbBlue, 0};
    }
    CreatePalette(palette);
}

CSize CDDBPalette::GetSize() const
{
    return m_pPicture ? CSize(m_pPicture->bmiHeader.biWidth, m_pPicture->bmiHeader.biHeight) : CSize(0, 0);
}

void CDDBPalette::Draw(CDC& context, CPoint corner)
{
    if (!m_pPicture)
        return;
    CPalette* former = context.SelectPalette(this, FALSE);
    context.RealizePalette();
    const CSize size = GetSize();
    const void* pixels = m_pPicture->bmiColors + colorCount;
    SetDIBitsToDevice(context.GetSafeHdc(), corner.x, corner.y, size.cx, size.cy, 0, 0, 0, size.cy, pixels, m_pPicture,
                      DIB_RGB_COLORS);
    context.SelectPalette(former, TRUE);
    context.RealizePalette();
}
