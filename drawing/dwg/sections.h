// The parts of a file, and the marks that they begin and end with.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace drawing::dwg {

/// Sections that the file header tells the places of, by their numbers.
enum Section : std::uint8_t
{
    headerVariablesSection,
    classesSection,
    objectMapSection,
    freeSpaceSection, // may be empty
    templateSection,
    auxiliaryHeaderSection,
    sectionCount,
};

/// Where a section lies in the file, in bytes from its beginning.
struct SectionPlace
{
    std::uint32_t address = 0;
    std::uint32_t size = 0;
    bool operator==(const SectionPlace&) const = default;
};

inline constexpr std::size_t markSize = 16;

/// What has a mark of 16 bytes before and behind it. The one behind is the complement of the one before, but for the
/// file header, which has one behind alone.
enum class Marked
{
    FileHeader,
    HeaderVariables,
    Classes,
    Preview,
    SecondHeader,
};
std::string beginMark(Marked what);
std::string endMark(Marked what);

/// The content between the marks of header variables or classes: checked marks, size and checksum. Throws DrawingError.
/// `what` is named in the reason.
std::string_view markedContent(std::string_view bytes, SectionPlace place, Marked marked, std::string_view what);
/// The same from the content.
std::string markedSection(std::string_view content, Marked marked);

/// The bytes of a place in the file. Throws DrawingError if it does not lie in the file.
std::string_view bytesAt(std::string_view file, SectionPlace place, std::string_view what);

} // namespace drawing::dwg
