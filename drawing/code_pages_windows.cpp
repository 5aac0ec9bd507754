// The code pages as Windows has them.

#include <windows.h>

#include "drawing/code_pages.h"

namespace drawing {

namespace {

class WindowsCodePage final : public CodePage
{
public:
    explicit WindowsCodePage(int number) : m_number(static_cast<UINT>(number)) {}

protected:
    std::optional<char32_t> decodeOne(std::string_view bytes) const override
    {
        // Windows takes a lead byte alone for a character in some code pages.
        const bool leadByte = IsDBCSLeadByteEx(m_number, static_cast<BYTE>(bytes[0])) != FALSE;
        if (bytes.size() != (leadByte ? 2 : 1)) {
            return std::nullopt;
        }
        wchar_t character = 0;
        const int count = MultiByteToWideChar(m_number, MB_ERR_INVALID_CHARS, bytes.data(),
                                              static_cast<int>(bytes.size()), &character, 1);
        return count == 1 ? std::optional<char32_t>(character) : std::nullopt;
    }
    std::string encodeOne(char32_t character) const override
    {
        if (character > 0xFFFF) {
            return {}; // none of these code pages goes beyond
        }
        const auto unit = static_cast<wchar_t>(character);
        char bytes[4];
        BOOL replaced = FALSE;
        const int count =
            WideCharToMultiByte(m_number, WC_NO_BEST_FIT_CHARS, &unit, 1, bytes, sizeof bytes, nullptr, &replaced);
        return count > 0 && !replaced ? std::string(bytes, static_cast<std::size_t>(count)) : std::string();
    }

private:
    UINT m_number;
};

} // namespace

std::shared_ptr<const CodePage> openCodePage(int number)
{
    return IsValidCodePage(static_cast<UINT>(number)) ? std::make_shared<WindowsCodePage>(number) : nullptr;
}

} // namespace drawing
