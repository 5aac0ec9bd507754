#include "drawing/dwg/caret_text.h"

namespace drawing::dwg {

namespace {

constexpr char caret = '^';
constexpr int caretStep = 0x40; // from a control character to the letter that stands for it

} // namespace

std::string withCarets(std::string_view text)
{
    std::string result;
    for (const char each : text) {
        if (each >= 0 && each < ' ') {
            result += caret;
            result += static_cast<char>(each + caretStep);
        } else {
            result += each;
            if (each == caret) {
                result += ' ';
            }
        }
    }
    return result;
}

std::string withoutCarets(std::string_view text)
{
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char next = i + 1 < text.size() ? text[i + 1] : '\0';
        if (text[i] != caret || (next != ' ' && (next < caretStep || next >= caretStep + ' '))) {
            result += text[i];
            continue;
        }
        result += next == ' ' ? caret : static_cast<char>(next - caretStep);
        ++i;
    }
    return result;
}

} // namespace drawing::dwg
