#pragma once

#include "drawing/document.h"

#include <string>
#include <vector>

namespace desk {

// The data of an entity in lines for the command line's transcript.
std::vector<std::wstring> describe(const drawing::Document& document, const drawing::Entity& entity);

} // namespace desk
