#include <filesystem>
#include <fstream>
#include <sstream>

#include "link_fixture.h"
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

struct Record
{
    std::string bytes; // the operation's code first
    void (*fill)(WorkerMessage& message, CRgn& region);
};

const Record records[] = {
    {"04 00 00 00 " + a + euro + "1D 00 00 00  2C 01 00 00  B0 09 00 00  B4 0D 00 00 " + two + one + minusHalf + four +
         zero + zero + one,
     [](WorkerMessage& message, CRgn&) {
         message.newRaster.drawingFile = L"a";
         message.newRaster.rasterFile = L"\x20AC";
         message.newRaster.formatCode = 29;
         message.newRaster.dpi = 300;
         message.newRaster.pixelSize = {2480, 3508};
         message.newRaster.scale = 2;
         message.newRaster.insertion = {1, -0.5, 4};
         message.newRaster.reservedPoint = {0, 0, 1};
     }},
    {"05 00 00 00 " + a + b + four + one + two + zero + minusHalf + zero + four,
     [](WorkerMessage& message, CRgn&) {
         message.insertRaster.drawingFile = L"a";
         message.insertRaster.rasterFile = L"b";
         message.insertRaster.scale = 4;
         message.insertRaster.insertion = {1, 2, 0};
         message.insertRaster.reservedPoint = {-0.5, 0, 4};
     }},
    {"06 00 00 00 " + a + "FF FE FF 00  FF FF FF FF  18 FC FF FF",
     [](WorkerMessage& message, CRgn&) {
         message.formatQuery.file = L"a";
         message.formatQuery.filterIndex = -1;
         message.formatQuery.formatCode = -1000;
     }},
    {"07 00 00 00 " + a + b + "32 00 00 00 " + region,
     [](WorkerMessage& message, CRgn& area) {
         message.convertFile.sourceFile = L"a";
         message.convertFile.targetFile = L"b";
         message.convertFile.formatCode = 50;
         message.convertFile.region = &area;
     }},
    {"07 00 00 00 " + a + b + "00 00 00 00 " + none,
     [](WorkerMessage& message, CRgn&) {
         message.convertFile.sourceFile = L"a";
         message.convertFile.targetFile = L"b";
         message.convertFile.formatCode = 0;
     }},
    {"08 00 00 00 " + c + region,
     [](WorkerMessage& message, CRgn& area) {
         message.copyToClipboard.file = L"c";
         message.copyToClipboard.region = &area;
     }},
    {"09 00 00 00 " + a + "FE FF FF FF  07 00 00 00  01",
     [](WorkerMessage& message, CRgn&) {
         message.pasteFromClipboard.file = L"a";
         message.pasteFromClipboard.position = {-2, 7};
         message.pasteFromClipboard.transparent = true;
     }},
    {"0A 00 00 00 FF FE FF 04 43 00 3A 00 5C 00 61 00",
     [](WorkerMessage& message, CRgn&) { message.invert.file = L"C:\\a"; }},
    {"0B 00 00 00 " + b + minusHalf + "64 00 00 00  9C FF FF FF  01 " + region,
     [](WorkerMessage& message, CRgn& area) {
         message.rotate.file = L"b";
         message.rotate.angle = -0.5;
         message.rotate.pivot = {100, -100};
         message.rotate.transparent = true;
         message.rotate.region = &area;
     }},
    {"0C 00 00 00 " + a + "01 00 00 00  0A 00 00 00  02 00 00 00 " + region,
     [](WorkerMessage& message, CRgn& area) {
         message.filter.file = L"a";
         message.filter.mode = FilterDespeckle;
         message.filter.size = 10;
         message.filter.selectionOnly = 2;
         message.filter.region = &area;
     }},
    {"0D 00 00 00 " + a + b + c + euro + one + two + zero + four + minusHalf + zero + "FF FF FF FF " + region,
     [](WorkerMessage& message, CRgn& area) {
         message.rasterize.drawingFile = L"a";
         message.rasterize.penFile = L"b";
         message.rasterize.rasterFile = L"c";
         message.rasterize.fontsDir = L"\x20AC";
         message.rasterize.corner1 = {1, 2, 0};
         message.rasterize.corner2 = {4, -0.5, 0};
         message.rasterize.result = -1;
         message.rasterize.region = &area;
     }},
};

// The bytes at the beginning of the lines of the page's block of bytes.
std::string bytesOfThePage()
{
    std::ifstream page(std::filesystem::path(static_cast<LPCWSTR>(programPath(HALVORAN_SOURCE_DIR "/docs/record.md"))));
    std::string line;
    while (std::getline(page, line) && line != "```bytes") {
    }
    const auto isByte = [](const std::string& word) {
        return word.size() == 2 && word.find_first_not_of("0123456789ABCDEF") == std::string::npos;
    };
    std::string bytes;
    while (std::getline(page, line) && line != "```") {
        std::istringstream words(line);
        for (std::string word; words >> word && isByte(word);)
            bytes += word + ' ';
    }
    return bytes;
}

class RecordBytes : public testing::Test
{
protected:
    RecordBytes() { m_region.CreateRectRgn(1, 2, 5, 300); }

    CRgn m_region;
};

} // namespace

TEST_F(RecordBytes, EachOperationsFieldsAreWrittenInTheirOrderAndReadBack)
{
    for (const Record& record : records) {
        const Bytes bytes = hex(record.bytes);
        WorkerMessage sent(bytes[0]);
        record.fill(sent, m_region);
        EXPECT_EQ(shown(SerializeMessage(sent)), shown(bytes));

        WorkerMessage got(99);
        EXPECT_EQ(causeOfReading(got, bytes), -1);
        EXPECT_EQ(shown(SerializeMessage(got)), shown(bytes)) << "after reading";
        for (const CRgn* read : {got.convertFile.region, got.copyToClipboard.region, got.rotate.region,
                                 got.filter.region, got.rasterize.region})
            delete read;
    }
    WorkerMessage got(0);
    EXPECT_EQ(causeOfReading(got, hex("09 00 00 00 " + a + "FE FF FF FF  07 00 00 00  80")), -1);
    EXPECT_TRUE(got.pasteFromClipboard.transparent) << "any byte but 0 is true";
}

TEST_F(RecordBytes, TheExampleOfThePageIsWhatIsWritten)
{
    WorkerMessage message(OperationConvertFile);
    message.convertFile.sourceFile = L"a";
    message.convertFile.targetFile = L"b";
    message.convertFile.formatCode = 50;
    message.convertFile.region = &m_region;
    EXPECT_EQ(shown(SerializeMessage(message)), bytesOfThePage());
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
