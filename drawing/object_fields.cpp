// The fields of dictionaries and image objects, and what dictionaries do.

#include <algorithm>

#include "drawing/document.h"
#include "drawing/field_visitor.h"
#include "drawing/objects.h"

namespace drawing {

void Dictionary::fields(FieldVisitor& v)
{
    v.subclass("AcDbDictionary");
    v.boolean(280, hardOwner, false);
    v.integer(281, cloning);
    for (const PlacedGroup& group : v.take({3, 350, 360})) {
        if (group.code == 3) {
            entries.push_back({group.value, 0});
        } else if (!entries.empty()) {
            entries.back().object = group.handleValue();
            entriesAreHard = entriesAreHard || group.code == 360;
        }
    }
    if (!v.reading()) {
        for (const Entry& entry : entries) {
            v.put(3, entry.key);
            v.putHandle(entriesAreHard ? 360 : 350, entry.object);
        }
    }
}

Handle Dictionary::find(std::string_view key) const
{
    const auto found =
        std::find_if(entries.begin(), entries.end(), [&](const Entry& e) { return sameName(e.key, key); });
    return found == entries.end() ? 0 : found->object;
}

void Dictionary::set(std::string_view key, Handle object)
{
    const auto found =
        std::find_if(entries.begin(), entries.end(), [&](const Entry& e) { return sameName(e.key, key); });
    if (found == entries.end()) {
        entries.push_back({std::string(key), object});
    } else {
        found->object = object;
    }
}

bool Dictionary::erase(std::string_view key)
{
    return std::erase_if(entries, [&](const Entry& e) { return sameName(e.key, key); }) > 0;
}

void ImageDefinition::fields(FieldVisitor& v)
{
    v.subclass("AcDbRasterImageDef");
    v.integer(90, classVersion);
    v.string(1, path);
    v.point(10, pixels);
    v.point(11, pixelSize);
    v.boolean(280, loaded);
    int unit = static_cast<int>(units);
    v.integer(281, unit);
    units = static_cast<Units>(unit);
}

void ImageDefinitionReactor::fields(FieldVisitor& v)
{
    v.subclass("AcDbRasterImageDefReactor");
    v.integer(90, classVersion);
    v.handle(330, image);
}

void RasterVariables::fields(FieldVisitor& v)
{
    v.subclass("AcDbRasterVariables");
    v.integer(90, classVersion);
    v.integer(70, frame);
    v.integer(71, quality);
    v.integer(72, units);
}

} // namespace drawing
