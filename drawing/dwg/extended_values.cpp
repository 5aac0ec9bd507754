#include "drawing/dwg/extended_values.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "drawing/dwg/bit_reader.h"
#include "drawing/dwg/bit_writer.h"
#include "drawing/dwg/caret_text.h"
#include "drawing/dwg/hexadecimal.h"
#include "drawing/error.h"
#include "drawing/numbers.h"

namespace drawing::dwg {

namespace {

constexpr int firstExtendedCode = 1000;
constexpr std::size_t longestPiece = 255;
constexpr int windowsWestNumber = 30; // of the code page ANSI_1252 in the form's own count

enum class ValueType
{
    Text,
    Point,
    Real,
    Byte,
    Short,
    Long,
    Chunk,
    ObjectHandle,
    Unknown,
};

struct CodeRange
{
    int first;
    int last;
    ValueType type;
};

// What the values of extended records are by their codes.
ValueType typeOf(int code)
{
    using enum ValueType;
    static constexpr std::array<CodeRange, 35> ranges{{{0, 4, Text},
                                                       {5, 5, ObjectHandle},
                                                       {6, 9, Text},
                                                       {10, 37, Point},
                                                       {38, 59, Real},
                                                       {60, 79, Short},
                                                       {90, 99, Long},
                                                       {100, 104, Text},
                                                       {105, 105, ObjectHandle},
                                                       {110, 119, Point},
                                                       {120, 149, Real},
                                                       {170, 179, Short},
                                                       {210, 239, Point},
                                                       {270, 279, Short},
                                                       {280, 299, Byte},
                                                       {300, 309, Text},
                                                       {310, 319, Chunk},
                                                       {320, 369, ObjectHandle},
                                                       {370, 389, Short},
                                                       {390, 399, ObjectHandle},
                                                       {400, 409, Short},
                                                       {410, 419, Text},
                                                       {420, 429, Long},
                                                       {430, 439, Text},
                                                       {440, 459, Long},
                                                       {460, 469, Real},
                                                       {470, 479, Text},
                                                       {480, 481, ObjectHandle},
                                                       {1000, 1003, Text},
                                                       {1004, 1004, Chunk},
                                                       {1005, 1005, ObjectHandle},
                                                       {1010, 1039, Point},
                                                       {1040, 1059, Real},
                                                       {1060, 1070, Short},
                                                       {1071, 1071, Long}}};
    const auto found = std::find_if(ranges.begin(), ranges.end(),
                                    [&](const CodeRange& each) { return code >= each.first && code <= each.last; });
    return found == ranges.end() ? Unknown : found->type;
}

std::string finiteReal(double value)
{
    if (!std::isfinite(value)) {
        throw DrawingError("a number is not finite");
    }
    return formatReal(value);
}

void readPoint(BitReader& bits, int code, Groups& groups)
{
    for (int i = 0; i < 3; ++i) {
        groups.push_back({code + 10 * i, finiteReal(bits.rawReal())});
    }
}

Handle rawHandle(BitReader& bits)
{
    Handle handle = 0;
    for (int i = 0; i < 8; ++i) {
        handle = handle << 8 | bits.byte();
    }
    return handle;
}

void putRawHandle(BitWriter& bits, Handle handle)
{
    for (int shift = 56; shift >= 0; shift -= 8) {
        bits.byte(static_cast<unsigned>(handle >> shift) & 0xFFu);
    }
}

std::string readText(BitReader& bits, std::size_t length, const TextEncoding& encoding)
{
    return withCarets(encoding.decode(bits.raw(length)));
}

// The bytes of a text, checked for what the form has room for.
std::string encoded(const std::string& text, const TextEncoding& encoding, std::size_t longest)
{
    std::string bytes = encoding.encode(withoutCarets(text));
    if (bytes.size() > longest) {
        throw DrawingError("a text of extended data is too long for this form");
    }
    return bytes;
}

} // namespace

Groups valuesOfExtendedData(std::string_view bytes, const TextEncoding& encoding, const RecordNames& names)
{
    BitReader bits(bytes, "extended data");
    Groups groups;
    while (bits.left() > 0) {
        const int code = firstExtendedCode + static_cast<int>(bits.byte());
        switch (code) {
        case 1000: {
            const std::size_t length = bits.byte();
            bits.rawShort();
            groups.push_back({code, readText(bits, length, encoding)});
            break;
        }
        case 1002:
            groups.push_back({code, bits.byte() == 0 ? "{" : "}"});
            break;
        case 1003:
            groups.push_back({code, names.nameOf(rawHandle(bits))});
            break;
        case 1004: {
            const std::size_t length = bits.byte();
            groups.push_back({code, hexadecimal(bits.raw(length))});
            break;
        }
        case 1005:
            groups.push_back({code, formatHandle(rawHandle(bits))});
            break;
        case 1010:
        case 1011:
        case 1012:
        case 1013:
            readPoint(bits, code, groups);
            break;
        case 1040:
        case 1041:
        case 1042:
            groups.push_back({code, finiteReal(bits.rawReal())});
            break;
        case 1070:
            groups.push_back({code, std::to_string(static_cast<std::int16_t>(bits.rawShort()))});
            break;
        case 1071:
            groups.push_back({code, std::to_string(static_cast<std::int32_t>(bits.rawLong()))});
            break;
        default:
            throw DrawingError("extended data of an unknown kind");
        }
    }
    return groups;
}

namespace {

void putExtendedText(BitWriter& bits, const std::string& text, const TextEncoding& encoding, int codePage)
{
    const std::string bytes = encoded(text, encoding, longestPiece);
    bits.byte(static_cast<unsigned>(bytes.size()));
    bits.byte(static_cast<unsigned>(codePage) >> 8);
    bits.byte(static_cast<unsigned>(codePage));
    bits.raw(bytes);
}

double realAt(const Groups& groups, std::size_t index)
{
    return index < groups.size() ? parseReal(groups[index].value).value_or(0) : 0;
}

} // namespace

std::string bytesOfExtendedData(const Groups& groups, const TextEncoding& encoding, RecordNames& names, int codePage)
{
    BitWriter bits;
    for (std::size_t i = 0; i < groups.size(); ++i) {
        const auto& [code, value] = groups[i];
        if (code >= 1020 && code < 1040) {
            continue; // the rest of a point
        }
        bits.byte(static_cast<unsigned>(code - firstExtendedCode));
        switch (code) {
        case 1000:
            putExtendedText(bits, value, encoding, codePage);
            break;
        case 1002:
            bits.byte(value == "{" ? 0 : 1);
            break;
        case 1003:
            putRawHandle(bits, names.obtain("LAYER", value));
            break;
        case 1004: {
            const std::string bytes = bytesOfHexadecimal(value);
            bits.byte(static_cast<unsigned>(std::min(bytes.size(), longestPiece)));
            bits.raw(bytes.substr(0, longestPiece));
            break;
        }
        case 1005:
            putRawHandle(bits, parseHandle(value).value_or(0));
            break;
        case 1010:
        case 1011:
        case 1012:
        case 1013:
            for (std::size_t part = 0; part < 3; ++part) {
                bits.rawReal(realAt(groups, i + part));
            }
            break;
        case 1040:
        case 1041:
        case 1042:
            bits.rawReal(realAt(groups, i));
            break;
        case 1070:
            bits.rawShort(static_cast<unsigned>(parseInteger(value).value_or(0)) & 0xFFFFu);
            break;
        case 1071:
            bits.rawLong(static_cast<std::uint32_t>(parseInteger(value).value_or(0)));
            break;
        default:
            throw DrawingError("extended data of group " + std::to_string(code) + " has no place in this form");
        }
    }
    return bits.takeBytes();
}

Groups valuesOfRecord(std::string_view bytes, const TextEncoding& encoding)
{
    BitReader bits(bytes, "an extended record");
    Groups groups;
    while (bits.left() > 0) {
        const auto code = static_cast<int>(static_cast<std::int16_t>(bits.rawShort()));
        switch (typeOf(code)) {
        case ValueType::Text: {
            const std::size_t length = bits.rawShort();
            bits.byte(); // code page
            groups.push_back({code, readText(bits, length, encoding)});
            break;
        }
        case ValueType::Point:
            readPoint(bits, code, groups);
            break;
        case ValueType::Real:
            groups.push_back({code, finiteReal(bits.rawReal())});
            break;
        case ValueType::Byte:
            groups.push_back({code, std::to_string(bits.byte())});
            break;
        case ValueType::Short:
            groups.push_back({code, std::to_string(static_cast<std::int16_t>(bits.rawShort()))});
            break;
        case ValueType::Long:
            groups.push_back({code, std::to_string(static_cast<std::int32_t>(bits.rawLong()))});
            break;
        case ValueType::Chunk: {
            const std::size_t length = bits.byte();
            groups.push_back({code, hexadecimal(bits.raw(length))});
            break;
        }
        case ValueType::ObjectHandle: {
            Handle handle = 0;
            for (unsigned shift = 0; shift < 64; shift += 8) {
                handle |= static_cast<Handle>(bits.byte()) << shift;
            }
            groups.push_back({code, formatHandle(handle)});
            break;
        }
        case ValueType::Unknown:
            throw DrawingError("an extended record holds a value of an unknown kind");
        }
    }
    return groups;
}

namespace {

bool isPointRest(const std::vector<PlacedGroup>& groups, std::size_t i)
{
    return i > 0 && groups[i].code == groups[i - 1].code + 10 && typeOf(groups[i].code - 10) == ValueType::Point;
}

} // namespace

std::string bytesOfRecord(const std::vector<PlacedGroup>& groups, const TextEncoding& encoding,
                          std::vector<Handle>& referred)
{
    constexpr std::size_t longest = 0xFFFF;
    BitWriter bits;
    for (std::size_t i = 0; i < groups.size(); ++i) {
        const PlacedGroup& group = groups[i];
        const ValueType type = typeOf(group.code);
        if (type == ValueType::Point && isPointRest(groups, i)) {
            continue;
        }
        bits.rawShort(static_cast<unsigned>(group.code) & 0xFFFFu);
        switch (type) {
        case ValueType::Text: {
            const std::string bytes = encoded(group.value, encoding, longest);
            bits.rawShort(static_cast<unsigned>(bytes.size()));
            bits.byte(windowsWestNumber);
            bits.raw(bytes);
            break;
        }
        case ValueType::Point:
            bits.rawReal(group.real());
            for (std::size_t part = 1; part < 3; ++part) {
                const bool there = i + part < groups.size() && isPointRest(groups, i + part);
                bits.rawReal(there ? groups[i + part].real() : 0);
            }
            break;
        case ValueType::Real:
            bits.rawReal(group.real());
            break;
        case ValueType::Byte:
            bits.byte(static_cast<unsigned>(group.integer()));
            break;
        case ValueType::Short:
            bits.rawShort(static_cast<unsigned>(group.integer()) & 0xFFFFu);
            break;
        case ValueType::Long:
            bits.rawLong(static_cast<std::uint32_t>(group.integer()));
            break;
        case ValueType::Chunk: {
            const std::string bytes = bytesOfHexadecimal(group.value);
            bits.byte(static_cast<unsigned>(std::min(bytes.size(), longestPiece)));
            bits.raw(bytes.substr(0, longestPiece));
            break;
        }
        case ValueType::ObjectHandle: {
            const Handle handle = group.handleValue();
            for (unsigned shift = 0; shift < 64; shift += 8) {
                bits.byte(static_cast<unsigned>(handle >> shift) & 0xFFu);
            }
            referred.push_back(handle);
            break;
        }
        case ValueType::Unknown:
            throw DrawingError("an extended record holds group " + std::to_string(group.code) +
                               ", which has no place in this form");
        }
    }
    return bits.takeBytes();
}

} // namespace drawing::dwg
