#pragma once

#include <windows.h>
#include <optional>
#include <string>
#include <unordered_map>

#include "drawing/glyphs.h"

namespace fonts {

/// Outlines of a TrueType font that the system knows, fetched as they are asked for.
class SystemTypeface : public drawing::Typeface
{
public:
    SystemTypeface(const std::wstring& family, bool bold, bool italic);
    ~SystemTypeface() override;
    SystemTypeface(const SystemTypeface&) = delete;
    SystemTypeface& operator=(const SystemTypeface&) = delete;

    /// False if the system has no such family and gave another instead.
    bool isFamily() const { return m_isFamily; }
    const drawing::Glyph* find(char32_t character) override;

private:
    bool has(char32_t character) const;
    drawing::Glyph fetch(wchar_t character) const;

    HDC m_context = nullptr;
    HFONT m_font = nullptr;
    HGDIOBJ m_formerFont = nullptr;
    bool m_isFamily = false;
    double m_capitalHeight = 1;                                           // in the units of the fetched outlines
    std::unordered_map<char32_t, std::optional<drawing::Glyph>> m_glyphs; // nothing: the font lacks it
};

} // namespace fonts
