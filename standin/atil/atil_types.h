// Sizes, places and pixel values of the imaging library.
#pragma once

#include <cstdint>

#include "standin/export.h"

namespace Atil {
struct HALVORAN_STANDIN_API Size
{
    Size() = default;
    Size(std::int32_t w, std::int32_t h) : width(w), height(h) {}
    bool operator==(const Size& other) const { return width == other.width && height == other.height; }

    std::int32_t width = 0;
    std::int32_t height = 0;
};

/// The origin is the image's top left pixel, y runs downward.
struct HALVORAN_STANDIN_API Offset
{
    Offset() = default;
    Offset(std::int32_t xx, std::int32_t yy) : x(xx), y(yy) {}

    std::int32_t x = 0;
    std::int32_t y = 0;
};

struct DataModelAttributes
{
    /// What a data model is, as dataModelType() reports it.
    enum DataModelType
    {
        kUnknownDataModel = 0,
        kRgbModel = 1,
        kRgbPaletteModel = 2,
        kGrayModel = 3,
        kBitonalModel = 4
    };
    /// How the values of a pixel are laid out.
    enum DataType
    {
        kRgba = 0,
        kGray = 1,
        kPalette = 2,
        kBitonalData = 3
    };
    enum BitsPerPixel
    {
        k1 = 0,
        k8 = 1,
        k24 = 2,
        k32 = 3
    };
    enum PixelType
    {
        kBitonal = 0
    };
};

/// One pixel value: of a bitonal pixel 0 is background and 255 is ink.
struct HALVORAN_STANDIN_API ImagePixel
{
    ImagePixel() = default;
    explicit ImagePixel(DataModelAttributes::PixelType pixelType) : type(pixelType) {}

    DataModelAttributes::PixelType type = DataModelAttributes::kBitonal;
    struct
    {
        std::uint8_t bitonal = 0;
    } value;
};
} // namespace Atil
