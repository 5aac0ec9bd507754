#include "drawing/legacy_markers.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <span>
#include <string_view>
#include <utility>

#include "drawing/numbers.h"

namespace drawing {

namespace {

using Codes = std::span<const int>;

constexpr int markerCode = 100;
constexpr int applicationCode = 102;
constexpr int firstExtendedCode = 1000;

// A subclass of an entity and the groups that belong under its marker.
struct Subclass
{
    std::string_view marker;
    Codes codes;
    bool takesRest = false; // also the groups that belong to no other subclass
};

constexpr std::array headCodes{5, applicationCode, 330};
constexpr std::array dimensionKindCodes{12, 22, 32, 13, 23, 33, 14, 24, 34, 15, 25, 35, 16, 26, 36, 40, 50, 52};

bool contains(Codes codes, int code)
{
    return std::find(codes.begin(), codes.end(), code) != codes.end();
}

// The low bits of a dimension's group 70 say its kind.
unsigned dimensionKind(const Record& record)
{
    constexpr unsigned kindBits = 7;
    for (const PlacedGroup& group : record.groups) {
        if (group.code == 70) {
            return static_cast<unsigned>(parseInteger(group.value).value_or(0)) & kindBits;
        }
    }
    return 0;
}

std::vector<Subclass> subclassesOfDimension(const Record& record)
{
    constexpr std::string_view kinds[] = {
        "AcDbAlignedDimension", "AcDbAlignedDimension",       "AcDb2LineAngularDimension", "AcDbDiametricDimension",
        "AcDbRadialDimension",  "AcDb3PointAngularDimension", "AcDbOrdinateDimension",     ""};
    const unsigned kind = dimensionKind(record);
    std::vector<Subclass> subclasses{
        {entityMarker, propertyCodes}, {"AcDbDimension", {}, true}, {kinds[kind], dimensionKindCodes}};
    if (kind == 0) {
        subclasses.push_back({"AcDbRotatedDimension", {}}); // an aligned one that is turned
    }
    return subclasses;
}

// Empty for entities that need no markers here: their own fields say them when they are written.
std::vector<Subclass> subclassesOf(const Record& record)
{
    constexpr std::pair<std::string_view, std::string_view> simple[] = {
        {"3DFACE", "AcDbFace"}, {"SHAPE", "AcDbShape"}, {"VIEWPORT", "AcDbViewport"}};
    for (const auto& [name, marker] : simple) {
        if (record.name == name) {
            return {{entityMarker, propertyCodes}, {marker, {}, true}};
        }
    }
    return record.name == "DIMENSION" ? subclassesOfDimension(record) : std::vector<Subclass>();
}

// The number of the subclass that a group belongs to.
std::size_t placeOf(const PlacedGroup& group, const std::vector<Subclass>& subclasses)
{
    const auto owner = std::find_if(subclasses.begin(), subclasses.end(),
                                    [&](const Subclass& each) { return contains(each.codes, group.code); });
    const auto place = owner != subclasses.end() ? owner
                                                 : std::find_if(subclasses.begin(), subclasses.end(),
                                                                [](const Subclass& each) { return each.takesRest; });
    return static_cast<std::size_t>(place - subclasses.begin());
}

} // namespace

void addLegacyMarkers(Record& record)
{
    const std::vector<Subclass> subclasses = subclassesOf(record);
    const bool marked = std::any_of(record.groups.begin(), record.groups.end(),
                                    [](const PlacedGroup& group) { return group.code == markerCode; });
    if (subclasses.empty() || marked) {
        return;
    }
    std::vector<PlacedGroup> head;
    std::vector<PlacedGroup> extended;
    std::vector<std::vector<PlacedGroup>> parts;
    parts.reserve(subclasses.size() + 1);
    for (const Subclass& each : subclasses) {
        parts.push_back({PlacedGroup(Group{markerCode, std::string(each.marker)}, record.line)});
    }
    for (PlacedGroup& group : record.groups) {
        auto& part = group.code >= firstExtendedCode   ? extended
                     : contains(headCodes, group.code) ? head
                                                       : parts[placeOf(group, subclasses)];
        part.push_back(std::move(group));
    }
    parts.push_back(std::move(extended));
    record.groups = std::move(head);
    for (auto& part : parts) {
        std::move(part.begin(), part.end(), std::back_inserter(record.groups));
    }
}

} // namespace drawing
