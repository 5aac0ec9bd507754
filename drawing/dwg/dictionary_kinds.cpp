// Dictionaries, what they commonly hold, and groups.

#include "drawing/dwg/extended_values.h"
#include "drawing/dwg/kinds.h"

namespace drawing::dwg {

namespace {

struct Entry
{
    std::string key;
    Handle object = 0;
};

void dictionaryFields(ObjectFields& f)
{
    f.marker("AcDbDictionary");
    std::vector<Entry> entries;
    int hardOwner = 0;
    for (const PlacedGroup& group : f.takeAll({3, 350, 360})) {
        if (group.code == 3) {
            entries.push_back({group.value, 0});
        } else if (!entries.empty()) {
            entries.back().object = group.handleValue();
        }
    }
    constexpr unsigned leastNameBits = 2;
    auto count = static_cast<int>(entries.size());
    f.bits.count(count, leastNameBits);
    int cloning = 1;
    f.take(281, cloning);
    f.take(280, hardOwner);
    f.bits.shortNumber(cloning);
    f.bits.byte(hardOwner);
    if (hardOwner != 0) {
        f.give(280, 1);
    }
    f.give(281, cloning);
    entries.resize(static_cast<std::size_t>(count));
    f.expect(2 * entries.size());
    for (Entry& entry : entries) {
        f.bits.text(entry.key);
    }
    for (Entry& entry : entries) {
        f.bits.handle(entry.object, hardOwner != 0 ? Reference::HardOwner : Reference::SoftOwner);
        f.give(3, entry.key);
        f.giveHandle(hardOwner != 0 ? 360 : 350, entry.object);
    }
}

void dictionary(ObjectFields& f)
{
    dictionaryFields(f);
}

void dictionaryWithDefault(ObjectFields& f)
{
    dictionaryFields(f);
    f.marker("AcDbDictionaryWithDefault");
    f.handle(340, Reference::HardPointer);
}

void dictionaryVariable(ObjectFields& f)
{
    f.marker("DictionaryVariables");
    f.byte(280);
    f.text(1);
}

void placeholder(ObjectFields&) {}

void group(ObjectFields& f)
{
    f.marker("AcDbGroup");
    f.text(300);
    f.shortNumber(70);
    f.shortNumber(71);
    const auto members = f.takeAll({340});
    auto count = static_cast<int>(members.size());
    f.bits.handleCount(count);
    for (int i = 0; i < count; ++i) {
        Handle member = f.reading() ? 0 : members[static_cast<std::size_t>(i)].handleValue();
        f.bits.handle(member, Reference::HardPointer);
        f.giveHandle(340, member);
    }
}

// Groups of any codes, packed as bytes; what follows are handles that those of the groups stand for.
void extendedRecord(ObjectFields& f)
{
    f.marker("AcDbXrecord");
    int cloning = 1;
    f.take(280, cloning);
    if (f.reading()) {
        int size = 0;
        constexpr unsigned bitsOfByte = 8;
        f.bits.count(size, bitsOfByte);
        const std::string bytes = f.bits.data().raw(static_cast<std::size_t>(size));
        f.bits.shortNumber(cloning);
        f.give(280, cloning);
        const Groups values = valuesOfRecord(bytes, f.bits.encoding());
        f.expect(values.size());
        for (const Group& each : values) {
            f.give(each.code, each.value);
        }
        return;
    }
    std::vector<Handle> referred;
    const std::string bytes = bytesOfRecord(f.takeRest(), f.bits.encoding(), referred);
    f.bits.writtenData().longNumber(static_cast<int>(bytes.size()));
    f.bits.writtenData().raw(bytes);
    f.bits.shortNumber(cloning);
    for (Handle handle : referred) {
        f.bits.handle(handle, Reference::SoftPointer);
    }
}

// Entities in an order of drawing: each with the handle that stands for its place.
void sortedEntities(ObjectFields& f)
{
    f.marker("AcDbSortentsTable");
    Handle block = 0;
    f.takeHandle(330, block);
    const auto places = f.takeAll({331, 5});
    std::vector<Entry> entries;
    std::vector<Handle> order;
    for (const PlacedGroup& each : places) {
        if (each.code == 331) {
            entries.push_back({{}, each.handleValue()});
            order.push_back(0);
        } else if (!order.empty()) {
            order.back() = each.handleValue();
        }
    }
    constexpr unsigned leastBits = 8;
    auto count = static_cast<int>(entries.size());
    f.bits.count(count, leastBits);
    entries.resize(static_cast<std::size_t>(count));
    order.resize(static_cast<std::size_t>(count));
    for (Handle& place : order) {
        f.bits.plainHandle(place, Reference::Own);
    }
    f.bits.handle(block, Reference::SoftPointer);
    f.giveHandle(330, block);
    for (std::size_t i = 0; i < entries.size(); ++i) {
        f.bits.handle(entries[i].object, Reference::SoftPointer);
        f.giveHandle(331, entries[i].object);
        f.giveHandle(5, order[i]);
    }
}

// A scale that the user may choose: so many units on paper for so many of the drawing.
void scaleOfList(ObjectFields& f)
{
    f.marker("AcDbScale");
    f.shortNumber(70);
    f.text(300);
    f.real(140);
    f.real(141);
    f.bit(290);
}

void distance(ObjectFields& f, int flagCode, int code)
{
    int present = 0;
    f.take(flagCode, present);
    f.bits.shortNumber(present);
    double value = 0;
    if (present != 0) {
        f.take(code, value);
        f.bits.real(value);
    }
    f.give(flagCode, present);
    if (present != 0) {
        f.give(code, value);
    }
}

// Where a block reference is cut off: a boundary, two planes, and two matrices of three rows of four.
void spatialFilter(ObjectFields& f)
{
    constexpr unsigned rawPointBits = 128;
    constexpr int matrixReals = 24;
    f.marker("AcDbFilter");
    f.marker("AcDbSpatialFilter");
    int corners = 0;
    f.take(70, corners);
    corners = static_cast<int>(f.left(10));
    f.bits.shortCount(corners, rawPointBits);
    f.give(70, corners);
    for (int i = 0; i < corners; ++i) {
        f.rawPoint2(10);
    }
    f.point3(210);
    f.point3(11);
    f.shortNumber(71);
    distance(f, 72, 40);
    distance(f, 73, 41);
    for (int i = 0; i < matrixReals; ++i) {
        f.real(40);
    }
}

} // namespace

std::span<const Kind> dictionaryKinds()
{
    static constexpr Kind kinds[] = {
        {0x2A, false, "DICTIONARY", dictionary},
        {0, false, "ACDBDICTIONARYWDFLT", dictionaryWithDefault},
        {0, false, "DICTIONARYVAR", dictionaryVariable},
        {0, false, "ACDBPLACEHOLDER", placeholder},
        {0x50, false, "ACDBPLACEHOLDER", placeholder}, // as later programs number it
        {0x48, false, "GROUP", group},
        {0x4F, false, "XRECORD", extendedRecord},
        {0, false, "SORTENTSTABLE", sortedEntities},
        {0, false, "SCALE", scaleOfList},
        {0, false, "SPATIAL_FILTER", spatialFilter},
    };
    return kinds;
}

} // namespace drawing::dwg
