// Numbers, texts and handles bit by bit; the bytes are worked out by hand.

#include <cmath>
#include <gtest/gtest.h>
#include <string>

#include "drawing/dwg/bit_reader.h"
#include "drawing/dwg/bit_writer.h"
#include "drawing/dwg/checksum.h"
#include "drawing/error.h"

namespace drawing::test {

using namespace dwg;

TEST(Bits, NumbersHaveTheirShortestForm)
{
    const struct
    {
        const char* name;
        void (*write)(BitWriter&);
        std::string bytes;
    } cases[] = {
        {"short 0", [](BitWriter& w) { w.shortNumber(0); }, "\x80"},
        {"short 256", [](BitWriter& w) { w.shortNumber(256); }, "\xC0"},
        {"short 15", [](BitWriter& w) { w.shortNumber(15); }, "\x43\xC0"},
        {"short -1", [](BitWriter& w) { w.shortNumber(-1); }, std::string("\x3F\xFF\xC0")},
        {"long 257", [](BitWriter& w) { w.longNumber(257); }, std::string("\x00\x40\x40\x00\x00", 5)},
        {"real 1", [](BitWriter& w) { w.real(1); }, "\x40"},
        {"real 0", [](BitWriter& w) { w.real(0); }, "\x80"},
        {"real equal to its base", [](BitWriter& w) { w.realNear(3.5, 3.5); }, std::string(1, '\0')},
        {"handle 4F as a hard pointer",
         [](BitWriter& w) {
             w.handle({Reference::HardPointer, 0x4F});
         },
         "\x51\x4F"},
        {"handle 0",
         [](BitWriter& w) {
             w.handle({Reference::HardPointer, 0});
         },
         "\x50"},
        {"text", [](BitWriter& w) { w.text("AB"); }, std::string("\x40\xD0\x50\x80\x00", 5)},
        {"modular char 130", [](BitWriter& w) { w.modularChar(130); }, "\x82\x01"},
        {"modular char -1413", [](BitWriter& w) { w.signedModularChar(-1413); }, "\x85\x4B"},
        {"modular short 0x12345", [](BitWriter& w) { w.modularShort(0x12345); }, std::string("\x45\xA3\x02\x00", 4)},
    };
    for (const auto& each : cases) {
        BitWriter writer;
        each.write(writer);
        EXPECT_EQ(writer.bytes(), each.bytes) << each.name;
    }
}

TEST(Bits, WhatIsWrittenIsRead)
{
    BitWriter writer;
    writer.bit(true);
    writer.realNear(1.0000000001, 1);
    writer.realNear(-7.25, 1e300);
    writer.real(-0.0);
    writer.longNumber(-5);
    writer.signedModularChar(-64);
    writer.modularShort(40000);
    writer.handle({Reference::SoftPointer, 0xABCDEF0123});
    BitReader reader(writer.bytes());
    EXPECT_TRUE(reader.bit());
    EXPECT_EQ(reader.realNear(1), 1.0000000001);
    EXPECT_EQ(reader.realNear(1e300), -7.25);
    EXPECT_TRUE(std::signbit(reader.real()));
    EXPECT_EQ(reader.longNumber(), -5);
    EXPECT_EQ(reader.signedModularChar(), -64);
    EXPECT_EQ(reader.modularShort(), 40000u);
    EXPECT_EQ(reader.handle(), (HandleReference{Reference::SoftPointer, 0xABCDEF0123}));
}

TEST(Bits, HandlesToldAsStepsAreCounted)
{
    EXPECT_EQ((HandleReference{Reference::OneUp, 0}).target(0x20), 0x21u);
    EXPECT_EQ((HandleReference{Reference::OneDown, 0}).target(0x20), 0x1Fu);
    EXPECT_EQ((HandleReference{Reference::Up, 0x10}).target(0x20), 0x30u);
    EXPECT_EQ((HandleReference{Reference::Down, 0x10}).target(0x20), 0x10u);
    EXPECT_EQ((HandleReference{Reference::Down, 0x30}).target(0x20), 0u) << "below all handles";
}

TEST(Bits, NothingIsReadPastTheEnd)
{
    const std::string bytes("\x00\xFF", 2);
    EXPECT_THROW(BitReader(bytes).rawReal(), DrawingError);
    EXPECT_THROW(BitReader(bytes).shortNumber(), DrawingError);
    EXPECT_THROW(BitReader("\xFF").longNumber(), DrawingError) << "a form that does not exist";
    EXPECT_THROW(BitReader("\x5F").handle(), DrawingError) << "a handle of 15 bytes";
    EXPECT_THROW(BitReader(std::string(20, '\xFF')).modularChar(), DrawingError) << "a number without end";
    EXPECT_THROW(BitReader(bytes).seek(17), DrawingError);
}

// The published check value of this polynomial for the digits 1 to 9, which begins with 0.
TEST(Checksum, IsTheReflectedOneOfSixteenBits)
{
    EXPECT_EQ(checksum("123456789", 0), 0xBB3D);
}

} // namespace drawing::test
