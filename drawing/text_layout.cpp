#include "drawing/text_layout.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "drawing/stroke_font.h"

namespace drawing {

namespace {

using Kind = TextElement::Kind;

// In heights of capitals:
constexpr double descent = 0.3;          // how far letters such as g reach below the baseline
constexpr double lineDistance = 5.0 / 3; // from baseline to baseline, at the factor 1
constexpr double underlineHeight = -0.2; // of the lines, above the baseline
constexpr double overlineHeight = 1.2;
constexpr double strikeHeight = 0.45;
constexpr double stackGap = 0.25;    // between a bar and the texts above and below it
constexpr double diagonalRise = 0.6; // of the upper text of a diagonal fraction
constexpr double tabDistance = 4;

// Few fonts have the sign for diameters; the letter that looks like it fits their other letters best.
constexpr char32_t emptySet = 0x2205;
constexpr char32_t diameter = 0x2300;
constexpr char32_t strokedO = 0xD8;

// Lines longer than the column by rounding alone are not broken.
constexpr double roundingSlack = 1 + 1e-9;

struct Line
{
    std::size_t first = 0;
    std::size_t last = 0; // excluded
    double indent = 0;    // from the column's left edge
    double width = 0;
    double height = 0; // of the largest capitals
    double ascent = 0; // above the baseline
    double depth = 0;  // below it
    const ParagraphFormat* paragraph = nullptr;
};

// A stack's extent, with its lower edge as y = 0.
struct StackSize
{
    double aboveWidth = 0;
    double belowWidth = 0;
    double width = 0;
    double aboveBaseline = 0;
    double height = 0;
};

class Layout
{
public:
    Layout(const RichText& text, const TextFrame& frame, FontSource* fonts);
    std::vector<LaidText> result();

private:
    const TextFormat& formatOf(const TextElement& element) const { return m_text.formats[element.format]; }
    const Glyph& glyph(std::uint32_t format, char32_t character) const;
    double widthOf(std::uint32_t format, const std::u32string& text) const;
    StackSize sizeOf(const TextElement& stack) const;
    double tabStop(const ParagraphFormat& paragraph, double x) const;
    double advance(const TextElement& element, const ParagraphFormat& paragraph, double x) const;

    void breakLines();
    void breakParagraph(std::size_t first, std::size_t end);
    void addLine(std::size_t first, std::size_t last, double indent, const ParagraphFormat& paragraph);
    void stretch();
    double lineStart(const Line& line, double column) const;
    double firstBaseline() const;
    double distanceTo(const Line& line, const Line& former) const;

    double baseShift(const TextFormat& format, double height, double lineHeight) const;
    void place(const Line& line, double start, double baseline);
    void placeStack(const TextElement& element, const Line& line, double x, double baseline);
    void placeText(std::uint32_t format, const std::u32string& text, double x, double y);
    void placeGlyph(const Glyph& shape, double x, double y);
    void startPiece(const TextFormat& format);
    void closeRun(const TextFormat& format, double from, double to, double baseline);
    void addRule(double fromX, double fromY, double toX, double toY);
    Vector2 at(double x, double y) const { return m_origin + m_across * x + m_up * y; }

    const RichText& m_text;
    const TextFrame& m_frame;
    Vector2 m_origin;
    Vector2 m_across;
    Vector2 m_up;
    std::vector<Typeface*> m_typefaces; // for each format; null: the stroke font
    std::vector<Line> m_lines;
    std::vector<LaidText> m_pieces;
    const TextFormat* m_pieceFormat = nullptr;
};

Layout::Layout(const RichText& text, const TextFrame& frame, FontSource* fonts)
    : m_text(text), m_frame(frame), m_origin(frame.origin), m_across(frame.across), m_up(frame.up)
{
    m_typefaces.reserve(text.formats.size());
    for (std::size_t i = 0; i < text.formats.size(); ++i) {
        const bool asBefore = i > 0 && text.formats[i].font == text.formats[i - 1].font;
        m_typefaces.push_back(asBefore ? m_typefaces.back() : fonts ? fonts->find(text.formats[i].font) : nullptr);
    }
}

const Glyph& Layout::glyph(std::uint32_t format, char32_t character) const
{
    Typeface* typeface = m_typefaces[format];
    const Glyph* found = typeface ? typeface->find(character) : nullptr;
    if (typeface && !found && (character == diameter || character == emptySet)) {
        found = typeface->find(strokedO);
    }
    return found ? *found : strokeGlyph(character);
}

double Layout::widthOf(std::uint32_t format, const std::u32string& text) const
{
    double width = 0;
    for (const char32_t character : text) {
        width += glyph(format, character).advance;
    }
    const TextFormat& look = m_text.formats[format];
    return width * look.height * look.widthFactor * look.tracking;
}

StackSize Layout::sizeOf(const TextElement& element) const
{
    const TextStack& stack = m_text.stacks[element.value];
    const TextFormat& format = formatOf(element);
    StackSize size;
    size.aboveWidth = widthOf(element.format, stack.above);
    size.belowWidth = widthOf(element.format, stack.below);
    const double widest = std::max(size.aboveWidth, size.belowWidth);
    switch (stack.kind) {
    case TextStack::Kind::Fraction:
        size.aboveBaseline = (1 + 2 * stackGap) * format.height;
        size.width = widest;
        break;
    case TextStack::Kind::Tolerance:
        size.aboveBaseline = (1 + stackGap) * format.height;
        size.width = widest;
        break;
    case TextStack::Kind::Diagonal:
        size.aboveBaseline = diagonalRise * format.height;
        size.width = size.aboveWidth + diagonalRise * format.height * format.widthFactor + size.belowWidth;
        break;
    }
    size.height = size.aboveBaseline + format.height;
    return size;
}

// The next stop to the right, from the column's left edge.
double Layout::tabStop(const ParagraphFormat& paragraph, double x) const
{
    const auto next = std::upper_bound(paragraph.tabs.begin(), paragraph.tabs.end(), x);
    if (next != paragraph.tabs.end()) {
        return *next;
    }
    const double distance = tabDistance * m_text.formats.front().height;
    return distance > 0 ? (std::floor(x / distance * roundingSlack) + 1) * distance : x;
}

double Layout::advance(const TextElement& element, const ParagraphFormat& paragraph, double x) const
{
    switch (element.kind) {
    case Kind::Character: {
        const TextFormat& format = formatOf(element);
        return glyph(element.format, element.value).advance * format.height * format.widthFactor * format.tracking;
    }
    case Kind::Stack:
        return sizeOf(element).width;
    case Kind::Tab:
        return tabStop(paragraph, x) - x;
    default:
        return 0;
    }
}

void Layout::breakLines()
{
    std::size_t first = 0;
    for (std::size_t i = 0; i < m_text.elements.size(); ++i) {
        if (m_text.elements[i].kind == Kind::ParagraphEnd) {
            breakParagraph(first, i);
            first = i + 1;
        }
    }
}

// A word longer than the column stays whole.
void Layout::breakParagraph(std::size_t first, std::size_t end)
{
    const ParagraphFormat& paragraph = m_text.paragraphs[m_text.elements[end].value];
    const double limit = (m_frame.columnWidth - paragraph.rightIndent) * roundingSlack;
    double indent = paragraph.leftIndent + paragraph.firstIndent;
    double x = indent;
    double wordX = x; // where the word begins that may go to the next line
    std::size_t wordFirst = first;
    bool wordBefore = false;
    const auto startLine = [&](std::size_t from) {
        first = from;
        wordFirst = from;
        indent = paragraph.leftIndent;
        wordX = indent;
        wordBefore = false;
    };
    for (std::size_t i = first; i < end; ++i) {
        const TextElement& element = m_text.elements[i];
        if (element.kind == Kind::LineBreak) {
            addLine(first, i, indent, paragraph);
            startLine(i + 1);
            x = indent;
            continue;
        }
        const double width = advance(element, paragraph, x);
        const bool blank = element.kind == Kind::Tab || (element.kind == Kind::Character && element.value == U' ');
        if (!blank && m_frame.columnWidth > 0 && wordBefore && x + width > limit) {
            addLine(first, wordFirst, indent, paragraph);
            const double begun = x - wordX;
            startLine(wordFirst);
            x = indent + begun;
        }
        x += width;
        if (blank) {
            wordBefore = wordBefore || i > wordFirst;
            wordFirst = i + 1;
            wordX = x;
        }
    }
    addLine(first, end, indent, paragraph);
}

void Layout::addLine(std::size_t first, std::size_t last, double indent, const ParagraphFormat& paragraph)
{
    Line line{first, last, indent, 0, 0, 0, 0, &paragraph};
    // Blanks before a break in mid-line don't count; blanks that the writer ended a line with do.
    const Kind after = m_text.elements[last].kind;
    const auto isBlank = [&](const TextElement& e) { return e.kind == Kind::Character && e.value == U' '; };
    while (after != Kind::LineBreak && after != Kind::ParagraphEnd && line.last > first &&
           isBlank(m_text.elements[line.last - 1])) {
        --line.last;
    }
    double x = indent;
    for (std::size_t i = first; i < line.last; ++i) {
        x += advance(m_text.elements[i], paragraph, x);
        line.height = std::max(line.height, formatOf(m_text.elements[i]).height);
    }
    line.width = x - indent;
    if (line.height == 0) {
        line.height = formatOf(m_text.elements[last]).height;
    }
    line.ascent = line.height;
    line.depth = descent * line.height;
    for (std::size_t i = first; i < line.last; ++i) {
        if (m_text.elements[i].kind == Kind::Stack) {
            const double height = sizeOf(m_text.elements[i]).height;
            const double bottom = baseShift(formatOf(m_text.elements[i]), height, line.height);
            line.ascent = std::max(line.ascent, bottom + height);
            line.depth = std::max(line.depth, descent * line.height - bottom);
        }
    }
    m_lines.push_back(line);
}

// Aligned and Fit: the line takes the length between its two points.
void Layout::stretch()
{
    const double width = m_lines.front().width;
    if (m_frame.fitLength > 0 && width > 0) {
        const double factor = m_frame.fitLength / width;
        m_across = m_across * factor;
        m_up = m_frame.horizontal == HorizontalAlignment::Aligned ? m_up * factor : m_up;
    }
}

double Layout::lineStart(const Line& line, double column) const
{
    const bool centered =
        m_frame.horizontal == HorizontalAlignment::Center || m_frame.horizontal == HorizontalAlignment::Middle;
    const bool right = m_frame.horizontal == HorizontalAlignment::Right;
    const double left = centered ? -column / 2 : right ? -column : 0;
    const double spare = column - line.indent - line.paragraph->rightIndent - line.width;
    switch (line.paragraph->alignment) {
    case ParagraphFormat::Alignment::Left:
        return left + line.indent;
    case ParagraphFormat::Alignment::Center:
        return left + line.indent + spare / 2;
    case ParagraphFormat::Alignment::Right:
        return left + line.indent + spare;
    default:
        return left + line.indent + (centered ? spare / 2 : right ? spare : 0);
    }
}

double Layout::distanceTo(const Line& line, const Line& former) const
{
    if (m_frame.exactSpacingOf > 0) {
        return m_frame.spacingFactor * lineDistance * m_frame.exactSpacingOf;
    }
    const double stacked = line.ascent - line.height + former.depth - descent * former.height;
    return m_frame.spacingFactor * (lineDistance * line.height + stacked);
}

// The first line's, above the place that the alignment gives.
double Layout::firstBaseline() const
{
    double below = 0;
    for (std::size_t i = 1; i < m_lines.size(); ++i) {
        below += distanceTo(m_lines[i], m_lines[i - 1]);
    }
    const double ascent = m_lines.front().ascent;
    if (m_frame.horizontal == HorizontalAlignment::Middle) {
        return (below - ascent) / 2;
    }
    switch (m_frame.vertical) {
    case VerticalAlignment::Bottom:
        return m_lines.back().depth + below;
    case VerticalAlignment::Middle:
        return (below - ascent) / 2;
    case VerticalAlignment::Top:
        return -ascent;
    default:
        return 0;
    }
}

// How far above the baseline something of this height stands in a line.
double Layout::baseShift(const TextFormat& format, double height, double lineHeight) const
{
    switch (format.alignment) {
    case TextFormat::Alignment::Middle:
        return (lineHeight - height) / 2;
    case TextFormat::Alignment::Top:
        return lineHeight - height;
    default:
        return 0;
    }
}

// Glyphs of one size, lean and colour come as one piece.
void Layout::startPiece(const TextFormat& format)
{
    const TextFormat* last = m_pieceFormat;
    if (last && last->height == format.height && last->widthFactor == format.widthFactor &&
        last->oblique == format.oblique && last->color == format.color) {
        return;
    }
    m_pieceFormat = &format;
    FlatText piece;
    piece.across = m_across * (format.height * format.widthFactor);
    piece.up = m_up * format.height + m_across * (format.height * std::tan(format.oblique * std::numbers::pi / 180));
    const double area = std::abs(m_across.x * m_up.y - m_across.y * m_up.x);
    piece.height = format.height * area / length(m_across);
    m_pieces.push_back({std::move(piece), format.color});
}

void Layout::placeGlyph(const Glyph& shape, double x, double y)
{
    if (!shape.contours.empty() || !shape.strokes.empty()) {
        m_pieces.back().text.glyphs.push_back({&shape, at(x, y)});
    }
}

void Layout::placeText(std::uint32_t format, const std::u32string& text, double x, double y)
{
    const TextFormat& look = m_text.formats[format];
    for (const char32_t character : text) {
        const Glyph& shape = glyph(format, character);
        placeGlyph(shape, x, y);
        x += shape.advance * look.height * look.widthFactor * look.tracking;
    }
}

void Layout::addRule(double fromX, double fromY, double toX, double toY)
{
    m_pieces.back().text.rules.push_back({at(fromX, fromY), at(toX, toY)});
}

void Layout::placeStack(const TextElement& element, const Line& line, double x, double baseline)
{
    const TextStack& stack = m_text.stacks[element.value];
    const TextFormat& format = formatOf(element);
    const StackSize size = sizeOf(element);
    const double bottom = baseline + baseShift(format, size.height, line.height);
    const bool centered = stack.kind == TextStack::Kind::Fraction;
    const bool diagonal = stack.kind == TextStack::Kind::Diagonal;
    const double belowShift = diagonal   ? size.width - size.belowWidth
                              : centered ? (size.width - size.belowWidth) / 2
                                         : 0;
    placeText(element.format, stack.above, x + (centered ? (size.width - size.aboveWidth) / 2 : 0),
              bottom + size.aboveBaseline);
    placeText(element.format, stack.below, x + belowShift, bottom);
    if (centered) {
        const double bar = bottom + (1 + stackGap) * format.height;
        addRule(x, bar, x + size.width, bar);
    } else if (diagonal) {
        addRule(x + size.aboveWidth, bottom, x + size.width - size.belowWidth, bottom + size.height);
    }
    m_pieces.back().text.lineBoxes.push_back({at(x, bottom - descent * format.height),
                                              at(x + size.width, bottom - descent * format.height),
                                              at(x + size.width, bottom + size.height), at(x, bottom + size.height)});
}

// What goes along a whole run: its box and its lines.
void Layout::closeRun(const TextFormat& format, double from, double to, double baseline)
{
    if (!(to > from)) {
        return;
    }
    const double low = baseline - descent * format.height;
    const double high = baseline + format.height;
    m_pieces.back().text.lineBoxes.push_back({at(from, low), at(to, low), at(to, high), at(from, high)});
    const auto rule = [&](bool wanted, double height) {
        if (wanted) {
            addRule(from, baseline + height * format.height, to, baseline + height * format.height);
        }
    };
    rule(format.underline, underlineHeight);
    rule(format.overline, overlineHeight);
    rule(format.strike, strikeHeight);
}

void Layout::place(const Line& line, double start, double baseline)
{
    const double shift = start - line.indent; // from the column's x to the plane's
    double x = line.indent;
    for (std::size_t i = line.first; i < line.last;) {
        const std::uint32_t runFormat = m_text.elements[i].format;
        const TextFormat& format = m_text.formats[runFormat];
        const double base = baseline + baseShift(format, format.height, line.height);
        startPiece(format);
        double from = x;
        for (; i < line.last && m_text.elements[i].format == runFormat; ++i) {
            const TextElement& element = m_text.elements[i];
            const double width = advance(element, *line.paragraph, x);
            if (element.kind == Kind::Character) {
                placeGlyph(glyph(runFormat, element.value), x + shift, base);
            } else if (element.kind == Kind::Stack) {
                closeRun(format, from + shift, x + shift, base);
                placeStack(element, line, x + shift, baseline);
                from = x + width;
            }
            x += width;
        }
        closeRun(format, from + shift, x + shift, base);
    }
}

std::vector<LaidText> Layout::result()
{
    breakLines();
    stretch();
    double column = m_frame.columnWidth;
    if (!(column > 0)) {
        for (const Line& line : m_lines) {
            column = std::max(column, line.indent + line.width + line.paragraph->rightIndent);
        }
    }
    double baseline = firstBaseline();
    for (std::size_t i = 0; i < m_lines.size(); ++i) {
        baseline -= i > 0 ? distanceTo(m_lines[i], m_lines[i - 1]) : 0;
        place(m_lines[i], lineStart(m_lines[i], column), baseline);
    }
    return std::move(m_pieces);
}

} // namespace

std::vector<LaidText> layOut(const RichText& text, const TextFrame& frame, FontSource* fonts)
{
    return Layout(text, frame, fonts).result();
}

} // namespace drawing
