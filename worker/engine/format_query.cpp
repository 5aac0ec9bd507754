#include "worker/engine/format_query.h"

#include <algorithm>
#include <string_view>
#include <vector>

#include "imaging/error.h"
#include "imaging/raster_file.h"
#include "workerlink/protocol.h"

namespace worker {

namespace {

using imaging::Format;
using imaging::FormatDescription;

// The rows of the file dialog.
std::vector<FormatDescription> writableFormats()
{
    std::vector<FormatDescription> rows;
    std::ranges::copy_if(imaging::formatDescriptions(), std::back_inserter(rows), &FormatDescription::writable);
    return rows;
}

void append(std::u16string& text, std::string_view ascii)
{
    text.append(ascii.begin(), ascii.end());
}

// One pattern a row: the dialog takes what follows its "*." for the extension of the name in the box.
std::u16string filterText(const std::vector<FormatDescription>& rows)
{
    std::u16string text;
    for (const FormatDescription& row : rows) {
        const std::string pattern = "*." + std::string(row.extensions.front());
        append(text, row.name);
        append(text, " (");
        append(text, pattern);
        append(text, ")|");
        append(text, pattern);
        append(text, "|");
    }
    append(text, "|");
    return text;
}

std::string lowerCaseExtension(const std::filesystem::path& file)
{
    std::string lower;
    for (const char16_t unit : file.extension().u16string()) {
        if (unit == u'.')
            continue;
        // No extension of ours has a letter outside ASCII, so that any other letter may become one that matches none.
        const char letter = unit < 0x80 ? static_cast<char>(unit) : '?';
        lower += letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
    }
    return lower;
}

std::int32_t rowOfExtension(const std::vector<FormatDescription>& rows, const std::filesystem::path& file)
{
    const std::string extension = lowerCaseExtension(file);
    const auto found = std::ranges::find_if(rows, [&](const FormatDescription& row) {
        return std::ranges::find(row.extensions, extension) != row.extensions.end();
    });
    return found == rows.end() ? 0 : static_cast<std::int32_t>(found - rows.begin());
}

std::int32_t rowOfFile(const std::vector<FormatDescription>& rows, const std::filesystem::path& file)
{
    Format format{};
    try {
        format = imaging::inspectRaster(file).format;
    } catch (const imaging::ImagingError&) {
        return rowOfExtension(rows, file);
    }
    // A TIFF in a compression that is only read is still best saved as a TIFF.
    if (format == Format::TiffOther)
        format = Format::TiffGroup4;
    const auto found = std::ranges::find(rows, format, &FormatDescription::format);
    return found == rows.end() ? rowOfExtension(rows, file) : static_cast<std::int32_t>(found - rows.begin());
}

} // namespace

void answerFormatQuery(FormatQuery& query)
{
    const std::vector<FormatDescription> rows = writableFormats();
    const std::int32_t row = query.filterIndex == OwnFormatRow ? rowOfFile(rows, query.file) : query.filterIndex;
    if (row < 0 || row >= static_cast<std::int32_t>(rows.size()))
        throw imaging::ImagingError("There is no file type number " + std::to_string(row) + ".");
    query.filter = filterText(rows);
    query.filterIndex = row;
    query.formatCode = static_cast<std::int32_t>(imaging::formatCode(rows[static_cast<std::size_t>(row)].format));
}

} // namespace worker
