#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "drawing/dwg/sections.h"
#include "drawing/object.h"

namespace drawing::dwg {

/// Where an object lies in the file.
struct ObjectPlace
{
    Handle handle = 0;
    std::size_t address = 0;
    bool operator==(const ObjectPlace&) const = default;
};

/// All objects of the file, in the order of their handles. Throws DrawingError where a page is damaged, a handle stands
/// twice or out of order, or an address lies outside the file.
std::vector<ObjectPlace> readObjectMap(std::string_view file, SectionPlace place);
/// The section's bytes; the places are to be in the order of their handles.
std::string writeObjectMap(const std::vector<ObjectPlace>& places);

} // namespace drawing::dwg
