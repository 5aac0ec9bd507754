#include "engine_fixture.h"

#include <cstddef>

#include "imaging/dib.h"

namespace {

using imaging::Rect;
using imaging::Region;

constexpr std::uint32_t copyOperation = 8;
constexpr std::uint32_t pasteOperation = 9;

using Bytes = std::vector<std::byte>;

Bytes bytesOf(std::initializer_list<int> values)
{
    Bytes bytes;
    for (const int value : values)
        bytes.push_back(static_cast<std::byte>(value));
    return bytes;
}

Bytes operator+(Bytes left, const Bytes& right)
{
    left.insert(left.end(), right.begin(), right.end());
    return left;
}

Bytes little(std::uint32_t value)
{
    return bytesOf({int(value & 255), int(value >> 8 & 255), int(value >> 16 & 255), int(value >> 24)});
}

/// The 40 bytes in front of a bitmap in memory; a negative height says that the top row comes first.
Bytes header(int width, int height, int bits, int coloursUsed = 0)
{
    return bytesOf({40, 0, 0, 0}) + little(std::uint32_t(width)) + little(std::uint32_t(height)) +
           bytesOf({1, 0, bits, 0}) + Bytes(16) + little(std::uint32_t(coloursUsed)) + Bytes(4);
}

const Bytes blackAndWhite = bytesOf({0, 0, 0, 0, 255, 255, 255, 0});
const Bytes whiteAndBlack = bytesOf({255, 255, 255, 0, 0, 0, 0, 0});

/// Black, white, and the rest of a palette in gray just above and below the middle.
Bytes palette(int entries)
{
    Bytes colours = blackAndWhite;
    for (int i = 2; i < entries; ++i)
        colours = colours + (i % 2 ? bytesOf({200, 200, 200, 0}) : bytesOf({60, 60, 60, 0}));
    return colours;
}

class ClipboardTest : public EngineTest
{
protected:
    Bytes copied(const Picture& picture, std::optional<Region> region, double dotsPerInch = 300)
    {
        put("image", picture, dotsPerInch);
        worker::Request request;
        request.copyToClipboard = {in("image"), std::move(region), {}};
        perform(request, copyOperation);
        EXPECT_EQ(this->picture("image"), picture) << "copying changes no file";
        return request.copyToClipboard.dib;
    }

    Picture pasted(const Picture& picture, const Bytes& dib, imaging::Point position, bool transparent)
    {
        put("image", picture, 300);
        worker::Request request;
        request.pasteFromClipboard = {in("image"), position, transparent, dib};
        perform(request, pasteOperation);
        return this->picture("image");
    }
};

const Picture paper = {"......", "......", "......", "......"};

} // namespace

TEST_F(ClipboardTest, CopiesTheWholeImageAsAOneBitBitmapWithItsBottomRowFirst)
{
    // 254 dots per inch are 10,000 dots per metre.
    const Bytes wanted = bytesOf({40, 0, 0, 0, 3, 0, 0, 0, 2, 0, 0, 0, 1, 0, 1, 0, 0, 0, 0, 0}) + little(8) +
                         little(10000) + little(10000);
    const Bytes dib = copied({"##.", "..#"}, {}, 254);
    ASSERT_EQ(dib.size(), 40u + 8 + 8);
    EXPECT_TRUE(std::equal(wanted.begin(), wanted.begin() + 20, dib.begin())) << "size, planes, depth, no compression";
    EXPECT_TRUE(std::equal(wanted.begin() + 24, wanted.end(), dib.begin() + 24)) << "the raster's resolution";

    // Whichever of the two colours comes first, ink is black.
    const bool blackFirst = dib[40] == std::byte{0};
    const Bytes colours(dib.begin() + 40, dib.begin() + 48);
    EXPECT_EQ(colours, blackFirst ? blackAndWhite : whiteAndBlack);
    const int flip = blackFirst ? 0xE0 : 0;
    EXPECT_EQ(std::to_integer<int>(dib[48]) & 0xE0, 0x20 ^ flip) << "the lower row: ..#";
    EXPECT_EQ(std::to_integer<int>(dib[52]) & 0xE0, 0xC0 ^ flip) << "the upper row: ##.";
}

TEST_F(ClipboardTest, CopiesTheBoxOfTheRegionWithPaperOutsideIt)
{
    const Picture black = {"######", "######", "######", "######"};
    const Region step = unite(Region(Rect{1, 1, 3, 2}), Region(Rect{2, 2, 5, 3}));
    EXPECT_EQ(pictureOf(imaging::readDib(copied(black, step))), (Picture{"##..", ".###"}));
}

TEST_F(ClipboardTest, LeavesOutWhatOfTheRegionLiesOutsideTheImage)
{
    const Picture picture = {"#.....", ".#....", "..#...", "...#.."};
    EXPECT_EQ(pictureOf(imaging::readDib(copied(picture, Region(Rect{-3, 2, 4, 9})))), (Picture{"..#.", "...#"}));
}

TEST_F(ClipboardTest, RefusesARegionThatMeetsNoPixel)
{
    put("image", paper, 300);
    for (const Region& region : {Region(Rect{6, 0, 9, 4}), Region(Rect{-5, -5, 0, 0}), Region()}) {
        worker::Request request;
        request.copyToClipboard = {in("image"), region, {}};
        expectRefused(request, copyOperation);
    }
}

TEST_F(ClipboardTest, PastesEveryDepthWithInkWhereItIsDarkerThanHalf)
{
    // Each says the same two rows, the lower one first: "#..#" above ".##.".
    struct Case
    {
        const char* what;
        Bytes dib;
    };
    const Bytes rows8 = bytesOf({1, 2, 0, 3, 0, 1, 3, 2});
    const Bytes rows4 = bytesOf({0x12, 0x03, 0, 0, 0x01, 0x32, 0, 0});
    const Bytes deep24 = bytesOf({255, 255, 255, 10, 20, 30, 0, 0, 0, 250, 250, 250}) +
                         bytesOf({0, 0, 0, 255, 255, 255, 200, 200, 200, 90, 90, 90});
    const Bytes deep32 = bytesOf({255, 255, 255, 0, 10, 20, 30, 0, 0, 0, 0, 0, 250, 250, 250, 0}) +
                         bytesOf({0, 0, 0, 0, 255, 255, 255, 0, 200, 200, 200, 0, 90, 90, 90, 0});
    const Case cases[] = {
        {"1 bit, black first", header(4, 2, 1) + blackAndWhite + bytesOf({0x90, 0, 0, 0, 0x60, 0, 0, 0})},
        {"1 bit, white first", header(4, 2, 1) + whiteAndBlack + bytesOf({0x60, 0, 0, 0, 0x90, 0, 0, 0})},
        {"1 bit, top row first", header(4, -2, 1) + blackAndWhite + bytesOf({0x60, 0, 0, 0, 0x90, 0, 0, 0})},
        {"4 bits", header(4, 2, 4) + palette(16) + rows4},
        {"4 bits, a short palette", header(4, 2, 4, 4) + palette(4) + rows4},
        {"8 bits", header(4, 2, 8) + palette(256) + rows8},
        {"8 bits, a short palette", header(4, 2, 8, 4) + palette(4) + rows8},
        {"24 bits", header(4, 2, 24) + deep24},
        {"32 bits", header(4, 2, 32) + deep32},
        {"32 bits, top row first",
         header(4, -2, 32) + Bytes(deep32.begin() + 16, deep32.end()) + Bytes(deep32.begin(), deep32.begin() + 16)},
    };
    for (const Case& row : cases) {
        EXPECT_EQ(pasted(paper, row.dib, {1, 1}, false), (Picture{"......", ".#..#.", "..##..", "......"})) << row.what;
    }
}

TEST_F(ClipboardTest, PastesWithAndWithoutItsPaper)
{
    const Picture ground = {"######", "......", "######", "......"};
    const Bytes chequers = header(4, -2, 1) + whiteAndBlack + bytesOf({0xA0, 0, 0, 0, 0x50, 0, 0, 0});
    EXPECT_EQ(pasted(ground, chequers, {1, 1}, true), (Picture{"######", ".#.#..", "######", "......"}));
    EXPECT_EQ(pasted(ground, chequers, {1, 1}, false), (Picture{"######", ".#.#..", "#.#.##", "......"}));
}

TEST_F(ClipboardTest, LeavesOutWhatIsPastedBesideTheImage)
{
    const Bytes block = header(4, -3, 1) + whiteAndBlack + bytesOf({0xF0, 0, 0, 0, 0x90, 0, 0, 0, 0xF0, 0, 0, 0});
    struct Case
    {
        imaging::Point position;
        Picture wanted;
    };
    const Case cases[] = {
        {{-2, -1}, {".#....", "##....", "......", "......"}},
        {{4, 2}, {"......", "......", "....##", "....#."}},
        {{6, 0}, paper},
        {{-4, 0}, paper},
        {{0, -3}, paper},
        {{2147483647, -2147483647}, paper},
    };
    for (const Case& row : cases)
        EXPECT_EQ(pasted(paper, block, row.position, true), row.wanted) << row.position.x << "," << row.position.y;
}

TEST_F(ClipboardTest, WhatIsCopiedCanBePasted)
{
    const Picture picture = {"#.##..", ".#....", "..#..#", "...#.."};
    EXPECT_EQ(pasted(paper, copied(picture, {}), {0, 0}, false), picture);
}

TEST_F(ClipboardTest, ADamagedBitmapOnTheClipboardLeavesTheFileAlone)
{
    put("image", paper, 300);
    const Bytes whole = header(4, 2, 1) + blackAndWhite + bytesOf({0x90, 0, 0, 0, 0x60, 0, 0, 0});
    Bytes compressed = whole;
    compressed[16] = std::byte{1};
    std::vector<Bytes> damaged = {compressed, header(4, 2, 3) + whole, header(-4, 2, 1) + whole,
                                  header(0x7FFFFFFF, 0x7FFFFFFF, 32), header(4, 0, 1) + blackAndWhite};
    // The last three bytes only fill up the row.
    for (std::size_t length = 0; length < whole.size() - 3; ++length)
        damaged.emplace_back(whole.begin(), whole.begin() + std::ptrdiff_t(length));
    for (const Bytes& dib : damaged) {
        SCOPED_TRACE(dib.size());
        worker::Request request;
        request.pasteFromClipboard = {in("image"), {0, 0}, true, dib};
        expectRefused(request, pasteOperation);
    }
}
