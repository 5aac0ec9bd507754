#include "drawing/plain_text.h"

#include "drawing/rich_text.h"
#include "drawing/text_encoding.h"

namespace drawing {

namespace {

void append(std::string& line, const std::u32string& text)
{
    for (const char32_t character : text) {
        appendUtf8(line, character);
    }
}

std::vector<std::string> linesOf(const RichText& text)
{
    std::vector<std::string> lines{std::string()};
    for (std::size_t i = 0; i + 1 < text.elements.size(); ++i) {
        const TextElement& element = text.elements[i];
        switch (element.kind) {
        case TextElement::Kind::Character:
            appendUtf8(lines.back(), element.value);
            break;
        case TextElement::Kind::Tab:
            lines.back() += ' ';
            break;
        case TextElement::Kind::Stack:
            append(lines.back(), text.stacks[element.value].above);
            lines.back() += '/';
            append(lines.back(), text.stacks[element.value].below);
            break;
        default:
            lines.emplace_back();
        }
    }
    return lines;
}

} // namespace

std::string plainText(std::string_view text)
{
    return linesOf(readText(text, {})).front();
}

std::vector<std::string> plainLines(std::string_view mtext)
{
    return linesOf(readMText(mtext, {}));
}

} // namespace drawing
