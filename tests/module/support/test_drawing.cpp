#include "tests/module/support/test_drawing.h"

#include <windows.h>
#include <cstdint>
#include <fstream>
#include <sstream>

#include "imaging/raster_file.h"
#include "workerlink/SendToWorker.h"

namespace test {

namespace {

constexpr standin::Handle firstImage = 0x100;
constexpr standin::Handle firstDefinition = 0x200;

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
    dxf(0, "IMAGE")(5, hex(imageHandle(index)))(100, "AcDbEntity")(67, image.paper ? 1 : 0)(8, "0");
    dxf(100, "AcDbRasterImage")(90, 0);
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

Picture pictureOf(const imaging::Bitmap& bitmap)
{
    Picture picture = blank(bitmap.width(), bitmap.height());
    for (int y = 0; y < bitmap.height(); ++y) {
        for (int x = 0; x < bitmap.width(); ++x)
            picture[y][x] = bitmap.ink(x, y) ? '#' : '.';
    }
    return picture;
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
    imaging::Bitmap bitmap({static_cast<int>(picture.at(0).size()), static_cast<int>(picture.size())});
    for (int y = 0; y < bitmap.height(); ++y) {
        for (int x = 0; x < bitmap.width(); ++x)
            bitmap.setInk(x, y, picture[y].at(x) == '#');
    }
    imaging::writeRaster(path, bitmap, {dotsPerInch, dotsPerInch}, imaging::Format::TiffUncompressed);
}

void writeGrayBitmap(const std::filesystem::path& path, int width, int height)
{
    constexpr DWORD headers = sizeof(BITMAPFILEHEADER) + sizeof(BITMAPINFOHEADER);
    const std::string palette(256 * sizeof(RGBQUAD), '\xFF');
    const std::string pixels((width + 3) / 4 * 4 * height, '\0');
    const BITMAPFILEHEADER file = {0x4D42, static_cast<DWORD>(headers + palette.size() + pixels.size()), 0, 0,
                                   static_cast<DWORD>(headers + palette.size())};
    const BITMAPINFOHEADER info = {sizeof(info), width, height, 1, 8, BI_RGB, 0, 0, 0, 0, 0};
    std::ofstream out(path, std::ios::binary);
    out.write(reinterpret_cast<const char*>(&file), sizeof(file));
    out.write(reinterpret_cast<const char*>(&info), sizeof(info));
    out << palette << pixels;
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
    return bitmap ? pictureOf(*bitmap) : Picture();
}

Picture readPicture(const std::filesystem::path& path)
{
    return pictureOf(imaging::readRaster(path).bitmap);
}

void planWorker(const std::vector<std::string>& runs)
{
    // A copy of this program's own: programs in other lanes plan their workers at the same time.
    static const std::filesystem::path worker = [] {
        const std::filesystem::path original = FAULTY_WORKER;
        const std::filesystem::path folder = freshFolder("faulty_worker");
        for (const char* name : {"HVV6.exe", "HVV6-real.exe"})
            std::filesystem::copy_file(std::filesystem::path(original).replace_filename(name), folder / name);
        return folder / "HVV6.exe";
    }();
    std::ofstream plan(std::filesystem::path(worker).replace_extension(".plan"));
    for (const std::string& run : runs)
        plan << run << "\n";
    SetWorkerPath(worker.c_str());
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
