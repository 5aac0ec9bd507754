#include "imaging/fax_stream.h"

#include "imaging/error.h"

namespace imaging {

FaxStream::FaxStream(std::uint64_t size)
{
    if (size > longestFaxStream)
        throw ImagingError("The file has too much group 3 or group 4 data in one piece.");
    m_bytes.resize(std::size_t(size) + padding);
}

} // namespace imaging
