#pragma once

#include <windows.h>
#include <map>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "standin/desk/vec2.h"

namespace desk {

/// A character's shape, in units of the font's capital height, baseline at y = 0, y up.
struct Glyph
{
    std::vector<std::vector<Vec2>> contours;
    double advance = 0;
};

/// The glyphs of one typeface, fetched from the system as they are asked for.
class Typeface
{
public:
    explicit Typeface(const std::wstring& family);
    ~Typeface();
    Typeface(const Typeface&) = delete;
    Typeface& operator=(const Typeface&) = delete;

    /// Held until the typeface goes.
    const Glyph& glyph(wchar_t character);

private:
    Glyph fetch(wchar_t character) const;

    HDC m_context = nullptr;
    HFONT m_font = nullptr;
    HGDIOBJ m_formerFont = nullptr;
    double m_capitalHeight = 1; // in the units of the fetched outlines
    std::unordered_map<wchar_t, Glyph> m_glyphs;
};

/// Typefaces by the font file that a text style names. Fonts that are not installed give a plain sans serif.
class TypefaceCache
{
public:
    Typeface& forFontFile(const std::string& fontFile);

private:
    std::map<std::wstring, std::unique_ptr<Typeface>> m_byFamily;
};

} // namespace desk
