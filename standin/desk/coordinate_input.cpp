#include "standin/desk/coordinate_input.h"

#include <cmath>
#include <cwchar>
#include <numbers>
#include <vector>

namespace desk {

std::optional<double> parseNumber(const std::wstring& text)
{
    if (text.empty() || text.find_first_not_of(L"0123456789+-.eE") != std::wstring::npos)
        return std::nullopt;
    wchar_t* end = nullptr;
    const double value = std::wcstod(text.c_str(), &end);
    if (end != text.c_str() + text.size() || !std::isfinite(value))
        return std::nullopt;
    return value;
}

std::optional<Vec2> parsePoint(const std::wstring& text, Vec2 lastPoint)
{
    const bool relative = !text.empty() && text.front() == L'@';
    const std::wstring body = relative ? text.substr(1) : text;
    const Vec2 base = relative ? lastPoint : Vec2{};
    if (relative && body.empty())
        return lastPoint;

    if (const auto angleSign = body.find(L'<'); angleSign != std::wstring::npos) {
        const auto distance = parseNumber(body.substr(0, angleSign));
        const auto degrees = parseNumber(body.substr(angleSign + 1));
        if (!distance || !degrees)
            return std::nullopt;
        const double radians = *degrees * std::numbers::pi / 180;
        return base + Vec2{std::cos(radians), std::sin(radians)} * *distance;
    }

    std::vector<double> parts;
    for (std::size_t start = 0; start <= body.size();) {
        const auto comma = std::min(body.find(L',', start), body.size());
        const auto part = parseNumber(body.substr(start, comma - start));
        if (!part || parts.size() == 3)
            return std::nullopt;
        parts.push_back(*part);
        start = comma + 1;
    }
    if (parts.size() < 2)
        return std::nullopt;
    return base + Vec2{parts[0], parts[1]};
}

std::wstring formatNumber(double value)
{
    wchar_t buffer[64];
    std::swprintf(buffer, 64, L"%.4f", value);
    std::wstring text = buffer;
    text.erase(text.find_last_not_of(L'0') + 1);
    if (text.back() == L'.')
        text.pop_back();
    return text == L"-0" ? L"0" : text;
}

std::wstring formatPoint(Vec2 point)
{
    return formatNumber(point.x) + L", " + formatNumber(point.y);
}

} // namespace desk
