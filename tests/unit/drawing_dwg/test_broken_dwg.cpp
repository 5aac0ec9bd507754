// Damaged and malicious files of the binary form: an error in words, never a crash, a hang or much memory.

#include <gmock/gmock.h>

#include "made_drawing.h"

namespace drawing::test {

// Whatever was changed in an object or in the map, its checksum is put right, so that the change is looked at.
void repairChecksums(std::string& file)
{
    const std::size_t map = numberAt(file, 0x19 + 18 + 1, 4);
    for (std::size_t at = beginOfObjects(file); at + 4 < map;) {
        const std::size_t size = 2 + numberAt(file, at, 2);
        if (at + size + 2 > map) {
            break;
        }
        const unsigned sum = slowChecksum(file.substr(at, size));
        file[at + size] = static_cast<char>(sum);
        file[at + size + 1] = static_cast<char>(sum >> 8);
        at += size + 2;
    }
    const std::size_t page = numberAt(file, map + 1, 1) | numberAt(file, map, 1) << 8;
    if (map + page + 2 <= file.size()) {
        const unsigned sum = slowChecksum(file.substr(map, page));
        file[map + page] = static_cast<char>(sum >> 8);
        file[map + page + 1] = static_cast<char>(sum);
    }
}

TEST(BrokenDwg, EveryCutIsRefused)
{
    const std::string whole = dwgOf(makeDrawing());
    for (std::size_t end = 7; end < whole.size(); end += 37) {
        EXPECT_THROW(readDrawingBytes(whole.substr(0, end)), DrawingError) << end;
    }
}

TEST(BrokenDwg, ChangedBytesAreRefusedByTheirChecksums)
{
    const std::string whole = dwgOf(makeDrawing());
    for (std::size_t at = beginOfObjects(whole); at < numberAt(whole, 0x19 + 18 + 1, 4); at += 41) {
        std::string damaged = whole;
        damaged[at] = static_cast<char>(damaged[at] ^ 0x10);
        EXPECT_THROW(readDrawingBytes(damaged), DrawingError) << at;
    }
}

TEST(BrokenDwg, ChangesWithRightChecksumsAreReadOrRefused)
{
    const std::string whole = dwgOf(makeDrawing());
    const std::size_t begin = beginOfObjects(whole);
    const std::size_t end = numberAt(whole, 0x19 + 18 + 1, 4) + numberAt(whole, 0x19 + 18 + 5, 4);
    unsigned random = 4711;
    int read = 0;
    for (int round = 0; round < 500; ++round) {
        std::string damaged = whole;
        for (int change = 0; change < 2; ++change) {
            random = random * 1664525u + 1013904223u;
            damaged[begin + (random >> 8) % (end - begin)] = static_cast<char>(random >> 24);
        }
        repairChecksums(damaged);
        try {
            const Document document = readDrawingBytes(damaged);
            writeDxf(document);
            dwgOf(document);
            ++read;
        } catch (const DrawingError&) {
        }
    }
    EXPECT_GT(read, 100) << "the changes are to reach the fields";
}

TEST(BrokenDwg, IsRefusedWithItsReason)
{
    const std::string whole = dwgOf(makeDrawing());
    const struct
    {
        const char* name;
        std::size_t place;
        std::string bytes;
        const char* reason;
    } cases[] = {
        {"header", 0x20, "\xFF", "header is damaged"},
        {"mark of the variables", numberAt(whole, 0x1A, 4), "X", "not where the file says"},
        {"classes", numberAt(whole, 0x23, 4) + 30, "\xFF\xFF", "its checksum is another"},
        {"map", numberAt(whole, 0x2C, 4) + 5, "\xFF\xFF", "its checksum is another"},
        {"size of a page of the map", numberAt(whole, 0x2C, 4), "\x7F", "longer than its place"},
    };
    for (const auto& each : cases) {
        std::string damaged = whole;
        damaged.replace(each.place, each.bytes.size(), each.bytes);
        try {
            readDrawingBytes(damaged);
            ADD_FAILURE() << each.name;
        } catch (const DrawingError& error) {
            EXPECT_THAT(error.what(), testing::HasSubstr(each.reason)) << each.name;
        }
    }
}

} // namespace drawing::test
