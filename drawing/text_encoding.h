#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "drawing/code_pages.h"

namespace drawing {

/// How a drawing file's bytes stand for characters. Texts in memory are UTF-8.
class TextEncoding
{
public:
    /// UTF-8, as files from the release 2007 on have it.
    TextEncoding() = default;
    /// The code page that a file of an earlier release names.
    explicit TextEncoding(std::string_view codePageName);

    /// The text without \U+XXXX escapes. In UTF-8, bytes that are none are taken for ANSI_1252, since programs are
    /// about that label their files wrongly. Nothing if the text needs a code page that isn't known here.
    std::optional<std::string> decode(std::string_view bytes) const;

    /// The bytes of a UTF-8 text; what the code page lacks becomes an escape. Only for code pages known here.
    std::string encode(std::string_view text) const;

private:
    bool m_utf8 = true;
    const CodePage* m_page = nullptr;
};

/// Replaces \U+XXXX escapes by the characters that they stand for; such as would break the line are left.
std::string decodeEscapes(std::string_view text);

/// Takes the first character off a non-empty UTF-8 text. A byte that begins none counts as one character of ANSI_1252.
char32_t takeCharacter(std::string_view& text);

void appendUtf8(std::string& text, char32_t character);

} // namespace drawing
