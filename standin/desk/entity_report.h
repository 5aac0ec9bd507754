#pragma once

#include <string>
#include <vector>

#include "drawing/document.h"

namespace desk {

/// The data of an entity in lines for the command line's transcript.
std::vector<std::wstring> describe(const drawing::Document& document, const drawing::Entity& entity);

} // namespace desk
