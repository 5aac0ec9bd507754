// What can be said about a file that is to be written.
#pragma once

#include "standin/export.h"

namespace Atil {
class HALVORAN_STANDIN_API FormatCodecPropertyInterface
{
public:
    enum PropertyType
    {
        kCompression = 2,
        kDensity = 3
    };

    virtual ~FormatCodecPropertyInterface() = default;
    virtual PropertyType propertyType() const = 0;
};

/// Dots per inch.
class HALVORAN_STANDIN_API FormatCodecDensity : public FormatCodecPropertyInterface
{
public:
    PropertyType propertyType() const override;
    void setDensity(double x, double y);
    double xDensity() const { return m_x; }
    double yDensity() const { return m_y; }

private:
    double m_x = 0;
    double m_y = 0;
};

class HALVORAN_STANDIN_API ImageFormatCodec
{
public:
    virtual ~ImageFormatCodec() = default;
    /// A new property at its present value, which the caller deletes; null if the format has none of that kind.
    virtual FormatCodecPropertyInterface* newProperty(FormatCodecPropertyInterface::PropertyType type) const = 0;
};
} // namespace Atil
