#include "drawing/drawing_file.h"

#include <fstream>
#include <system_error>

#include "drawing/binary_form.h"
#include "drawing/dxf_reader.h"
#include "drawing/dxf_writer.h"
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
    if (bytes.starts_with("AC1") && bytes.find('\0') != std::string_view::npos) {
        throw DrawingError("this is a drawing in the host's own binary form; only DXF can be read");
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

Document readDrawing(const std::filesystem::path& path, Notes* notes)
{
    try {
        return readDxf(readBytes(path), notes);
    } catch (const DrawingError& error) {
        throw error.inFile(shownName(path));
    }
}

void writeDrawing(const Document& document, const std::filesystem::path& path, DxfForm form)
{
    try {
        const std::string bytes = writeDxf(document, form);
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
