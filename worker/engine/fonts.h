#pragma once

#include <filesystem>
#include <memory>

#include "drawing/glyphs.h"

namespace worker {

/// Where the operations get the typefaces of texts from.
class Fonts
{
public:
    virtual ~Fonts() = default;

    /// The fonts of a folder and of the system. A folder that is not there has none.
    virtual std::unique_ptr<drawing::FontSource> open(const std::filesystem::path& folder) = 0;
};

} // namespace worker
