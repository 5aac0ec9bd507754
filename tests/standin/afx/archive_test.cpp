// Archives against bytes worked out by hand.
#include <cstdlib>
#include <cstring>
#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "standin/afx/afx.h"

namespace {

using Bytes = std::vector<BYTE>;

Bytes stored(const std::function<void(CArchive&)>& write, int bufferSize = 4096)
{
    CMemFile file;
    {
        CArchive archive(&file, CArchive::store, bufferSize);
        write(archive);
        archive.Close();
    }
    const std::size_t size = file.GetLength();
    BYTE* block = file.Detach();
    const Bytes bytes(block, block + size);
    std::free(block);
    return bytes;
}

void load(Bytes bytes, const std::function<void(CArchive&)>& read, int bufferSize = 4096)
{
    CMemFile file(bytes.data(), static_cast<UINT>(bytes.size()));
    CArchive archive(&file, CArchive::load, bufferSize);
    read(archive);
}

int causeOf(const std::function<void()>& action)
{
    try {
        action();
    } catch (CArchiveException* problem) {
        const int cause = problem->m_cause;
        problem->Delete();
        return cause;
    }
    return CArchiveException::none;
}

TEST(Archive, StringsCarryTheirLengthAndNarrowOnesAreWidenedOnReading)
{
    const struct
    {
        std::size_t length;
        Bytes wide, narrow;
    } cases[] = {
        {0, {0xFF, 0xFE, 0xFF, 0x00}, {0x00}},
        {4, {0xFF, 0xFE, 0xFF, 0x04}, {0x04}},
        {254, {0xFF, 0xFE, 0xFF, 0xFE}, {0xFE}},
        {255, {0xFF, 0xFE, 0xFF, 0xFF, 0xFF, 0x00}, {0xFF, 0xFF, 0x00}},
        {65533, {0xFF, 0xFE, 0xFF, 0xFF, 0xFD, 0xFF}, {0xFF, 0xFD, 0xFF}},
        {65534, {0xFF, 0xFE, 0xFF, 0xFF, 0xFF, 0xFF, 0xFE, 0xFF, 0, 0}, {0xFF, 0xFF, 0xFF, 0xFE, 0xFF, 0, 0}},
        {65535, {0xFF, 0xFE, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0, 0}, {0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0, 0}},
    };
    for (const auto& one : cases) {
        SCOPED_TRACE(one.length);
        const CString text(L'a', static_cast<int>(one.length));
        Bytes wide = one.wide;
        for (std::size_t i = 0; i < one.length; ++i)
            wide.insert(wide.end(), {'a', 0}); // UTF-16, little end first
        EXPECT_TRUE(stored([&](CArchive& ar) { ar << text; }) == wide);
        Bytes narrow = one.narrow;
        narrow.insert(narrow.end(), one.length, 'a');
        for (Bytes bytes : {wide, narrow}) {
            bytes.push_back(0x2A);
            CString read;
            BYTE next = 0;
            load(bytes, [&](CArchive& ar) { ar >> read >> next; });
            EXPECT_TRUE(read == text);
            EXPECT_EQ(next, 0x2A) << "the reader stands right behind the string";
        }
    }
}

TEST(Archive, NumbersAreLittleEndianAndUnaligned)
{
    const Bytes expected = {0x01,                                            // BYTE
                            0x0A, 0x00, 0x00, 0x00,                          // DWORD
                            0xFE, 0xFF, 0xFF, 0xFF,                          // int
                            0x34, 0x12,                                      // WORD
                            0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0xF8, 0x3F,  // double
                            0x00, 0x00, 0xC0, 0x3F,                          // float
                            0x08, 0x07, 0x06, 0x05, 0x04, 0x03, 0x02, 0x01,  // ULONGLONG
                            0x01,                                            // bool
                            0x05, 0x00, 0x00, 0x00, 0xFA, 0xFF, 0xFF, 0xFF}; // POINT
    // A buffer of the least size, so that values lie across its end.
    const Bytes bytes = stored([](CArchive& ar) {
        ar << BYTE{1} << DWORD{10} << -2 << WORD{0x1234} << 1.5 << 1.5f << ULONGLONG{0x0102030405060708} << true;
        ar << POINT{5, -6};
    });
    EXPECT_EQ(bytes, expected);
    load(expected, [](CArchive& ar) {
        BYTE small = 0;
        DWORD word = 0;
        int number = 0;
        WORD half = 0;
        double real = 0;
        float shortReal = 0;
        ULONGLONG large = 0;
        bool flag = false;
        POINT point{};
        ar >> small >> word >> number >> half >> real >> shortReal >> large >> flag >> point;
        EXPECT_TRUE(small == 1 && word == 10 && number == -2 && half == 0x1234 && real == 1.5 && shortReal == 1.5f);
        EXPECT_TRUE(large == 0x0102030405060708 && flag && point.x == 5 && point.y == -6);
    });
}

TEST(Archive, AShortReadIsAnEndOfFileFailure)
{
    const Bytes cases[] = {
        {},                                                           // nothing at all
        {0x0A, 0x00, 0x00},                                           // three of four bytes
        {0xFF, 0xFE, 0xFF, 0x04, 'a', 0},                             // wide text cut off
        {0x05, 'a', 'b'},                                             // narrow text cut off
        {0xFF, 0xFE},                                                 // cut off within the mark
        {0xFF, 0xFE, 0xFF, 0xFF, 0xFF, 0xFF, 0xFE, 0xFF, 0xFF, 0xFF}, // claims eight gigabytes
        {0xFF, 0xFE, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x7F},
    };
    for (const Bytes& bytes : cases) {
        SCOPED_TRACE(bytes.size());
        EXPECT_EQ(causeOf([&] {
                      load(bytes, [&](CArchive& ar) {
                          CString text;
                          DWORD number = 0;
                          if (bytes.size() == 3)
                              ar >> number;
                          else
                              ar >> text;
                      });
                  }),
                  CArchiveException::endOfFile);
    }
}

TEST(Archive, LongRunsPassThroughASmallBuffer)
{
    Bytes run(10007);
    for (std::size_t i = 0; i < run.size(); ++i)
        run[i] = static_cast<BYTE>(i * 31 + i / 256);
    const auto write = [&](CArchive& ar) {
        ar.Write(run.data(), 5000);
        ar.Write(run.data() + 5000, 5007);
    };
    EXPECT_TRUE(stored(write, 128) == run);
    Bytes back(run.size());
    const auto read = [&](CArchive& ar) {
        EXPECT_EQ(ar.Read(back.data(), 3), 3u);
        EXPECT_EQ(ar.Read(back.data() + 3, 20000), 10004u) << "what is left, and no more";
    };
    load(run, read, 128);
    EXPECT_TRUE(back == run);
}

TEST(MemoryFile, GrowsAndGivesItsBlockAway)
{
    CMemFile file(16);
    file.Write("0123456789abcdefghij", 20);
    file.Seek(-3, CFile::current);
    file.Write("XYZ!", 4);
    EXPECT_EQ(file.GetLength(), 21u);
    file.Seek(2, CFile::end);
    file.Write("?", 1);
    file.SeekToBegin();
    char back[32]{};
    EXPECT_EQ(file.Read(back, 32), 24u);
    EXPECT_EQ(std::string(back, 24), std::string("0123456789abcdefgXYZ!\0\0?", 24)) << "the gap is filled with zeros";
    EXPECT_EQ(file.Read(back, 1), 0u);
    BYTE* block = file.Detach();
    ASSERT_NE(block, nullptr);
    EXPECT_EQ(std::memcmp(block, "0123", 4), 0);
    EXPECT_EQ(file.GetLength(), 0u);
    std::free(block);
}

TEST(MemoryFile, AnAttachedBlockDoesNotGrow)
{
    BYTE block[4] = {1, 2, 3, 4};
    CMemFile file(block, 4);
    file.Write("\x09", 1);
    EXPECT_EQ(block[0], 9);
    EXPECT_EQ(file.GetLength(), 4u);
    try {
        file.Write("toolong", 7);
        ADD_FAILURE() << "seven bytes were written into three";
    } catch (CMemoryException* problem) {
        problem->Delete();
    }
}

} // namespace
