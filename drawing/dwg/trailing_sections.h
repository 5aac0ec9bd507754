// The small parts of a file: the second header, the auxiliary header, the preview and the template.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "drawing/dwg/file_header.h"
#include "drawing/dwg/header_section.h"

namespace drawing::dwg {

/// The header once more, with the roots, behind the map of the objects. `address`: where it is put.
std::string writeSecondHeader(const FileHeader& header, const Roots& roots, Handle handleSeed, std::uint32_t address);

/// Versions, dates and the handle seed, beside the file header.
struct AuxiliaryHeader
{
    int writerVersion = 0;
    int maintenance = 0;
    int saves = 1;      // how often the drawing was saved
    double created = 0; // days, as in $TDCREATE
    double updated = 0;
    Handle handleSeed = 0;
};
inline constexpr std::size_t auxiliaryHeaderSize = 123;
std::string writeAuxiliaryHeader(const AuxiliaryHeader& header);
/// How often the drawing was saved; 0 where the section says nothing.
int readSaveCount(std::string_view section);

/// The bitmap that shows the drawing in file dialogs: a file's bitmap without its first 14 bytes. Nothing if there is
/// none, or it is damaged: nothing but the picture is lost then.
std::optional<std::string> readPreview(std::string_view file, std::uint32_t address);
/// `address`: where it is put, since the preview tells its own place.
std::string writePreview(const std::optional<std::string>& bitmap, std::uint32_t address);

/// Whether the drawing measures in millimetres ($MEASUREMENT), from the template section.
int readMeasurement(std::string_view section);
std::string writeTemplate(int measurement);

} // namespace drawing::dwg
