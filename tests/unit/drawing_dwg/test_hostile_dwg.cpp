// Files that were made to do harm: whole by their checksums, but with loops, objects in two places, and little bytes
// that claim much memory. Each is refused in words or read, within the memory that a hostile file may take.

#include <atomic>
#include <gmock/gmock.h>
#include <map>

#include "drawing/dwg/bit_writer.h"
#include "drawing/dwg/checksum.h"
#include "drawing/dwg/file_header.h"
#include "drawing/dwg/object_map.h"
#include "drawing/dwg/trailing_sections.h"
#include "made_drawing.h"

// Of the sanitizer's allocator; their header does not come with every compiler.
extern "C" {
std::size_t __sanitizer_get_allocated_size(const volatile void* block);
int __sanitizer_install_malloc_and_free_hooks(void (*allocated)(const volatile void*, std::size_t),
                                              void (*released)(const volatile void*));
}

namespace drawing::test {

using dwg::BitWriter;
using dwg::Reference;

// What is allocated at a time, as the sanitizer's allocator tells.
std::atomic<std::size_t> allocated;
std::atomic<std::size_t> mostAllocated;

void countAllocation(const volatile void*, std::size_t size)
{
    mostAllocated = std::max(mostAllocated.load(), allocated += size);
}

void countRelease(const volatile void* block)
{
    allocated -= __sanitizer_get_allocated_size(block);
}

/// A written file taken apart into its objects, and put together again with all checksums right.
class OpenedFile
{
public:
    explicit OpenedFile(const Document& document) : m_file(dwgOf(document)), m_header(dwg::readFileHeader(m_file))
    {
        for (const auto& place : dwg::readObjectMap(m_file, m_header.sections[2])) {
            objects[place.handle] = m_file.substr(place.address + 2, numberAt(m_file, place.address, 2));
        }
    }

    std::string closed()
    {
        const auto& classes = m_header.sections[1];
        std::string file = m_file.substr(0, classes.address + classes.size);
        std::vector<dwg::ObjectPlace> places;
        for (const auto& [handle, bits] : objects) {
            BitWriter writer;
            writer.modularShort(bits.size());
            writer.raw(bits);
            writer.rawShort(dwg::checksum(writer.bytes()));
            places.push_back({handle, file.size()});
            file += writer.bytes();
        }
        const std::string map = dwg::writeObjectMap(places);
        m_header.sections[2] = {static_cast<std::uint32_t>(file.size()), static_cast<std::uint32_t>(map.size())};
        file += map;
        m_header.sections[4] = {static_cast<std::uint32_t>(file.size()), 4};
        file += dwg::writeTemplate(1);
        return file.replace(0, dwg::fileHeaderSize, dwg::writeFileHeader(m_header));
    }

    std::map<Handle, std::string> objects;

private:
    std::string m_file;
    dwg::FileHeader m_header;
};

/// The bits of an object: its head, what `fields` writes, and `handles`.
std::string objectBits(int type, Handle handle, const std::function<void(BitWriter&)>& fields, const BitWriter& handles)
{
    BitWriter bits;
    bits.shortNumber(type);
    const std::size_t sizePlace = bits.position();
    bits.rawLong(0);
    bits.handle({Reference::Own, handle});
    bits.shortNumber(0); // no extended data
    fields(bits);
    bits.overwriteLong(sizePlace, static_cast<std::uint32_t>(bits.position()));
    bits.rawBits(handles.bytes(), handles.position());
    return bits.takeBytes();
}

/// An entity of the model space, with the handles of its neighbours.
std::string entityBits(int type, Handle handle, Handle layer, Handle before, Handle behind,
                       const std::function<void(BitWriter&)>& fields, const std::vector<Handle>& more = {})
{
    BitWriter handles;
    handles.handle({Reference::HardOwner, 0});
    handles.handle({Reference::SoftPointer, before});
    handles.handle({Reference::SoftPointer, behind});
    handles.handle({Reference::HardPointer, layer});
    for (const Handle each : more) {
        handles.handle({Reference::SoftPointer, each});
    }
    const auto all = [&](BitWriter& bits) {
        bits.bit(false); // no picture
        bits.bits(2, 2); // of the model space
        bits.longNumber(0);
        bits.bit(false); // the neighbours are told
        bits.shortNumber(256);
        bits.real(1);
        bits.bits(0, 4); // linetype and plot style by layer
        bits.shortNumber(0);
        bits.byte(29); // line weight by layer
        fields(bits);
    };
    return objectBits(type, handle, all, handles);
}

void flatLine(BitWriter& bits)
{
    bits.bit(true);
    bits.rawReal(0);
    bits.realNear(1, 0);
    bits.rawReal(0);
    bits.realNear(1, 0);
    bits.bit(true);
    bits.bit(true);
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

    /// Why the file is refused; empty if it is read.
    static std::string reasonOf(const std::string& file)
    {
        constexpr std::size_t allowed = 200'000'000;
        const std::size_t before = allocated;
        mostAllocated = before;
        std::string reason;
        try {
            const Document read = readDrawingBytes(file);
        } catch (const DrawingError& error) {
            reason = error.what();
        }
        EXPECT_GT(mostAllocated, before) << "the allocations are counted";
        EXPECT_LT(mostAllocated - before, allowed);
        return reason;
    }

    Document document;
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

// Three megabytes that say as much as forty could.
TEST_F(HostileDwg, ManyItemsInFewBitsAreNotBelieved)
{
    constexpr int items = 4'000'000;
    const auto points = [](BitWriter& bits) {
        bits.shortNumber(0);
        bits.longNumber(items);
        bits.rawReal(0);
        bits.rawReal(0);
        bits.raw(std::string(items / 2, '\0')); // each where the one before is
    };
    OpenedFile file(document);
    file.objects[lines[1]] = entityBits(0x4D, lines[1], layer, lines[0], lines[2], points);
    EXPECT_EQ(reasonOf(file.closed()), "") << "it is carried along unread";

    const auto names = [](BitWriter& bits) {
        bits.longNumber(0);
        bits.longNumber(items / 4);
        bits.shortNumber(1);
        bits.byte(0);
        bits.raw(std::string(items / 4 / 4, '\xAA')); // empty ones
    };
    BitWriter handles;
    handles.raw(std::string(2 + items / 4, '\x20'));
    const Handle dictionary = document.rootDictionary().find("ACAD_GROUP");
    file.objects[dictionary] = objectBits(0x2A, dictionary, names, handles);
    EXPECT_EQ(reasonOf(file.closed()), "");
}

TEST_F(HostileDwg, ANameThatManyObjectsRepeatHasItsLength)
{
    auto second = std::make_unique<Layer>();
    second->recordName = std::string(1000, 'x');
    const Handle longest = document.addRecord(std::move(second)).handle;
    OpenedFile file(document);
    EXPECT_EQ(reasonOf(file.closed()), "");
    const auto named = [](BitWriter& bits) {
        bits.longNumber(0);
        bits.text(std::string(30'000, 'x'));
    };
    file.objects[longest] = objectBits(0x33, longest, named, BitWriter());
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
