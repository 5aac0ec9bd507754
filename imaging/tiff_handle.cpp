#include "imaging/tiff_handle.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <memory>
#include <string_view>
#include <utility>

#include "imaging/error.h"

namespace imaging {

namespace {

// Whether the warning says that the decoder filled up pixels that it could not read. The decoders of whole images give
// an error then, these only warn.
bool tellsOfLostPixels(std::string_view place, std::string_view text)
{
    struct Warning
    {
        std::string_view place, text; // how they begin
    };
    static constexpr Warning lossy[] = {
        {"Fax", ""},                     // all of the CCITT kinds
        {"PackBitsDecode", ""},          //
        {"JPEGLib", ""},                 // JPEG and, below, old-style JPEG: what their library says of the data
        {"LibJpeg", ""},                 //
        {"JPEGPreDecode", "Improper"},   // fewer rows or columns than the piece of the image has
        {"TIFF", "fractional scanline"}, //
        {"PixarLogDecode", ""},          //
    };
    return std::any_of(std::begin(lossy), std::end(lossy), [&](const Warning& warning) {
        return place.starts_with(warning.place) && text.starts_with(warning.text);
    });
}

// Keeps the first text.
void note(std::string& kept, std::string text)
{
    if (kept.empty())
        kept = std::move(text);
}

std::string formatted(const char* format, va_list arguments)
{
    char text[300];
    std::vsnprintf(text, sizeof text, format, arguments);
    return text;
}

} // namespace

// No exception may pass through libtiff: each callback keeps its text and reports failure in libtiff's own way.
struct TiffHandle::Callbacks
{
    static TiffHandle& self(thandle_t handle) { return *static_cast<TiffHandle*>(handle); }

    static tmsize_t read(thandle_t handle, void* target, tmsize_t count)
    {
        TiffHandle& tiff = self(handle);
        if (!tiff.m_source)
            return 0;
        try {
            const std::size_t got = tiff.m_source->read(tiff.m_position, target, std::size_t(count));
            tiff.m_position += got;
            return tmsize_t(got);
        } catch (const std::exception& error) {
            note(tiff.m_fault, error.what());
            return 0;
        }
    }

    static tmsize_t write(thandle_t handle, void* bytes, tmsize_t count)
    {
        TiffHandle& tiff = self(handle);
        try {
            tiff.m_sink->write(tiff.m_position, bytes, std::size_t(count));
            tiff.m_position += std::uint64_t(count);
            return count;
        } catch (const std::exception& error) {
            note(tiff.m_fault, error.what());
            return 0;
        }
    }

    static toff_t seek(thandle_t handle, toff_t offset, int from)
    {
        TiffHandle& tiff = self(handle);
        const std::uint64_t base = from == SEEK_SET ? 0 : from == SEEK_CUR ? tiff.m_position : size(handle);
        tiff.m_position = base + offset;
        return tiff.m_position;
    }

    static toff_t size(thandle_t handle)
    {
        const TiffHandle& tiff = self(handle);
        return tiff.m_source ? tiff.m_source->size() : tiff.m_sink->size();
    }

    static int close(thandle_t) { return 0; }

    static int map(thandle_t handle, void** base, toff_t* size)
    {
        const TiffHandle& tiff = self(handle);
        if (!tiff.m_memory)
            return 0;
        // libtiff only reads what a read-only handle maps.
        *base = const_cast<std::byte*>(tiff.m_memory->bytes().data());
        *size = tiff.m_memory->size();
        return 1;
    }

    static void unmap(thandle_t, void*, toff_t) {}

    // The answer 1 says that libtiff need not print the text.
    static int fault(TIFF*, void* handle, const char*, const char* format, va_list arguments)
    {
        note(self(handle).m_fault, formatted(format, arguments));
        return 1;
    }

    static int warning(TIFF*, void* handle, const char* place, const char* format, va_list arguments)
    {
        TiffHandle& tiff = self(handle);
        const std::string text = formatted(format, arguments);
        note(tellsOfLostPixels(place ? place : "", text) ? tiff.m_fault : tiff.m_warning, text);
        return 1;
    }
};

TiffHandle::TiffHandle(ByteSource& source) : m_source(&source)
{
    open("r", false);
}

TiffHandle::TiffHandle(MemorySource& source) : m_source(&source), m_memory(&source)
{
    open("r", true);
}

TiffHandle::TiffHandle(ByteSink& sink) : m_sink(&sink)
{
    open("wl", false);
}

TiffHandle::~TiffHandle()
{
    // Not TIFFClose, which would write what an abandoned file has left over.
    if (m_tiff)
        TIFFCleanup(m_tiff);
}

void TiffHandle::open(const char* mode, bool mapped)
{
    // What a broken file may make libtiff ask for in one piece.
    constexpr tmsize_t maximumAllocation = tmsize_t(1) << 30;
    const std::unique_ptr<TIFFOpenOptions, decltype(&TIFFOpenOptionsFree)> options(TIFFOpenOptionsAlloc(),
                                                                                   &TIFFOpenOptionsFree);
    if (!options)
        throw std::bad_alloc();
    TIFFOpenOptionsSetMaxSingleMemAlloc(options.get(), maximumAllocation);
    TIFFOpenOptionsSetErrorHandlerExtR(options.get(), &Callbacks::fault, this);
    TIFFOpenOptionsSetWarningHandlerExtR(options.get(), &Callbacks::warning, this);
    const std::string fullMode = std::string(mode) + (mapped ? "" : "m");
    m_tiff = TIFFClientOpenExt("TIFF", fullMode.c_str(), this, &Callbacks::read, &Callbacks::write, &Callbacks::seek,
                               &Callbacks::close, &Callbacks::size, &Callbacks::map, &Callbacks::unmap, options.get());
    if (!m_tiff)
        fail(m_sink ? "The TIFF file can't be written" : "The TIFF file is damaged");
}

void TiffHandle::forgetComplaints()
{
    m_fault.clear();
    m_warning.clear();
}

void TiffHandle::fail(const std::string& what) const
{
    const std::string& why = m_fault.empty() ? m_warning : m_fault;
    if (why.empty())
        throw ImagingError(what + ".");
    throw ImagingError(what + ": " + why + (why.ends_with('.') ? "" : "."));
}

std::uint16_t TiffHandle::shortTag(std::uint32_t tag, std::uint16_t otherwise) const
{
    std::uint16_t value = 0;
    return TIFFGetFieldDefaulted(m_tiff, tag, &value) ? value : otherwise;
}

std::uint32_t TiffHandle::longTag(std::uint32_t tag, std::uint32_t otherwise) const
{
    std::uint32_t value = 0;
    return TIFFGetFieldDefaulted(m_tiff, tag, &value) ? value : otherwise;
}

float TiffHandle::realTag(std::uint32_t tag, float otherwise) const
{
    float value = 0;
    return TIFFGetFieldDefaulted(m_tiff, tag, &value) ? value : otherwise;
}

} // namespace imaging
