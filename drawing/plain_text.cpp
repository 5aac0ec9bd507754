#include "drawing/plain_text.h"

#include "drawing/numbers.h"
#include "drawing/text_encoding.h"

namespace drawing {

namespace {

constexpr char32_t degree = 0xB0;
constexpr char32_t plusMinus = 0xB1;
constexpr char32_t diameter = 0x2205;
constexpr char32_t noBreakSpace = 0xA0;

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

// Takes a %% code off the front of the text, which begins with "%%", and adds what it shows.
void takePercentCode(std::string_view& text, std::string& result)
{
    const char code = text.size() > 2 ? text[2] : '\0';
    if (text.size() >= 5 && isDigit(text[2]) && isDigit(text[3]) && isDigit(text[4])) {
        const int character = parseInteger(text.substr(2, 3)).value_or(0);
        if (character >= ' ') {
            appendUtf8(result, static_cast<char32_t>(character));
        }
        text.remove_prefix(5);
        return;
    }
    switch (code) {
    case 'd':
    case 'D':
        appendUtf8(result, degree);
        break;
    case 'p':
    case 'P':
        appendUtf8(result, plusMinus);
        break;
    case 'c':
    case 'C':
        appendUtf8(result, diameter);
        break;
    case '%':
        result += '%';
        break;
    case 'u':
    case 'U':
    case 'o':
    case 'O':
    case 'k':
    case 'K':
        break; // lines under, over and through the text
    default:
        result += "%%";
        text.remove_prefix(2);
        return;
    }
    text.remove_prefix(3);
}

// Takes a caret with the letter after it off the front: a control character, or a caret if a blank follows.
void takeCaret(std::string_view& text, std::string& result)
{
    const char letter = text.size() > 1 ? text[1] : ' ';
    if (letter == ' ') {
        result += '^';
    } else if (letter == 'I') {
        result += ' ';
    }
    text.remove_prefix(text.size() > 1 ? 2 : 1);
}

// Goes through a multi-line text and collects what it shows.
class LineCollector
{
public:
    std::vector<std::string> collect(std::string_view text);

private:
    void takeBackslash(std::string_view& text);
    void takeStack(std::string_view& text);
    void breakLine() { m_lines.emplace_back(); }

    std::vector<std::string> m_lines{std::string()};
};

// "\S1/2;", "\S1#2;" or "\S1^2;": what stands above, and what stands below.
void LineCollector::takeStack(std::string_view& text)
{
    const auto end = text.find(';');
    std::string_view content = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    std::string& line = m_lines.back();
    while (!content.empty()) {
        char c = content[0];
        if (c == '\\' && content.size() > 1) {
            content.remove_prefix(1);
            c = content[0];
        } else if (c == '#' || c == '^') {
            c = '/';
        }
        line += c;
        content.remove_prefix(1);
        if (c == '/' && content.starts_with(' ')) {
            content.remove_prefix(1);
        }
    }
}

void LineCollector::takeBackslash(std::string_view& text)
{
    const char code = text.size() > 1 ? text[1] : '\0';
    text.remove_prefix(text.size() > 1 ? 2 : 1);
    switch (code) {
    case 'P':
    case 'N':
    case 'X':
        breakLine();
        break;
    case '~':
        appendUtf8(m_lines.back(), noBreakSpace);
        break;
    case '\\':
    case '{':
    case '}':
        m_lines.back() += code;
        break;
    case 'L':
    case 'l':
    case 'O':
    case 'o':
    case 'K':
    case 'k':
        break; // lines under, over and through the text
    case 'S':
        takeStack(text);
        break;
    case 'A':
    case 'C':
    case 'c':
    case 'F':
    case 'f':
    case 'H':
    case 'Q':
    case 'T':
    case 'W':
    case 'p': {
        // Alignment, colour, font, height, lean, spacing, width, paragraph: up to the semicolon.
        const auto end = text.find(';');
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
        break;
    }
    case '\0':
        m_lines.back() += '\\';
        break;
    default:
        m_lines.back() += '\\';
        m_lines.back() += code;
    }
}

std::vector<std::string> LineCollector::collect(std::string_view text)
{
    while (!text.empty()) {
        const char c = text[0];
        if (c == '\\') {
            takeBackslash(text);
        } else if (text.starts_with("%%")) {
            takePercentCode(text, m_lines.back());
        } else if (text.starts_with("^J")) {
            breakLine();
            text.remove_prefix(2);
        } else if (c == '^') {
            takeCaret(text, m_lines.back());
        } else {
            if (c != '{' && c != '}') {
                m_lines.back() += c;
            }
            text.remove_prefix(1);
        }
    }
    return std::move(m_lines);
}

} // namespace

std::string plainText(std::string_view text)
{
    std::string result;
    while (!text.empty()) {
        if (text.starts_with("%%")) {
            takePercentCode(text, result);
        } else if (text[0] == '^') {
            takeCaret(text, result);
        } else {
            result += text[0];
            text.remove_prefix(1);
        }
    }
    return result;
}

std::vector<std::string> plainLines(std::string_view mtext)
{
    return LineCollector().collect(mtext);
}

} // namespace drawing
