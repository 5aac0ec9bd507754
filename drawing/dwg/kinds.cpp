#include "drawing/dwg/kinds.h"

#include <array>
#include <string>
#include <unordered_map>
#include <vector>

namespace drawing::dwg {

namespace {

struct Index
{
    std::unordered_map<int, const Kind*> byType;
    std::unordered_map<std::string_view, std::vector<const Kind*>> byName;
};

const Index& index()
{
    static const Index made = [] {
        Index result;
        for (const auto kinds :
             {plainEntityKinds(), curveKinds(), polylineKinds(), textKinds(), dimensionKinds(), hatchKinds(),
              viewportKinds(), tableRecordKinds(), dimensionStyleKinds(), dictionaryKinds(), layoutKinds(),
              imageKinds(), multilineKinds(), bodyKinds(), underlayKinds()}) {
            for (const Kind& kind : kinds) {
                result.byName[kind.name].push_back(&kind);
                if (kind.type != 0) {
                    result.byType.emplace(kind.type, &kind);
                }
            }
        }
        return result;
    }();
    return made;
}

} // namespace

const Kind* kindOfType(int type)
{
    const auto found = index().byType.find(type);
    return found == index().byType.end() ? nullptr : found->second;
}

const Kind* kindOfClass(std::string_view recordName)
{
    const auto found = index().byName.find(recordName);
    return found == index().byName.end() ? nullptr : found->second.front();
}

const Kind* kindOfRecord(const Record& record)
{
    const auto found = index().byName.find(record.name);
    if (found == index().byName.end()) {
        return nullptr;
    }
    for (const Kind* kind : found->second) {
        if (!kind->holds || kind->holds(record)) {
            return kind;
        }
    }
    return nullptr;
}

std::span<const TableType> tableTypes()
{
    static constexpr std::array<TableType, 9> types{{{"BLOCK_RECORD", 0x30, 0x31},
                                                     {"LAYER", 0x32, 0x33},
                                                     {"STYLE", 0x34, 0x35},
                                                     {"LTYPE", 0x38, 0x39},
                                                     {"VIEW", 0x3C, 0x3D},
                                                     {"UCS", 0x3E, 0x3F},
                                                     {"VPORT", 0x40, 0x41},
                                                     {"APPID", 0x42, 0x43},
                                                     {"DIMSTYLE", 0x44, 0x45}}};
    return types;
}

} // namespace drawing::dwg
