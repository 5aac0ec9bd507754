#pragma once

#include <cstdint>
#include <vector>

#include "imaging/bitmap.h"
#include "imaging/byte_stream.h"

// CCITT group 4 streams, the form in which TIFF strips and CALS files hold their pixels: most significant bit first,
// rows relative to the row above, a white row above the first, an end-of-block mark behind the last.

namespace imaging {

/// The longest stream that is written or read in one piece. With the largest bitmap beside it, it takes less than 1 GB.
inline constexpr std::uint64_t longestGroup4Stream = std::uint64_t(640) << 20;

std::vector<std::uint8_t> encodeGroup4(const Bitmap& bitmap, int firstRow, int rowCount);

/// Appends the stream to the sink as it is made. Throws ImagingError when it gets longer than what can be read again.
void encodeGroup4(const Bitmap& bitmap, int firstRow, int rowCount, ByteSink& sink);

/// A stream to be decoded where it lies: it has room around it for what the decoder needs.
class Group4Stream
{
public:
    /// Of that many bytes, for the caller to fill. Throws ImagingError when they are more than can be read.
    explicit Group4Stream(std::uint64_t size);

    std::uint8_t* data();
    std::size_t size() const { return m_size; }

private:
    friend void decodeGroup4(Group4Stream& stream, Bitmap& bitmap, int firstRow, int rowCount, bool inverted);

    std::size_t m_size;
    std::vector<std::uint8_t> m_bytes;
};

/// Fills rowCount whole rows of the bitmap, padding included. With inverted, what the stream calls white is ink. Throws
/// ImagingError unless the stream holds that many rows without fault; bytes behind them don't matter. Uses the stream
/// up. Rows of one bitmap may be decoded from several threads at once.
void decodeGroup4(Group4Stream& stream, Bitmap& bitmap, int firstRow, int rowCount, bool inverted);

} // namespace imaging
