#include <gmock/gmock.h>

#include "tests/support/tiff_bytes.h"

using namespace imaging;
using testing::HasSubstr;

namespace {

class Cals : public FilesTest
{};

std::string record(std::string text)
{
    text.resize(128, ' ');
    return text;
}

// A header of the given records, filled up with blanks, and the stream behind it.
Bytes calsFile(const std::vector<std::string>& records, const Bytes& stream)
{
    std::string header;
    for (const std::string& text : records)
        header += record(text);
    header.resize(2048, ' ');
    Bytes bytes(header.begin(), header.end());
    bytes.insert(bytes.end(), stream.begin(), stream.end());
    return bytes;
}

// "...##..." twice and the end of the block; see the TIFF test for the codes.
const Bytes twoRows = {0x31, 0xF8, 0x00, 0x80, 0x08};
const Picture twoRowsDrawn = {"...##...", "...##..."};

} // namespace

TEST_F(Cals, HeaderAndStreamAreWrittenByteForByte)
{
    writeRaster(file("plan.cal"), drawn(twoRowsDrawn), {300, 300}, Format::Cals);
    EXPECT_EQ(
        contentOf<Bytes>(file("plan.cal")),
        calsFile({"srcdocid: NONE", "dstdocid: NONE", "txtfilid: NONE", "figid: NONE", "srcgph: NONE", "doccls: NONE",
                  "rtype: 1", "rorient: 000,270", "rpelcnt: 000008,000002", "rdensty: 0300", "notes: NONE"},
                 twoRows));
}

TEST_F(Cals, ReadsWhatImageMagickWrites)
{
    const Bitmap seen = sampleBitmap(203, 97);
    writeByLibtiff(file("plan.tif"), seen, {.compression = COMPRESSION_CCITTFAX4});
    runTool("convert plan.tif -units PixelsPerInch -density 400 plan.cal");
    const RasterFile read = readRaster(file("plan.cal"));
    EXPECT_TRUE(samePicture(seen, read.bitmap));
    EXPECT_EQ(read.info.resolution, (Resolution{400, 400}));
    EXPECT_EQ(read.info.format, Format::Cals);
}

TEST_F(Cals, HeadersOfManyWriters)
{
    struct Case
    {
        const char* name;
        std::vector<std::string> records;
        Resolution resolution;
    };
    const Case cases[] = {
        {"records in another order, upper case",
         {"RORIENT: 000,270", "RDENSTY: 0200", "RPELCNT: 000008,000002", "RTYPE: 1"},
         {200, 200}},
        {"a declaration of the tape standard first",
         {"version: MIL-STD-1840A", "srcdocid: A", "rtype: 1", "rorient: 000,270", "rpelcnt: 000008,000002",
          "rdensty: 0300"},
         {300, 300}},
        {"no density", {"srcdocid: NONE", "rtype: 1", "rorient: 000,270", "rpelcnt: 000008,000002"}, {0, 0}},
        {"density zero", {"rtype: 1", "rorient: 000,270", "rpelcnt: 000008,000002", "rdensty: 0000"}, {0, 0}},
        {"no type and no orientation", {"srcdocid: NONE", "rpelcnt: 000008,000002", "rdensty: 0300"}, {300, 300}},
        {"numbers without leading zeros", {"rtype: 1", "rpelcnt: 8, 2", "rorient: 0,270", "rdensty: 300"}, {300, 300}},
        {"a document's name that looks like a key",
         {"srcdocid: rpelcnt: 000099,000099", "rtype: 1", "rpelcnt: 000008,000002", "rdensty: 0300"},
         {300, 300}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const RasterFile read = readRaster(asBytes(calsFile(c.records, twoRows)));
        EXPECT_EQ(rowsOf(read.bitmap), twoRowsDrawn);
        EXPECT_EQ(read.info.resolution, c.resolution);
    }
}

TEST_F(Cals, EveryOrientationIsTurnedUpright)
{
    // Stored rows, and the picture when the pixels of a row run in the direction of the pel path (degrees
    // counter-clockwise from right) and the rows follow in the line progression (relative to the pel path).
    const Picture stored = {"#..", "##."};
    struct Case
    {
        const char* orientation;
        Picture picture;
    };
    const Case cases[] = {
        {"000,270", {"#..", "##."}},     // right, down
        {"000,090", {"##.", "#.."}},     // right, up
        {"180,270", {".##", "..#"}},     // left, up
        {"180,090", {"..#", ".##"}},     // left, down
        {"090,270", {"..", ".#", "##"}}, // up, to the right
        {"090,090", {"..", "#.", "##"}}, // up, to the left
        {"270,270", {"##", "#.", ".."}}, // down, to the left
        {"270,090", {"##", ".#", ".."}}, // down, to the right
        {"", {"#..", "##."}},            // not told
    };
    writeByLibtiff(file("stored.tif"), drawn(stored), {.compression = COMPRESSION_CCITTFAX4});
    const Bytes stream = onlyStripOf(file("stored.tif"));
    for (const Case& c : cases) {
        SCOPED_TRACE(c.orientation);
        saveBytes(file("turned.cal"), calsFile({"rtype: 1", std::string("rorient: ") + c.orientation,
                                                "rpelcnt: 000003,000002", "rdensty: 0300"},
                                               stream));
        EXPECT_EQ(rowsOf(readRaster(file("turned.cal")).bitmap), c.picture);
        EXPECT_EQ(inspectRaster(file("turned.cal")).size, (Size{int(c.picture[0].size()), int(c.picture.size())}));
    }
}

TEST_F(Cals, BytesBehindTheImageAndAMissingEndMarkDoNoHarm)
{
    const std::vector<std::string> header = {"rtype: 1", "rpelcnt: 000008,000002", "rdensty: 0300"};
    Bytes padded = twoRows;
    padded.resize(128, 0);
    Bytes trailed = twoRows;
    trailed.insert(trailed.end(), {'e', 'n', 'd', 0xFF, 0x00, 0x31, 0x31});
    const Bytes unmarked = {0x31, 0xF8};
    const Bytes unmarkedPadded = {0x31, 0xF8, 0x00, 0x00, 0x00, 0x00, 0x00};
    for (const Bytes& stream : {padded, trailed, unmarked, unmarkedPadded}) {
        SCOPED_TRACE(testing::PrintToString(stream));
        EXPECT_EQ(rowsOf(readRaster(asBytes(calsFile(header, stream))).bitmap), twoRowsDrawn);
    }
}

TEST_F(Cals, FaultsAreToldInWords)
{
    struct Case
    {
        std::vector<std::string> records;
        Bytes stream;
        const char* words;
    };
    const Case cases[] = {
        {{"rtype: 2", "rpelcnt: 000008,000002"}, twoRows, "type 2"},
        {{"rtype: 1", "rorient: 000,270"}, twoRows, "does not tell its size"},
        {{"rtype: 1", "rpelcnt: 000000,000002"}, twoRows, "no pixels"},
        {{"rtype: 1", "rpelcnt: 999999,999999"}, twoRows, "too large"},
        {{"rtype: 1", "rpelcnt: 000008,000002", "rorient: 045,270"}, twoRows, "orientation"},
        {{"rtype: 1", "rpelcnt: 000008,000003"}, twoRows, "row 2"},
        {{"rtype: 1", "rpelcnt: 000008,000003"}, {0x31, 0xF8, 0, 0, 0, 0, 0, 0}, "row 2"},
        {{"rtype: 1", "rpelcnt: 000008,000200"}, twoRows, "200 rows"},
        {{"rtype: 1", "rpelcnt: 000008,000002"}, {}, "2 rows"},
        {{"rtype: 1", "rpelcnt: 000008,000002"}, {0x31}, "cut off"},
    };
    for (const Case& c : cases)
        EXPECT_THAT(errorOf([&] { readRaster(asBytes(calsFile(c.records, c.stream))); }), HasSubstr(c.words));
    Bytes short2 = calsFile({"rtype: 1", "rpelcnt: 000008,000002"}, {});
    short2.resize(1000);
    EXPECT_THAT(errorOf([&] { readRaster(asBytes(short2)); }), HasSubstr("ends too early"));
}

TEST_F(Cals, MoreDataThanMemoryIsThereForIsRefused)
{
    writeRaster(file("plan.cal"), Bitmap({65535, 32767}), {}, Format::Cals);
    std::filesystem::resize_file(file("plan.cal"), 700u << 20); // a hole on the disk
    EXPECT_THAT(errorOf([&] { readRaster(file("plan.cal")); }), HasSubstr("too much group 3 or group 4 data"));
}
