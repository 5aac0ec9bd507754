// Files that were made to do harm: whole by their checksums, but with loops, objects in two places, and little bytes
// that claim much memory. Each is refused in words or read, within the memory that a hostile file may take.

#include <atomic>
#include <gmock/gmock.h>

#include "opened_file.h"

// Of the sanitizer's allocator; their header does not come with every compiler.
extern "C" {
std::size_t __sanitizer_get_allocated_size(const volatile void* block);
int __sanitizer_install_malloc_and_free_hooks(void (*allocated)(const volatile void*, std::size_t),
                                              void (*released)(const volatile void*));
}

namespace drawing::test {

// What is allocated at a time, as the sanitizer's allocator tells.
std::atomic<std::size_t> allocated;
std::atomic<std::size_t> mostAllocated;
std::atomic<std::size_t> allocations;

void countAllocation(const volatile void*, std::size_t size)
{
    ++allocations;
    mostAllocated = std::max(mostAllocated.load(), allocated += size);
}

void countRelease(const volatile void* block)
{
    allocated -= __sanitizer_get_allocated_size(block);
}

class HostileDwg : public testing::Test
{
protected:
    HostileDwg()
    {
        for (int i = 0; i < 3; ++i) {
            add<Line>(document, document.modelSpace());
        }
        lines = document.modelSpace().entities;
        layer = document.findLayer("0")->handle;
    }

    static void SetUpTestSuite() { __sanitizer_install_malloc_and_free_hooks(countAllocation, countRelease); }

    /// Why the file is refused; empty if it is read. Memory and steps have to be within the bounds of every file.
    std::string reasonOf(const std::string& file)
    {
        const std::size_t before = allocated;
        const std::size_t allocationsBefore = allocations;
        mostAllocated = before;
        std::string reason;
        try {
            const Document read = readDrawingBytes(file, &notes);
        } catch (const DrawingError& error) {
            reason = error.what();
        }
        EXPECT_GT(mostAllocated, before) << "the allocations are counted";
        EXPECT_LT(mostAllocated - before, 40'000'000 + 32 * file.size());
        EXPECT_LT(allocations - allocationsBefore, 200'000 + file.size());
        return reason;
    }

    Document document;
    Notes notes; // of the last file
    std::vector<Handle> lines;
    Handle layer = 0;
};

TEST_F(HostileDwg, LoopsAndEntitiesInTwoPlacesAreRefused)
{
    const Handle first = lines[0];
    const Handle second = lines[1];
    const Handle third = lines[2];
    const auto polyline = [](BitWriter& bits) {
        bits.shortNumber(0);
        bits.shortNumber(0);
        bits.real(0);
        bits.real(0);
        bits.bit(true);
        bits.real(0);
        bits.bit(true);
    };
    const auto vertex = [](BitWriter& bits) {
        bits.byte(0);
        for (int i = 0; i < 7; ++i) {
            bits.real(0);
        }
    };
    const struct
    {
        const char* name;
        std::map<Handle, std::string> objects;
        const char* reason;
    } cases[] = {
        {"an entity before itself",
         {{second, entityBits(0x13, second, layer, first, first, flatLine)}},
         "do not hang together"},
        {"an entity after itself",
         {{second, entityBits(0x13, second, layer, first, second, flatLine)}},
         "do not hang together"},
        {"a neighbour that is none",
         {{second, entityBits(0x13, second, layer, first, 0xFFFFFF, flatLine)}},
         "do not hang together"},
        {"lines as the vertices of a polyline",
         {{first, entityBits(0x0F, first, layer, 0, second, polyline, {second, third, 0})}},
         "do not hang together"},
        {"a vertex among the block's entities",
         {{second, entityBits(0x0F, second, layer, first, third, polyline, {third, third, 0})},
          {third, entityBits(0x0A, third, layer, second, 0, vertex)}},
         "belongs to two others"},
    };
    for (const auto& each : cases) {
        OpenedFile file(document);
        for (const auto& [handle, bits] : each.objects) {
            file.objects[handle] = bits;
        }
        EXPECT_THAT(reasonOf(file.closed()), testing::HasSubstr(each.reason)) << each.name;
    }
}

Fields zeros(int count)
{
    return [count](BitWriter& bits) {
        for (int i = 0; i < count; ++i) {
            bits.real(0);
        }
    };
}

/// A file of half a megabyte, filled up with such objects.
std::string filledWith(const Document& document, const std::function<std::string(Handle)>& make)
{
    constexpr std::size_t fileSize = 500'000;
    OpenedFile file(document);
    Handle handle = 0x10000;
    for (std::size_t size = 0; size < fileSize; ++handle) {
        size += (file.objects[handle] = make(handle)).size();
    }
    return file.closed();
}

TEST_F(HostileDwg, ManyObjectsThatSayMuchInFewBitsAreHeldToTheFilesSize)
{
    const auto addNamed = [&](std::unique_ptr<TableRecord> record) {
        record->recordName = std::string(1000, 'x');
        return document.addRecord(std::move(record)).handle;
    };
    const Handle longLayer = addNamed(std::make_unique<Layer>());
    addNamed(std::make_unique<Linetype>()); // the second behind those that all drawings have
    const Handle application = document.findRecord("APPID", "ACAD")->handle;
    const auto entity = [&](int type, const Fields& fields) {
        return [=, this](Handle handle) { return entityBits(type, handle, layer, 0, 0, fields, {0, 0, 0}); };
    };
    const auto plain = [](int type, const Fields& fields, std::size_t handles = 0) {
        return [=](Handle handle) { return plainBits(type, handle, fields, handles); };
    };
    const auto extended = [](const Fields& values) {
        BitWriter handles;
        handles.raw(std::string(2, '\x40'));
        return [=](Handle handle) { return objectBits(0x50, handle, zeros(1), handles, values); };
    };
    const auto multilineStyle = [](int count, int linetype) {
        return [=](BitWriter& bits) {
            zeros(6)(bits);
            bits.byte(static_cast<unsigned>(count));
            for (int i = 0; i < count; ++i) {
                zeros(2)(bits);
                bits.shortNumber(linetype);
            }
        };
    };
    const auto hatchOfPaths = [](BitWriter& bits) {
        zeros(5)(bits);
        bits.bits(0, 2);
        bits.longNumber(300);
        zeros(3 * 300 + 4)(bits);
        bits.bit(false);
        zeros(2)(bits);
    };
    const auto polyline = [](BitWriter& bits) {
        bits.shortNumber(0);
        bits.longNumber(480);
        bits.raw(std::string(2 * 8 + 480 / 2, '\0')); // each point where the one before is
    };
    const auto layerNames = [&](BitWriter& bits) {
        bits.shortNumber(100 * 9);
        bits.handle({Reference::HardPointer, application});
        for (int i = 0; i < 100 * 9; ++i) {
            bits.byte(i % 9 == 0 ? 3 : static_cast<unsigned>(longLayer >> 8 * (8 - i % 9)) & 0xFFu);
        }
    };
    const auto unknownValues = [&](BitWriter& bits) {
        for (int i = 0; i < 1000; ++i) {
            bits.shortNumber(1);
            bits.handle({Reference::HardPointer, application});
            bits.byte(0xFF);
        }
    };
    const auto isTooMuch = testing::HasSubstr("say more than a file of this size can mean");
    const auto areTooMany = testing::HasSubstr("too many of the objects can't be read");
    const struct
    {
        const char* name;
        std::function<std::string(Handle)> make;
        testing::Matcher<std::string> reason;
    } cases[] = {
        {"objects of an unknown kind", plain(0x51, zeros(0)), testing::IsEmpty()},
        {"hatches without fields", entity(0x4E, zeros(0)), areTooMany},
        {"extended data of unknown kinds", extended(unknownValues), areTooMany},
        {"multiline styles", plain(0x49, multilineStyle(255, 0)), isTooMuch},
        {"multiline styles of a long name", plain(0x49, multilineStyle(20, 1)), isTooMuch},
        {"hatches of empty paths", entity(0x4E, hatchOfPaths), isTooMuch},
        {"polylines", entity(0x4D, polyline), isTooMuch},
        {"extended data of a long name", extended(layerNames), isTooMuch},
    };
    for (const auto& each : cases) {
        EXPECT_THAT(reasonOf(filledWith(document, each.make)), each.reason) << each.name;
    }
}

// Three megabytes that say as much as forty could.
TEST_F(HostileDwg, AnObjectThatSaysMuchInFewBitsIsCarriedAlongUnread)
{
    constexpr int items = 3'000'000;
    const auto points = [](BitWriter& bits) {
        bits.shortNumber(0);
        bits.longNumber(items);
        bits.raw(std::string(2 * 8 + items / 2, '\0'));
    };
    const auto names = [](BitWriter& bits) {
        bits.longNumber(items);
        zeros(2 + 3 + items)(bits);
    };
    const auto values = [](BitWriter& bits) {
        bits.longNumber(items);
        for (int i = 0; i < items / 3; ++i) {
            bits.rawShort(280);
            bits.byte(1);
        }
        bits.shortNumber(1);
    };
    for (const std::string& bits : {entityBits(0x4D, 0x10000, layer, 0, 0, points),
                                    plainBits(0x2A, 0x10000, names, items), plainBits(0x4F, 0x10000, values)}) {
        OpenedFile file(document);
        file.objects[0x10000] = bits;
        EXPECT_EQ(reasonOf(file.closed()), "");
        EXPECT_THAT(notes, testing::ElementsAre(testing::HasSubstr("could not be read")));
    }
}

// Each block without brackets and layout is given them, with a name that no other has.
TEST_F(HostileDwg, WhatIsAddedToManyBlocksIsHeldToTheFilesSize)
{
    const Handle control = document.table("BLOCK_RECORD").handle;
    const auto paperSpaces = [&](int count) {
        OpenedFile file(document);
        BitWriter handles;
        handles.raw(std::string(2, '\x40'));
        for (Handle handle = 0x10000; handle < 0x10000u + static_cast<unsigned>(count); ++handle) {
            handles.handle({Reference::SoftOwner, handle});
            file.objects[handle] = plainBits(
                0x31, handle,
                [](BitWriter& bits) {
                    bits.text("*Paper_Space");
                    bits.bit(true);
                    zeros(1)(bits);
                    bits.bits(0, 6);
                    zeros(4)(bits);
                    bits.byte(0);
                    zeros(2)(bits);
                },
                10);
        }
        handles.handle({Reference::HardOwner, document.modelSpace().handle});
        handles.handle({Reference::HardOwner, document.paperSpace().handle});
        const auto fields = [&](BitWriter& bits) {
            bits.longNumber(0);
            bits.longNumber(count);
        };
        file.objects[control] = objectBits(0x30, control, fields, handles);
        return file.closed();
    };
    EXPECT_EQ(reasonOf(paperSpaces(2000)), "");
    EXPECT_THAT(reasonOf(paperSpaces(20'000)), testing::HasSubstr("say more than a file of this size can mean"));
}

TEST_F(HostileDwg, ANameThatManyObjectsRepeatHasItsLength)
{
    auto second = std::make_unique<Layer>();
    second->recordName = std::string(1000, 'x');
    const Handle longest = document.addRecord(std::move(second)).handle;
    OpenedFile file(document);
    EXPECT_EQ(reasonOf(file.closed()), "");
    const auto named = [](BitWriter& bits) { bits.text(std::string(30'000, 'x')); };
    file.objects[longest] = plainBits(0x33, longest, named);
    EXPECT_THAT(reasonOf(file.closed()), testing::HasSubstr("is too long"));
}

TEST_F(HostileDwg, MapsThatPointOutsideOrTwiceAreRefused)
{
    const std::string whole = dwgOf(document);
    const auto withMap = [&](std::vector<dwg::ObjectPlace> places) {
        dwg::FileHeader header = dwg::readFileHeader(whole);
        const std::string map = dwg::writeObjectMap(places);
        header.sections[2] = {static_cast<std::uint32_t>(whole.size()), static_cast<std::uint32_t>(map.size())};
        return (whole + map).replace(0, dwg::fileHeaderSize, dwg::writeFileHeader(header));
    };
    const auto places = dwg::readObjectMap(whole, dwg::readFileHeader(whole).sections[2]);
    auto twice = places;
    twice[3].address = twice[2].address;
    auto outside = places;
    outside.back().address = 0x7FFFFFFF;
    auto repeated = places;
    repeated[5].handle = repeated[4].handle;
    EXPECT_EQ(reasonOf(withMap(places)), "");
    EXPECT_THAT(reasonOf(withMap(twice)), testing::HasSubstr("lies over another"));
    EXPECT_THAT(reasonOf(withMap(outside)), testing::HasSubstr("points outside the file"));
    EXPECT_THAT(reasonOf(withMap(repeated)), testing::HasSubstr("out of order"));
}

} // namespace drawing::test
