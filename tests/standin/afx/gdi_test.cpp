#include <gtest/gtest.h>
#include <vector>

#include "standin/afx/afx.h"

namespace {

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
        EXPECT_NE(CPen::FromHandle(handle), &pen);
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

} // namespace
