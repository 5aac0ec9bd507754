#include "drawing/rich_text.h"

#include <algorithm>
#include <cmath>

#include "drawing/numbers.h"
#include "drawing/text_encoding.h"

namespace drawing {

namespace {

constexpr char32_t degree = 0xB0;
constexpr char32_t plusMinus = 0xB1;
constexpr char32_t diameter = 0x2205;
constexpr char32_t noBreakSpace = 0xA0;

// What no legible text goes beyond; keeps sizes that multiply up within what can be computed with.
constexpr double largestRatio = 1e6; // of heights to the text's own
constexpr double largestFactor = 100;
constexpr double steepestLean = 85;
constexpr std::size_t mostTabs = 64;

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

char lower(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

class Reader
{
public:
    explicit Reader(const TextFormat& base) : m_format(base), m_baseHeight(base.height) {}
    RichText line(std::string_view text);
    RichText lines(std::string_view text);
    RichText literal(std::string_view text);

private:
    void add(TextElement::Kind kind, std::uint32_t value = 0);
    void character(char32_t c);
    std::uint32_t format();
    void endParagraph();

    void takePercentCode(std::string_view& text, bool switches);
    void takeCaret(std::string_view& text, bool multiLine);
    void takeBackslash(std::string_view& text);
    void takeStack(std::string_view& text);
    bool takeEscape(std::string_view& text);
    void setFormat(char code, std::string_view argument);
    void setFont(std::string_view argument, bool isFamily);
    void setHeight(std::string_view argument);
    void setParagraph(std::string_view argument);
    void setParagraphItem(std::string_view item, bool& inTabs);

    RichText m_result;
    TextFormat m_format;
    std::optional<std::uint32_t> m_formatNumber; // of m_format, if it is among m_result.formats
    std::vector<std::uint32_t> m_scopes;
    ParagraphFormat m_paragraph;
    double m_baseHeight;
};

// The number of the present format.
std::uint32_t Reader::format()
{
    if (!m_formatNumber) {
        m_formatNumber = static_cast<std::uint32_t>(m_result.formats.size());
        m_result.formats.push_back(m_format);
    }
    return *m_formatNumber;
}

void Reader::add(TextElement::Kind kind, std::uint32_t value)
{
    m_result.elements.push_back({kind, format(), value});
}

void Reader::character(char32_t c)
{
    if (c == U'\t') {
        add(TextElement::Kind::Tab);
    } else if (c >= U' ' && c != 0x7F) {
        add(TextElement::Kind::Character, static_cast<std::uint32_t>(c));
    }
}

void Reader::endParagraph()
{
    if (m_result.paragraphs.empty() || m_result.paragraphs.back() != m_paragraph) {
        m_result.paragraphs.push_back(m_paragraph);
    }
    add(TextElement::Kind::ParagraphEnd, static_cast<std::uint32_t>(m_result.paragraphs.size() - 1));
}

// Takes a %% code off the front of the text, which begins with "%%". `switches`: lines under, over and through the
// text can be switched.
void Reader::takePercentCode(std::string_view& text, bool switches)
{
    if (text.size() >= 5 && isDigit(text[2]) && isDigit(text[3]) && isDigit(text[4])) {
        // The three after the last of ASCII are those of the old stroke fonts.
        constexpr char32_t special[] = {degree, plusMinus, diameter};
        const auto code = static_cast<char32_t>(parseInteger(text.substr(2, 3)).value_or(0));
        character(code >= 127 && code <= 129 ? special[code - 127] : code);
        text.remove_prefix(5);
        return;
    }
    switch (text.size() > 2 ? lower(text[2]) : '\0') {
    case 'd':
        character(degree);
        break;
    case 'p':
        character(plusMinus);
        break;
    case 'c':
        character(diameter);
        break;
    case '%':
        character(U'%');
        break;
    case 'u':
        m_format.underline = m_format.underline != switches;
        m_formatNumber.reset();
        break;
    case 'o':
        m_format.overline = m_format.overline != switches;
        m_formatNumber.reset();
        break;
    case 'k':
        m_format.strike = m_format.strike != switches;
        m_formatNumber.reset();
        break;
    default:
        character(U'%');
        character(U'%');
        text.remove_prefix(2);
        return;
    }
    text.remove_prefix(3);
}

// Takes a caret with the letter after it off the front: a control character, or a caret if a blank follows.
void Reader::takeCaret(std::string_view& text, bool multiLine)
{
    const char letter = text.size() > 1 ? text[1] : ' ';
    if (letter == ' ') {
        character(U'^');
    } else if (letter == 'I') {
        character(multiLine ? U'\t' : U' ');
    } else if (letter == 'J' && multiLine) {
        endParagraph();
    }
    text.remove_prefix(text.size() > 1 ? 2 : 1);
}

// Takes "\U+XXXX" off the front; false if there is none.
bool Reader::takeEscape(std::string_view& text)
{
    constexpr std::size_t length = 7;
    if (!(text.starts_with("\\U+") || text.starts_with("\\u+")) || text.size() < length) {
        return false;
    }
    const auto code = parseHandle(text.substr(3, length - 3));
    if (!code) {
        return false;
    }
    character(static_cast<char32_t>(*code));
    text.remove_prefix(length);
    return true;
}

RichText Reader::line(std::string_view text)
{
    format(); // so that there is one
    while (!text.empty()) {
        if (text.starts_with("%%")) {
            takePercentCode(text, true);
        } else if (text[0] == '^') {
            takeCaret(text, false);
        } else if (!takeEscape(text)) {
            const char32_t next = takeCharacter(text);
            character(next == U'\t' ? U' ' : next);
        }
    }
    endParagraph();
    return std::move(m_result);
}

RichText Reader::literal(std::string_view text)
{
    format();
    while (!text.empty()) {
        character(takeCharacter(text));
    }
    endParagraph();
    return std::move(m_result);
}

RichText Reader::lines(std::string_view text)
{
    format();
    while (!text.empty()) {
        const char c = text[0];
        if (c == '\\') {
            takeBackslash(text);
        } else if (text.starts_with("%%")) {
            takePercentCode(text, false);
        } else if (c == '^') {
            takeCaret(text, true);
        } else if (c == '{') {
            m_scopes.push_back(format());
            text.remove_prefix(1);
        } else if (c == '}') {
            if (!m_scopes.empty()) {
                m_formatNumber = m_scopes.back();
                m_format = m_result.formats[m_scopes.back()];
                m_scopes.pop_back();
            }
            text.remove_prefix(1);
        } else if (c == '\n') {
            endParagraph();
            text.remove_prefix(1);
        } else {
            character(takeCharacter(text));
        }
    }
    endParagraph();
    return std::move(m_result);
}

void Reader::takeBackslash(std::string_view& text)
{
    if (takeEscape(text)) {
        return;
    }
    const char code = text.size() > 1 ? text[1] : '\0';
    text.remove_prefix(text.size() > 1 ? 2 : 1);
    switch (code) {
    case 'P':
        endParagraph();
        break;
    case 'N': // of columns, and of a dimension's text: below each other here
    case 'X':
        add(TextElement::Kind::LineBreak);
        break;
    case '~':
        character(noBreakSpace);
        break;
    case '\\':
    case '{':
    case '}':
        character(static_cast<unsigned char>(code));
        break;
    case '\0':
        character(U'\\');
        break;
    case 'L':
    case 'l':
        m_format.underline = code == 'L';
        m_formatNumber.reset();
        break;
    case 'O':
    case 'o':
        m_format.overline = code == 'O';
        m_formatNumber.reset();
        break;
    case 'K':
    case 'k':
        m_format.strike = code == 'K';
        m_formatNumber.reset();
        break;
    case 'S':
        takeStack(text);
        break;
    default:
        if (std::string_view("ACcFfHQTWp").find(code) != std::string_view::npos) {
            const auto end = text.find(';');
            setFormat(code, text.substr(0, end));
            text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
        }
    }
}

// "\S1/2;", "\S1#2;" or "\S1^2;": what stands above, and what stands below.
void Reader::takeStack(std::string_view& text)
{
    TextStack stack;
    bool below = false;
    while (!text.empty() && text[0] != ';') {
        bool escaped = false;
        if (text[0] == '\\' && text.size() > 1) {
            text.remove_prefix(1);
            escaped = true;
        }
        const char32_t c = takeCharacter(text);
        if (!below && !escaped && (c == U'/' || c == U'#' || c == U'^')) {
            below = true;
            stack.kind = c == U'/'   ? TextStack::Kind::Fraction
                         : c == U'#' ? TextStack::Kind::Diagonal
                                     : TextStack::Kind::Tolerance;
            text.remove_prefix(text.starts_with(' ') ? 1 : 0);
        } else if (c >= U' ') {
            (below ? stack.below : stack.above) += c;
        }
    }
    text.remove_prefix(text.empty() ? 0 : 1);
    if (below) {
        m_result.stacks.push_back(std::move(stack));
        add(TextElement::Kind::Stack, static_cast<std::uint32_t>(m_result.stacks.size() - 1));
        return;
    }
    for (const char32_t c : stack.above) {
        character(c);
    }
}

void Reader::setFormat(char code, std::string_view argument)
{
    m_formatNumber.reset();
    const bool relative = argument.ends_with('x');
    const auto number = parseReal(relative ? argument.substr(0, argument.size() - 1) : argument);
    switch (code) {
    case 'p':
        setParagraph(argument);
        return;
    case 'f':
    case 'F':
        setFont(argument, code == 'f');
        return;
    case 'H':
        setHeight(argument);
        return;
    default:
        break;
    }
    if (!number) {
        return;
    }
    switch (code) {
    case 'A':
        m_format.alignment = *number == 1   ? TextFormat::Alignment::Middle
                             : *number == 2 ? TextFormat::Alignment::Top
                                            : TextFormat::Alignment::Baseline;
        break;
    case 'C':
        m_format.color = TextColor{static_cast<int>(std::clamp(*number, 0.0, 256.0)), {}};
        break;
    case 'c': {
        const auto bgr = static_cast<std::uint32_t>(std::clamp(*number, 0.0, double(0xFFFFFF)));
        m_format.color = TextColor{7, (bgr & 0xFF) << 16 | (bgr & 0xFF00) | bgr >> 16};
        break;
    }
    case 'Q':
        m_format.oblique = std::clamp(*number, -steepestLean, steepestLean);
        break;
    case 'T':
        m_format.tracking = std::clamp(*number, 0.0, largestFactor);
        break;
    default: // W
        if (*number > 0) {
            m_format.widthFactor =
                std::clamp(*number * (relative ? m_format.widthFactor : 1), 1 / largestFactor, largestFactor);
        }
    }
}

void Reader::setHeight(std::string_view argument)
{
    const bool relative = argument.ends_with('x');
    const auto number = parseReal(relative ? argument.substr(0, argument.size() - 1) : argument);
    if (number && *number > 0) {
        m_format.height = std::clamp(*number * (relative ? m_format.height : 1), m_baseHeight / largestRatio,
                                     m_baseHeight * largestRatio);
    }
}

// "Arial|b1|i0|c0|p34" of a family, "romans.shx" or "romans,bigfont" of a file.
void Reader::setFont(std::string_view argument, bool isFamily)
{
    FontRequest font;
    const std::string_view name = argument.substr(0, argument.find_first_of(isFamily ? "|" : "|,"));
    font.name = std::string(name);
    font.isFamily = isFamily && !name.ends_with(".shx") && !name.ends_with(".SHX");
    font.bold = isFamily && argument.find("|b1") != std::string_view::npos;
    font.italic = isFamily && argument.find("|i1") != std::string_view::npos;
    m_format.font = std::move(font);
}

// "i-2,l2,r1,qc,t2,4": indents of the first line, left and right, alignment, tab stops, in heights of the text.
void Reader::setParagraph(std::string_view argument)
{
    bool inTabs = false;
    while (!argument.empty()) {
        const auto comma = argument.find(',');
        setParagraphItem(argument.substr(0, comma), inTabs);
        argument.remove_prefix(comma == std::string_view::npos ? argument.size() : comma + 1);
    }
    std::sort(m_paragraph.tabs.begin(), m_paragraph.tabs.end());
}

void Reader::setParagraphItem(std::string_view item, bool& inTabs)
{
    while (item.starts_with('x')) {
        item.remove_prefix(1);
    }
    if (item.empty()) {
        return;
    }
    const char code = item[0];
    const bool letter = lower(code) >= 'a' && lower(code) <= 'z';
    const bool startsTabs = code == 't';
    if (code == 'q') {
        using Alignment = ParagraphFormat::Alignment;
        switch (item.size() > 1 ? item[1] : '\0') {
        case 'c':
            m_paragraph.alignment = Alignment::Center;
            break;
        case 'r':
            m_paragraph.alignment = Alignment::Right;
            break;
        case 'l':
        case 'j':
        case 'd':
            m_paragraph.alignment = Alignment::Left;
            break;
        default:
            m_paragraph.alignment = Alignment::Inherited;
        }
        inTabs = false;
        return;
    }
    if (startsTabs) {
        m_paragraph.tabs.clear();
    }
    inTabs = startsTabs || (inTabs && !(letter && std::string_view("ilrs").find(code) != std::string_view::npos));
    item.remove_prefix(letter ? 1 : 0);
    if (inTabs) {
        while (!item.empty() && lower(item[0]) >= 'a' && lower(item[0]) <= 'z') {
            item.remove_prefix(1); // the kind of the stop: all are taken for left ones
        }
    }
    const auto number = parseReal(item);
    const double length = std::clamp(number.value_or(0), -largestRatio, largestRatio) * m_baseHeight;
    if (inTabs) {
        if (number && length > 0 && m_paragraph.tabs.size() < mostTabs) {
            m_paragraph.tabs.push_back(length);
        }
    } else if (code == 'i') {
        m_paragraph.firstIndent = length;
    } else if (code == 'l') {
        m_paragraph.leftIndent = length;
    } else if (code == 'r') {
        m_paragraph.rightIndent = length;
    }
}

} // namespace

RichText readText(std::string_view text, const TextFormat& base)
{
    return Reader(base).line(text);
}

RichText readMText(std::string_view text, const TextFormat& base)
{
    return Reader(base).lines(text);
}

RichText literalText(std::string_view text, const TextFormat& format)
{
    return Reader(format).literal(text);
}

} // namespace drawing
