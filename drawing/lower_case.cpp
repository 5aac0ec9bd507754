#include "drawing/lower_case.h"

namespace drawing {

std::string lowerCase(std::string_view text)
{
    std::string result(text);
    for (char& c : result) {
        c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    }
    return result;
}

} // namespace drawing
