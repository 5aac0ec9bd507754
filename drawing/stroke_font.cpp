#include "drawing/stroke_font.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <numbers>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

#include "drawing/numbers.h"
#include "drawing/stroke_glyphs.h"

namespace drawing {

namespace {

constexpr double capitalHeight = 12; // of the grid
constexpr int piecesPerCurve = 6;
constexpr double dotRadius = 0.55;

// A letter on the grid.
struct Shape
{
    double width = 0;
    std::vector<std::vector<Vector2>> strokes;

    void add(const Shape& other, const Vector2& offset, const Vector2& factor)
    {
        for (const auto& stroke : other.strokes) {
            auto& copy = strokes.emplace_back();
            for (const Vector2& point : stroke) {
                copy.push_back({offset.x + point.x * factor.x, offset.y + point.y * factor.y});
            }
        }
    }
    std::optional<Extents> extents() const
    {
        std::optional<Extents> box;
        for (const auto& stroke : strokes) {
            for (const Vector2& point : stroke) {
                include(box, point);
            }
        }
        return box;
    }
};

// Takes "1,2" off the front.
Vector2 takePoint(std::u32string_view& word)
{
    std::string ascii;
    while (!word.empty() && word[0] != U'/') {
        ascii += static_cast<char>(word[0]);
        word.remove_prefix(1);
    }
    const auto comma = ascii.find(',');
    return {parseReal(ascii.substr(0, comma)).value_or(0), parseReal(ascii.substr(comma + 1)).value_or(0)};
}

// A quarter of an ellipse; it sets out level or upright.
void addQuarter(std::vector<Vector2>& stroke, const Vector2& to, bool level)
{
    const Vector2 from = stroke.back();
    for (int i = 1; i <= piecesPerCurve; ++i) {
        const double angle = std::numbers::pi / 2 * i / piecesPerCurve;
        const double sine = std::sin(angle), versine = 1 - std::cos(angle);
        const double x = level ? sine : versine, y = level ? versine : sine;
        stroke.push_back({from.x + (to.x - from.x) * x, from.y + (to.y - from.y) * y});
    }
}

void addParabola(std::vector<Vector2>& stroke, const Vector2& control, const Vector2& to)
{
    const Vector2 from = stroke.back();
    for (int i = 1; i <= piecesPerCurve; ++i) {
        const double t = static_cast<double>(i) / piecesPerCurve, s = 1 - t;
        stroke.push_back(from * (s * s) + control * (2 * s * t) + to * (t * t));
    }
}

// Builds the font from its drawings.
class Builder
{
public:
    std::unordered_map<char32_t, Glyph> build();

private:
    const Shape& drawn(char32_t character);
    Shape read(double width, std::u32string_view text);
    void readWord(Shape& shape, std::u32string_view word);
    void addInclusion(Shape& shape, std::u32string_view word);
    void addAccented(const StrokeAccent& accent);

    std::map<char32_t, const StrokeDrawing*> m_drawings;
    std::map<char32_t, Shape> m_shapes;
    std::optional<Vector2> m_control;
};

const Shape& Builder::drawn(char32_t character)
{
    if (!m_shapes.contains(character)) {
        const StrokeDrawing& drawing = *m_drawings.at(character);
        m_shapes[character] = read(drawing.width, drawing.strokes);
    }
    return m_shapes[character];
}

Shape Builder::read(double width, std::u32string_view text)
{
    Shape shape{width, {{}}};
    m_control.reset();
    while (!text.empty()) {
        const auto blank = std::min(text.find(U' '), text.size());
        readWord(shape, text.substr(0, blank));
        text.remove_prefix(std::min(blank + 1, text.size()));
    }
    std::erase_if(shape.strokes, [](const auto& stroke) { return stroke.empty(); });
    return shape;
}

void Builder::readWord(Shape& shape, std::u32string_view word)
{
    const char32_t code = word.empty() ? U'|' : word[0];
    if (code == U'=') {
        addInclusion(shape, word.substr(1));
        shape.strokes.emplace_back();
        return;
    }
    if (code == U'|') {
        shape.strokes.emplace_back();
        return;
    }
    const bool curve = code == U'h' || code == U'v' || code == U'q' || code == U'*';
    word.remove_prefix(curve ? 1 : 0);
    const Vector2 point = takePoint(word);
    std::vector<Vector2>& stroke = shape.strokes.back();
    if (code == U'q') {
        m_control = point;
    } else if (code == U'h' || code == U'v') {
        addQuarter(stroke, point, code == U'h');
    } else if (m_control) {
        addParabola(stroke, *m_control, point);
        m_control.reset();
    } else {
        stroke.push_back(point);
    }
}

// "A@2,3/0.5,0.6"
void Builder::addInclusion(Shape& shape, std::u32string_view word)
{
    const Shape& other = drawn(word[0]);
    word.remove_prefix(1);
    Vector2 offset{0, 0}, factor{1, 1};
    if (word.starts_with(U'@')) {
        word.remove_prefix(1);
        offset = takePoint(word);
    }
    if (word.starts_with(U'/')) {
        word.remove_prefix(1);
        factor = takePoint(word);
    }
    shape.add(other, offset, factor);
}

void Builder::addAccented(const StrokeAccent& accent)
{
    using Place = StrokeAccent::Place;
    const Shape mark = read(0, accent.strokes);
    for (std::size_t i = 0; i < accent.characters.size(); ++i) {
        Shape shape = m_shapes.at(accent.bases[i]);
        const Extents box = shape.extents().value_or(Extents());
        Vector2 at{(box.low.x + box.high.x) / 2, accent.place == Place::Above ? box.high.y : 0};
        if (accent.place == Place::Foot || accent.place == Place::Beside) {
            at.x = box.high.x;
        } else if (accent.place == Place::Before) {
            at.x = 0;
        }
        shape.add(mark, at, {1, 1});
        m_shapes[accent.characters[i]] = std::move(shape);
    }
    if (accent.accent != 0) {
        Shape alone{4, {}};
        alone.add(mark, {2, accent.place == Place::Above ? 8.0 : 0}, {1, 1});
        m_shapes[accent.accent] = std::move(alone);
    }
}

// The white beside a letter, on the average of the rows of small letters: how far the strokes stay away from x = 0, and
// from the width.
struct Whites
{
    double left = 0;
    double right = 0;
};

Whites whitesOf(const Shape& shape)
{
    constexpr int rows = 16;
    constexpr double rowHeight = 0.5, most = 3;
    Whites whites;
    for (int row = 0; row < rows; ++row) {
        const double y = rowHeight * (row + 0.5);
        double left = most, right = most;
        for (const auto& stroke : shape.strokes) {
            for (std::size_t i = 1; i < stroke.size(); ++i) {
                const Vector2 &a = stroke[i - 1], &b = stroke[i];
                if ((a.y > y) != (b.y > y)) {
                    const double x = a.x + (b.x - a.x) * (y - a.y) / (b.y - a.y);
                    left = std::min(left, x);
                    right = std::min(right, shape.width - x);
                }
            }
        }
        whites.left += left / rows;
        whites.right += right / rows;
    }
    return whites;
}

// Letters that are open or round at a side stand closer to their neighbours than those with a stem there.
double bearing(double white)
{
    constexpr double besideStem = 1.95, leastBearing = 1.1, perWhite = 0.38;
    return std::clamp(besideStem - perWhite * white, leastBearing, besideStem);
}

Glyph glyphOf(Shape shape, bool figure)
{
    constexpr double overhang = 1; // of bars and accents over the letter's own width
    constexpr double besideFigure = 1.5;
    const Extents box = shape.extents().value_or(Extents());
    const double left = std::min(0.0, box.low.x + overhang);
    shape.width = std::max(shape.width, box.high.x - overhang) - left;
    Shape moved{shape.width, {}};
    moved.add(shape, {-left, 0}, {1, 1});
    const Whites whites = whitesOf(moved);
    const double before = figure ? besideFigure : bearing(whites.left);
    const double after = figure ? besideFigure : bearing(whites.right);
    Glyph glyph;
    glyph.advance = (before + moved.width + after) / capitalHeight;
    for (auto& stroke : moved.strokes) {
        for (Vector2& point : stroke) {
            point = (point + Vector2{before, 0}) * (1 / capitalHeight);
        }
        if (stroke.size() == 1) { // a dot
            constexpr int corners = 8;
            auto& contour = glyph.contours.emplace_back();
            for (int i = 0; i < corners; ++i) {
                const double angle = 2 * std::numbers::pi * (i + 0.5) / corners;
                contour.push_back(stroke[0] + Vector2{std::cos(angle), std::sin(angle)} * (dotRadius / capitalHeight));
            }
        }
    }
    glyph.strokes = std::move(moved.strokes);
    return glyph;
}

std::unordered_map<char32_t, Glyph> Builder::build()
{
    for (const StrokeDrawing& drawing : strokeDrawings()) {
        m_drawings[drawing.character] = &drawing;
    }
    for (const StrokeDrawing& drawing : strokeDrawings()) {
        drawn(drawing.character);
    }
    for (const StrokeLikeness& likeness : strokeLikenesses()) {
        for (std::size_t i = 0; i < likeness.characters.size(); ++i) {
            const Shape& like = m_shapes.at(likeness.like[i]);
            Shape shape{like.width * likeness.widthFactor, {}};
            shape.add(like, {0, 0}, {likeness.widthFactor, likeness.heightFactor});
            m_shapes[likeness.characters[i]] = std::move(shape);
        }
    }
    for (const StrokeAccent& accent : strokeAccents()) {
        addAccented(accent);
    }
    std::unordered_map<char32_t, Glyph> glyphs;
    for (const auto& [character, shape] : m_shapes) {
        glyphs[character] = glyphOf(shape, character >= U'0' && character <= U'9');
    }
    return glyphs;
}

bool isBlank(char32_t character)
{
    return character == U' ' || character == 0xA0 || (character >= 0x2000 && character <= 0x200A) ||
           character == 0x202F;
}

} // namespace

const Glyph& strokeGlyph(char32_t character)
{
    static const Glyph blank{{}, {}, 0.55};
    static const Glyph unknown{{}, {{{0.15, 0}, {0.75, 0}, {0.75, 1}, {0.15, 1}, {0.15, 0}}}, 0.9};
    static const std::unordered_map<char32_t, Glyph> glyphs = Builder().build();
    if (isBlank(character)) {
        return blank;
    }
    const auto found = glyphs.find(character);
    return found == glyphs.end() ? unknown : found->second;
}

} // namespace drawing
