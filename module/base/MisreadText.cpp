#include "module/base/MisreadText.h"

#include <cstring>
#include <vector>

CString MisreadText(const char* text)
{
    const std::size_t length = std::strlen(text);
    // One more for half a character at the end, and one for the end itself.
    std::vector<wchar_t> read(length / sizeof(wchar_t) + 2, L'\0');
    std::memcpy(read.data(), text, length);
    return read.data();
}
