// The TIFF format.
#pragma once

#include "standin/atil/format_codec.h"

struct TiffCompressionType
{
    enum Compression
    {
        kNone = 0,
        kCCITT_FAX4 = 4
    };
};

class HALVORAN_STANDIN_API TiffCompression : public Atil::FormatCodecPropertyInterface
{
public:
    PropertyType propertyType() const override;
    /// False, and no change, for a compression that 1-bit images cannot be written with.
    bool selectCompression(TiffCompressionType::Compression compression);
    TiffCompressionType::Compression compression() const { return m_compression; }

private:
    TiffCompressionType::Compression m_compression = TiffCompressionType::kNone;
};

class HALVORAN_STANDIN_API TiffFormatCodec : public Atil::ImageFormatCodec
{
public:
    /// The number chooses the revision of the format's options; 3 is the present one.
    explicit TiffFormatCodec(int revision);

    Atil::FormatCodecPropertyInterface*
    newProperty(Atil::FormatCodecPropertyInterface::PropertyType type) const override;
};
