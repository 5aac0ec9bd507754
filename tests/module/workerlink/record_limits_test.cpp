#include <functional>
#include <memory>

#include "record_support.h"

// Strings and regions at the edges of their forms, and records that end early.

namespace {

const Bytes invertCode = hex("0A 00 00 00");

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

/// A region's block without the count in front.
Bytes regionBlock(DWORD count, const Bytes& bounds, const Bytes& rects)
{
    return u32(32) + u32(1) + u32(count) + u32(static_cast<DWORD>(rects.size())) + bounds + rects;
}

/// A CopyToClipboard record with an empty string and this region.
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

TEST(RecordStrings, ThePrefixGrowsWithTheLength)
{
    struct Case
    {
        int length;
        std::string prefix;
    };
    for (const Case& each :
         {Case{0, "FF FE FF 00"}, Case{1, "FF FE FF 01"}, Case{254, "FF FE FF FE"}, Case{255, "FF FE FF FF FF 00"},
          Case{65533, "FF FE FF FF FD FF"}, Case{65534, "FF FE FF FF FF FF FE FF 00 00"},
          Case{65536, "FF FE FF FF FF FF 00 00 01 00"}}) {
        Bytes expected = invertCode + hex(each.prefix);
        CString text;
        LPWSTR units = text.GetBufferSetLength(each.length);
        for (int i = 0; i < each.length; ++i) {
            units[i] = static_cast<wchar_t>(0x100 + i % 251);
            expected.push_back(static_cast<BYTE>(i % 251));
            expected.push_back(1);
        }
        text.ReleaseBufferSetLength(each.length);
        WorkerMessage sent(OperationInvert);
        sent.invert.file = text;
        EXPECT_TRUE(SerializeMessage(sent) == expected) << each.length << " units are written wrongly";
        WorkerMessage got(0);
        EXPECT_EQ(causeOfReading(got, expected), -1);
        EXPECT_TRUE(got.invert.file == text) << each.length << " units are read wrongly";
    }
}

TEST(RecordStrings, NarrowTextIsWidenedFromTheSystemsCodePage)
{
    for (const int length : {0, 1, 254, 255, 65533, 65534, 70000}) {
        Bytes record = invertCode;
        if (length < 255)
            record.push_back(static_cast<BYTE>(length));
        else if (length < 0xFFFE)
            record = record + hex("FF") + Bytes{static_cast<BYTE>(length), static_cast<BYTE>(length >> 8)};
        else
            record = record + hex("FF FF FF") + u32(static_cast<DWORD>(length));
        std::string narrow;
        for (int i = 0; i < length; ++i)
            narrow += static_cast<char>(i % 5 == 4 ? 0xE9 : 'a' + i % 5);
        record.insert(record.end(), narrow.begin(), narrow.end());
        WorkerMessage got(0);
        EXPECT_EQ(causeOfReading(got, record), -1);
        std::wstring wide(narrow.size(), L'\0');
        MultiByteToWideChar(CP_ACP, 0, narrow.data(), length, wide.data(), length);
        EXPECT_TRUE(got.invert.file == wide.c_str()) << length << " narrow characters are read wrongly";
    }
}

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

TEST(RecordTruncation, AStringLongerThanTheRecordIsAnEarlyEnd)
{
    for (const char* tail :
         {"FF FE FF 05 61 00", "FF FE FF FF FF 00 61 00", "FF FE FF FF FF FF FE FF 00 00 61 00",
          "FF FE FF FF FF FF 00 00 00 40 61 00", "05 61", "FF FF 00 61", "FF FF FF 00 00 00 40 61"}) {
        WorkerMessage message(0);
        EXPECT_EQ(causeOfReading(message, invertCode + hex(tail)), CArchiveException::endOfFile) << tail;
    }
}
