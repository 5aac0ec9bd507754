#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include "drawing/dwg/sections.h"

namespace drawing::dwg {

inline constexpr std::string_view release2000 = "AC1015";
/// The header's length in this release.
inline constexpr std::size_t fileHeaderSize = 0x61;

/// What the file begins with: release, code page, and where the sections lie.
struct FileHeader
{
    std::uint32_t previewAddress = 0;
    int writerVersion = 0; // of the program that wrote the file
    int maintenance = 0;
    int codePage = 30; // by the form's own count
    std::array<SectionPlace, sectionCount> sections;
    bool operator==(const FileHeader&) const = default;
};

/// True if the bytes begin as the host's binary form does, of any release.
bool isDwg(std::string_view bytes);

/// Throws DrawingError: for other releases with their names.
FileHeader readFileHeader(std::string_view bytes);
std::string writeFileHeader(const FileHeader& header);

/// The version, its zero bytes and the two bytes that the writer fixes, which the second header repeats.
std::string releaseBytes();

// The names of code pages, such as "ANSI_1252", by the form's own count.
std::string codePageName(int number);
int codePageNumberOf(std::string_view name);

} // namespace drawing::dwg
