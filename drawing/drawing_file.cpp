#include "drawing/drawing_file.h"

#include <fstream>
#include <random>
#include <system_error>

#include "drawing/dxf_reader.h"
#include "drawing/dxf_writer.h"

namespace drawing {

namespace {

constexpr std::uintmax_t kLargestFile = std::uintmax_t(512) << 20;
constexpr std::string_view kBinarySentinel = "AutoCAD Binary DXF";

std::string shownName(const std::filesystem::path& path)
{
    const auto name = path.filename().u8string();
    return std::string(name.begin(), name.end());
}

std::string readBytes(const std::filesystem::path& path)
{
    std::error_code error;
    const auto size = std::filesystem::file_size(path, error);
    if (error) {
        throw DrawingError("the file can't be opened");
    }
    if (size > kLargestFile) {
        throw DrawingError("the file is larger than a drawing may be");
    }
    std::ifstream file(path, std::ios::binary);
    std::string bytes(static_cast<std::size_t>(size), '\0');
    file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (!file) {
        throw DrawingError("the file can't be read");
    }
    return bytes;
}

// A file that is removed again unless it has been kept.
class FreshFile
{
public:
    // Beside `target`, with a name that no other file has.
    explicit FreshFile(const std::filesystem::path& target)
    {
        std::random_device random;
        do {
            m_path = target;
            m_path += ".saving" + std::to_string(random());
        } while (std::filesystem::exists(m_path));
        m_file.open(m_path, std::ios::binary);
    }
    ~FreshFile()
    {
        if (!m_kept) {
            m_file.close();
            std::error_code ignored;
            std::filesystem::remove(m_path, ignored);
        }
    }
    FreshFile(const FreshFile&) = delete;
    FreshFile& operator=(const FreshFile&) = delete;

    void write(std::string_view bytes)
    {
        m_file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        m_file.close();
        if (m_file.fail()) {
            throw DrawingError("the drawing can't be written there");
        }
    }
    void renameOver(const std::filesystem::path& target)
    {
        std::error_code error;
        std::filesystem::rename(m_path, target, error);
        if (error) {
            throw DrawingError("the file can't be replaced");
        }
        m_kept = true;
    }

private:
    std::filesystem::path m_path;
    std::ofstream m_file;
    bool m_kept = false;
};

} // namespace

Document readDxf(std::string_view bytes, Notes* notes)
{
    if (bytes.starts_with(kBinarySentinel)) {
        throw DrawingError("this is a DXF file in binary form; only the text form can be read");
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

std::string writeDxf(const Document& document)
{
    return DxfWriter(document).write();
}

Document readDrawing(const std::filesystem::path& path, Notes* notes)
{
    try {
        return readDxf(readBytes(path), notes);
    } catch (const DrawingError& error) {
        throw error.inFile(shownName(path));
    }
}

void writeDrawing(const Document& document, const std::filesystem::path& path)
{
    try {
        const std::string bytes = writeDxf(document);
        FreshFile file(path);
        file.write(bytes);
        file.renameOver(path);
    } catch (const DrawingError& error) {
        throw error.inFile(shownName(path));
    }
}

} // namespace drawing
