#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "drawing/object.h"
#include "drawing/text_encoding.h"

namespace drawing::dwg {

/// A kind of object that is known by the file's list of classes only.
struct ObjectClass
{
    int number = 0;          // the type that its objects have: 500 and up
    int flags = 0;           // what a program without the class may do with its objects
    std::string application; // "ISM", ...
    std::string className;   // "AcDbRasterImage", ...
    std::string recordName;  // in DXF
    bool wasProxy = false;
    bool entity = false;
    bool operator==(const ObjectClass&) const = default;
};

/// From the section's content. Throws DrawingError.
std::vector<ObjectClass> readClasses(std::string_view content, const TextEncoding& encoding);
std::string writeClasses(const std::vector<ObjectClass>& classes, const TextEncoding& encoding);

// The same as the groups of a record CLASS.
Groups groupsOfClass(const ObjectClass& of);
ObjectClass classOfGroups(const Groups& groups);

} // namespace drawing::dwg
