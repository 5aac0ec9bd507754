#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "drawing/document.h"
#include "drawing/field_writer.h"
#include "drawing/mendings.h"

namespace drawing {

/// Reads a drawing file by its content, whatever its extension: DXF in text or binary form, of the releases 12 to
/// 2018. What the
/// file lacks but can be told from the rest is mended, and `notes` says so. Throws DrawingError with the line, which of
/// a binary file is the one that its text form has, and the reason; a drawing comes back whole or not at all.
Document readDrawing(const std::filesystem::path& path, Notes* notes = nullptr);

/// Writes the drawing as a DXF file of the release 2000: into a fresh file beside the target, which is
/// then renamed over it, so that the target is never half-written. Throws DrawingError.
void writeDrawing(const Document& document, const std::filesystem::path& path, DxfForm form = DxfForm::Text);

/// The same from and to the bytes of a DXF file.
Document readDxf(std::string_view bytes, Notes* notes = nullptr);
std::string writeDxf(const Document& document, DxfForm form = DxfForm::Text);

} // namespace drawing
