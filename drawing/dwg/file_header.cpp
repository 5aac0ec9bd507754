#include "drawing/dwg/file_header.h"

#include <algorithm>

#include "drawing/dwg/bit_reader.h"
#include "drawing/dwg/bit_writer.h"
#include "drawing/dwg/checksum.h"
#include "drawing/error.h"
#include "drawing/lower_case.h"

namespace drawing::dwg {

namespace {

struct Release
{
    std::string_view code;
    std::string_view words;
};

constexpr Release otherReleases[] = {
    {"AC1009", "12"},   {"AC1012", "13"},   {"AC1014", "14"},   {"AC1018", "2004"},
    {"AC1021", "2007"}, {"AC1024", "2010"}, {"AC1027", "2013"}, {"AC1032", "2018"},
};

constexpr std::string_view codePages[] = {
    "",          "us_ascii",  "iso8859-1", "iso8859-2", "iso8859-3", "iso8859-4", "iso8859-5", "iso8859-6", "iso8859-7",
    "iso8859-8", "iso8859-9", "dos437",    "dos850",    "dos852",    "dos855",    "dos857",    "dos860",    "dos861",
    "dos863",    "dos864",    "dos865",    "dos869",    "dos932",    "macintosh", "big5",      "ksc5601",   "johab",
    "dos866",    "ANSI_1250", "ANSI_1251", "ANSI_1252", "gb2312",    "ANSI_1253", "ANSI_1254", "ANSI_1255", "ANSI_1256",
    "ANSI_1257", "ANSI_874",  "ANSI_932",  "ANSI_936",  "ANSI_949",  "ANSI_950",  "ANSI_1361", "utf16",     "ANSI_1258",
};
constexpr int windowsWest = 30;

[[noreturn]] void refuseRelease(std::string_view code)
{
    for (const Release& each : otherReleases) {
        if (each.code == code) {
            throw DrawingError("the drawing is in the binary form of the release " + std::string(each.words) + " (" +
                               std::string(code) + "); only that of the release 2000 (AC1015) can be read");
        }
    }
    throw DrawingError("the drawing is in a binary form of an unknown release (" + std::string(code) +
                       "); only that of the release 2000 (AC1015) can be read");
}

} // namespace

bool isDwg(std::string_view bytes)
{
    constexpr std::size_t digits = 4;
    return bytes.size() > release2000.size() && bytes.starts_with("AC") && bytes[release2000.size()] == '\0' &&
           std::all_of(bytes.begin() + 2, bytes.begin() + 2 + digits, [](char c) { return c >= '0' && c <= '9'; });
}

std::string releaseBytes()
{
    std::string bytes(release2000);
    bytes.append(5, '\0');
    bytes += '\x0F';
    bytes += '\x01';
    return bytes;
}

FileHeader readFileHeader(std::string_view bytes)
{
    if (!bytes.starts_with(release2000)) {
        refuseRelease(bytes.substr(0, release2000.size()));
    }
    BitReader reader(bytes, "the file");
    reader.raw(releaseBytes().size());
    FileHeader header;
    header.previewAddress = reader.rawLong();
    header.writerVersion = static_cast<int>(reader.byte());
    header.maintenance = static_cast<int>(reader.byte());
    header.codePage = static_cast<int>(reader.rawShort());
    const std::uint32_t count = reader.rawLong();
    if (count < templateSection || count > sectionCount) {
        throw DrawingError("the file tells of " + std::to_string(count) + " sections, which is no number that occurs");
    }
    for (std::uint32_t i = 0; i < count; ++i) {
        const unsigned number = reader.byte();
        const std::uint32_t address = reader.rawLong();
        const std::uint32_t size = reader.rawLong();
        if (number < sectionCount) {
            header.sections[number] = {address, size};
        }
    }
    const std::size_t summed = reader.position() / 8;
    if (reader.rawShort() != checksum(bytes.substr(0, summed))) {
        throw DrawingError("the file's header is damaged: its checksum is another");
    }
    if (reader.raw(markSize) != endMark(Marked::FileHeader)) {
        throw DrawingError("the file's header has no end");
    }
    return header;
}

std::string writeFileHeader(const FileHeader& header)
{
    BitWriter writer;
    writer.raw(releaseBytes());
    writer.rawLong(header.previewAddress);
    writer.byte(static_cast<unsigned>(header.writerVersion));
    writer.byte(static_cast<unsigned>(header.maintenance));
    writer.rawShort(static_cast<unsigned>(header.codePage));
    writer.rawLong(sectionCount);
    for (std::size_t number = 0; number < header.sections.size(); ++number) {
        writer.byte(static_cast<unsigned>(number));
        writer.rawLong(header.sections[number].address);
        writer.rawLong(header.sections[number].size);
    }
    writer.rawShort(checksum(writer.bytes()));
    writer.raw(endMark(Marked::FileHeader));
    return writer.takeBytes();
}

std::string codePageName(int number)
{
    const auto place = static_cast<std::size_t>(number);
    return number > 0 && place < std::size(codePages) ? std::string(codePages[place]) : std::string();
}

int codePageNumberOf(std::string_view name)
{
    const auto found = std::find_if(std::begin(codePages), std::end(codePages),
                                    [&](std::string_view each) { return lowerCase(each) == lowerCase(name); });
    return found == std::end(codePages) ? windowsWest : static_cast<int>(found - std::begin(codePages));
}

} // namespace drawing::dwg
