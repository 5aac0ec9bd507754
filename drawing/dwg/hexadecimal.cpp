#include "drawing/dwg/hexadecimal.h"

#include "drawing/error.h"

namespace drawing::dwg {

namespace {

int digitOf(char digit)
{
    if (digit >= '0' && digit <= '9') {
        return digit - '0';
    }
    const char lower = static_cast<char>(digit | 0x20);
    if (lower < 'a' || lower > 'f') {
        throw DrawingError(std::string("\"") + digit + "\" is no digit of a byte");
    }
    return lower - 'a' + 10;
}

} // namespace

std::string hexadecimal(std::string_view bytes)
{
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string text;
    for (const char each : bytes) {
        const auto byte = static_cast<unsigned char>(each);
        text += digits[byte >> 4];
        text += digits[byte & 0xF];
    }
    return text;
}

std::string bytesOfHexadecimal(std::string_view text)
{
    std::string bytes;
    for (std::size_t i = 0; i + 1 < text.size(); i += 2) {
        bytes += static_cast<char>(digitOf(text[i]) << 4 | digitOf(text[i + 1]));
    }
    return bytes;
}

} // namespace drawing::dwg
