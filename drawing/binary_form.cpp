#include "drawing/binary_form.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>

#include "drawing/error.h"
#include "drawing/numbers.h"

namespace drawing {

namespace {

constexpr std::string_view sentinel("AutoCAD Binary DXF\r\n\x1a\0", 22);
constexpr std::size_t mostGroups = 50'000'000;
constexpr unsigned byteBits = 8;
constexpr std::size_t longestChunk = 255; // bytes: the length is one

enum class Kind
{
    Unknown,
    Text, // ends with a zero byte
    Real,
    Integer8,
    Integer16,
    Integer32,
    Integer64,
    Chunk, // a byte with the length, then that many bytes
};

struct CodeRange
{
    int last;
    Kind kind;
};

// Each range begins behind the one before.
constexpr CodeRange ranges[] = {
    {-1, Kind::Unknown},  {9, Kind::Text},         {59, Kind::Real},       {79, Kind::Integer16},
    {89, Kind::Unknown},  {99, Kind::Integer32},   {109, Kind::Text},      {149, Kind::Real},
    {159, Kind::Unknown}, {169, Kind::Integer64},  {179, Kind::Integer16}, {209, Kind::Unknown},
    {239, Kind::Real},    {269, Kind::Unknown},    {289, Kind::Integer16}, {299, Kind::Integer8},
    {309, Kind::Text},    {319, Kind::Chunk},      {369, Kind::Text},      {389, Kind::Integer16},
    {399, Kind::Text},    {409, Kind::Integer16},  {419, Kind::Text},      {429, Kind::Integer32},
    {439, Kind::Text},    {459, Kind::Integer32},  {469, Kind::Real},      {481, Kind::Text},
    {998, Kind::Unknown}, {1003, Kind::Text},      {1004, Kind::Chunk},    {1009, Kind::Text},
    {1059, Kind::Real},   {1070, Kind::Integer16}, {1071, Kind::Integer32}};

Kind kindOf(int code)
{
    for (const CodeRange& range : ranges) {
        if (code <= range.last) {
            return range.kind;
        }
    }
    return Kind::Unknown;
}

std::size_t sizeOf(Kind kind)
{
    switch (kind) {
    case Kind::Integer8:
        return 1;
    case Kind::Integer16:
        return 2;
    case Kind::Integer32:
        return 4;
    default:
        return 8;
    }
}

std::string groupName(int code)
{
    return "group " + std::to_string(code);
}

class BinaryReader
{
public:
    explicit BinaryReader(std::string_view bytes) : m_rest(bytes)
    {
        m_rest.remove_prefix(std::min(sentinel.size(), m_rest.size()));
        // The first group is 0: with codes of two bytes its second byte is 0 too, and no letter of its value.
        m_shortCodes = m_rest.size() > 1 && m_rest[1] != '\0';
    }

    std::string text()
    {
        std::string result;
        for (std::size_t groups = 0; !m_rest.empty(); ++groups) {
            if (groups >= mostGroups) {
                throw DrawingError("the file has more groups than can be held");
            }
            const int code = takeCode();
            const std::string shown = value(code);
            result += std::to_string(code);
            result += '\n';
            result += shown;
            result += '\n';
            if (code == 0 && shown == "EOF") {
                break;
            }
        }
        return result;
    }

private:
    std::string_view take(std::size_t size)
    {
        if (size > m_rest.size()) {
            throw DrawingError("the file ends in the middle of a group");
        }
        const std::string_view taken = m_rest.substr(0, size);
        m_rest.remove_prefix(size);
        return taken;
    }

    std::uint64_t takeUnsigned(std::size_t size)
    {
        std::uint64_t number = 0;
        const std::string_view bytes = take(size);
        for (std::size_t i = size; i-- > 0;) {
            number = number << byteBits | static_cast<unsigned char>(bytes[i]);
        }
        return number;
    }

    int takeCode()
    {
        constexpr std::uint64_t escape = 255; // of a short code: a long one follows
        if (m_shortCodes) {
            const std::uint64_t code = takeUnsigned(1);
            if (code != escape) {
                return static_cast<int>(code);
            }
        }
        return static_cast<std::int16_t>(takeUnsigned(2));
    }

    std::string value(int code)
    {
        switch (const Kind kind = kindOf(code)) {
        case Kind::Unknown:
            throw DrawingError(groupName(code) + " is none of a file in binary form");
        case Kind::Text:
            return takeText(code);
        case Kind::Real:
            return takeReal(code);
        case Kind::Chunk:
            return takeChunk();
        default: {
            const unsigned unused = 64 - byteBits * static_cast<unsigned>(sizeOf(kind));
            const auto number = static_cast<std::int64_t>(takeUnsigned(sizeOf(kind)) << unused) >> unused;
            return std::to_string(number);
        }
        }
    }

    std::string takeText(int code)
    {
        const auto end = m_rest.find('\0');
        if (end == std::string_view::npos) {
            throw DrawingError("the text of " + groupName(code) + " does not end");
        }
        std::string result;
        for (const char c : take(end)) {
            if (c == '\n' || c == '\r') {
                result += c == '\n' ? "^J" : "^M";
            } else {
                result += c;
            }
        }
        take(1);
        return result;
    }

    std::string takeReal(int code)
    {
        const auto number = std::bit_cast<double>(takeUnsigned(sizeof(double)));
        if (!std::isfinite(number)) {
            throw DrawingError(groupName(code) + " is no finite number");
        }
        return formatReal(number);
    }

    std::string takeChunk()
    {
        constexpr char digits[] = "0123456789ABCDEF";
        constexpr unsigned nibbleBits = 4;
        constexpr unsigned nibble = 15;
        std::string result;
        for (const char c : take(takeUnsigned(1))) {
            const auto byte = static_cast<unsigned char>(c);
            result += digits[byte >> nibbleBits];
            result += digits[byte & nibble];
        }
        return result;
    }

    std::string_view m_rest;
    bool m_shortCodes = false;
};

void appendUnsigned(std::string& bytes, std::uint64_t number, std::size_t size)
{
    for (std::size_t i = 0; i < size; ++i) {
        bytes += static_cast<char>(number >> (i * byteBits) & 0xFF);
    }
}

// Nothing if the value is no whole number that fits into so many bytes.
std::optional<std::int64_t> wholeNumber(std::string_view value, std::size_t size)
{
    value = trimmed(value);
    std::int64_t number = 0;
    const auto [end, error] = std::from_chars(value.data(), value.data() + value.size(), number);
    if (error != std::errc() || end != value.data() + value.size()) {
        const auto plain = parseInteger(value); // also of other forms
        if (!plain) {
            return std::nullopt;
        }
        number = *plain;
    }
    if (size < sizeof(number)) {
        const std::int64_t bound = std::int64_t(1) << (size * byteBits - 1);
        if (number < -bound || number >= bound) {
            return std::nullopt;
        }
    }
    return number;
}

std::optional<std::string> bytesOfHex(std::string_view value)
{
    constexpr std::size_t digits = 2;
    constexpr int base = 16;
    std::string bytes;
    for (std::size_t i = 0; i < value.size(); i += digits) {
        unsigned number = 0;
        const char* begin = value.data() + i;
        const auto [end, error] =
            std::from_chars(begin, value.data() + std::min(i + digits, value.size()), number, base);
        if (error != std::errc() || end != begin + digits) {
            return std::nullopt;
        }
        bytes += static_cast<char>(number);
    }
    return bytes.size() <= longestChunk ? std::optional(bytes) : std::nullopt;
}

// The value's bytes; nothing if it is none of that kind.
std::optional<std::string> bytesOf(Kind kind, std::string_view value)
{
    std::string bytes;
    if (kind == Kind::Unknown || (kind == Kind::Text && value.find('\0') != std::string_view::npos)) {
        return std::nullopt;
    }
    if (kind == Kind::Text) {
        bytes = value;
        bytes += '\0';
    } else if (kind == Kind::Real) {
        const auto number = parseReal(value);
        if (!number) {
            return std::nullopt;
        }
        appendUnsigned(bytes, std::bit_cast<std::uint64_t>(*number), sizeof(double));
    } else if (kind == Kind::Chunk) {
        const auto chunk = bytesOfHex(trimmed(value));
        if (!chunk) {
            return std::nullopt;
        }
        appendUnsigned(bytes, chunk->size(), 1);
        bytes += *chunk;
    } else {
        const auto number = wholeNumber(value, sizeOf(kind));
        if (!number) {
            return std::nullopt;
        }
        appendUnsigned(bytes, static_cast<std::uint64_t>(*number), sizeOf(kind));
    }
    return bytes;
}

} // namespace

bool isBinaryForm(std::string_view bytes)
{
    return bytes.starts_with(sentinel);
}

std::string textFromBinary(std::string_view bytes)
{
    return BinaryReader(bytes).text();
}

std::string_view binarySentinel()
{
    return sentinel;
}

void appendBinaryGroup(std::string& bytes, int code, std::string_view value)
{
    const auto valueBytes = bytesOf(kindOf(code), value);
    if (!valueBytes) {
        constexpr std::size_t shownFlag = 40;
        throw DrawingError(groupName(code) + " of an object is \"" + std::string(value.substr(0, shownFlag)) +
                           "\", which a file in binary form can't hold");
    }
    appendUnsigned(bytes, static_cast<std::uint64_t>(code), 2);
    bytes += *valueBytes;
}

} // namespace drawing
