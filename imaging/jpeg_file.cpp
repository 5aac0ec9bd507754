#include <algorithm>
#include <array>
#include <csetjmp>
#include <cstdio>
#include <cstring>
#include <exception>
#include <string>
#include <vector>

// Behind <cstdio>, whose names it uses.
#include <jerror.h>
#include <jpeglib.h>

#include "imaging/codec.h"
#include "imaging/error.h"
#include "imaging/exif.h"
#include "imaging/row_bits.h"

namespace imaging {

namespace {

enum Marker : std::uint8_t
{
    startOfScan = 0xDA,
    endOfImage = 0xD9,
    application1 = 0xE1,
};

// libjpeg's decompressor and where its bytes come from. libjpeg leaves a failed call with longjmp: run() turns that
// into an ImagingError. What is passed to run() calls libjpeg and makes nothing that needs destroying.
class JpegHandle
{
public:
    /// Reads everything in front of the pixels.
    explicit JpegHandle(ByteSource& source) : m_source(source)
    {
        m_jpeg.err = jpeg_std_error(&m_errors);
        m_errors.error_exit = &onError;
        m_errors.emit_message = &onMessage;
        m_jpeg.client_data = this;
        try {
            run([&] { jpeg_create_decompress(&m_jpeg); });
            m_jpeg.src = &m_reading;
            m_reading.init_source = &nothing;
            m_reading.fill_input_buffer = &fill;
            m_reading.skip_input_data = &skip;
            m_reading.resync_to_restart = &jpeg_resync_to_restart;
            m_reading.term_source = &nothing;
            m_jpeg.progress = &m_progress;
            m_progress.progress_monitor = &limitScans;
            run([&] { jpeg_read_header(&m_jpeg, TRUE); });
        } catch (...) {
            jpeg_destroy_decompress(&m_jpeg);
            throw;
        }
    }

    ~JpegHandle() { jpeg_destroy_decompress(&m_jpeg); }

    JpegHandle(const JpegHandle&) = delete;
    JpegHandle& operator=(const JpegHandle&) = delete;

    jpeg_decompress_struct& jpeg() { return m_jpeg; }

    template <typename Calls> void run(Calls calls)
    {
        if (setjmp(m_return) != 0)
            fail();
        calls();
    }

private:
    [[noreturn]] void fail() const
    {
        std::string text = m_message;
        if (text.ends_with('.'))
            text.pop_back();
        throw ImagingError("The JPEG image is damaged or not of a kind that is read: " + text + ".");
    }

    static JpegHandle& self(j_common_ptr jpeg) { return *static_cast<JpegHandle*>(jpeg->client_data); }
    static JpegHandle& self(j_decompress_ptr jpeg) { return *static_cast<JpegHandle*>(jpeg->client_data); }

    [[noreturn]] void leave(const char* message)
    {
        std::snprintf(m_message, sizeof m_message, "%s", message);
        std::longjmp(m_return, 1);
    }

    static void onError(j_common_ptr jpeg)
    {
        char message[JMSG_LENGTH_MAX] = "";
        jpeg->err->format_message(jpeg, message);
        self(jpeg).leave(message);
    }

    // A warning tells that pixels were made up for data that are not there, unless it is about a header's number.
    static void onMessage(j_common_ptr jpeg, int level)
    {
        const int code = jpeg->err->msg_code;
        if (level < 0 && code != JWRN_JFIF_MAJOR && code != JWRN_ADOBE_XFORM)
            onError(jpeg);
    }

    static void nothing(j_decompress_ptr) {}

    static boolean fill(j_decompress_ptr jpeg)
    {
        JpegHandle& handle = self(jpeg);
        if (!handle.readOn())
            handle.leave(handle.m_failure);
        return TRUE;
    }

    // False, with the reason noted, when there is nothing more. No exception may pass through libjpeg.
    bool readOn()
    {
        try {
            const std::size_t got = m_source.read(m_position, m_buffer.data(), m_buffer.size());
            m_position += got;
            m_reading.next_input_byte = m_buffer.data();
            m_reading.bytes_in_buffer = got;
            std::snprintf(m_failure, sizeof m_failure, "The file ends too early");
            return got > 0;
        } catch (const std::exception& error) {
            std::snprintf(m_failure, sizeof m_failure, "%s", error.what());
            return false;
        }
    }

    static void skip(j_decompress_ptr jpeg, long count)
    {
        JpegHandle& handle = self(jpeg);
        if (count <= 0)
            return;
        const std::size_t here = std::min(std::size_t(count), handle.m_reading.bytes_in_buffer);
        handle.m_reading.next_input_byte += here;
        handle.m_reading.bytes_in_buffer -= here;
        handle.m_position += std::size_t(count) - here;
    }

    // Each scan of a progressive image is work on the whole image, and takes few bytes.
    static void limitScans(j_common_ptr jpeg)
    {
        constexpr int mostScans = 100;
        JpegHandle& handle = self(jpeg);
        if (handle.m_jpeg.input_scan_number > mostScans)
            handle.leave("It has too many scans");
    }

    ByteSource& m_source;
    std::uint64_t m_position = 0;
    std::array<JOCTET, 1 << 16> m_buffer{};
    jpeg_error_mgr m_errors{};
    jpeg_source_mgr m_reading{};
    jpeg_progress_mgr m_progress{};
    jpeg_decompress_struct m_jpeg{};
    std::jmp_buf m_return{};
    char m_message[JMSG_LENGTH_MAX] = "";
    char m_failure[JMSG_LENGTH_MAX] = "";
};

// The block among the file's segments, of which libjpeg keeps none.
Exif findExif(ByteSource& source)
{
    static constexpr char signature[] = {'E', 'x', 'i', 'f', 0, 0};
    std::array<std::uint8_t, 4> head{};
    for (std::uint64_t at = 2; source.read(at, head.data(), head.size()) == head.size();) {
        if (head[0] != 0xFF || head[1] == startOfScan || head[1] == endOfImage)
            break;
        if (head[1] == 0xFF) { // bytes that fill up in front of a marker
            ++at;
            continue;
        }
        const std::size_t length = std::size_t(head[2]) << 8 | head[3]; // from its own two bytes on
        if (length < 2)
            break;
        if (head[1] == application1 && length > 2 + sizeof signature) {
            std::vector<std::uint8_t> block(length - 2);
            source.readExactly(at + 4, block.data(), block.size());
            if (std::memcmp(block.data(), signature, sizeof signature) == 0)
                return parseExif(std::span(block).subspan(sizeof signature));
        }
        at += 2 + length;
    }
    return {};
}

Resolution resolutionOf(const jpeg_decompress_struct& jpeg, const Exif& exif)
{
    constexpr int perInch = 1;
    constexpr int perCentimetre = 2;
    const double factor = jpeg.density_unit == perInch ? 1 : jpeg.density_unit == perCentimetre ? 2.54 : 0;
    const Resolution own =
        jpeg.saw_JFIF_marker ? tidyResolution(jpeg.X_density * factor, jpeg.Y_density * factor) : Resolution{};
    return own.x > 0 ? own : exif.resolution;
}

RasterInfo storedInfo(const jpeg_decompress_struct& jpeg, const Exif& exif)
{
    const int components = jpeg.num_components;
    if (components != 1 && components != 3 && components != 4)
        throw ImagingError("JPEG images of " + std::to_string(components) + " components are not read.");
    return {checkedImageSize(jpeg.image_width, jpeg.image_height), 8 * components, resolutionOf(jpeg, exif),
            Format::Jpeg};
}

void refuseTooMuch(jpeg_decompress_struct& jpeg, const RasterInfo& info, const ByteSource& source)
{
    // The Huffman code spends a bit at least on a block of 64 pixels; arithmetic coding may spend far less.
    const std::uint64_t mostPixelsPerByte = jpeg.arith_code ? 1 << 16 : 1 << 12;
    const std::uint64_t pixels = std::uint64_t(info.size.width) * std::uint64_t(info.size.height);
    if (pixels > source.size() * mostPixelsPerByte)
        throw ImagingError("The JPEG file is too short for its image.");

    // Of an image in several scans libjpeg keeps all coefficients, of one in a single scan a few rows.
    constexpr std::uint64_t mostKept = std::uint64_t(512) << 20;
    std::uint64_t kept = 0;
    for (int i = 0; i < jpeg.num_components; ++i) {
        const jpeg_component_info& component = jpeg.comp_info[i];
        kept += std::uint64_t(component.width_in_blocks) * component.height_in_blocks * sizeof(JBLOCK);
    }
    if (kept > mostKept && jpeg_has_multiple_scans(&jpeg))
        throw ImagingError("The JPEG image is too large to be read, as it is stored in several scans.");
}

// Writers that leave Adobe's marker store inks the other way round: 255 is none.
void convertRow(const jpeg_decompress_struct& jpeg, std::uint64_t* row, const std::uint8_t* pixels, int width)
{
    switch (jpeg.output_components) {
    case 1:
        fillRow(row, width, [&](int x) { return isDark(pixels[x], pixels[x], pixels[x]); });
        break;
    case 3:
        fillRow(row, width, [&](int x) {
            const std::uint8_t* const pixel = pixels + std::ptrdiff_t(3) * x;
            return isDark(pixel[0], pixel[1], pixel[2]);
        });
        break;
    default:
        const int flip = jpeg.saw_Adobe_marker ? 0 : 255;
        fillRow(row, width, [&](int x) {
            const std::uint8_t* const inks = pixels + std::ptrdiff_t(4) * x;
            const int white = inks[3] ^ flip; // what the black lets through
            const auto channel = [&](int i) { return (inks[i] ^ flip) * white / 255; };
            return isDark(channel(0), channel(1), channel(2));
        });
    }
}

bool recognisesJpeg(std::span<const std::byte> head)
{
    return head.size() >= 3 && head[0] == std::byte(0xFF) && head[1] == std::byte(0xD8) && head[2] == std::byte(0xFF);
}

RasterInfo inspectJpeg(ByteSource& source)
{
    JpegHandle handle(source);
    const Exif exif = findExif(source);
    RasterInfo info = storedInfo(handle.jpeg(), exif);
    makeUpright(info, exif.orientation);
    return info;
}

RasterFile readJpeg(ByteSource& source)
{
    JpegHandle handle(source);
    jpeg_decompress_struct& jpeg = handle.jpeg();
    const Exif exif = findExif(source);
    RasterInfo info = storedInfo(jpeg, exif);
    refuseTooMuch(jpeg, info, source);
    jpeg.out_color_space = info.bitsPerPixel == 8 ? JCS_GRAYSCALE : info.bitsPerPixel == 24 ? JCS_RGB : JCS_CMYK;
    handle.run([&] { jpeg_start_decompress(&jpeg); });
    Bitmap bitmap = Bitmap::uninitialized(info.size);
    std::vector<std::uint8_t> bytes(std::size_t(jpeg.output_width) * std::size_t(jpeg.output_components));
    JSAMPROW row = bytes.data();
    for (int y = 0; y < bitmap.height(); ++y) {
        handle.run([&] { jpeg_read_scanlines(&jpeg, &row, 1); });
        convertRow(jpeg, bitmap.row(y), bytes.data(), bitmap.width());
    }
    handle.run([&] { jpeg_finish_decompress(&jpeg); });
    makeUpright(info, exif.orientation);
    return {upright(std::move(bitmap), exif.orientation), info};
}

} // namespace

const RasterCodec jpegCodec{recognisesJpeg, inspectJpeg, readJpeg, nullptr};

} // namespace imaging
