#include "fonts/system_typeface.h"

#include <algorithm>
#include <cstring>

namespace fonts {
namespace {

using drawing::Glyph;
using drawing::Vector2;

// The size of the square that everyday fonts are designed on, so that their numbers come unrounded.
constexpr int outlineHeight = 2048;
// Letters of a thousand pixels stay within half a pixel of their curves.
constexpr int piecesPerCurve = 10;
constexpr UINT outlineFormat = GGO_NATIVE | GGO_UNHINTED;

double toDouble(FIXED number)
{
    return number.value + number.fract / 65536.0;
}

Vector2 toVector(const POINTFX& point)
{
    return {toDouble(point.x), toDouble(point.y)};
}

void addQuadratic(std::vector<Vector2>& contour, Vector2 control, Vector2 end)
{
    const Vector2 start = contour.back();
    for (int i = 1; i <= piecesPerCurve; ++i) {
        const double t = double(i) / piecesPerCurve, s = 1 - t;
        contour.push_back(start * (s * s) + control * (2 * s * t) + end * (t * t));
    }
}

void addCubic(std::vector<Vector2>& contour, Vector2 control1, Vector2 control2, Vector2 end)
{
    const Vector2 start = contour.back();
    for (int i = 1; i <= piecesPerCurve; ++i) {
        const double t = double(i) / piecesPerCurve, s = 1 - t;
        contour.push_back(start * (s * s * s) + control1 * (3 * s * s * t) + control2 * (3 * s * t * t) +
                          end * (t * t * t));
    }
}

void addCurve(std::vector<Vector2>& contour, const TTPOLYCURVE& curve)
{
    const POINTFX* points = curve.apfx;
    switch (curve.wType) {
    case TT_PRIM_QSPLINE: // a curve's end lies half-way between two controls, but for the last
        for (int i = 0; i + 1 < curve.cpfx; ++i) {
            const Vector2 control = toVector(points[i]);
            const Vector2 next = toVector(points[i + 1]);
            addQuadratic(contour, control, i + 2 < curve.cpfx ? (control + next) * 0.5 : next);
        }
        break;
    case TT_PRIM_CSPLINE:
        for (int i = 0; i + 2 < curve.cpfx; i += 3)
            addCubic(contour, toVector(points[i]), toVector(points[i + 1]), toVector(points[i + 2]));
        break;
    default:
        for (int i = 0; i < curve.cpfx; ++i)
            contour.push_back(toVector(points[i]));
    }
}

// The system's outline data: contours one behind the other, each a header and its curves.
std::vector<std::vector<Vector2>> contoursOf(const std::vector<std::byte>& data)
{
    std::vector<std::vector<Vector2>> contours;
    std::size_t at = 0;
    while (at + sizeof(TTPOLYGONHEADER) <= data.size()) {
        const auto* header = reinterpret_cast<const TTPOLYGONHEADER*>(data.data() + at);
        const std::size_t end = std::min<std::size_t>(at + header->cb, data.size());
        if (end <= at)
            break;
        std::vector<Vector2> contour{toVector(header->pfxStart)};
        at += sizeof(TTPOLYGONHEADER);
        while (at + sizeof(TTPOLYCURVE) <= end) {
            const auto* curve = reinterpret_cast<const TTPOLYCURVE*>(data.data() + at);
            addCurve(contour, *curve);
            at += sizeof(TTPOLYCURVE) + (curve->cpfx - 1) * sizeof(POINTFX);
        }
        at = end;
        contours.push_back(std::move(contour));
    }
    return contours;
}

} // namespace

SystemTypeface::SystemTypeface(const std::wstring& family, bool bold, bool italic)
    : m_context(CreateCompatibleDC(nullptr))
{
    LOGFONTW description{};
    description.lfHeight = -outlineHeight;
    description.lfWeight = bold ? FW_BOLD : FW_NORMAL;
    description.lfItalic = italic;
    description.lfCharSet = DEFAULT_CHARSET;
    description.lfOutPrecision = OUT_TT_ONLY_PRECIS;
    wcsncpy(description.lfFaceName, family.c_str(), LF_FACESIZE - 1);
    m_font = CreateFontIndirectW(&description);
    m_formerFont = SelectObject(m_context, m_font);
    wchar_t given[LF_FACESIZE] = L"";
    GetTextFaceW(m_context, LF_FACESIZE, given);
    m_isFamily = CompareStringOrdinal(given, -1, description.lfFaceName, -1, TRUE) == CSTR_EQUAL;
    double height = 0;
    for (const auto& contour : fetch(L'H').contours) {
        for (const Vector2 point : contour)
            height = std::max(height, point.y);
    }
    m_capitalHeight = height > 0 ? height : outlineHeight * 0.7;
}

SystemTypeface::~SystemTypeface()
{
    SelectObject(m_context, m_formerFont);
    DeleteObject(m_font);
    DeleteDC(m_context);
}

const Glyph* SystemTypeface::find(char32_t character)
{
    const auto known = m_glyphs.find(character);
    if (known != m_glyphs.end())
        return known->second ? &*known->second : nullptr;
    auto& glyph = m_glyphs[character];
    if (has(character))
        glyph = fetch(static_cast<wchar_t>(character));
    return glyph ? &*glyph : nullptr;
}

bool SystemTypeface::has(char32_t character) const
{
    constexpr char32_t lastOfBasicPlane = 0xFFFF;
    constexpr WORD missing = 0xFFFF;
    if (character > lastOfBasicPlane)
        return false;
    const auto unit = static_cast<wchar_t>(character);
    WORD index = missing;
    return GetGlyphIndicesW(m_context, &unit, 1, &index, GGI_MARK_NONEXISTING_GLYPHS) == 1 && index != missing;
}

Glyph SystemTypeface::fetch(wchar_t character) const
{
    const MAT2 identity{{0, 1}, {0, 0}, {0, 0}, {0, 1}};
    GLYPHMETRICS metrics{};
    Glyph glyph;
    const DWORD size = GetGlyphOutlineW(m_context, character, outlineFormat, &metrics, 0, nullptr, &identity);
    if (size != GDI_ERROR && size > 0) {
        std::vector<std::byte> data(size);
        if (GetGlyphOutlineW(m_context, character, outlineFormat, &metrics, size, data.data(), &identity) != GDI_ERROR)
            glyph.contours = contoursOf(data);
    }
    for (auto& contour : glyph.contours) {
        for (Vector2& point : contour)
            point = point * (1 / m_capitalHeight);
    }
    glyph.advance = (size == GDI_ERROR ? outlineHeight / 2 : metrics.gmCellIncX) / m_capitalHeight;
    return glyph;
}

} // namespace fonts
