#include "module/tools/CAppCursor.h"

#include "module/tools/CSelectObject.h"
#include "module/tools/ViewDrawing.h"

namespace {

constexpr int cursorSide = 32;
constexpr int maskBytes = cursorSide * cursorSide / 8;
constexpr COLORREF black = 0x000000;
constexpr COLORREF white = 0xFFFFFF;

// A monochrome mask in a context of its own, to be drawn on.
class CursorMask
{
public:
    CursorMask()
    {
        m_context.CreateCompatibleDC(nullptr);
        m_bitmap.CreateBitmap(cursorSide, cursorSide, 1, 1, nullptr);
        m_pPrevious = m_context.SelectObject(&m_bitmap);
    }
    ~CursorMask() { m_context.SelectObject(m_pPrevious); }
    CursorMask(const CursorMask&) = delete;
    CursorMask& operator=(const CursorMask&) = delete;

    void SetPixel(int x, int y, COLORREF color) { m_context.SetPixelV(x, y, color); }

    void TraceOutline(const CRect& rect, COLORREF color)
    {
        CPen pen(PS_SOLID, 1, color);
        const CSelectObject selected(m_context, pen);
        DrawOutline(m_context, rect);
    }

    void CopyBits(BYTE (&bits)[maskBytes]) { m_bitmap.GetBitmapBits(maskBytes, bits); }

private:
    CDC m_context;
    CBitmap m_bitmap;
    CBitmap* m_pPrevious;
};

void DrawPicture(UINT bitmapId, COLORREF keyColor, CursorMask& andMask, CursorMask& xorMask)
{
    CBitmap picture;
    picture.LoadBitmap(bitmapId);
    CDC context;
    context.CreateCompatibleDC(nullptr);
    const CSelectObject selected(context, picture);
    for (int y = 0; y < cursorSide; ++y) {
        for (int x = 0; x < cursorSide; ++x) {
            const COLORREF color = context.GetPixel(x, y);
            const bool transparent = color == keyColor;
            andMask.SetPixel(x, y, transparent ? white : black);
            xorMask.SetPixel(x, y, transparent ? black : color);
        }
    }
}

} // namespace

CAppCursor::CAppCursor(UINT bitmapId, CPoint hotSpot) : m_nBitmapId(bitmapId), m_hotSpot(hotSpot)
{
    Rebuild(0);
}

CAppCursor::~CAppCursor()
{
    if (m_hCursor)
        DestroyCursor(m_hCursor);
}

void CAppCursor::Rebuild(int halfSize)
{
    if (halfSize == m_nHalfSize)
        return;
    CursorMask andMask;
    CursorMask xorMask;
    DrawPicture(m_nBitmapId, m_keyColor, andMask, xorMask);
    if (halfSize != 0) {
        CRect square(m_hotSpot, CSize(0, 0));
        square.InflateRect(halfSize, halfSize);
        xorMask.TraceOutline(square, black);
        andMask.TraceOutline(square, black);
        square.InflateRect(1, 1);
        xorMask.TraceOutline(square, white);
        andMask.TraceOutline(square, black);
    }

    BYTE andBits[maskBytes] = {};
    BYTE xorBits[maskBytes] = {};
    andMask.CopyBits(andBits);
    xorMask.CopyBits(xorBits);
    const HCURSOR earlier = m_hCursor;
    m_hCursor =
        CreateCursor(AfxGetResourceHandle(), m_hotSpot.x, m_hotSpot.y, cursorSide, cursorSide, andBits, xorBits);
    Set();
    if (earlier)
        DestroyCursor(earlier);
    m_nHalfSize = halfSize;
}
