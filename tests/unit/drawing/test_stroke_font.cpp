// The built-in stroke font: what it has, and that its letters stand where letters stand.

#include <algorithm>
#include <set>

#include "drawing/stroke_font.h"
#include "drawing/text_encoding.h"
#include "support.h"

namespace drawing::test {

namespace {

constexpr char32_t privateUse = 0xE000; // no font has it

Extents extentsOf(const Glyph& glyph)
{
    std::optional<Extents> box;
    for (const auto* shapes : {&glyph.strokes, &glyph.contours}) {
        for (const auto& shape : *shapes) {
            for (const Vector2& point : shape) {
                include(box, point);
            }
        }
    }
    return box.value_or(Extents());
}

std::vector<char32_t> promised()
{
    std::vector<char32_t> characters;
    const auto add = [&](char32_t first, char32_t last) {
        for (char32_t c = first; c <= last; ++c) {
            characters.push_back(c);
        }
    };
    add(0x21, 0x7E);
    add(0xA1, 0xFF);
    add(0x100, 0x17F); // Latin Extended-A
    add(0x391, 0x3A1); // Greek
    add(0x3A3, 0x3CE);
    add(0x410, 0x44F); // Russian and Bulgarian
    std::string_view others = "ΆΈΉΊΌΎΏΐЁёЄєІіЇїҐґ∅⌀≤≥≠√–—‘’“”„…•€№™";
    while (!others.empty()) {
        characters.push_back(takeCharacter(others));
    }
    return characters;
}

} // namespace

TEST(StrokeFont, HasEveryPromisedCharacterWithinTheLine)
{
    const Glyph* unknown = &strokeGlyph(privateUse);
    for (const char32_t character : promised()) {
        const Glyph& glyph = strokeGlyph(character);
        SCOPED_TRACE("U+" + std::to_string(static_cast<unsigned>(character)));
        EXPECT_NE(&glyph, unknown);
        ASSERT_FALSE(glyph.strokes.empty());
        const Extents box = extentsOf(glyph);
        EXPECT_GE(box.low.x, -0.05);
        EXPECT_LE(box.high.x, glyph.advance + 0.05);
        EXPECT_GE(box.low.y, -0.4);
        EXPECT_LE(box.high.y, 1.4);
        EXPECT_GT(glyph.advance, 0.15);
        EXPECT_LT(glyph.advance, 1.6);
    }
}

TEST(StrokeFont, DrawsDifferentLettersDifferently)
{
    // Only letters that look alike in every hand may share a drawing: one of the other alphabets for one of these.
    std::set<std::vector<std::vector<Vector2>>, decltype([](const auto& a, const auto& b) {
                 return std::lexicographical_compare(
                     a.begin(), a.end(), b.begin(), b.end(), [](const auto& s, const auto& t) {
                         return std::lexicographical_compare(s.begin(), s.end(), t.begin(), t.end(),
                                                             [](const Vector2& p, const Vector2& q) {
                                                                 return std::pair(p.x, p.y) < std::pair(q.x, q.y);
                                                             });
                     });
             })>
        drawings;
    std::size_t count = 0;
    for (char32_t c = 0x21; c <= 0x17F; ++c) {
        const bool likeAnother = c == 0xAD || c == 0xD0; // the soft hyphen; eth, which looks like a D with a stroke
        if ((c <= 0x7E || c >= 0xA1) && !likeAnother) {
            ++count;
            EXPECT_TRUE(drawings.insert(strokeGlyph(c).strokes).second) << "U+" << static_cast<unsigned>(c);
        }
    }
    EXPECT_EQ(drawings.size(), count);
}

TEST(StrokeFont, PutsAccentsAboveAndBelowTheirLetters)
{
    const std::pair<char32_t, char32_t> above[] = {{U'É', U'E'}, {U'ä', U'a'}, {U'Ž', U'Z'}, {U'ñ', U'n'}, {U'ő', U'o'},
                                                   {U'й', U'и'}, {U'ё', U'е'}, {U'ά', U'α'}, {U'ĥ', U'h'}};
    for (const auto& [accented, base] : above) {
        EXPECT_GT(extentsOf(strokeGlyph(accented)).high.y, extentsOf(strokeGlyph(base)).high.y + 0.1)
            << static_cast<unsigned>(accented);
        EXPECT_EQ(extentsOf(strokeGlyph(accented)).low.y, extentsOf(strokeGlyph(base)).low.y);
    }
    for (const auto& [accented, base] : {std::pair(U'ç', U'c'), std::pair(U'Ş', U'S'), std::pair(U'ą', U'a')}) {
        EXPECT_LT(extentsOf(strokeGlyph(accented)).low.y, -0.2);
        EXPECT_EQ(extentsOf(strokeGlyph(accented)).high.y, extentsOf(strokeGlyph(base)).high.y);
    }
}

TEST(StrokeFont, KeepsTheProportionsOfLetters)
{
    for (const char32_t capital : std::u32string_view(U"AEHMTZДЖΔ")) {
        EXPECT_DOUBLE_EQ(extentsOf(strokeGlyph(capital)).high.y, 1);
    }
    for (const char32_t figure : std::u32string_view(U"123456789")) {
        EXPECT_DOUBLE_EQ(strokeGlyph(figure).advance, strokeGlyph(U'0').advance) << "columns of figures line up";
    }
    EXPECT_LT(strokeGlyph(U'i').advance, strokeGlyph(U'n').advance);
    EXPECT_LT(strokeGlyph(U'n').advance, strokeGlyph(U'm').advance);
    EXPECT_TRUE(strokeGlyph(U' ').strokes.empty());
    EXPECT_EQ(strokeGlyph(0x1F600).strokes, strokeGlyph(privateUse).strokes) << "a box";
}

} // namespace drawing::test
