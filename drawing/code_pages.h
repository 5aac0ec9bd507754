#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace drawing {

/// A code page of the operating system. Its lower half counts as ASCII, also where the system's table has another sign
/// there: drawings have their formatting codes in it.
class CodePage
{
public:
    virtual ~CodePage() = default;

    /// Takes the first character off non-empty bytes. Bytes that begin none give the control character of the first
    /// byte's number, so that no text is lost.
    char32_t take(std::string_view& bytes) const;
    /// The bytes that `take` reads as this character; nothing if the code page lacks it.
    std::optional<std::string> bytesOf(char32_t character) const;

protected:
    /// The system's conversions of one character; nothing if `bytes` are no whole one, or the code page lacks it.
    virtual std::optional<char32_t> decodeOne(std::string_view bytes) const = 0;
    virtual std::string encodeOne(char32_t character) const = 0;
};

/// A code page by its number on Windows; null if the system lacks it. One file for each system has it.
std::shared_ptr<const CodePage> openCodePage(int number);

/// The number of a code page by its name in a drawing file, such as "ANSI_1252", "dos850" or "big5"; nothing for names
/// that no drawing program gives.
std::optional<int> codePageNumber(std::string_view name);

/// The code page of Windows for the languages of this one: itself, but for those of DOS, the Macintosh and Unix.
int windowsCodePage(int number);

} // namespace drawing
