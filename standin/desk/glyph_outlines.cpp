#include "standin/desk/glyph_outlines.h"

#include <algorithm>
#include <cstring>

#include "standin/text.h"

namespace desk {
namespace {

// Large enough that the rounding of outline points doesn't show when a text fills the view.
constexpr int outlineHeight = 1024;
constexpr int piecesPerCurve = 5;

double toDouble(FIXED number)
{
    return number.value + number.fract / 65536.0;
}

Vec2 toVec2(const POINTFX& point)
{
    return {toDouble(point.x), toDouble(point.y)};
}

void addQuadratic(std::vector<Vec2>& contour, Vec2 control, Vec2 end)
{
    const Vec2 start = contour.back();
    for (int i = 1; i <= piecesPerCurve; ++i) {
        const double t = double(i) / piecesPerCurve, s = 1 - t;
        contour.push_back(start * (s * s) + control * (2 * s * t) + end * (t * t));
    }
}

void addCubic(std::vector<Vec2>& contour, Vec2 control1, Vec2 control2, Vec2 end)
{
    const Vec2 start = contour.back();
    for (int i = 1; i <= piecesPerCurve; ++i) {
        const double t = double(i) / piecesPerCurve, s = 1 - t;
        contour.push_back(start * (s * s * s) + control1 * (3 * s * s * t) + control2 * (3 * s * t * t) +
                          end * (t * t * t));
    }
}

void addCurve(std::vector<Vec2>& contour, const TTPOLYCURVE& curve)
{
    const POINTFX* points = curve.apfx;
    switch (curve.wType) {
    case TT_PRIM_QSPLINE: // a curve's end lies half-way between two controls, but for the last
        for (int i = 0; i + 1 < curve.cpfx; ++i) {
            const Vec2 control = toVec2(points[i]);
            const Vec2 next = toVec2(points[i + 1]);
            addQuadratic(contour, control, i + 2 < curve.cpfx ? (control + next) * 0.5 : next);
        }
        break;
    case TT_PRIM_CSPLINE:
        for (int i = 0; i + 2 < curve.cpfx; i += 3)
            addCubic(contour, toVec2(points[i]), toVec2(points[i + 1]), toVec2(points[i + 2]));
        break;
    default:
        for (int i = 0; i < curve.cpfx; ++i)
            contour.push_back(toVec2(points[i]));
    }
}

// The system's outline data: contours one behind the other, each a header and its curves.
std::vector<std::vector<Vec2>> contoursOf(const std::vector<std::byte>& data)
{
    std::vector<std::vector<Vec2>> contours;
    std::size_t at = 0;
    while (at + sizeof(TTPOLYGONHEADER) <= data.size()) {
        const auto* header = reinterpret_cast<const TTPOLYGONHEADER*>(data.data() + at);
        const std::size_t end = std::min<std::size_t>(at + header->cb, data.size());
        if (end <= at)
            break;
        std::vector<Vec2> contour{toVec2(header->pfxStart)};
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

Typeface::Typeface(const std::wstring& family) : m_context(CreateCompatibleDC(nullptr))
{
    LOGFONTW description{};
    description.lfHeight = -outlineHeight;
    description.lfWeight = FW_NORMAL;
    description.lfCharSet = DEFAULT_CHARSET;
    description.lfOutPrecision = OUT_TT_ONLY_PRECIS;
    wcsncpy(description.lfFaceName, family.c_str(), LF_FACESIZE - 1);
    m_font = CreateFontIndirectW(&description);
    m_formerFont = SelectObject(m_context, m_font);
    const Glyph& capital = glyph(L'H');
    double height = 0;
    for (const auto& contour : capital.contours) {
        for (const Vec2 point : contour)
            height = std::max(height, point.y);
    }
    m_capitalHeight = height > 0 ? height : outlineHeight * 0.7;
    m_glyphs.clear();
}

Typeface::~Typeface()
{
    SelectObject(m_context, m_formerFont);
    DeleteObject(m_font);
    DeleteDC(m_context);
}

const Glyph& Typeface::glyph(wchar_t character)
{
    const auto found = m_glyphs.find(character);
    return found != m_glyphs.end() ? found->second : m_glyphs.emplace(character, fetch(character)).first->second;
}

Glyph Typeface::fetch(wchar_t character) const
{
    const MAT2 identity{{0, 1}, {0, 0}, {0, 0}, {0, 1}};
    GLYPHMETRICS metrics{};
    Glyph glyph;
    const DWORD size = GetGlyphOutlineW(m_context, character, GGO_NATIVE, &metrics, 0, nullptr, &identity);
    if (size != GDI_ERROR && size > 0) {
        std::vector<std::byte> data(size);
        if (GetGlyphOutlineW(m_context, character, GGO_NATIVE, &metrics, size, data.data(), &identity) != GDI_ERROR)
            glyph.contours = contoursOf(data);
    }
    for (auto& contour : glyph.contours) {
        for (Vec2& point : contour)
            point = point * (1 / m_capitalHeight);
    }
    glyph.advance = (size == GDI_ERROR ? outlineHeight / 2 : metrics.gmCellIncX) / m_capitalHeight;
    return glyph;
}

Typeface& TypefaceCache::forFontFile(const std::string& fontFile)
{
    // The font files of everyday text styles; shape fonts have no outlines, and a plain sans serif stands for them.
    static const std::map<std::wstring, std::wstring> families = {
        {L"ARIAL", L"Arial"},
        {L"ARIALBD", L"Arial"},
        {L"TIMES", L"Times New Roman"},
        {L"COUR", L"Courier New"},
        {L"TAHOMA", L"Tahoma"},
        {L"VERDANA", L"Verdana"},
        {L"DEJAVUSANS", L"DejaVu Sans"},
        {L"DEJAVUSERIF", L"DejaVu Serif"},
        {L"DEJAVUSANSMONO", L"DejaVu Sans Mono"},
    };
    std::wstring stem = standin::upperCase(standin::fromUtf8(fontFile));
    stem = stem.substr(stem.find_last_of(L"\\/") + 1);
    stem = stem.substr(0, stem.find(L'.'));
    const auto known = families.find(stem);
    const std::wstring family = known != families.end() ? known->second : L"DejaVu Sans";
    auto& typeface = m_byFamily[family];
    if (!typeface)
        typeface = std::make_unique<Typeface>(family);
    return *typeface;
}

} // namespace desk
