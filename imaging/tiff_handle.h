#pragma once

#include <cstdint>
#include <string>
#include <tiffio.h>

#include "imaging/byte_stream.h"

namespace imaging {

/// libtiff's handle over a source or a sink of ours. What libtiff complains of stays with the handle and ends in the
/// error that fail() throws; nothing is printed and no state is shared between handles, so that several threads may use
/// one each. The source or sink must outlive the handle.
class TiffHandle
{
public:
    /// Reads the first directory. Throws ImagingError when there is no usable one.
    explicit TiffHandle(ByteSource& source);

    /// The same over a TIFF in memory, which libtiff then decodes in place.
    explicit TiffHandle(MemorySource& source);

    /// Writes from the beginning of the sink.
    explicit TiffHandle(ByteSink& sink);

    ~TiffHandle();

    TiffHandle(const TiffHandle&) = delete;
    TiffHandle& operator=(const TiffHandle&) = delete;

    TIFF* get() const { return m_tiff; }

    /// A tag's value, or the tag's default, or else the given one.
    std::uint16_t shortTag(std::uint32_t tag, std::uint16_t otherwise) const;
    std::uint32_t longTag(std::uint32_t tag, std::uint32_t otherwise) const;
    float realTag(std::uint32_t tag, float otherwise) const;

    /// Throws ImagingError unless libtiff accepts the value.
    template <typename... Value> void setTag(std::uint32_t tag, Value... value)
    {
        if (!TIFFSetField(m_tiff, tag, value...))
            fail(m_source ? "The TIFF file can't be read" : "The TIFF file can't be written");
    }

    /// Whether libtiff has met an error since the last call of forgetComplaints(), or has warned that its decoder made
    /// up for data that were not there. Warnings that do no harm don't count.
    bool faulty() const { return !m_fault.empty(); }
    void forgetComplaints();

    /// Throws ImagingError: what went wrong, with libtiff's first fault behind it, or else its first warning.
    [[noreturn]] void fail(const std::string& what) const;

private:
    struct Callbacks;

    void open(const char* mode, bool mapped);

    ByteSource* m_source = nullptr;
    MemorySource* m_memory = nullptr;
    ByteSink* m_sink = nullptr;
    std::uint64_t m_position = 0;
    std::string m_fault;   // the first one
    std::string m_warning; // the first one that does no harm
    TIFF* m_tiff = nullptr;
};

} // namespace imaging
