#include <memory>

#include "record_support.h"

// Regions at the edges of their form, and records that end early.

namespace {

Bytes u32(DWORD value)
{
    return {static_cast<BYTE>(value), static_cast<BYTE>(value >> 8), static_cast<BYTE>(value >> 16),
            static_cast<BYTE>(value >> 24)};
}

Bytes rectBytes(int left, int top, int right, int bottom)
{
    return u32(static_cast<DWORD>(left)) + u32(static_cast<DWORD>(top)) + u32(static_cast<DWORD>(right)) +
           u32(static_cast<DWORD>(bottom));
}

// A region's block without the count in front.
Bytes regionBlock(DWORD count, const Bytes& bounds, const Bytes& rects)
{
    return u32(32) + u32(1) + u32(count) + u32(static_cast<DWORD>(rects.size())) + bounds + rects;
}

// A CopyToClipboard record with an empty string and this region.
Bytes recordWithRegion(const Bytes& block)
{
    return hex("08 00 00 00 FF FE FF 00") + u32(static_cast<DWORD>(block.size())) + block;
}

std::unique_ptr<CRgn> readRegion(const Bytes& block)
{
    WorkerMessage message(0);
    EXPECT_EQ(causeOfReading(message, recordWithRegion(block)), -1);
    return std::unique_ptr<CRgn>(message.copyToClipboard.region);
}

} // namespace

TEST(RecordRegions, AnEmptyRegionTravelsAsAHeaderWithoutRectangles)
{
    CRgn empty;
    empty.CreateRectRgn(0, 0, 0, 0);
    WorkerMessage sent(OperationCopyToClipboard);
    sent.copyToClipboard.region = &empty;
    const Bytes block = regionBlock(0, rectBytes(0, 0, 0, 0), {});
    EXPECT_EQ(shown(SerializeMessage(sent)), shown(recordWithRegion(block)));
    const auto got = readRegion(block);
    ASSERT_NE(got, nullptr) << "an empty region is not the same as none";
    EXPECT_TRUE(got->EqualRgn(&empty));
}

TEST(RecordRegions, TenThousandRectanglesTravelInOrder)
{
    // 100 by 100 single pixels that do not touch: row by row from the top, from the left within a row.
    Bytes rects;
    CRgn region;
    region.CreateRectRgn(0, 0, 0, 0);
    for (int y = 0; y < 100; ++y) {
        CRgn row;
        row.CreateRectRgn(0, 0, 0, 0);
        for (int x = 0; x < 100; ++x) {
            rects = rects + rectBytes(2 * x, 2 * y, 2 * x + 1, 2 * y + 1);
            CRgn pixel;
            pixel.CreateRectRgn(2 * x, 2 * y, 2 * x + 1, 2 * y + 1);
            row.CombineRgn(&row, &pixel, RGN_OR);
        }
        region.CombineRgn(&region, &row, RGN_OR);
    }
    const Bytes block = regionBlock(10000, rectBytes(0, 0, 199, 199), rects);
    WorkerMessage sent(OperationCopyToClipboard);
    sent.copyToClipboard.region = &region;
    EXPECT_TRUE(SerializeMessage(sent) == recordWithRegion(block)) << "the rectangles' bytes are wrong";
    const auto got = readRegion(block);
    ASSERT_NE(got, nullptr);
    EXPECT_TRUE(got->EqualRgn(&region)) << "the rectangles are read wrongly";
}

TEST(RecordRegions, ABlockThatPromisesMoreThanItHoldsIsAnEarlyEnd)
{
    const Bytes rect = rectBytes(0, 0, 4, 4);
    Bytes shortHeader = regionBlock(0, rect, {});
    shortHeader.pop_back();
    for (const Bytes& block :
         {regionBlock(2, rect, rect), regionBlock(0x10000001, rect, rect), hex("20"), shortHeader}) {
        WorkerMessage message(0);
        EXPECT_EQ(causeOfReading(message, recordWithRegion(block)), CArchiveException::endOfFile);
        EXPECT_EQ(message.copyToClipboard.region, nullptr);
    }
    // A count beyond the record, up to the largest there is.
    for (const DWORD count : {49u, 0x10000u, 0xFFFFFFFFu}) {
        WorkerMessage message(0);
        EXPECT_EQ(causeOfReading(message, hex("08 00 00 00 FF FE FF 00") + u32(count) + regionBlock(1, rect, rect)),
                  CArchiveException::endOfFile);
    }
}

TEST(RecordTruncation, EveryEarlyEndRaisesEndOfFileAndNothingElse)
{
    CRgn region;
    region.CreateRectRgn(0, 0, 8, 8);
    CRgn hole;
    hole.CreateRectRgn(2, 2, 4, 4);
    region.CombineRgn(&region, &hole, RGN_DIFF);
    CString longText;
    for (int i = 0; i < 300; ++i)
        longText += L'x';
    for (DWORD code = OperationNewRaster; code <= OperationRasterize; ++code) {
        WorkerMessage sent(code);
        sent.newRaster.drawingFile = sent.insertRaster.rasterFile = sent.formatQuery.filter = L"C:\\text";
        sent.convertFile.targetFile = sent.copyToClipboard.file = sent.pasteFromClipboard.file = longText;
        sent.invert.file = sent.rotate.file = sent.filter.file = sent.rasterize.fontsDir = longText;
        sent.convertFile.region = sent.copyToClipboard.region = sent.rotate.region = sent.filter.region =
            sent.rasterize.region = &region;
        const Bytes whole = SerializeMessage(sent);
        for (size_t length = 0; length < whole.size(); ++length) {
            WorkerMessage got(0);
            ASSERT_EQ(causeOfReading(got, Bytes(whole.begin(), whole.begin() + static_cast<ptrdiff_t>(length))),
                      CArchiveException::endOfFile)
                << "operation " << code << " cut to " << length << " of " << whole.size() << " bytes";
        }
    }
}
