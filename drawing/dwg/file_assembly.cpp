#include "drawing/dwg/file_assembly.h"

#include <optional>

#include "drawing/dwg/bit_writer.h"
#include "drawing/dwg/file_header.h"
#include "drawing/dwg/hexadecimal.h"
#include "drawing/dwg/object_map.h"
#include "drawing/dwg/trailing_sections.h"
#include "drawing/error.h"

namespace drawing::dwg {

namespace {

// The program that the file says has written it: one whose drawings of this release the host takes.
constexpr int writerVersion = 0x1F;
constexpr int maintenance = 8;

// What stands before the objects in all files of the host.
constexpr std::uint32_t beforeObjects = 0x0DCA;

std::optional<std::string> previewOf(const Document& document)
{
    for (const Document::RawSection& section : document.rawSections) {
        std::string bitmap;
        for (const Group& group : section.groups) {
            bitmap += section.name == "THUMBNAILIMAGE" && group.code == 310 ? bytesOfHexadecimal(group.value) : "";
        }
        if (!bitmap.empty()) {
            return bitmap;
        }
    }
    return std::nullopt;
}

// A part of the file is put behind the others, and its place is noted down.
SectionPlace append(std::string& file, const std::string& section)
{
    const SectionPlace place{static_cast<std::uint32_t>(file.size()), static_cast<std::uint32_t>(section.size())};
    file += section;
    return place;
}

} // namespace

std::string assembleFile(const FileParts& parts)
{
    const HeaderVariables& variables = parts.document.header;
    HeaderSection section;
    section.variables = variables;
    section.roots = parts.roots;
    section.handleSeed = parts.names.next();
    FileHeader header;
    header.writerVersion = writerVersion;
    header.maintenance = maintenance;
    header.codePage = parts.codePage;

    std::string file(fileHeaderSize, '\0');
    const AuxiliaryHeader auxiliary{
        writerVersion, maintenance, 1, variables.real("$TDCREATE"), variables.real("$TDUPDATE"), section.handleSeed};
    header.sections[auxiliaryHeaderSection] = append(file, writeAuxiliaryHeader(auxiliary));
    header.previewAddress = static_cast<std::uint32_t>(file.size());
    append(file, writePreview(previewOf(parts.document), header.previewAddress));
    header.sections[headerVariablesSection] =
        append(file, markedSection(writeHeaderSection(section, parts.encoding, parts.names), Marked::HeaderVariables));
    header.sections[classesSection] =
        append(file, markedSection(writeClasses(parts.classes, parts.encoding), Marked::Classes));
    BitWriter beginning;
    beginning.rawLong(beforeObjects);
    append(file, beginning.bytes());
    std::vector<ObjectPlace> places;
    for (const EncodedObject& object : parts.objects) {
        constexpr std::size_t largestFile = 0x7FFFFFFF;
        if (file.size() > largestFile - object.bytes.size()) {
            throw DrawingError("the drawing is too large for this form");
        }
        places.push_back({object.handle, file.size()});
        file += object.bytes;
    }
    header.sections[objectMapSection] = append(file, writeObjectMap(places));
    const auto second = static_cast<std::uint32_t>(file.size());
    std::string tail = writeTemplate(variables.integer("$MEASUREMENT"));
    file += writeSecondHeader(header, section.roots, section.handleSeed, second);
    header.sections[templateSection] = append(file, tail);
    file.replace(0, fileHeaderSize, writeFileHeader(header));
    return file;
}

} // namespace drawing::dwg
