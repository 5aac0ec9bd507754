#include "tests/module/support/test_drawing.h"

#include <cstdint>
#include <cstring>
#include <fstream>
#include <iterator>
#include <sstream>
#include <windows.h>

#include "imaging/bitmap.h"

namespace test {

namespace {

constexpr standin::Handle firstImage = 0x100;
constexpr standin::Handle firstDefinition = 0x200;

void put16(std::string& out, unsigned value)
{
    out += static_cast<char>(value & 0xFF);
    out += static_cast<char>(value >> 8 & 0xFF);
}

void put32(std::string& out, std::uint32_t value)
{
    put16(out, value & 0xFFFF);
    put16(out, value >> 16);
}

void putEntry(std::string& out, unsigned tag, unsigned type, std::uint32_t value)
{
    put16(out, tag);
    put16(out, type);
    put32(out, 1);
    put32(out, value);
}

// One strip behind a directory of fixed size.
void writeTiffFile(const std::filesystem::path& path, int width, int height, int bits, int photometric,
                   double dotsPerInch, const std::string& strip)
{
    constexpr unsigned shortType = 3;
    constexpr unsigned longType = 4;
    constexpr unsigned rationalType = 5;
    constexpr std::uint32_t entries = 12;
    constexpr std::uint32_t rationals = 8 + 2 + entries * 12 + 4;
    constexpr std::uint32_t pixels = rationals + 2 * 8;

    std::string out = "II*";
    out += '\0';
    put32(out, 8);
    put16(out, entries);
    putEntry(out, 256, longType, width);
    putEntry(out, 257, longType, height);
    putEntry(out, 258, shortType, bits);
    putEntry(out, 259, shortType, 1);
    putEntry(out, 262, shortType, photometric);
    putEntry(out, 273, longType, pixels);
    putEntry(out, 277, shortType, 1);
    putEntry(out, 278, longType, height);
    putEntry(out, 279, longType, static_cast<std::uint32_t>(strip.size()));
    putEntry(out, 282, rationalType, rationals);
    putEntry(out, 283, rationalType, rationals + 8);
    putEntry(out, 296, shortType, 2);
    put32(out, 0);
    for (int i = 0; i < 2; ++i) {
        put32(out, static_cast<std::uint32_t>(dotsPerInch * 100000 + 0.5));
        put32(out, 100000);
    }
    std::ofstream(path, std::ios::binary) << out << strip;
}

std::string hex(standin::Handle handle)
{
    std::ostringstream text;
    text << std::uppercase << std::hex << handle;
    return text.str();
}

class DxfText
{
public:
    template <typename Value> DxfText& operator()(int code, const Value& value)
    {
        m_text << code << "\n" << value << "\n";
        return *this;
    }
    DxfText& point(int code, double x, double y, double z) { return (*this)(code, x)(code + 10, y)(code + 20, z); }
    std::string text() const { return m_text.str(); }

private:
    std::ostringstream m_text;
};

void putImage(DxfText& dxf, int index, const PlacedImage& image)
{
    dxf(0, "IMAGE")(5, hex(imageHandle(index)))(100, "AcDbEntity")(8, "0")(100, "AcDbRasterImage")(90, 0);
    dxf.point(10, image.x, image.y, 0);
    dxf.point(11, image.unitsPerPixel, image.uy, 0);
    dxf.point(12, -image.uy, image.unitsPerPixel, 0);
    dxf(13, image.width)(23, image.height)(340, hex(firstDefinition + index))(70, image.display)(280, 0);
    dxf(281, 50)(282, 50)(283, 0)(71, 1)(91, 2);
    dxf(14, -0.5)(24, -0.5)(14, image.width - 0.5)(24, image.height - 0.5);
}

void putDefinition(DxfText& dxf, int index, const PlacedImage& image)
{
    dxf(0, "IMAGEDEF")(5, hex(firstDefinition + index))(330, "B")(100, "AcDbRasterImageDef")(90, 0);
    dxf(1, image.file.string())(10, image.width)(20, image.height)(11, 1)(21, 1)(280, 1)(281, 0);
}

} // namespace

Picture blank(int width, int height)
{
    return Picture(height, std::string(width, '.'));
}

std::filesystem::path freshFolder(const std::string& name)
{
    const std::filesystem::path folder = std::filesystem::temp_directory_path() / ("halvoran_test_" + name);
    std::filesystem::remove_all(folder);
    std::filesystem::create_directories(folder);
    return folder;
}

void writeTiff(const std::filesystem::path& path, const Picture& picture, double dotsPerInch)
{
    const int width = static_cast<int>(picture.at(0).size());
    std::string strip;
    for (const std::string& row : picture) {
        std::string bytes((width + 7) / 8, '\0');
        for (int x = 0; x < width; ++x) {
            if (row.at(x) == '#')
                bytes[x / 8] = static_cast<char>(bytes[x / 8] | 0x80 >> x % 8);
        }
        strip += bytes;
    }
    constexpr int whiteIsZero = 0;
    writeTiffFile(path, width, static_cast<int>(picture.size()), 1, whiteIsZero, dotsPerInch, strip);
}

void writeGrayTiff(const std::filesystem::path& path, int width, int height)
{
    constexpr int blackIsZero = 1;
    writeTiffFile(path, width, height, 8, blackIsZero, 300, std::string(width * height, '\xFF'));
}

standin::Handle imageHandle(int index)
{
    return firstImage + index;
}

void writeDrawing(const std::filesystem::path& path, const std::vector<PlacedImage>& images)
{
    DxfText dxf;
    dxf(0, "SECTION")(2, "HEADER")(9, "$ACADVER")(1, "AC1015")(9, "$HANDSEED")(5, "1000")(0, "ENDSEC");
    dxf(0, "SECTION")(2, "ENTITIES");
    for (size_t i = 0; i < images.size(); ++i)
        putImage(dxf, static_cast<int>(i), images[i]);
    dxf(0, "ENDSEC")(0, "SECTION")(2, "OBJECTS");
    dxf(0, "DICTIONARY")(5, "A")(330, 0)(100, "AcDbDictionary")(281, 1)(3, "ACAD_IMAGE_DICT")(350, "B");
    dxf(0, "DICTIONARY")(5, "B")(330, "A")(100, "AcDbDictionary")(281, 1);
    for (size_t i = 0; i < images.size(); ++i)
        dxf(3, "image" + std::to_string(i))(350, hex(firstDefinition + i));
    for (size_t i = 0; i < images.size(); ++i)
        putDefinition(dxf, static_cast<int>(i), images[i]);
    dxf(0, "ENDSEC")(0, "EOF");
    std::ofstream(path, std::ios::binary) << dxf.text();
}

Picture pictureInDrawing(int index)
{
    const auto bitmap = standin::imagePixels(imageHandle(index));
    if (!bitmap)
        return {};
    Picture picture = blank(bitmap->width(), bitmap->height());
    for (int y = 0; y < bitmap->height(); ++y) {
        for (int x = 0; x < bitmap->width(); ++x)
            picture[y][x] = bitmap->ink(x, y) ? '#' : '.';
    }
    return picture;
}

TiffTags readTiffTags(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    const std::string bytes((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    const auto number = [&bytes](size_t at, int size) {
        std::uint32_t value = 0;
        std::memcpy(&value, bytes.data() + at, size);
        return value;
    };
    TiffTags tags;
    if (bytes.size() < 10 || bytes.compare(0, 2, "II") != 0)
        return tags;
    const size_t directory = number(4, 4);
    const unsigned entries = number(directory, 2);
    for (unsigned i = 0; i < entries; ++i) {
        const size_t entry = directory + 2 + i * 12;
        const bool isShort = number(entry + 2, 2) == 3;
        const std::uint32_t value = number(entry + 8, isShort ? 2 : 4);
        const auto rational = [&] { return double(number(value, 4)) / number(value + 4, 4); };
        switch (number(entry, 2)) {
        case 256:
            tags.width = value;
            break;
        case 257:
            tags.height = value;
            break;
        case 258:
            tags.bitsPerSample = value;
            break;
        case 259:
            tags.compression = value;
            break;
        case 282:
            tags.resolutionX = rational();
            break;
        case 283:
            tags.resolutionY = rational();
            break;
        case 296:
            tags.resolutionUnit = value;
            break;
        default:
            break;
        }
    }
    return tags;
}

std::vector<std::wstring> temporaryFiles()
{
    std::vector<std::wstring> names;
    for (const auto& entry : std::filesystem::directory_iterator(std::filesystem::temp_directory_path())) {
        const std::wstring name = entry.path().filename().wstring();
        if (name.compare(0, 2, L"HV") == 0)
            names.push_back(name);
    }
    return names;
}

} // namespace test
