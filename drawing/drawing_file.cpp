#include "drawing/drawing_file.h"

#include <fstream>
#include <system_error>

#include "drawing/binary_form.h"
#include "drawing/dwg/dwg_reader.h"
#include "drawing/dwg/dwg_writer.h"
#include "drawing/dxf_reader.h"
#include "drawing/dxf_writer.h"
#include "drawing/lower_case.h"
#include "files/fresh_file.h"

namespace drawing {

namespace {

constexpr std::uintmax_t largestFile = std::uintmax_t(512) << 20;

std::string shownName(const std::filesystem::path& path)
{
    const auto name = path.filename().u8string();
    return std::string(name.begin(), name.end());
}

std::string readBytes(const std::filesystem::path& path)
{
    std::error_code error;
    const auto size = std::filesystem::file_size(files::ofAnyLength(path), error);
    if (error) {
        throw DrawingError("the file can't be opened");
    }
    if (size > largestFile) {
        throw DrawingError("the file is larger than a drawing may be");
    }
    std::ifstream file(files::ofAnyLength(path), std::ios::binary);
    std::string bytes(static_cast<std::size_t>(size), '\0');
    file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (!file) {
        throw DrawingError("the file can't be read");
    }
    return bytes;
}

} // namespace

Document readDxf(std::string_view bytes, Notes* notes)
{
    std::string text;
    if (isBinaryForm(bytes)) {
        text = textFromBinary(bytes);
        bytes = text;
    }
    if (dwg::isDwg(bytes)) {
        throw DrawingError("this is a drawing in the host's own binary form; only DXF can be read here");
    }
    DxfReader reader(bytes);
    Document document = reader.read();
    if (notes) {
        *notes = reader.mendings().sentences();
    }
    return document;
}

std::string writeDxf(const Document& document, DxfForm form)
{
    return DxfWriter(document, form).write();
}

DrawingForm formOfContent(std::string_view bytes)
{
    return dwg::isDwg(bytes) ? DrawingForm::Dwg : isBinaryForm(bytes) ? DrawingForm::DxfBinary : DrawingForm::DxfText;
}

DrawingForm formOfFile(const std::filesystem::path& path)
{
    constexpr std::size_t longestBeginning = 32;
    std::string bytes(longestBeginning, '\0');
    std::ifstream file(files::ofAnyLength(path), std::ios::binary);
    file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    bytes.resize(static_cast<std::size_t>(file.gcount()));
    return formOfContent(bytes);
}

DrawingForm formOfExtension(const std::filesystem::path& path)
{
    const auto extension = path.extension().u8string();
    return lowerCase(std::string(extension.begin(), extension.end())) == ".dwg" ? DrawingForm::Dwg
                                                                                : DrawingForm::DxfText;
}

Document readDrawingBytes(std::string_view bytes, Notes* notes)
{
    if (formOfContent(bytes) != DrawingForm::Dwg) {
        return readDxf(bytes, notes);
    }
    dwg::DwgReader reader(bytes);
    Document document = reader.read();
    if (notes) {
        *notes = reader.notes();
    }
    return document;
}

std::string writeDrawingBytes(const Document& document, DrawingForm form, Notes* notes)
{
    if (form != DrawingForm::Dwg) {
        DxfWriter writer(document, form == DrawingForm::DxfBinary ? DxfForm::Binary : DxfForm::Text);
        if (notes) {
            *notes = writer.notes();
        }
        return writer.write();
    }
    dwg::DwgWriter writer(document);
    std::string bytes = writer.write();
    if (notes) {
        *notes = writer.notes();
    }
    return bytes;
}

Document readDrawing(const std::filesystem::path& path, Notes* notes)
{
    try {
        return readDrawingBytes(readBytes(path), notes);
    } catch (const DrawingError& error) {
        throw error.inFile(shownName(path));
    }
}

void writeDrawing(const Document& document, const std::filesystem::path& path, DrawingForm form, Notes* notes)
{
    try {
        const std::string bytes = writeDrawingBytes(document, form, notes);
        files::FreshFile file(path);
        file.write(0, bytes.data(), bytes.size());
        file.commit();
    } catch (const DrawingError& error) {
        throw error.inFile(shownName(path));
    } catch (const files::FileError& error) {
        throw DrawingError(error.what()).inFile(shownName(path));
    }
}

} // namespace drawing
