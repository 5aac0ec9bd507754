#include <algorithm>
#include <array>
#include <csetjmp>
#include <exception>
#include <png.h>
#include <string>
#include <vector>

#include "imaging/codec.h"
#include "imaging/error.h"
#include "imaging/row_bits.h"

namespace imaging {

namespace {

constexpr std::size_t signatureLength = 8;

// libpng's two structures and where its bytes come from or go to. libpng leaves a failed call with longjmp: run()
// turns that into an ImagingError. What is passed to run() calls libpng and makes nothing that needs destroying.
class PngHandle
{
public:
    explicit PngHandle(ByteSource& source) : m_source(&source)
    {
        m_png = png_create_read_struct(PNG_LIBPNG_VER_STRING, this, &onError, &onWarning);
        makeInfo();
        png_set_read_fn(m_png, this, &readBytes);
        limit();
    }

    explicit PngHandle(ByteSink& sink) : m_sink(&sink)
    {
        m_png = png_create_write_struct(PNG_LIBPNG_VER_STRING, this, &onError, &onWarning);
        makeInfo();
        png_set_write_fn(m_png, this, &writeBytes, &flush);
    }

    ~PngHandle()
    {
        if (m_source) {
            png_destroy_read_struct(&m_png, &m_info, nullptr);
        } else {
            png_destroy_write_struct(&m_png, &m_info);
        }
    }

    PngHandle(const PngHandle&) = delete;
    PngHandle& operator=(const PngHandle&) = delete;

    png_structp png() const { return m_png; }
    png_infop info() const { return m_info; }

    template <typename Calls> void run(Calls calls)
    {
        if (setjmp(png_jmpbuf(m_png)) != 0)
            fail();
        calls();
    }

private:
    [[noreturn]] void fail() const
    {
        throw ImagingError((m_source ? "The PNG image is damaged or cut off: " : "Writing the PNG image failed: ") +
                           m_message + ".");
    }

    void makeInfo()
    {
        m_info = m_png ? png_create_info_struct(m_png) : nullptr;
        if (!m_info) {
            png_destroy_read_struct(&m_png, &m_info, nullptr);
            throw std::bad_alloc();
        }
    }

    void limit()
    {
        constexpr png_alloc_size_t largestChunk = 1 << 23;
        constexpr png_uint_32 mostChunks = 1000;
        png_set_user_limits(m_png, Bitmap::maximumSide, Bitmap::maximumSide);
        png_set_chunk_malloc_max(m_png, largestChunk);
        png_set_chunk_cache_max(m_png, mostChunks);
        // libpng makes room for what a chunk claims to hold before it looks for it: of the chunks that an image can do
        // without, none but the resolution is read.
        png_set_keep_unknown_chunks(m_png, PNG_HANDLE_CHUNK_NEVER, nullptr, -1);
        static constexpr png_byte resolution[] = {'p', 'H', 'Y', 's', 0};
        png_set_keep_unknown_chunks(m_png, PNG_HANDLE_CHUNK_AS_DEFAULT, resolution, 1);
    }

    static void onError(png_structp png, png_const_charp text)
    {
        auto& self = *static_cast<PngHandle*>(png_get_error_ptr(png));
        if (self.m_message.empty())
            self.m_message = text;
        png_longjmp(png, 1);
    }

    static void onWarning(png_structp, png_const_charp) {}

    // Moves bytes without letting an exception into libpng; false when it failed.
    template <typename Move> bool attempt(Move move)
    {
        try {
            move();
            return true;
        } catch (const std::exception& error) {
            m_message = error.what();
            if (m_message.ends_with('.'))
                m_message.pop_back();
            return false;
        }
    }

    static void readBytes(png_structp png, png_bytep target, std::size_t count)
    {
        auto& self = *static_cast<PngHandle*>(png_get_io_ptr(png));
        if (!self.attempt([&] { self.m_source->readExactly(self.m_position, target, count); }))
            png_error(png, "read error");
        self.m_position += count;
    }

    static void writeBytes(png_structp png, png_bytep bytes, std::size_t count)
    {
        auto& self = *static_cast<PngHandle*>(png_get_io_ptr(png));
        if (!self.attempt([&] { self.m_sink->append(bytes, count); }))
            png_error(png, "write error");
    }

    static void flush(png_structp) {}

    ByteSource* m_source = nullptr;
    ByteSink* m_sink = nullptr;
    std::uint64_t m_position = 0;
    std::string m_message;
    png_structp m_png = nullptr;
    png_infop m_info = nullptr;
};

// Reads everything in front of the pixels.
RasterInfo readInfo(PngHandle& handle)
{
    handle.run([&] { png_read_info(handle.png(), handle.info()); });
    png_uint_32 x = 0;
    png_uint_32 y = 0;
    int unit = PNG_RESOLUTION_UNKNOWN;
    Resolution resolution;
    if (png_get_pHYs(handle.png(), handle.info(), &x, &y, &unit) != 0 && unit == PNG_RESOLUTION_METER)
        resolution = tidyResolution(x * metresPerInch, y * metresPerInch);
    const Size size = checkedImageSize(png_get_image_width(handle.png(), handle.info()),
                                       png_get_image_height(handle.png(), handle.info()));
    const int bits = png_get_bit_depth(handle.png(), handle.info()) * png_get_channels(handle.png(), handle.info());
    return {size, bits, resolution, Format::Png};
}

// How the rows come out of libpng.
struct RowForm
{
    bool packed;   // 1 bit per pixel
    bool inverted; // packed: 0 is ink
    int channels;  // otherwise bytes per pixel: grey, grey and opacity, colours, colours and opacity
};

RowForm chooseForm(PngHandle& handle, const RasterInfo& info)
{
    png_structp png = handle.png();
    const bool transparent = png_get_valid(png, handle.info(), PNG_INFO_tRNS) != 0;
    if (info.bitsPerPixel == 1 && !transparent) {
        if (png_get_color_type(png, handle.info()) != PNG_COLOR_TYPE_PALETTE)
            return {true, true, 0};
        png_colorp palette = nullptr;
        int count = 0;
        png_get_PLTE(png, handle.info(), &palette, &count);
        std::vector<int> luminances(static_cast<std::size_t>(count));
        std::transform(palette, palette + count, luminances.begin(),
                       [](const png_color& colour) { return luminance(colour.red, colour.green, colour.blue); });
        return {true, !oneIsInk(luminances), 0};
    }
    int channels = 0;
    handle.run([&] {
        png_set_expand(png);
        png_set_scale_16(png);
        png_read_update_info(png, handle.info());
        channels = png_get_channels(png, handle.info());
    });
    return {false, false, channels};
}

void convertRow(const RowForm& form, std::uint64_t* row, const std::uint8_t* pixels, int width)
{
    if (form.packed) {
        wordsFromBytes(row, pixels, width, form.inverted);
        return;
    }
    const bool colours = form.channels >= 3;
    const bool opacity = form.channels % 2 == 0;
    fillRow(row, width, [&](int x) {
        const std::uint8_t* pixel = pixels + std::ptrdiff_t(form.channels) * x;
        const int green = pixel[colours ? 1 : 0];
        const int blue = pixel[colours ? 2 : 0];
        return isDark(pixel[0], green, blue, opacity ? pixel[form.channels - 1] : 255);
    });
}

// The seven passes each give some pixels of some rows.
void readInterlaced(PngHandle& handle, const RowForm& form, std::size_t rowBytes, Bitmap& bitmap)
{
    std::vector<std::uint8_t> bytes(rowBytes);
    std::vector<std::uint64_t> bits(std::size_t(bitmap.wordsPerRow()));
    for (int pass = 0; pass < PNG_INTERLACE_ADAM7_PASSES; ++pass) {
        const int columns = int(PNG_PASS_COLS(png_uint_32(bitmap.width()), pass));
        const int rows = columns > 0 ? int(PNG_PASS_ROWS(png_uint_32(bitmap.height()), pass)) : 0;
        for (int i = 0; i < rows; ++i) {
            handle.run([&] { png_read_row(handle.png(), bytes.data(), nullptr); });
            convertRow(form, bits.data(), bytes.data(), columns);
            const int y = PNG_ROW_FROM_PASS_ROW(i, pass);
            if (pass % 2 == 0) // the first pass to reach this row
                std::fill_n(bitmap.row(y), bitmap.wordsPerRow(), std::uint64_t(0));
            for (int column = 0; column < columns; ++column) {
                if (bits[std::size_t(column) / 64] >> (63 - column % 64) & 1)
                    bitmap.setInk(PNG_COL_FROM_PASS_COL(column, pass), y, true);
            }
        }
    }
}

void refuseTooShortFile(const ByteSource& source, const RasterInfo& info)
{
    constexpr std::uint64_t highestCompression = 1032; // of deflate
    const std::uint64_t pixels = std::uint64_t(info.size.width) * std::uint64_t(info.size.height);
    if (pixels * std::uint64_t(info.bitsPerPixel) / 8 > source.size() * highestCompression)
        throw ImagingError("The PNG file is too short for its image.");
}

bool recognisesPng(std::span<const std::byte> head)
{
    static constexpr std::array<unsigned char, signatureLength> signature = {0x89, 'P', 'N', 'G', 13, 10, 26, 10};
    return head.size() >= signatureLength &&
           std::equal(signature.begin(), signature.end(), head.begin(),
                      [](unsigned char wanted, std::byte found) { return std::byte(wanted) == found; });
}

RasterInfo inspectPng(ByteSource& source)
{
    PngHandle handle(source);
    return readInfo(handle);
}

RasterFile readPng(ByteSource& source)
{
    PngHandle handle(source);
    const RasterInfo info = readInfo(handle);
    refuseTooShortFile(source, info);
    const RowForm form = chooseForm(handle, info);
    const std::size_t rowBytes = png_get_rowbytes(handle.png(), handle.info());
    Bitmap bitmap = Bitmap::uninitialized(info.size);
    if (png_get_interlace_type(handle.png(), handle.info()) != PNG_INTERLACE_NONE) {
        readInterlaced(handle, form, rowBytes, bitmap);
    } else {
        std::vector<std::uint8_t> bytes(rowBytes);
        for (int y = 0; y < bitmap.height(); ++y) {
            handle.run([&] { png_read_row(handle.png(), bytes.data(), nullptr); });
            convertRow(form, bitmap.row(y), bytes.data(), bitmap.width());
        }
    }
    handle.run([&] { png_read_end(handle.png(), nullptr); });
    return {std::move(bitmap), info};
}

void writePng(ByteSink& sink, const Bitmap& bitmap, Resolution resolution, Format)
{
    const Resolution tidy = tidyResolution(resolution.x, resolution.y);
    std::vector<std::uint8_t> bytes(bytesPerRow(bitmap.width()));
    PngHandle handle(sink);
    handle.run([&] {
        png_set_user_limits(handle.png(), Bitmap::maximumSide, Bitmap::maximumSide);
        png_set_IHDR(handle.png(), handle.info(), png_uint_32(bitmap.width()), png_uint_32(bitmap.height()), 1,
                     PNG_COLOR_TYPE_GRAY, PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
        if (tidy.x > 0)
            png_set_pHYs(handle.png(), handle.info(), dotsPerMetre(tidy.x), dotsPerMetre(tidy.y), PNG_RESOLUTION_METER);
        png_write_info(handle.png(), handle.info());
    });
    for (int y = 0; y < bitmap.height(); ++y) {
        bytesFromWords(bytes.data(), bitmap.row(y), bitmap.width(), true);
        handle.run([&] { png_write_row(handle.png(), bytes.data()); });
    }
    handle.run([&] { png_write_end(handle.png(), nullptr); });
}

} // namespace

const RasterCodec pngCodec{recognisesPng, inspectPng, readPng, writePng};

} // namespace imaging
