#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "drawing/object.h"

namespace drawing {

/// A group as it stands in the file; the text is still in the file's encoding and lives as long as the file's bytes.
struct FileGroup
{
    int code = 0;
    std::string_view value;
    std::size_t line = 0; // of the value, from 1
};

/// Takes the bytes of a DXF file in text form apart into groups. Throws DrawingError for what is none.
class GroupReader
{
public:
    explicit GroupReader(std::string_view bytes);

    /// The next group that is no comment; nothing at the end of the bytes.
    std::optional<FileGroup> next();
    std::size_t line() const { return m_line; }

private:
    std::optional<std::string_view> nextLine();

    std::string_view m_rest;
    std::size_t m_line = 0;
    std::size_t m_groups = 0;
};

/// What must be known of a file before its texts can be read and new handles be given out.
struct FileSurvey
{
    std::string release;  // $ACADVER, empty if missing
    std::string codePage; // $DWGCODEPAGE, empty if missing
    bool byteOrderMark = false;
    Handle highestHandle = 0;
};
FileSurvey surveyFile(std::string_view bytes);

} // namespace drawing
