#include "worker/system_fonts.h"

#include "fonts/font_folder.h"

namespace worker {

std::unique_ptr<drawing::FontSource> SystemFonts::open(const std::filesystem::path& folder)
{
    return std::make_unique<fonts::FontFolder>(folder);
}

} // namespace worker
