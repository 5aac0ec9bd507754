#pragma once

#include "worker/engine/fonts.h"

namespace worker {

/// TrueType fonts by the system's means.
class SystemFonts : public Fonts
{
public:
    std::unique_ptr<drawing::FontSource> open(const std::filesystem::path& folder) override;
};

} // namespace worker
