#include "standin/atil/tiff_codec.h"

namespace Atil {

FormatCodecPropertyInterface::PropertyType FormatCodecDensity::propertyType() const
{
    return kDensity;
}

void FormatCodecDensity::setDensity(double x, double y)
{
    m_x = x;
    m_y = y;
}

} // namespace Atil

Atil::FormatCodecPropertyInterface::PropertyType TiffCompression::propertyType() const
{
    return kCompression;
}

bool TiffCompression::selectCompression(TiffCompressionType::Compression compression)
{
    if (compression != TiffCompressionType::kNone && compression != TiffCompressionType::kCCITT_FAX4)
        return false;
    m_compression = compression;
    return true;
}

TiffFormatCodec::TiffFormatCodec(int) {}

Atil::FormatCodecPropertyInterface*
TiffFormatCodec::newProperty(Atil::FormatCodecPropertyInterface::PropertyType type) const
{
    switch (type) {
    case Atil::FormatCodecPropertyInterface::kCompression:
        return new TiffCompression;
    case Atil::FormatCodecPropertyInterface::kDensity:
        return new Atil::FormatCodecDensity;
    }
    return nullptr;
}
