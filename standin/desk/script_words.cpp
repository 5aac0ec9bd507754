#include "standin/desk/script_words.h"

#include <algorithm>
#include <cmath>
#include <cwctype>

#include "standin/desk/coordinate_input.h"
#include "standin/text.h"

namespace desk::script {
namespace {

constexpr std::wstring_view blanks = L" \t";
constexpr std::wstring_view viewPrefix = L"view:";

void dropBlanks(std::wstring_view& text)
{
    text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
}

std::wstring_view takeWord(std::wstring_view& text)
{
    dropBlanks(text);
    const std::wstring_view word = text.substr(0, text.find_first_of(blanks));
    text.remove_prefix(word.size());
    return word;
}

} // namespace

bool Words::atEnd()
{
    dropBlanks(m_rest);
    return m_rest.empty();
}

std::wstring Words::next(const char* what)
{
    if (atEnd())
        throw ScriptError(std::string(what) + " is missing");
    if (m_rest.front() == L'"')
        return quoted();
    return std::wstring(takeWord(m_rest));
}

std::wstring Words::remainder()
{
    if (!atEnd() && m_rest.front() == L'"')
        return quoted();
    std::wstring text(m_rest);
    m_rest = {};
    return text;
}

std::wstring Words::quoted()
{
    const auto end = m_rest.find(L'"', 1);
    if (end == std::wstring_view::npos)
        throw ScriptError("the closing quotation mark is missing");
    std::wstring text(m_rest.substr(1, end - 1));
    m_rest.remove_prefix(end + 1);
    return text;
}

bool Words::take(std::wstring_view words)
{
    std::wstring_view rest = m_rest;
    while (!words.empty()) {
        const std::wstring_view wanted = takeWord(words);
        if (takeWord(rest) != wanted)
            return false;
    }
    m_rest = rest;
    return true;
}

int Words::number(const char* what)
{
    const std::wstring word = next(what);
    const auto value = parseNumber(word);
    if (!value || std::abs(*value) > 1e9 || *value != static_cast<int>(*value))
        throw ScriptError(std::string(what) + " should be a whole number, not \"" + standin::toUtf8(word) + "\"");
    return static_cast<int>(*value);
}

std::vector<double> Words::numbers(std::wstring_view word, std::size_t count, const char* what)
{
    std::vector<double> values;
    for (std::size_t start = 0; start <= word.size();) {
        const auto comma = std::min(word.find(L',', start), word.size());
        const auto value = parseNumber(std::wstring(word.substr(start, comma - start)));
        if (!value)
            break;
        values.push_back(*value);
        start = comma + 1;
    }
    if (values.size() != count || static_cast<std::size_t>(std::count(word.begin(), word.end(), L',')) != count - 1) {
        throw ScriptError(std::string(what) + " should be " + std::to_string(count) +
                          " numbers parted by commas, not \"" + standin::toUtf8(word) + "\"");
    }
    return values;
}

Vec2 Words::point()
{
    const auto values = numbers(next("the drawing point"), 2, "a drawing point");
    return {values[0], values[1]};
}

Place Words::place()
{
    const std::wstring word = next("the place");
    const bool inView = word.starts_with(viewPrefix);
    const auto values = numbers(std::wstring_view(word).substr(inView ? viewPrefix.size() : 0), 2, "a place");
    return {{values[0], values[1]}, inView};
}

bool Words::placeFollows()
{
    return !atEnd() && (std::iswdigit(m_rest.front()) || m_rest.front() == L'-' || m_rest.front() == L'+' ||
                        m_rest.front() == L'.' || m_rest.starts_with(viewPrefix));
}

std::filesystem::path Words::path()
{
    return pathFrom(remainder());
}

std::filesystem::path Words::wordAsPath()
{
    return pathFrom(next("the path"));
}

std::filesystem::path Words::pathFrom(const std::wstring& text) const
{
    if (text.empty())
        throw ScriptError("the path is missing");
    return (m_folder / std::filesystem::path(text)).lexically_normal().make_preferred();
}

} // namespace desk::script
