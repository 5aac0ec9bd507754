#include "gdi_count.h"

#include "standin/afx/afx.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

std::vector<CRect> rectanglesOf(const CRgn& region)
{
    const int size = region.GetRegionData(nullptr, 0);
    std::vector<BYTE> block(static_cast<std::size_t>(size));
    RGNDATA* data = reinterpret_cast<RGNDATA*>(block.data());
    EXPECT_EQ(region.GetRegionData(data, size), size);
    const RECT* first = reinterpret_cast<const RECT*>(data->Buffer);
    return std::vector<CRect>(first, first + data->rdh.nCount);
}

TEST(Region, CombinesIntoTheExpectedRectangles)
{
    CRgn first;
    CRgn second;
    CRgn result;
    first.CreateRectRgn(0, 0, 10, 10);
    second.CreateRectRgnIndirect(CRect(5, 5, 15, 15));
    result.CreateRectRgn(0, 0, 1, 1);
    const struct
    {
        int mode;
        int kind;
        std::vector<CRect> expected;
    } cases[] = {
        {RGN_OR, COMPLEXREGION, {{0, 0, 10, 5}, {0, 5, 15, 10}, {5, 10, 15, 15}}},
        {RGN_AND, SIMPLEREGION, {{5, 5, 10, 10}}},
        {RGN_DIFF, COMPLEXREGION, {{0, 0, 10, 5}, {0, 5, 5, 10}}},
        {RGN_COPY, SIMPLEREGION, {{0, 0, 10, 10}}},
        {RGN_XOR, COMPLEXREGION, {{0, 0, 10, 5}, {0, 5, 5, 10}, {10, 5, 15, 10}, {5, 10, 15, 15}}},
    };
    for (const auto& one : cases) {
        SCOPED_TRACE(one.mode);
        EXPECT_EQ(result.CombineRgn(&first, &second, one.mode), one.kind);
        EXPECT_EQ(rectanglesOf(result), one.expected);
    }
    EXPECT_EQ(first.CombineRgn(&first, &second, RGN_DIFF), COMPLEXREGION) << "the result may be a source";
    EXPECT_FALSE(first.PtInRegion(5, 5));
    EXPECT_TRUE(first.PtInRegion(CPoint(4, 9)));
}

TEST(Region, MovesCopiesAndComparesItself)
{
    CRgn region;
    region.CreateRectRgn(2, 3, 6, 8);
    EXPECT_EQ(region.OffsetRgn(10, -3), SIMPLEREGION);
    CRect box;
    region.GetRgnBox(&box);
    EXPECT_EQ(box, CRect(12, 0, 16, 5));
    CRgn copy;
    copy.CreateRectRgn(0, 0, 1, 1);
    copy.CopyRgn(&region);
    EXPECT_TRUE(copy.EqualRgn(&region));
    copy.SetRectRgn(0, 0, 0, 0);
    EXPECT_FALSE(copy.EqualRgn(&region));
    EXPECT_EQ(copy.GetRgnBox(&box), NULLREGION);
}

TEST(Region, ComesBackFromItsData)
{
    CRgn region;
    region.CreateEllipticRgn(0, 0, 40, 30);
    const int size = region.GetRegionData(nullptr, 0);
    std::vector<BYTE> block(static_cast<std::size_t>(size));
    RGNDATA* data = reinterpret_cast<RGNDATA*>(block.data());
    region.GetRegionData(data, size);
    CRgn back;
    ASSERT_TRUE(back.CreateFromData(nullptr, size, data));
    CRgn difference;
    difference.CreateRectRgn(0, 0, 1, 1);
    EXPECT_EQ(difference.CombineRgn(&back, &region, RGN_XOR), NULLREGION);
    data->rdh.nCount += 1000; // more rectangles than the block holds
    CRgn refused;
    EXPECT_FALSE(refused.CreateFromData(nullptr, size, data));
    EXPECT_EQ(refused.m_hObject, nullptr);
}

TEST(GdiObject, AttachAndDetachMoveTheOwnership)
{
    const HPEN handle = ::CreatePen(PS_SOLID, 3, RGB(1, 2, 3));
    {
        CPen pen;
        ASSERT_TRUE(pen.Attach(handle));
        EXPECT_EQ(CPen::FromHandle(handle), &pen) << "the permanent object is the one that is found";
        LOGPEN log{};
        pen.GetLogPen(&log);
        EXPECT_EQ(log.lopnColor, static_cast<COLORREF>(RGB(1, 2, 3)));
        EXPECT_EQ(pen.Detach(), static_cast<HGDIOBJ>(handle));
    }
    EXPECT_NE(::GetObjectType(handle), 0u) << "a detached handle lives on";
    {
        CPen pen;
        pen.Attach(handle);
    }
    EXPECT_EQ(::GetObjectType(handle), 0u) << "an attached one goes with its object";
    CPen none;
    EXPECT_FALSE(none.Attach(nullptr));
}

TEST(DeviceContext, GivesBackWhatWasSelected)
{
    CDC memory;
    ASSERT_TRUE(memory.CreateCompatibleDC(nullptr));
    CBitmap bitmap;
    ASSERT_TRUE(bitmap.CreateBitmap(16, 16, 1, 1, nullptr));
    CBitmap* formerBitmap = memory.SelectObject(&bitmap);
    ASSERT_NE(formerBitmap, nullptr);
    memory.PatBlt(0, 0, 16, 16, WHITENESS);
    CPen pen(PS_SOLID, 1, RGB(0, 0, 0));
    CPen* formerPen = memory.SelectObject(&pen);
    ASSERT_NE(formerPen, nullptr);
    EXPECT_EQ(memory.GetCurrentPen(), &pen);
    EXPECT_EQ(memory.SetROP2(R2_XORPEN), R2_COPYPEN);
    memory.SetROP2(R2_COPYPEN);
    memory.MoveTo(2, 3);
    EXPECT_TRUE(memory.LineTo(CPoint(6, 3)));
    EXPECT_EQ(memory.GetCurrentPosition(), CPoint(6, 3));
    BYTE bits[32]{};
    bitmap.GetBitmapBits(sizeof bits, bits);
    EXPECT_EQ(bits[6], 0xC3) << "pixels 2 to 5 of row 3 are black, the end of a line is not";
    EXPECT_EQ(bits[7], 0xFF);
    EXPECT_EQ(memory.SelectObject(formerPen), &pen);
    EXPECT_EQ(memory.SelectObject(formerBitmap), &bitmap);
}

TEST(DeviceContext, PatternBrushesOutliveTheirBitmap)
{
    const WORD rows[8] = {0xF0, 0xF0, 0xF0, 0xF0, 0x0F, 0x0F, 0x0F, 0x0F};
    CBrush brush;
    {
        CBitmap pattern;
        pattern.CreateBitmap(8, 8, 1, 1, rows);
        ASSERT_TRUE(brush.CreatePatternBrush(&pattern));
    }
    CDC memory;
    memory.CreateCompatibleDC(nullptr);
    CBitmap bitmap;
    bitmap.CreateBitmap(16, 16, 1, 1, nullptr);
    CBitmap* former = memory.SelectObject(&bitmap);
    memory.FillRect(CRect(0, 0, 16, 16), &brush);
    BYTE bits[32]{};
    bitmap.GetBitmapBits(sizeof bits, bits);
    EXPECT_EQ(bits[0], 0xF0);
    EXPECT_EQ(bits[8], 0x0F);
    memory.SelectObject(former);
}

TEST(GdiCount, SeesEveryObject)
{
    const int before = gdiObjects();
    std::vector<HPEN> pens;
    for (int i = 0; i < 7; ++i)
        pens.push_back(::CreatePen(PS_SOLID, 1, static_cast<COLORREF>(i)));
    EXPECT_EQ(gdiObjects(), before + 7);
    for (const HPEN pen : pens)
        ::DeleteObject(pen);
    EXPECT_EQ(gdiObjects(), before);
}

void drawOnce(CWnd& window)
{
    CClientDC context(&window);
    CPen pen(PS_DOT, 0, 0xFFFFFF);
    CPen* formerPen = context.SelectObject(&pen);
    CBrush brush(RGB(200, 0, 0));
    context.FrameRect(CRect(1, 1, 9, 9), &brush);
    CRgn region;
    region.CreateRectRgn(0, 0, 5, 5);
    CRgn copy;
    copy.CreateRectRgn(0, 0, 1, 1);
    copy.CombineRgn(&region, nullptr, RGN_COPY);
    context.FrameRgn(&copy, &brush, 1, 1);
    CDC memory;
    memory.CreateCompatibleDC(&context);
    CBitmap saved;
    saved.CreateCompatibleBitmap(&context, 20, 20);
    CBitmap* formerBitmap = memory.SelectObject(&saved);
    memory.BitBlt(0, 0, 20, 20, &context, 0, 0, SRCCOPY);
    memory.SelectObject(formerBitmap);
    context.SelectObject(formerPen);
    CFont font;
    font.CreatePointFont(90, L"Arial");
    CFont* formerFont = context.SelectObject(&font);
    context.TextOut(0, 0, L"x", 1);
    context.SelectObject(formerFont);
    CImageList images;
    images.Create(16, 15, ILC_COLOR8 | ILC_MASK, 0, 1);
    images.Add(&saved, RGB(0, 0, 0));
    CDC* shared = window.GetDC();
    shared->SetPixel(1, 1, 0);
    window.ReleaseDC(shared);
}

TEST(GdiCount, StaysAsItIsOver200Drawings)
{
    CWnd window;
    ASSERT_TRUE(
        window.CreateEx(0, AfxRegisterWndClass(0), L"", WS_POPUP | WS_VISIBLE, CRect(0, 0, 60, 60), nullptr, 0));
    for (int i = 0; i < 3; ++i)
        drawOnce(window); // the operating system keeps a few things of its own
    const int before = gdiObjects();
    for (int i = 0; i < 200; ++i)
        drawOnce(window);
    EXPECT_EQ(gdiObjects(), before);
    window.DestroyWindow();
}

} // namespace
