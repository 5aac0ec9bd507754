#include "drawing/text_encoding.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <optional>

#include "drawing/error.h"

namespace drawing {

namespace {

constexpr char32_t firstSurrogate = 0xD800;
constexpr char32_t firstLowSurrogate = 0xDC00;
constexpr char32_t lastSurrogate = 0xDFFF;
constexpr std::string_view escapeBegin = "\\U+";
constexpr std::size_t escapeSize = 7;
constexpr int windowsWest = 1252;

bool isSurrogate(char32_t c)
{
    return c >= firstSurrogate && c <= lastSurrogate;
}

// The UTF-16 unit of an escape at the start of the text; nothing if there is no escape.
std::optional<char32_t> escapeAt(std::string_view text)
{
    if (text.size() < escapeSize || !text.starts_with(escapeBegin)) {
        return std::nullopt;
    }
    unsigned unit = 0;
    const char* last = text.data() + escapeSize;
    const auto [end, error] = std::from_chars(text.data() + escapeBegin.size(), last, unit, 16);
    return error == std::errc() && end == last ? std::optional<char32_t>(unit) : std::nullopt;
}

void appendEscape(std::string& bytes, char32_t unit)
{
    char buffer[12];
    std::snprintf(buffer, sizeof buffer, "\\U+%04X", static_cast<unsigned>(unit));
    bytes += buffer;
}

// Length of the UTF-8 sequence that the byte begins; 0 if it begins none.
std::size_t sequenceLength(unsigned char lead)
{
    if (lead < 0x80) {
        return 1;
    }
    if (lead >= 0xC2 && lead <= 0xDF) {
        return 2;
    }
    if (lead >= 0xE0 && lead <= 0xEF) {
        return 3;
    }
    return lead >= 0xF0 && lead <= 0xF4 ? 4 : 0;
}

// The character of the UTF-8 sequence at the start of the text; nothing if there is no valid one.
std::optional<char32_t> utf8At(std::string_view text, std::size_t length)
{
    if (length == 0 || length > text.size()) {
        return std::nullopt;
    }
    static constexpr unsigned char leadMask[] = {0, 0x7F, 0x1F, 0x0F, 0x07};
    static constexpr char32_t smallest[] = {0, 0, 0x80, 0x800, 0x10000};
    char32_t character = static_cast<unsigned char>(text[0]) & leadMask[length];
    for (std::size_t i = 1; i < length; ++i) {
        const auto next = static_cast<unsigned char>(text[i]);
        if ((next & 0xC0) != 0x80) {
            return std::nullopt;
        }
        character = character << 6 | (next & 0x3F);
    }
    if (character < smallest[length] || character > 0x10FFFF || isSurrogate(character)) {
        return std::nullopt;
    }
    return character;
}

std::shared_ptr<const CodePage> requireCodePage(int number)
{
    auto page = openCodePage(number);
    if (!page) {
        throw DrawingError("the system has no conversion of the code page " + std::to_string(number));
    }
    return page;
}

} // namespace

bool isAscii(std::string_view text)
{
    return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

char32_t takeCharacter(std::string_view& text)
{
    const auto lead = static_cast<unsigned char>(text[0]);
    const std::size_t length = sequenceLength(lead);
    if (const auto character = utf8At(text, length)) {
        text.remove_prefix(length);
        return *character;
    }
    static const std::shared_ptr<const CodePage> west = requireCodePage(windowsWest);
    return west->take(text);
}

void appendUtf8(std::string& text, char32_t c)
{
    const auto tail = [&](int shift) { text += static_cast<char>(0x80 | (c >> shift & 0x3F)); };
    if (c < 0x80) {
        text += static_cast<char>(c);
    } else if (c < 0x800) {
        text += static_cast<char>(0xC0 | c >> 6);
        tail(0);
    } else if (c < 0x10000) {
        text += static_cast<char>(0xE0 | c >> 12);
        tail(6);
        tail(0);
    } else {
        text += static_cast<char>(0xF0 | c >> 18);
        tail(12);
        tail(6);
        tail(0);
    }
}

std::string decodeEscapes(std::string_view text)
{
    std::string result;
    while (!text.empty()) {
        const auto next = std::min(text.find(escapeBegin), text.size());
        result += text.substr(0, next);
        text.remove_prefix(next);
        const auto unit = escapeAt(text);
        if (!unit) {
            result += text.substr(0, 1);
            text.remove_prefix(std::min<std::size_t>(1, text.size()));
            continue;
        }
        const auto low = escapeAt(text.substr(escapeSize));
        const bool pair = *unit >= firstSurrogate && *unit < firstLowSurrogate && low && *low >= firstLowSurrogate &&
                          *low <= lastSurrogate;
        const std::size_t length = pair ? 2 * escapeSize : escapeSize;
        if (pair) {
            appendUtf8(result, 0x10000 + ((*unit - firstSurrogate) << 10) + (*low - firstLowSurrogate));
        } else if (*unit < 0x20 || isSurrogate(*unit)) {
            result += text.substr(0, length);
        } else {
            appendUtf8(result, *unit);
        }
        text.remove_prefix(length);
    }
    return result;
}

TextEncoding::TextEncoding(std::string_view codePageName)
{
    const std::optional<int> number = codePageName.empty() ? windowsWest : codePageNumber(codePageName);
    m_page = number ? openCodePage(*number) : nullptr;
    m_known = m_page != nullptr;
    if (!m_page) {
        m_page = requireCodePage(windowsWest);
    }
}

std::string TextEncoding::decode(std::string_view bytes) const
{
    std::string text;
    if (isAscii(bytes)) {
        text = bytes;
    } else {
        while (!bytes.empty()) {
            appendUtf8(text, m_page ? m_page->take(bytes) : takeCharacter(bytes));
        }
    }
    return text.find(escapeBegin) == std::string::npos ? text : decodeEscapes(text);
}

std::string TextEncoding::encode(std::string_view text) const
{
    if (isAscii(text) || !m_page) {
        return std::string(text);
    }
    std::string bytes;
    while (!text.empty()) {
        const char32_t character = takeCharacter(text);
        if (const auto encoded = m_page->bytesOf(character)) {
            bytes += *encoded;
        } else if (character < 0x10000) {
            appendEscape(bytes, character);
        } else {
            appendEscape(bytes, firstSurrogate + ((character - 0x10000) >> 10));
            appendEscape(bytes, firstLowSurrogate + ((character - 0x10000) & 0x3FF));
        }
    }
    return bytes;
}

} // namespace drawing
