// Texts laid out with a font whose letters are all as wide as they are high, so that places can be worked out by hand.

#include <cmath>
#include <gmock/gmock.h>

#include "drawing/flatten.h"
#include "drawing/stroke_font.h"
#include "support.h"

namespace drawing::test {

namespace {

constexpr double near = 1e-9;

class FixedTypeface : public Typeface
{
public:
    explicit FixedTypeface(double advance) : m_letter{{{{0, 0}, {1, 0}, {0, 1}}}, {}, advance}, m_blank{{}, {}, advance}
    {}
    const Glyph* find(char32_t character) override
    {
        const bool lacking = character == U'?' || character == 0x2205;
        return lacking ? nullptr : character == U' ' ? &m_blank : &m_letter;
    }

private:
    Glyph m_letter;
    Glyph m_blank;
};

class FixedFonts : public FontSource
{
public:
    Typeface* find(const FontRequest& request) override
    {
        asked.push_back(request);
        return request.name == "fixed.ttf" ? &m_fixed : request.name == "Wide" && request.bold ? &m_wide : nullptr;
    }
    std::vector<FontRequest> asked;

private:
    FixedTypeface m_fixed{1};
    FixedTypeface m_wide{2};
};

class TextLayout : public testing::Test
{
protected:
    TextLayout()
    {
        auto style = std::make_unique<TextStyle>();
        style->recordName = "FIXED";
        style->font = "fixed.ttf";
        document.addRecord(std::move(style));
        options.fonts = &fonts;
    }
    MText& addMText(const std::string& content, double height = 1)
    {
        auto& text = document.addEntity(document.modelSpace(), std::make_unique<MText>());
        text.text = content;
        text.height = height;
        text.style = "FIXED";
        return text;
    }
    Text& addText(const std::string& content)
    {
        auto& text = document.addEntity(document.modelSpace(), std::make_unique<Text>());
        text.text = content;
        text.height = 1;
        text.style = "FIXED";
        return text;
    }
    std::vector<FlatItem> items()
    {
        std::vector<FlatItem> result;
        complete =
            flattenBlock(document, document.modelSpace(), options, [&](FlatItem&& item) { result.push_back(item); });
        return result;
    }
    std::vector<FlatText> pieces()
    {
        std::vector<FlatText> result;
        for (const FlatItem& item : items()) {
            result.push_back(std::get<FlatText>(item.shape));
        }
        return result;
    }
    // Of every visible glyph.
    std::vector<Vector2> origins()
    {
        std::vector<Vector2> result;
        for (const FlatText& piece : pieces()) {
            for (const PlacedGlyph& placed : piece.glyphs) {
                result.push_back(placed.origin);
            }
        }
        return result;
    }

    Document document;
    FixedFonts fonts;
    FlattenOptions options;
    bool complete = false;
};

void expectPoints(const std::vector<Vector2>& found, const std::vector<Vector2>& wanted, const std::string& about)
{
    ASSERT_EQ(found.size(), wanted.size()) << about;
    for (std::size_t i = 0; i < found.size(); ++i) {
        EXPECT_NEAR(found[i].x, wanted[i].x, near) << about << ", place " << i;
        EXPECT_NEAR(found[i].y, wanted[i].y, near) << about << ", place " << i;
    }
}

} // namespace

TEST_F(TextLayout, SingleLineStandsByItsAlignment)
{
    using H = HorizontalAlignment;
    using V = VerticalAlignment;
    auto& text = addText("abc");
    text.height = 2;
    text.alignmentPoint = Vector3{10, 20, 0};
    const struct
    {
        H horizontal;
        V vertical;
        Vector2 start;
    } cases[] = {{H::Left, V::Bottom, {10, 20.6}},  {H::Left, V::Middle, {10, 19}},   {H::Left, V::Top, {10, 18}},
                 {H::Center, V::Baseline, {7, 20}}, {H::Right, V::Baseline, {4, 20}}, {H::Middle, V::Baseline, {7, 19}},
                 {H::Right, V::Top, {4, 18}},       {H::Center, V::Bottom, {7, 20.6}}};
    for (const auto& each : cases) {
        text.horizontal = each.horizontal;
        text.vertical = each.vertical;
        expectPoints(origins(), {each.start, each.start + Vector2{2, 0}, each.start + Vector2{4, 0}}, "alignment");
    }
}

TEST_F(TextLayout, SingleLineIsStretchedNarrowedAndLeans)
{
    auto& text = addText("ab");
    text.widthFactor = 0.5;
    text.oblique = 45;
    const FlatText leaning = pieces().at(0);
    expectPoints({leaning.across, leaning.up}, {{0.5, 0}, {1, 1}}, "half as wide, leaning by its height");
    text.oblique = 0;
    text.alignmentPoint = Vector3{8, 0, 0};
    text.horizontal = HorizontalAlignment::Fit; // two letters of width 0.5 on a length of 8
    expectPoints({pieces().at(0).across, pieces().at(0).up}, {{4, 0}, {0, 1}}, "stretched along");
    text.horizontal = HorizontalAlignment::Aligned;
    expectPoints({pieces().at(0).across, pieces().at(0).up}, {{4, 0}, {0, 8}}, "enlarged");
    EXPECT_NEAR(pieces().at(0).height, 8, near);
    text.horizontal = HorizontalAlignment::Left;
    text.generation = 2 | 4;
    expectPoints(origins(), {{0, 0}, {-0.5, 0}}, "backward");
    expectPoints({pieces().at(0).up}, {{0, -1}}, "upside down");
}

TEST_F(TextLayout, PercentCodesDrawLinesAndSigns)
{
    addText("a%%ub%%oc%%Ud%%O%%ke");
    std::vector<std::array<Vector2, 2>> rules;
    for (const FlatText& piece : pieces()) {
        rules.insert(rules.end(), piece.rules.begin(), piece.rules.end());
    }
    std::vector<Vector2> ends;
    for (const auto& rule : rules) {
        ends.insert(ends.end(), rule.begin(), rule.end());
    }
    expectPoints(
        ends,
        {{1, -0.2}, {2, -0.2}, {2, -0.2}, {3, -0.2}, {2, 1.2}, {3, 1.2}, {3, 1.2}, {4, 1.2}, {4, 0.45}, {5, 0.45}},
        "under b and c, over c and d, through e");
}

TEST_F(TextLayout, UnknownFontsAndMissingCharactersAreStroked)
{
    auto& text = addText("a?");
    const auto glyphs = pieces().at(0).glyphs;
    ASSERT_EQ(glyphs.size(), 2u);
    EXPECT_NE(glyphs[0].glyph, &strokeGlyph('a'));
    EXPECT_EQ(glyphs[1].glyph, &strokeGlyph('?'));
    text.text = "a%%c";
    EXPECT_EQ(pieces().at(0).glyphs.at(1).glyph, glyphs[0].glyph) << "the font's own letter for the diameter sign";
    text.text = "a?";
    text.style = "NONE";
    EXPECT_EQ(pieces().at(0).glyphs.at(0).glyph, &strokeGlyph('a'));
    text.style = "FIXED";
    options.fonts = nullptr;
    EXPECT_EQ(pieces().at(0).glyphs.at(0).glyph, &strokeGlyph('a'));
}

TEST_F(TextLayout, AttachmentPlacesLinesAndSpacingPartsThem)
{
    // Two lines, of 2 and 4 letters of height 3: 12 wide, the baselines 5 apart.
    auto& text = addMText("ab\\Pabcd", 3);
    const struct
    {
        int attachment;
        Vector2 first, second;
    } cases[] = {{1, {0, -3}, {0, -8}},   {2, {-3, -3}, {-6, -8}},   {3, {-6, -3}, {-12, -8}},
                 {4, {0, 1}, {0, -4}},    {5, {-3, 1}, {-6, -4}},    {6, {-6, 1}, {-12, -4}},
                 {7, {0, 5.9}, {0, 0.9}}, {8, {-3, 5.9}, {-6, 0.9}}, {9, {-6, 5.9}, {-12, 0.9}}};
    for (const auto& each : cases) {
        text.attachment = each.attachment;
        const auto all = origins();
        ASSERT_EQ(all.size(), 6u);
        expectPoints({all[0], all[2]}, {each.first, each.second}, "attachment " + std::to_string(each.attachment));
    }
    text.attachment = 1;
    text.spacingFactor = 2;
    expectPoints({origins().at(2)}, {{0, -13}}, "double spacing");
}

TEST_F(TextLayout, LargestLettersMakeTheLineHigh)
{
    auto& text = addMText("a\\P{\\H2x;b}c\\P{\\H0.5;d}");
    // Baselines: -1; 5/3 of 2 lower; 5/3 of a half lower.
    expectPoints(origins(), {{0, -1}, {0, -1 - 10.0 / 3}, {2, -1 - 10.0 / 3}, {0, -1 - 10.0 / 3 - 5.0 / 6}},
                 "at least");
    text.spacingStyle = 2;
    expectPoints(origins(), {{0, -1}, {0, -1 - 5.0 / 3}, {2, -1 - 5.0 / 3}, {0, -1 - 10.0 / 3}}, "exactly");
    text.text = "\\A1;{\\H3x;a}b\\A2;c\\A0;d";
    expectPoints(origins(), {{0, -3}, {3, -2}, {4, -1}, {5, -3}}, "low letters in the middle, at the top, at the foot");
}

TEST_F(TextLayout, LinesBreakAtBlanksToTheColumn)
{
    auto& text = addMText("aa bb  cccccc d\\~e f");
    text.width = 5;
    const double line = 5.0 / 3;
    const std::vector<Vector2> wanted = {{0, 0},         {1, 0},         {3, 0},         {4, 0},        {0, -line},
                                         {1, -line},     {2, -line},     {3, -line},     {4, -line},    {5, -line},
                                         {0, -2 * line}, {1, -2 * line}, {2, -2 * line}, {4, -2 * line}};
    text.position = {0, 1, 0};
    // The blank that keeps d and e together is a letter to this font.
    expectPoints(origins(), wanted, "broken lines");
    text.text = "aa b";
    text.attachment = 3;
    text.position = {0, 1, 0};
    expectPoints(origins(), {{-4, 0}, {-3, 0}, {-1, 0}}, "in a column to the left of its corner");
    text.width = 0;
    text.text = std::string(100, 'a') + " b";
    EXPECT_NEAR(origins().back().y, 0, near) << "no column, no break";
}

TEST_F(TextLayout, ParagraphsAreIndentedAlignedAndTabbed)
{
    auto& text = addMText("\\pi1,l2;a b c\\P\\pi0,l0,qc;dd\\P\\pqr;e\\P\\pql,t3,7;f^Ig\th^Ii", 1);
    text.width = 7;
    text.position = {0, 1, 0};
    const double line = 5.0 / 3;
    expectPoints(origins(),
                 {{3, 0},
                  {5, 0},
                  {2, -line},
                  {2.5, -2 * line},
                  {3.5, -2 * line},
                  {6, -3 * line},
                  {0, -4 * line},
                  {3, -4 * line},
                  {0, -5 * line},
                  {3, -5 * line}},
                 "indents, centred, right, tab stops");
}

TEST_F(TextLayout, StacksHaveTwoTextsAndABar)
{
    auto& text = addMText("a\\S1/23;b");
    text.position = {0, 2.5, 0};
    auto piece = pieces().at(0);
    std::vector<Vector2> found;
    for (const auto& placed : piece.glyphs) {
        found.push_back(placed.origin);
    }
    expectPoints(found, {{0, 0}, {1.5, 1.5}, {1, 0}, {2, 0}, {3, 0}}, "the upper centred over the lower");
    expectPoints({piece.rules.at(0)[0], piece.rules.at(0)[1]}, {{1, 1.25}, {3, 1.25}}, "the bar");
    text.text = "\\A1;a\\S+1^ -23;b";
    text.position = {0, 1.625, 0}; // 2.25 high, its middle at the letters' middle: 0.625 above and below
    expectPoints(origins(), {{0, 0}, {1, 0.625}, {2, 0.625}, {1, -0.625}, {2, -0.625}, {3, -0.625}, {4, 0}},
                 "tolerance");
    EXPECT_TRUE(pieces().at(0).rules.empty());
    text.text = "\\S1#2;";
    text.position = {0, 1.6, 0};
    expectPoints(origins(), {{0, 0.6}, {1.6, 0}}, "diagonal");
    expectPoints({pieces().at(0).rules.at(0)[0], pieces().at(0).rules.at(0)[1]}, {{1, 0}, {1.6, 1.6}}, "the slash");
    text.text = "a\\P\\S1/2;\\Pb";
    text.position = {0, 1, 0};
    const auto all = origins();
    EXPECT_NEAR(all.at(2).y, -5.0 / 3 - 1.5, near) << "the line of the stack moves down by what it is higher";
    EXPECT_NEAR(all.at(3).y, -10.0 / 3 - 1.5, near);
}

TEST_F(TextLayout, RunsHaveTheirOwnLooks)
{
    addMText("a{\\W2;b\\Q45;c}\\T3;de");
    const auto all = pieces();
    ASSERT_EQ(all.size(), 4u);
    expectPoints({all[1].across, all[1].up}, {{2, 0}, {0, 1}}, "wide");
    expectPoints({all[2].across, all[2].up}, {{2, 0}, {1, 1}}, "leaning");
    expectPoints(origins(), {{0, -1}, {1, -1}, {3, -1}, {5, -1}, {8, -1}}, "d is followed after three widths");
}

TEST_F(TextLayout, ColoursPartTheTextIntoPieces)
{
    auto& text = addMText("a\\C1;b{\\c65280;c}\\C256;d\\C0;e");
    text.color = 5;
    auto layer = std::make_unique<Layer>();
    layer->recordName = "L";
    layer->color = 3;
    document.addRecord(std::move(layer));
    text.layer = "L";
    const auto all = items();
    std::vector<Rgb> colors;
    for (const FlatItem& item : all) {
        colors.push_back(item.style.rgb);
    }
    EXPECT_EQ(colors, (std::vector<Rgb>{{0, 0, 255}, {255, 0, 0}, {0, 255, 0}, {0, 255, 0}, {255, 255, 255}}));
    EXPECT_EQ(all.at(2).style.colorIndex, 7) << "a true colour has no index of its own";
    EXPECT_EQ(all.at(3).style.colorIndex, 3) << "by layer";
}

TEST_F(TextLayout, FontCodesAskTheFontSource)
{
    addMText("{\\fWide|b1|i0|c0|p34;ab}\\Fromans.shx,big;c\\fNone|i1;d");
    expectPoints({origins().at(0), origins().at(1)}, {{0, -1}, {2, -1}}, "twice as wide");
    fonts.asked.clear();
    pieces();
    EXPECT_EQ(fonts.asked, (std::vector<FontRequest>{{"fixed.ttf", false, false, false},
                                                     {"Wide", true, true, false},
                                                     {"romans.shx", false, false, false},
                                                     {"None", true, false, true}}));
}

TEST_F(TextLayout, StylesNameAFileOrAFamily)
{
    auto style = std::make_unique<TextStyle>();
    style->recordName = "FAMILY";
    style->font = "wide.ttf";
    style->extendedData = {{1001, "OTHER"}, {1000, "Other"}, {1001, "ACAD"}, {1000, "Wide"}, {1071, "33554466"}};
    document.addRecord(std::move(style));
    addText("ab").style = "family";
    EXPECT_NEAR(origins().at(1).x, 2, near);
    EXPECT_EQ(fonts.asked, (std::vector<FontRequest>{{"Wide", true, true, false}}));
}

TEST_F(TextLayout, BoxesHoldTheRunsOfEachLine)
{
    addMText("ab\\P\\Pc", 2);
    const FlatText piece = pieces().at(0);
    ASSERT_EQ(piece.lineBoxes.size(), 2u) << "an empty line has none";
    expectPoints({piece.lineBoxes[0].begin(), piece.lineBoxes[0].end()}, {{0, -2.6}, {4, -2.6}, {4, 0}, {0, 0}},
                 "first");
    const auto extents = extentsOf(document, document.modelSpace());
    ASSERT_TRUE(extents);
    EXPECT_NEAR(extents->high.y, 0, near);
    EXPECT_NEAR(extents->low.y, -2 - 20.0 / 3 - 0.6, near);
}

TEST_F(TextLayout, HostileTextsComeToAnEnd)
{
    const auto repeated = [](const std::string& text, std::size_t times) {
        std::string result;
        for (std::size_t i = 0; i < times; ++i) {
            result += text;
        }
        return result;
    };
    constexpr std::size_t many = 100'000;
    auto& text = addMText("");
    text.width = 10;
    for (const std::string part : {"{",
                                   "}",
                                   "\\",
                                   "{\\L",
                                   "\\H9x;a",
                                   "\\H1e300;a",
                                   "\\W1e300;a",
                                   "\\S",
                                   "\\S1/2;",
                                   "\\S^;",
                                   "\\pi1e300,t1,2;a\t",
                                   "\\pt1,1,1,1,1,1,1,1,1;",
                                   "a b",
                                   "\\P",
                                   "^",
                                   "^I",
                                   "%%",
                                   "%%u",
                                   "\\fx|;a",
                                   "\\C999999999999;a",
                                   "\\T1e300;aa",
                                   "\\U+FFFFF",
                                   "\xFF",
                                   "a{\\C1;b}"}) {
        text.text = repeated(part, many / part.size());
        pieces();
        text.text += "z;" + repeated("}", 100);
        pieces();
    }
    options.limit = 1000;
    text.text = std::string(many, 'a');
    EXPECT_TRUE(pieces().empty());
    EXPECT_FALSE(complete) << "more than the limit";
    text.text = "a";
    for (double* number : {&text.height, &text.width, &text.spacingFactor}) {
        const double before = *number;
        for (const double bad : {std::nan(""), HUGE_VAL, -1e300, 1e-320}) {
            *number = bad;
            pieces();
        }
        *number = before;
    }
    EXPECT_EQ(pieces().size(), 1u);
}

} // namespace drawing::test
