#include "imaging/exif.h"

#include "imaging/codec.h"

namespace imaging {

namespace {

enum Tag : std::uint32_t
{
    orientationTag = 0x112,
    xResolutionTag = 0x11A,
    yResolutionTag = 0x11B,
    resolutionUnitTag = 0x128,
};

// Numbers in the block's own byte order; 0 beyond its end.
class Fields
{
public:
    explicit Fields(std::span<const std::uint8_t> block)
        : m_block(block), m_bigEndian(!block.empty() && block[0] == 'M')
    {}

    bool valid() const { return m_block.size() >= 8 && m_block[0] == m_block[1] && u16(2) == 42; }
    std::uint32_t u8(std::size_t at) const { return at < m_block.size() ? m_block[at] : 0; }
    std::uint32_t u16(std::size_t at) const
    {
        return m_bigEndian ? u8(at) << 8 | u8(at + 1) : u8(at + 1) << 8 | u8(at);
    }
    std::uint32_t u32(std::size_t at) const
    {
        return m_bigEndian ? u16(at) << 16 | u16(at + 2) : u16(at + 2) << 16 | u16(at);
    }
    double ratio(std::size_t at) const
    {
        const std::uint32_t divisor = u32(at + 4);
        return divisor > 0 ? double(u32(at)) / divisor : 0;
    }

private:
    std::span<const std::uint8_t> m_block;
    bool m_bigEndian;
};

} // namespace

Exif parseExif(std::span<const std::uint8_t> block)
{
    constexpr std::size_t entrySize = 12;
    constexpr std::uint32_t centimetres = 3;
    const Fields fields(block);
    if (!fields.valid())
        return {};
    Exif exif;
    double x = 0;
    double y = 0;
    std::uint32_t unit = 2; // inches
    const std::size_t directory = fields.u32(4);
    const std::size_t count = fields.u16(directory);
    for (std::size_t i = 0; i < count && directory + 2 + (i + 1) * entrySize <= block.size(); ++i) {
        const std::size_t entry = directory + 2 + i * entrySize;
        const std::size_t value = entry + 8;
        switch (fields.u16(entry)) {
        case orientationTag:
            if (fields.u16(value) >= 1 && fields.u16(value) <= 8)
                exif.orientation = Orientation(fields.u16(value));
            break;
        case xResolutionTag:
            x = fields.ratio(fields.u32(value));
            break;
        case yResolutionTag:
            y = fields.ratio(fields.u32(value));
            break;
        case resolutionUnitTag:
            unit = fields.u16(value);
            break;
        default:
            break;
        }
    }
    const double perInch = unit == centimetres ? 2.54 : unit == 2 ? 1 : 0;
    exif.resolution = tidyResolution(x * perInch, y * perInch);
    return exif;
}

} // namespace imaging
