#pragma once

#include <memory>
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
    /// The code page that a file of an earlier release names: ANSI_1252 if it names none, or one that nobody knows.
    explicit TextEncoding(std::string_view codePageName);

    /// False if the file names a code page that nobody knows.
    bool known() const { return m_known; }

    /// The text without \U+XXXX escapes. In UTF-8, bytes that are none are taken for ANSI_1252, since programs are
    /// about that label their files wrongly.
    std::string decode(std::string_view bytes) const;

    /// The bytes of a UTF-8 text; what the code page lacks becomes an escape.
    std::string encode(std::string_view text) const;

private:
    std::shared_ptr<const CodePage> m_page; // null: UTF-8
    bool m_known = true;
};

/// Replaces \U+XXXX escapes by the characters that they stand for; such as would break the line are left.
std::string decodeEscapes(std::string_view text);

/// Takes the first character off a non-empty UTF-8 text. A byte that begins none counts as one character of ANSI_1252.
char32_t takeCharacter(std::string_view& text);

bool isAscii(std::string_view text);
void appendUtf8(std::string& text, char32_t character);

} // namespace drawing
