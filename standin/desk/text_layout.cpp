#include "standin/desk/text_layout.h"

#include <cmath>
#include <numbers>
#include <string>

#include "standin/text.h"

namespace desk {
namespace {

// How far letters such as g reach below the baseline, in capital heights.
constexpr double descent = 0.3;

double widthOf(const std::wstring& line, Typeface& typeface)
{
    double width = 0;
    for (const wchar_t character : line)
        width += typeface.glyph(character).advance;
    return width;
}

// Breaks at blanks so that no line is longer than `limit`; a longer word stays whole.
void wrapInto(std::vector<std::wstring>& lines, const std::wstring& text, double limit, Typeface& typeface)
{
    std::wstring line;
    for (std::size_t start = 0; start <= text.size();) {
        const auto end = std::min(text.find(L' ', start), text.size());
        const std::wstring word = text.substr(start, end - start);
        std::wstring longer = line;
        if (!line.empty())
            longer += L' ';
        longer += word;
        if (!line.empty() && widthOf(longer, typeface) > limit) {
            lines.push_back(line);
            line = word;
        } else {
            line = longer;
        }
        start = end + 1;
    }
    lines.push_back(line);
}

std::vector<std::wstring> brokenLines(const drawing::FlatText& text, double widthUnit, Typeface& typeface)
{
    std::vector<std::wstring> lines;
    for (const std::string& line : text.lines) {
        if (text.wrapWidth > 0) {
            wrapInto(lines, standin::fromUtf8(line), text.wrapWidth / widthUnit, typeface);
        } else {
            lines.push_back(standin::fromUtf8(line));
        }
    }
    return lines;
}

// The first baseline's height above the insertion point, in capital heights.
double firstBaseline(const drawing::FlatText& text, double linesBelow)
{
    if (text.horizontal == drawing::HorizontalAlignment::Middle)
        return -0.5 + linesBelow / 2;
    switch (text.vertical) {
    case drawing::VerticalAlignment::Bottom:
        return descent + linesBelow;
    case drawing::VerticalAlignment::Middle:
        return -0.5 + linesBelow / 2;
    case drawing::VerticalAlignment::Top:
        return -1;
    default:
        return 0;
    }
}

double lineStart(drawing::HorizontalAlignment alignment, double width)
{
    switch (alignment) {
    case drawing::HorizontalAlignment::Center:
    case drawing::HorizontalAlignment::Middle:
        return -width / 2;
    case drawing::HorizontalAlignment::Right:
        return -width;
    default:
        return 0;
    }
}

} // namespace

PlacedText layOut(const drawing::FlatText& text, Typeface& typeface)
{
    PlacedText placed;
    placed.height = text.height;
    const Vec2 along{text.direction.x, text.direction.y};
    placed.up = Vec2{text.up.x, text.up.y} * text.height;
    const auto lines = brokenLines(text, text.height * text.widthFactor, typeface);
    double widthUnit = text.height * text.widthFactor;
    if (text.fitLength > 0 && !lines.empty()) {
        const double width = widthOf(lines.front(), typeface);
        if (width > 0) {
            const double fitted = text.fitLength / width;
            if (text.horizontal == drawing::HorizontalAlignment::Aligned)
                placed.up = placed.up * (fitted / widthUnit);
            widthUnit = fitted;
        }
    }
    placed.across = along * widthUnit;

    const double spacing = text.height > 0 && text.lineSpacing > 0 ? text.lineSpacing / text.height : 5.0 / 3;
    double baseline = firstBaseline(text, spacing * (lines.empty() ? 0.0 : double(lines.size() - 1)));
    const Vec2 insertion{text.position.x, text.position.y};
    for (const std::wstring& line : lines) {
        const double width = widthOf(line, typeface);
        double x = lineStart(text.horizontal, width);
        const auto at = [&](double across, double up) { return insertion + placed.across * across + placed.up * up; };
        if (width > 0) {
            placed.lineBoxes.push_back({at(x, baseline - descent), at(x + width, baseline - descent),
                                        at(x + width, baseline + 1), at(x, baseline + 1)});
        }
        for (const wchar_t character : line) {
            const Glyph& glyph = typeface.glyph(character);
            if (!glyph.contours.empty())
                placed.glyphs.push_back({&glyph, at(x, baseline)});
            x += glyph.advance;
        }
        baseline -= spacing;
    }
    return placed;
}

} // namespace desk
