#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace fonts {

/// What a TrueType file says of itself.
struct FontNames
{
    std::wstring family;
    bool bold = false;
    bool italic = false;
};

/// Nothing if the file can't be read or is no TrueType font of one face.
std::optional<FontNames> readFontNames(const std::filesystem::path& file);

} // namespace fonts
