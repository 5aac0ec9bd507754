#include "standin/arx/image_file.h"

#include <cmath>
#include <filesystem>
#include <vector>

#include "imaging/error.h"

namespace standin {

namespace fs = std::filesystem;

std::wstring findImageFile(const std::wstring& source, const std::wstring& drawingFile)
{
    if (source.empty())
        return {};
    const fs::path name(source);
    std::vector<fs::path> places;
    if (name.is_absolute())
        places.push_back(name);
    if (!drawingFile.empty()) {
        const fs::path folder = fs::path(drawingFile).parent_path();
        if (!name.is_absolute())
            places.push_back(folder / name);
        places.push_back(folder / name.filename());
    }
    if (!name.is_absolute())
        places.push_back(name);
    for (const fs::path& place : places) {
        std::error_code error;
        if (fs::is_regular_file(place, error))
            return fs::absolute(place, error).lexically_normal().make_preferred().wstring();
    }
    return {};
}

std::optional<imaging::RasterInfo> inspectImageFile(const std::wstring& path)
{
    try {
        return imaging::inspectRaster(path);
    } catch (const imaging::ImagingError&) {
        return std::nullopt;
    }
}

namespace {

Atil::DataModel modelOf(int bitsPerPixel)
{
    using Attributes = Atil::DataModelAttributes;
    switch (reportedDepth(bitsPerPixel)) {
    case 1:
        return Atil::BitonalModel();
    case 8:
        return Atil::DataModel(Attributes::kGray, Attributes::k8, 1);
    case 24:
        return Atil::DataModel(Attributes::kRgba, Attributes::k24, 3);
    default:
        return Atil::DataModel(Attributes::kRgba, Attributes::k32, 4);
    }
}

} // namespace

std::optional<LoadedImage> loadImageFile(const std::wstring& path)
{
    try {
        imaging::RasterFile file = imaging::readRaster(path);
        auto pixels = std::make_shared<imaging::Bitmap>(std::move(file.bitmap));
        auto image = std::make_unique<Atil::Image>(std::move(pixels), modelOf(file.info.bitsPerPixel));
        return LoadedImage{file.info, std::move(image)};
    } catch (const imaging::ImagingError&) {
        return std::nullopt;
    }
}

int reportedDepth(int bitsPerPixel)
{
    if (bitsPerPixel <= 1)
        return bitsPerPixel;
    return bitsPerPixel <= 8 ? 8 : bitsPerPixel <= 24 ? 24 : 32;
}

double millimetresPerPixel(double dotsPerInch, int pixels)
{
    constexpr double millimetresPerInch = 25.4;
    if (!(dotsPerInch > 0))
        return pixels > 0 ? 1.0 / pixels : 0;
    const double size = millimetresPerInch / dotsPerInch;
    return millimetresPerInch / size < dotsPerInch ? std::nextafter(size, 0.0) : size;
}

} // namespace standin
