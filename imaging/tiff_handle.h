#pragma once

#include "imaging/byte_stream.h"

#include <cstdint>
#include <string>

#include <tiffio.h>

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

    TIFF* get() const { return tiff_; }

    /// A tag's value, or the tag's default, or else the given one.
    std::uint16_t shortTag(std::uint32_t tag, std::uint16_t otherwise) const;
    std::uint32_t longTag(std::uint32_t tag, std::uint32_t otherwise) const;
    float realTag(std::uint32_t tag, float otherwise) const;

    /// Throws ImagingError unless libtiff accepts the value.
    template <typename... Value> void setTag(std::uint32_t tag, Value... value)
    {
        if (!TIFFSetField(tiff_, tag, value...))
            fail(source_ ? "The TIFF file can't be read" : "The TIFF file can't be written");
    }

    /// Whether libtiff has complained since the last call of forgetComplaints(). Its decoders fill up what they can't
    /// read and only warn, so while pixels are decoded a warning is as bad as an error.
    bool complained() const { return !complaint_.empty(); }
    void forgetComplaints() { complaint_.clear(); }

    /// Throws ImagingError: what went wrong, with libtiff's first complaint behind it.
    [[noreturn]] void fail(const std::string& what) const;

private:
    struct Callbacks;

    void open(const char* mode, bool mapped);
    void note(std::string text);

    ByteSource* source_ = nullptr;
    MemorySource* memory_ = nullptr;
    ByteSink* sink_ = nullptr;
    std::uint64_t position_ = 0;
    std::string complaint_;
    TIFF* tiff_ = nullptr;
};

} // namespace imaging
