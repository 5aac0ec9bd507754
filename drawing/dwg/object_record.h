#pragma once

#include <string>

#include "drawing/field_reader.h"

namespace drawing::dwg {

/// The groups that the object has in DXF, with numbers as such. `blockName`: of the block that a bracket belongs to.
Record recordOf(const Object& object, const std::string& blockName = {});

} // namespace drawing::dwg
