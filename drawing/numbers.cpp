#include "drawing/numbers.h"

#include <charconv>
#include <cmath>
#include <limits>

namespace drawing {

namespace {

template <class Number, class... Options> std::optional<Number> parseWhole(std::string_view text, Options... options)
{
    text = trimmed(text);
    if (text.size() > 1 && text[0] == '+' && text[1] != '-') {
        text.remove_prefix(1);
    }
    Number value{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value, options...);
    if (error != std::errc() || end != text.data() + text.size()) {
        return std::nullopt;
    }
    return value;
}

} // namespace

std::string_view trimmed(std::string_view text)
{
    const auto first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

std::optional<double> parseReal(std::string_view text)
{
    const auto value = parseWhole<double>(text);
    return value && std::isfinite(*value) ? value : std::nullopt;
}

std::optional<int> parseInteger(std::string_view text)
{
    if (const auto value = parseWhole<int>(text)) {
        return value;
    }
    // Some programs write whole numbers as reals.
    const auto real = parseReal(text);
    if (real && *real == std::trunc(*real) && std::abs(*real) <= std::numeric_limits<int>::max()) {
        return static_cast<int>(*real);
    }
    return std::nullopt;
}

std::optional<Handle> parseHandle(std::string_view text)
{
    return parseWhole<Handle>(text, 16);
}

std::string formatReal(double value)
{
    char buffer[40];
    const auto end = std::to_chars(buffer, buffer + sizeof buffer, value).ptr;
    std::string text(buffer, end);
    const auto exponent = text.find('e');
    if (exponent != std::string::npos) {
        text[exponent] = 'E';
    }
    if (text.find('.') == std::string::npos) {
        text.insert(exponent == std::string::npos ? text.size() : exponent, ".0");
    }
    return text;
}

std::string formatHandle(Handle handle)
{
    char buffer[20];
    const auto end = std::to_chars(buffer, buffer + sizeof buffer, handle, 16).ptr;
    std::string text(buffer, end);
    for (char& digit : text) {
        digit = digit >= 'a' ? static_cast<char>(digit - 'a' + 'A') : digit;
    }
    return text;
}

} // namespace drawing
