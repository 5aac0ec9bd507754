#include <memory>

#include "record_support.h"

// Every operation's bytes, written down by hand, in both directions. The strings are one letter or two, so that a field
// out of place shows.

namespace {

// f64 values: 1 is 3F F0, 2 is 40 00, 4 is 40 10, -0.5 is BF E0, each with six zero bytes below.
const std::string one = "00 00 00 00 00 00 F0 3F ";
const std::string two = "00 00 00 00 00 00 00 40 ";
const std::string four = "00 00 00 00 00 00 10 40 ";
const std::string minusHalf = "00 00 00 00 00 00 E0 BF ";
const std::string zero = "00 00 00 00 00 00 00 00 ";

// A string of one unit: tag, length 1, the unit.
const std::string a = "FF FE FF 01 61 00 ";
const std::string b = "FF FE FF 01 62 00 ";
const std::string c = "FF FE FF 01 63 00 ";
const std::string euro = "FF FE FF 01 AC 20 ";
const std::string none = "00 00 00 00 ";

// The region of one rectangle (1, 2) to (5, 300): 48 bytes, header of 32, rectangles, one of them, 16 bytes of
// rectangles, bounds, the rectangle.
const std::string region = "30 00 00 00 "
                           "20 00 00 00  01 00 00 00  01 00 00 00  10 00 00 00 "
                           "01 00 00 00  02 00 00 00  05 00 00 00  2C 01 00 00 "
                           "01 00 00 00  02 00 00 00  05 00 00 00  2C 01 00 00 ";

class RecordBytes : public testing::Test
{
protected:
    RecordBytes() { m_region.CreateRectRgn(1, 2, 5, 300); }

    void expectWritten(const WorkerMessage& message, const std::string& expected)
    {
        EXPECT_EQ(shown(SerializeMessage(message)), shown(hex(expected)));
    }

    /// Reads over a record of another operation in which every region is set to something else.
    std::unique_ptr<WorkerMessage> read(const std::string& bytes)
    {
        auto message = std::make_unique<WorkerMessage>(99);
        EXPECT_EQ(causeOfReading(*message, hex(bytes)), -1);
        return message;
    }

    void expectRegionAndFree(CRgn* got)
    {
        ASSERT_NE(got, nullptr);
        EXPECT_TRUE(got->EqualRgn(&m_region));
        delete got;
    }

    CRgn m_region;
};

void expectPoint(const WorkerPoint& point, double x, double y, double z)
{
    EXPECT_EQ(point.x, x);
    EXPECT_EQ(point.y, y);
    EXPECT_EQ(point.z, z);
}

} // namespace

TEST_F(RecordBytes, NewRaster)
{
    const std::string bytes = "04 00 00 00 " + a + euro + "1D 00 00 00  2C 01 00 00  B0 09 00 00  B4 0D 00 00 " + two +
                              one + minusHalf + four + zero + zero + one;
    WorkerMessage sent(OperationNewRaster);
    sent.newRaster.drawingFile = L"a";
    sent.newRaster.rasterFile = L"\x20AC";
    sent.newRaster.formatCode = 29;
    sent.newRaster.dpi = 300;
    sent.newRaster.pixelSize = {2480, 3508};
    sent.newRaster.scale = 2;
    sent.newRaster.insertion = {1, -0.5, 4};
    sent.newRaster.reservedPoint = {0, 0, 1};
    expectWritten(sent, bytes);

    const auto got = read(bytes);
    EXPECT_EQ(got->operation, 4u);
    EXPECT_EQ(got->newRaster.drawingFile, L"a");
    EXPECT_EQ(got->newRaster.rasterFile, L"\x20AC");
    EXPECT_EQ(got->newRaster.formatCode, 29u);
    EXPECT_EQ(got->newRaster.dpi, 300u);
    EXPECT_EQ(got->newRaster.pixelSize.cx, 2480);
    EXPECT_EQ(got->newRaster.pixelSize.cy, 3508);
    EXPECT_EQ(got->newRaster.scale, 2);
    expectPoint(got->newRaster.insertion, 1, -0.5, 4);
    expectPoint(got->newRaster.reservedPoint, 0, 0, 1);
}

TEST_F(RecordBytes, InsertRaster)
{
    const std::string bytes = "05 00 00 00 " + a + b + four + one + two + zero + minusHalf + zero + four;
    WorkerMessage sent(OperationInsertRaster);
    sent.insertRaster.drawingFile = L"a";
    sent.insertRaster.rasterFile = L"b";
    sent.insertRaster.scale = 4;
    sent.insertRaster.insertion = {1, 2, 0};
    sent.insertRaster.reservedPoint = {-0.5, 0, 4};
    expectWritten(sent, bytes);

    const auto got = read(bytes);
    EXPECT_EQ(got->operation, 5u);
    EXPECT_EQ(got->insertRaster.drawingFile, L"a");
    EXPECT_EQ(got->insertRaster.rasterFile, L"b");
    EXPECT_EQ(got->insertRaster.scale, 4);
    expectPoint(got->insertRaster.insertion, 1, 2, 0);
    expectPoint(got->insertRaster.reservedPoint, -0.5, 0, 4);
}

TEST_F(RecordBytes, FormatQuery)
{
    const std::string bytes = "06 00 00 00 " + a + "FF FE FF 00  FF FF FF FF  18 FC FF FF";
    WorkerMessage sent(OperationFormatQuery);
    sent.formatQuery.file = L"a";
    sent.formatQuery.filterIndex = -1;
    sent.formatQuery.formatCode = -1000;
    expectWritten(sent, bytes);

    const auto got = read("06 00 00 00 " + a + b + "02 00 00 00  32 00 00 00");
    EXPECT_EQ(got->operation, 6u);
    EXPECT_EQ(got->formatQuery.file, L"a");
    EXPECT_EQ(got->formatQuery.filter, L"b");
    EXPECT_EQ(got->formatQuery.filterIndex, 2);
    EXPECT_EQ(got->formatQuery.formatCode, 50);
}

TEST_F(RecordBytes, ConvertFile)
{
    const std::string bytes = "07 00 00 00 " + a + b + "32 00 00 00 " + region;
    WorkerMessage sent(OperationConvertFile);
    sent.convertFile.sourceFile = L"a";
    sent.convertFile.targetFile = L"b";
    sent.convertFile.formatCode = 50;
    sent.convertFile.region = &m_region;
    expectWritten(sent, bytes);
    sent.convertFile.region = nullptr;
    expectWritten(sent, "07 00 00 00 " + a + b + "32 00 00 00 " + none);

    const auto got = read(bytes);
    EXPECT_EQ(got->convertFile.sourceFile, L"a");
    EXPECT_EQ(got->convertFile.targetFile, L"b");
    EXPECT_EQ(got->convertFile.formatCode, 50u);
    expectRegionAndFree(got->convertFile.region);
}

TEST_F(RecordBytes, CopyToClipboard)
{
    const std::string bytes = "08 00 00 00 " + c + region;
    WorkerMessage sent(OperationCopyToClipboard);
    sent.copyToClipboard.file = L"c";
    sent.copyToClipboard.region = &m_region;
    expectWritten(sent, bytes);

    const auto got = read(bytes);
    EXPECT_EQ(got->copyToClipboard.file, L"c");
    expectRegionAndFree(got->copyToClipboard.region);
}

TEST_F(RecordBytes, PasteFromClipboard)
{
    const std::string bytes = "09 00 00 00 " + a + "FE FF FF FF  07 00 00 00  01";
    WorkerMessage sent(OperationPasteFromClipboard);
    sent.pasteFromClipboard.file = L"a";
    sent.pasteFromClipboard.position = {-2, 7};
    sent.pasteFromClipboard.transparent = true;
    expectWritten(sent, bytes);

    const auto got = read("09 00 00 00 " + a + "FE FF FF FF  07 00 00 00  80");
    EXPECT_EQ(got->pasteFromClipboard.file, L"a");
    EXPECT_EQ(got->pasteFromClipboard.position.x, -2);
    EXPECT_EQ(got->pasteFromClipboard.position.y, 7);
    EXPECT_TRUE(got->pasteFromClipboard.transparent) << "any byte but 0 is true";
}

TEST_F(RecordBytes, Invert)
{
    const std::string bytes = "0A 00 00 00 FF FE FF 04 43 00 3A 00 5C 00 61 00";
    WorkerMessage sent(OperationInvert);
    sent.invert.file = L"C:\\a";
    expectWritten(sent, bytes);
    EXPECT_EQ(read(bytes)->invert.file, L"C:\\a");
}

TEST_F(RecordBytes, Rotate)
{
    const std::string bytes = "0B 00 00 00 " + b + minusHalf + "64 00 00 00  9C FF FF FF  01 " + region;
    WorkerMessage sent(OperationRotate);
    sent.rotate.file = L"b";
    sent.rotate.angle = -0.5;
    sent.rotate.pivot = {100, -100};
    sent.rotate.transparent = true;
    sent.rotate.region = &m_region;
    expectWritten(sent, bytes);

    const auto got = read(bytes);
    EXPECT_EQ(got->rotate.file, L"b");
    EXPECT_EQ(got->rotate.angle, -0.5);
    EXPECT_EQ(got->rotate.pivot.x, 100);
    EXPECT_EQ(got->rotate.pivot.y, -100);
    EXPECT_TRUE(got->rotate.transparent);
    expectRegionAndFree(got->rotate.region);
}

TEST_F(RecordBytes, Filter)
{
    const std::string bytes = "0C 00 00 00 " + a + "01 00 00 00  0A 00 00 00  01 00 00 00 " + region;
    WorkerMessage sent(OperationFilter);
    sent.filter.file = L"a";
    sent.filter.mode = FilterDespeckle;
    sent.filter.size = 10;
    sent.filter.selectionOnly = 1;
    sent.filter.region = &m_region;
    expectWritten(sent, bytes);
    sent.filter.selectionOnly = 0;
    sent.filter.region = nullptr;
    expectWritten(sent, "0C 00 00 00 " + a + "01 00 00 00  0A 00 00 00  00 00 00 00 " + none);

    const auto got = read(bytes);
    EXPECT_EQ(got->filter.file, L"a");
    EXPECT_EQ(got->filter.mode, 1u);
    EXPECT_EQ(got->filter.size, 10u);
    EXPECT_EQ(got->filter.selectionOnly, 1u);
    expectRegionAndFree(got->filter.region);
}

TEST_F(RecordBytes, Rasterize)
{
    const std::string bytes =
        "0D 00 00 00 " + a + b + c + euro + one + two + zero + four + minusHalf + zero + "FF FF FF FF " + region;
    WorkerMessage sent(OperationRasterize);
    sent.rasterize.drawingFile = L"a";
    sent.rasterize.penFile = L"b";
    sent.rasterize.rasterFile = L"c";
    sent.rasterize.fontsDir = L"\x20AC";
    sent.rasterize.corner1 = {1, 2, 0};
    sent.rasterize.corner2 = {4, -0.5, 0};
    sent.rasterize.result = -1;
    sent.rasterize.region = &m_region;
    expectWritten(sent, bytes);

    const auto got = read(bytes);
    EXPECT_EQ(got->rasterize.drawingFile, L"a");
    EXPECT_EQ(got->rasterize.penFile, L"b");
    EXPECT_EQ(got->rasterize.rasterFile, L"c");
    EXPECT_EQ(got->rasterize.fontsDir, L"\x20AC");
    expectPoint(got->rasterize.corner1, 1, 2, 0);
    expectPoint(got->rasterize.corner2, 4, -0.5, 0);
    EXPECT_EQ(got->rasterize.result, -1);
    EXPECT_EQ(got->filter.region, nullptr);
    expectRegionAndFree(got->rasterize.region);
}

TEST_F(RecordBytes, AnUnknownCodeHasNoBodyAndChangesNothingElse)
{
    for (const DWORD code : {0u, 3u, 14u, 0xFFFFFFFFu}) {
        WorkerMessage sent(code);
        sent.invert.file = L"a";
        const Bytes expected{static_cast<BYTE>(code), static_cast<BYTE>(code >> 8), static_cast<BYTE>(code >> 16),
                             static_cast<BYTE>(code >> 24)};
        EXPECT_EQ(SerializeMessage(sent), expected);

        WorkerMessage got(OperationInvert);
        got.invert.file = L"kept";
        got.rotate.region = &m_region;
        EXPECT_EQ(causeOfReading(got, expected + hex("DE AD BE EF")), -1) << "bytes behind the record are nobody's";
        EXPECT_EQ(got.operation, code);
        EXPECT_EQ(got.invert.file, L"kept");
        EXPECT_EQ(got.rotate.region, &m_region);
    }
}

TEST_F(RecordBytes, AReplyIsReadByItsOwnCodeAndLeavesTheOtherGroups)
{
    WorkerMessage message(OperationFormatQuery);
    message.formatQuery.file = L"asked";
    message.formatQuery.filterIndex = -1;
    EXPECT_EQ(causeOfReading(message, hex("0A 00 00 00 " + a)), -1);
    EXPECT_EQ(message.operation, 10u);
    EXPECT_EQ(message.invert.file, L"a");
    EXPECT_EQ(message.formatQuery.file, L"asked");
    EXPECT_EQ(message.formatQuery.filterIndex, -1);
}

TEST_F(RecordBytes, ACountOf0ClearsTheRegionButForRasterizeItClearsTheFiltersRegion)
{
    CRgn other;
    other.CreateRectRgn(0, 0, 1, 1);
    WorkerMessage message(0);
    message.convertFile.region = message.copyToClipboard.region = message.rotate.region = message.filter.region =
        message.rasterize.region = &other;
    EXPECT_EQ(causeOfReading(message, hex("07 00 00 00 " + a + b + "00 00 00 00 " + none)), -1);
    EXPECT_EQ(message.convertFile.region, nullptr);
    EXPECT_EQ(causeOfReading(message, hex("08 00 00 00 " + a + none)), -1);
    EXPECT_EQ(message.copyToClipboard.region, nullptr);
    EXPECT_EQ(causeOfReading(message, hex("0B 00 00 00 " + a + one + zero + "00 " + none)), -1);
    EXPECT_EQ(message.rotate.region, nullptr);
    EXPECT_EQ(message.filter.region, &other);
    EXPECT_EQ(message.rasterize.region, &other);

    EXPECT_EQ(causeOfReading(message, hex("0D 00 00 00 " + a + b + c + euro + one + one + one + two + two + two +
                                          "00 00 00 00 " + none)),
              -1);
    EXPECT_EQ(message.rasterize.region, &other) << "rasterize keeps its own region";
    EXPECT_EQ(message.filter.region, nullptr) << "rasterize clears the filter's region";

    message.filter.region = &other;
    EXPECT_EQ(causeOfReading(message, hex("0C 00 00 00 " + a + zero + "00 00 00 00 " + none)), -1);
    EXPECT_EQ(message.filter.region, nullptr);
}
