#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "drawing/document.h"
#include "drawing/field_writer.h"
#include "drawing/mendings.h"

namespace drawing {

/// The forms in which drawings are stored.
enum class DrawingForm
{
    DxfText,
    DxfBinary,
    Dwg, // the host's own binary form, of the release 2000
};

/// Reads a drawing file by its content, whatever its extension: DXF in text or binary form, of the releases 12 to
/// 2018, or the host's own binary form of the release 2000; another release of that is refused by its name. What the
/// file lacks but can be told from the rest is mended, and `notes` says so. Throws DrawingError with the line, which of
/// a binary file is the one that its text form has, and the reason; a drawing comes back whole or not at all.
Document readDrawing(const std::filesystem::path& path, Notes* notes = nullptr);

/// Writes the drawing as a file of the release 2000: into a fresh file beside the target, which is then renamed over
/// it, so that the target is never half-written. What has no place in the form is left out, and `notes` says so. Throws
/// DrawingError.
void writeDrawing(const Document& document, const std::filesystem::path& path, DrawingForm form = DrawingForm::DxfText,
                  Notes* notes = nullptr);

/// The form that a path's extension stands for: .dwg for the host's own, anything else for DXF as text.
DrawingForm formOfExtension(const std::filesystem::path& path);
/// The form that the bytes are in, as far as their beginning tells.
DrawingForm formOfContent(std::string_view bytes);
/// The form of the file's content; of what can't be read, that of DXF as text.
DrawingForm formOfFile(const std::filesystem::path& path);

/// The same from the bytes of a file of any form.
Document readDrawingBytes(std::string_view bytes, Notes* notes = nullptr);
/// The same to the bytes.
std::string writeDrawingBytes(const Document& document, DrawingForm form, Notes* notes = nullptr);

/// From and to the bytes of a DXF file.
Document readDxf(std::string_view bytes, Notes* notes = nullptr);
std::string writeDxf(const Document& document, DxfForm form = DxfForm::Text);

} // namespace drawing
