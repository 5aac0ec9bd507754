#include "drawing/dwg/class_section.h"

#include "drawing/dwg/bit_transfer.h"
#include "drawing/dwg/kinds.h"
#include "drawing/error.h"
#include "drawing/numbers.h"

namespace drawing::dwg {

namespace {

constexpr int entityItem = 0x1F2;
constexpr int objectItem = 0x1F3;

void transfer(BitTransfer& bits, ObjectClass& each)
{
    bits.shortNumber(each.number);
    bits.shortNumber(each.flags);
    bits.text(each.application);
    bits.text(each.className);
    bits.text(each.recordName);
    bits.bit(each.wasProxy);
    int item = each.entity ? entityItem : objectItem;
    bits.shortNumber(item);
    each.entity = item == entityItem;
}

} // namespace

std::vector<ObjectClass> readClasses(std::string_view content, const TextEncoding& encoding)
{
    constexpr std::size_t leastBits = 8; // what is less fills the last byte
    const BitReader reader(content, "the list of classes");
    BitTransfer bits(reader, reader, 0, encoding);
    std::vector<ObjectClass> classes;
    while (bits.data().left() >= leastBits) {
        transfer(bits, classes.emplace_back());
        const int expected = firstClassType + static_cast<int>(classes.size()) - 1;
        if (classes.back().number != expected) {
            throw DrawingError("the list of classes is not in order");
        }
    }
    return classes;
}

std::string writeClasses(const std::vector<ObjectClass>& classes, const TextEncoding& encoding)
{
    BitTransfer bits(0, encoding);
    for (ObjectClass each : classes) {
        transfer(bits, each);
    }
    return bits.writtenData().takeBytes();
}

Groups groupsOfClass(const ObjectClass& of)
{
    return {{1, of.recordName},
            {2, of.className},
            {3, of.application},
            {90, std::to_string(of.flags)},
            {280, of.wasProxy ? "1" : "0"},
            {281, of.entity ? "1" : "0"}};
}

ObjectClass classOfGroups(const Groups& groups)
{
    ObjectClass result;
    for (const auto& [code, value] : groups) {
        const int number = parseInteger(value).value_or(0);
        switch (code) {
        case 1:
            result.recordName = value;
            break;
        case 2:
            result.className = value;
            break;
        case 3:
            result.application = value;
            break;
        case 90:
            result.flags = number;
            break;
        case 280:
            result.wasProxy = number != 0;
            break;
        case 281:
            result.entity = number != 0;
            break;
        default:
            break;
        }
    }
    return result;
}

} // namespace drawing::dwg
