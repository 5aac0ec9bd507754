#include <algorithm>
#include <array>
#include <cstring>
#include <string_view>
#include <vector>

#include "imaging/codec.h"
#include "imaging/error.h"
#include "imaging/orientation.h"
#include "imaging/row_bits.h"

// Photo CD. An image pac holds one picture in several sizes, each behind the smaller ones; those up to 768 x 512, the
// Base, are stored plainly, and larger ones as compressed differences, which are not read. An overview pac holds small
// pictures of all the disc's images; the first is read. Pixels are luminance and two chrominances (PhotoYCC): two rows
// of luminance, then one of each chrominance at half the width.

namespace imaging {

namespace {

constexpr std::uint64_t sectorSize = 2048;
constexpr std::uint64_t imagePacSignatureAt = sectorSize;
constexpr std::uint64_t attributesAt = 0xE02;
constexpr std::string_view imagePacSignature = "PCD_IPI";
constexpr std::string_view overviewPacSignature = "PCD_OPA";

struct Layout
{
    Size stored;
    std::uint64_t pixels; // offset of the first row
    Orientation orientation;
};

bool standsAt(std::span<const std::byte> head, std::uint64_t offset, std::string_view text)
{
    return head.size() >= offset + text.size() && std::memcmp(head.data() + offset, text.data(), text.size()) == 0;
}

// The two lowest bits count the quarter turns, counter-clockwise, after which the picture stands upright.
Orientation orientationOf(std::byte attributes)
{
    static constexpr Orientation turns[] = {Orientation::TopLeft, Orientation::LeftBottom, Orientation::BottomRight,
                                            Orientation::RightTop};
    return turns[std::to_integer<int>(attributes) & 3];
}

Layout layoutOf(ByteSource& source)
{
    std::array<std::byte, codecHeadLength> head;
    source.readExactly(0, head.data(), head.size());
    if (standsAt(head, 0, overviewPacSignature))
        return {{192, 128}, 5 * sectorSize, Orientation::TopLeft};
    return {{768, 512}, 96 * sectorSize, orientationOf(head[attributesAt])};
}

RasterInfo infoOf(const Layout& layout)
{
    RasterInfo info{layout.stored, 24, {}, Format::PhotoCd};
    makeUpright(info, layout.orientation);
    return info;
}

// The chrominances add next to nothing to the luminance of the colour that they make. The stored luminance is that of
// the colour divided by 1.3584, which leaves room above white.
bool isDarkLuma(std::uint8_t luma)
{
    return luma * 13584 < 1275000;
}

bool recognisesPhotoCd(std::span<const std::byte> head)
{
    return standsAt(head, 0, overviewPacSignature) || standsAt(head, imagePacSignatureAt, imagePacSignature);
}

RasterInfo inspectPhotoCd(ByteSource& source)
{
    return infoOf(layoutOf(source));
}

RasterFile readPhotoCd(ByteSource& source)
{
    const Layout layout = layoutOf(source);
    const auto width = std::size_t(layout.stored.width);
    std::vector<std::uint8_t> pair(width * 3); // two rows with their chrominances
    const std::uint64_t pixelBytes = pair.size() * std::uint64_t(layout.stored.height) / 2;
    if (source.size() < layout.pixels + pixelBytes)
        throw ImagingError("The Photo CD image is cut off.");
    Bitmap bitmap = Bitmap::uninitialized(layout.stored);
    for (int y = 0; y < layout.stored.height; ++y) {
        if (y % 2 == 0)
            source.readExactly(layout.pixels + pair.size() * std::uint64_t(y / 2), pair.data(), pair.size());
        const std::uint8_t* const row = pair.data() + (y % 2 == 0 ? 0 : width);
        fillRow(bitmap.row(y), layout.stored.width, [row](int x) { return isDarkLuma(row[x]); });
    }
    return {upright(std::move(bitmap), layout.orientation), infoOf(layout)};
}

} // namespace

const RasterCodec photoCdCodec{recognisesPhotoCd, inspectPhotoCd, readPhotoCd, nullptr};

} // namespace imaging
