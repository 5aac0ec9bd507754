#include "drawing/legacy_markers.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <string_view>

#include "drawing/numbers.h"

namespace drawing {

namespace {

constexpr int kFirstExtendedCode = 1000;
constexpr std::array kCommonCodes{5, 6, 8, 48, 60, 62, 67, 102, 330};

PlacedGroup marker(std::string_view name, std::size_t line)
{
    PlacedGroup group;
    group.code = 100;
    group.value = name;
    group.line = line;
    return group;
}

bool isCommon(const PlacedGroup& group)
{
    return std::find(kCommonCodes.begin(), kCommonCodes.end(), group.code) != kCommonCodes.end();
}

// A dimension's kind is in the low bits of its group 70.
std::string_view dimensionMarker(const Record& record)
{
    constexpr std::array<std::string_view, 8> kMarkers{
        "AcDbAlignedDimension", "AcDbAlignedDimension",       "AcDb2LineAngularDimension", "AcDbDiametricDimension",
        "AcDbRadialDimension",  "AcDb3PointAngularDimension", "AcDbOrdinateDimension",     ""};
    for (const PlacedGroup& group : record.groups) {
        if (group.code == 70) {
            return kMarkers[static_cast<unsigned>(parseInteger(group.value).value_or(0)) & 7u];
        }
    }
    return kMarkers[0];
}

bool isRotated(const Record& record)
{
    return std::none_of(record.groups.begin(), record.groups.end(), [](const PlacedGroup& group) {
        return group.code == 70 && (static_cast<unsigned>(parseInteger(group.value).value_or(0)) & 7u) != 0;
    });
}

bool belongsToKind(const PlacedGroup& group)
{
    constexpr std::array kCodes{12, 22, 32, 13, 23, 33, 14, 24, 34, 15, 25, 35, 16, 26, 36, 40, 50, 52};
    return std::find(kCodes.begin(), kCodes.end(), group.code) != kCodes.end();
}

void addDimensionMarkers(Record& record)
{
    std::vector<PlacedGroup> common{marker("AcDbEntity", record.line)};
    std::vector<PlacedGroup> base{marker("AcDbDimension", record.line)};
    std::vector<PlacedGroup> kind{marker(dimensionMarker(record), record.line)};
    std::vector<PlacedGroup> head;
    std::vector<PlacedGroup> extended;
    for (const PlacedGroup& group : record.groups) {
        auto& part = group.code == 5                    ? head
                     : group.code >= kFirstExtendedCode ? extended
                     : isCommon(group)                  ? common
                     : belongsToKind(group)             ? kind
                                                        : base;
        part.push_back(group);
    }
    if (isRotated(record)) {
        kind.push_back(marker("AcDbRotatedDimension", record.line));
    }
    for (const auto* part : {&common, &base, &kind, &extended}) {
        head.insert(head.end(), part->begin(), part->end());
    }
    record.groups = std::move(head);
}

void addMarker(Record& record, std::string_view name)
{
    std::vector<PlacedGroup> head;
    std::vector<PlacedGroup> common{marker("AcDbEntity", record.line)};
    std::vector<PlacedGroup> own{marker(name, record.line)};
    for (const PlacedGroup& group : record.groups) {
        (group.code == 5 ? head : isCommon(group) ? common : own).push_back(group);
    }
    head.insert(head.end(), common.begin(), common.end());
    head.insert(head.end(), own.begin(), own.end());
    record.groups = std::move(head);
}

} // namespace

void addLegacyMarkers(Record& record)
{
    if (std::any_of(record.groups.begin(), record.groups.end(), [](const PlacedGroup& g) { return g.code == 100; })) {
        return;
    }
    constexpr std::pair<std::string_view, std::string_view> kMarkers[] = {
        {"3DFACE", "AcDbFace"}, {"SHAPE", "AcDbShape"}, {"VIEWPORT", "AcDbViewport"}};
    if (record.name == "DIMENSION") {
        addDimensionMarkers(record);
    }
    for (const auto& [name, subclass] : kMarkers) {
        if (record.name == name) {
            addMarker(record, subclass);
        }
    }
}

} // namespace drawing
