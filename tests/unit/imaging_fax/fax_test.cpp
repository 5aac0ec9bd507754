#include <functional>
#include <gmock/gmock.h>
#include <random>
#include <tiffio.h>

#include "imaging/error.h"
#include "imaging/fax_codes.h"
#include "imaging/fax_decode.h"
#include "imaging/fax_encode.h"
#include "imaging/row_changes.h"
#include "tests/support/fax_mutations.h"
#include "tests/support/pictures.h"

using namespace imaging;
using testing::HasSubstr;

namespace {

struct Kind
{
    const char* name;
    std::function<bool(int x, int y)> isInk;
};

// Pictures of any size, by a rule for each pixel.
std::vector<Kind> kinds()
{
    const auto mixed = [](int x, int y) { return (std::uint32_t(x) * 2654435761u ^ std::uint32_t(y) * 40503u) >> 13; };
    return {
        {"paper", [](int, int) { return false; }},
        {"ink", [](int, int) { return true; }},
        {"checkerboard", [](int x, int y) { return (x + y) % 2 == 0; }},
        {"checkerboard that begins with paper", [](int x, int y) { return (x + y) % 2 == 1; }},
        {"upright lines", [](int x, int) { return x % 5 < 2; }},
        {"leaning lines, from -4 to 4 pixels a row", [](int x, int y) { return (x + y * (y % 9 - 4) + 999) % 23 < 9; }},
        {"rows by turns", [](int, int y) { return y % 2 == 0; }},
        {"noise", [=](int x, int y) { return mixed(x, y) % 2 == 0; }},
        {"sparse noise", [=](int x, int y) { return mixed(x, y) % 61 == 0; }},
        {"blots", [=](int x, int y) { return mixed(x / 11, y / 3) % 3 == 0; }}};
}

Bitmap made(Size size, const std::function<bool(int x, int y)>& isInk)
{
    Bitmap bitmap(size);
    for (int y = 0; y < size.height; ++y)
        for (int x = 0; x < size.width; ++x)
            bitmap.setInk(x, y, isInk(x, y));
    return bitmap;
}

std::vector<std::uint8_t> coded(const Bitmap& bitmap, int firstRow, int rowCount)
{
    MemorySink sink;
    encodeGroup4(bitmap, firstRow, rowCount, sink);
    const auto* const bytes = reinterpret_cast<const std::uint8_t*>(sink.bytes().data());
    return {bytes, bytes + sink.size()};
}

FaxStream streamOf(const std::vector<std::uint8_t>& bytes)
{
    FaxStream stream(bytes.size());
    std::copy(bytes.begin(), bytes.end(), stream.data());
    return stream;
}

const FaxData group4{.compression = COMPRESSION_CCITTFAX4};

} // namespace

TEST(Fax, CodesTheSameBytesAsLibtiffAndReadsWhatItWrites)
{
    std::vector<Size> sizes = {{1, 300}, {2, 130}, {65535, 3}, {65536, 2}, {65537, 3}, {131, 67}};
    for (int width = 1; width <= 200; ++width)
        sizes.push_back({width, 6});
    for (const Kind& kind : kinds())
        for (const Size size : sizes) {
            SCOPED_TRACE(testing::Message() << kind.name << ", " << size.width << " x " << size.height);
            const Bitmap picture = made(size, kind.isInk);
            ASSERT_EQ(coded(picture, 0, size.height), codedByLibtiff(picture, group4).bytes);
            for (const FaxData& form : faxForms()) {
                const FaxData data = codedByLibtiff(picture, form);
                SCOPED_TRACE(testing::Message() << "compression " << form.compression << ", options "
                                                << form.group3Options << ", lowest bit first " << form.lowestBitFirst);
                ASSERT_TRUE(readByUs(data) == picture);
            }
        }
}

// Rows of paper, ink and paper again, with a row of paper between them, so that every run is coded by its length.
TEST(Fax, EveryRunLengthIsCodedAsLibtiffDoesIt)
{
    const auto check = [&](int first, int last, int step) {
        Bitmap picture({last + 20, (last - first) / step * 4 + 4});
        int y = 0;
        for (int run = first; run <= last; run += step)
            for (const auto& [paper, ink] : {std::pair(run, 7), std::pair(9, run)}) {
                const int changes[] = {paper, paper + ink, picture.width()};
                layRuns(picture.row(y), picture.width(), changes, false);
                y += 2;
            }
        const FaxData data = codedByLibtiff(picture, group4);
        EXPECT_EQ(coded(picture, 0, picture.height()), data.bytes);
        EXPECT_TRUE(readByUs(data) == picture);
    };
    constexpr int longestPair = longestMakeUpRun + longestTerminatingRun;
    check(1, longestPair + 2, 1);
    check(longestPair + 3, 3 * longestMakeUpRun + 70, 61);
}

TEST(Fax, StripsBeginAnewAndStandAlone)
{
    const Bitmap picture = made({333, 1100}, kinds().back().isInk);
    Bitmap read = Bitmap::uninitialized(picture.size());
    for (int first = 0; first < picture.height(); first += 100)
        decodeFax(streamOf(coded(picture, first, 100)), FaxCoding::Group4, read, first, 100, false);
    EXPECT_TRUE(samePicture(picture, read));
}

TEST(Fax, InvertedDataGiveInkForWhiteAndNoneInThePadding)
{
    const Bitmap picture = made({70, 9}, kinds().back().isInk);
    Bitmap read = Bitmap::uninitialized(picture.size());
    decodeFax(streamOf(coded(picture, 0, 9)), FaxCoding::Group4, read, 0, 9, true);
    EXPECT_TRUE(samePicture(made({70, 9}, [&](int x, int y) { return !picture.ink(x, y); }), read));
}

TEST(Fax, RunsAreLaidDownPixelByPixelTheSame)
{
    std::mt19937 random(5);
    for (int width = 1; width <= 200; ++width) {
        std::vector<int> changes;
        for (int x = int(random() % 3); x < width; x += int(random() % 80))
            changes.push_back(x); // the same one twice now and then
        changes.push_back(width);
        for (const bool inverted : {false, true}) {
            Bitmap laid = Bitmap::uninitialized({width, 1});
            layRuns(laid.row(0), width, changes, inverted);
            const Bitmap expected = made({width, 1}, [&](int x, int) {
                return (std::count_if(changes.begin(), changes.end(), [x](int c) { return c <= x; }) % 2 == 1) !=
                       inverted;
            });
            ASSERT_TRUE(samePicture(expected, laid)) << width;
        }
    }
}

// Cut off, a stream gives the picture, when only what stands behind the last row is gone, or an error.
TEST(Fax, NoHalfPicturePassesForAWholeOne)
{
    const Bitmap picture = made({83, 21}, kinds().back().isInk);
    for (const FaxData& form : faxForms()) {
        const FaxData whole = codedByLibtiff(picture, form);
        int refused = 0;
        for (std::size_t length = 1; length < whole.bytes.size(); ++length) {
            FaxData cut = whole;
            cut.bytes.resize(length);
            try {
                ASSERT_TRUE(samePicture(picture, readByUs(cut))) << length;
            } catch (const ImagingError& error) {
                EXPECT_THAT(error.what(), HasSubstr(" data"));
                ++refused;
            }
        }
        EXPECT_GT(refused, int(whole.bytes.size()) - 16);
    }
}

TEST(Fax, OfBrokenStreamsWeReadNothingThatLibtiffRefusesOrSeesOtherwise)
{
    constexpr int streams = 8'000;
    std::mt19937 random(20);
    int read = 0;
    int refused = 0;
    for (int i = 0; i < streams; ++i) {
        const FaxData data = mutatedStream(random);
        const FaxVerdict verdict = compareWithLibtiff(data);
        read += verdict == FaxVerdict::BothRead;
        refused += verdict == FaxVerdict::BothRefuse;
        ASSERT_NE(verdict, FaxVerdict::WeRead) << "stream " << i << ": " << testing::PrintToString(data.bytes);
        ASSERT_NE(verdict, FaxVerdict::PixelsDiffer) << "stream " << i << ": " << testing::PrintToString(data.bytes);
    }
    // Both happen often, and few streams are refused by us alone.
    EXPECT_GT(read, streams / 10);
    EXPECT_GT(refused, streams / 2);
    EXPECT_GT(read + refused, streams * 96 / 100);
}

// Runs of nothing fill a row with more changes than it has pixels, and many straight down come behind them.
TEST(Fax, RunsOfNothingDoNotOverrunTheRow)
{
    constexpr int width = 128;
    std::string digits;
    for (int i = 0; i < width / 2; ++i)
        digits += std::string(horizontalCode) + std::string(whiteRunCodes[1]) + std::string(blackRunCodes[1]);
    for (int i = 0; i < width / 2; ++i)
        digits += std::string(horizontalCode) + std::string(whiteRunCodes[0]) + std::string(blackRunCodes[0]);
    digits += std::string(width, '1');
    FaxData data = group4;
    data.width = width;
    data.height = 2;
    data.bytes.resize((digits.size() + 7) / 8);
    for (std::size_t i = 0; i < digits.size(); ++i)
        data.bytes[i / 8] |= std::uint8_t((digits[i] == '1') << (7 - i % 8));
    EXPECT_THROW(readByUs(data), ImagingError);
    data.height = 1;
    EXPECT_EQ(compareWithLibtiff(data), FaxVerdict::BothRead);
}

TEST(Fax, WhatIsRefusedIsToldWithItsRow)
{
    // Of group 4: V0 is 1, horizontal 001, pass 0001; white 3 is 1000, 5 is 1100, black 2 is 11, 3 is 10.
    const struct
    {
        const char* name;
        FaxCoding coding;
        std::vector<std::uint8_t> bytes;
        const char* words;
    } cases[] = {
        {"a row too long",
         FaxCoding::Group4,
         {0b00111000, 0b11000000, 0},
         "group 4 data is damaged or cut off at row 0"},
        {"a change left of the one before", FaxCoding::Group4, {0b00111001, 0b11000001, 0}, "row 1"},
        {"no code", FaxCoding::Group4, {0b10000000, 0b10000000}, "row 1"},
        {"the end mark too early", FaxCoding::Group4, {0b10000000, 0b00001000, 0b00000001}, "row 1"},
        {"uncompressed pixels", FaxCoding::Group4, {0b00000011, 0b11000000}, "row 0"},
        {"no end of line",
         FaxCoding::Group3OneDimensional,
         {0b10011000, 0},
         "group 3 data is damaged or cut off at row 0"},
        {"rubbish between the rows",
         FaxCoding::Group3OneDimensional,
         {0, 0b00011001, 0b10100000, 0, 0b01100110},
         "row 1"},
        {"a row cut off", FaxCoding::Group4, {0b10011000}, "row 1"},
        {"fewer bits than rows", FaxCoding::Group4, {}, "less group 4 data than its 2 rows"},
    };
    for (const auto& c : cases) {
        Bitmap bitmap({8, 2});
        try {
            decodeFax(streamOf(c.bytes), c.coding, bitmap, 0, 2, false);
            ADD_FAILURE() << c.name << " was read";
        } catch (const ImagingError& error) {
            EXPECT_THAT(error.what(), HasSubstr(c.words)) << c.name;
        }
    }
}
