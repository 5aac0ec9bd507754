#pragma once

#include <span>
#include <string_view>

#include "drawing/object.h"

namespace drawing {

/// A header variable with its values, one group each.
struct DefaultVariable
{
    std::string_view name;
    Groups groups;
};

// What a drawing of the release 2000 has where nobody has said otherwise.
std::span<const DefaultVariable> defaultHeader();
const Groups& defaultViewportGroups();  // those that ViewportRecord has no fields for
const Groups& defaultDimensionGroups(); // of the dimension style "Standard"
const Groups& defaultPlotGroups();      // of a layout's plot settings, but for the layout flags
const Groups& defaultLayoutGroups();    // of a layout, but for its name, order and block
const Groups& defaultMultilineGroups(); // of the multiline style "Standard"

} // namespace drawing
