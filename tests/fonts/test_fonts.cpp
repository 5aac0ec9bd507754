// TrueType fonts through the system. The numbers were read from the font files' own tables hmtx, glyf and name.

#include <gtest/gtest.h>
#include <optional>

#include "drawing/rich_text.h"
#include "drawing/stroke_font.h"
#include "drawing/text_layout.h"
#include "fonts/font_folder.h"

namespace {

using drawing::FontRequest;

std::optional<drawing::Extents> extentsOf(const drawing::Glyph& glyph)
{
    std::optional<drawing::Extents> box;
    for (const auto& contour : glyph.contours) {
        for (const auto& point : contour)
            drawing::include(box, point);
    }
    return box;
}

TEST(FontFolder, GivesTheOutlinesOfTheFiles)
{
    fonts::FontFolder folder(HALVORAN_FONTS);
    // All in the fonts' own units: advance, and the box around the outline.
    const struct
    {
        FontRequest request;
        double capitalHeight;
        char32_t character;
        double advance, left, bottom, right, top;
    } cases[] = {
        {{"Liberation Sans", true}, 1409, U'A', 1366, 4, 0, 1362, 1409},
        {{"Liberation Sans", true}, 1409, U'g', 1139, 86, -425, 1007, 1099},
        {{"Liberation Sans", true}, 1409, U'é', 1139, 87, -20, 1048, 1508},
        {{"Liberation Sans", true, true}, 1409, U'i', 569, 143, 0, 424, 1484},
        {{"C:\\Fonts\\LiberationSans-Bold.ttf"}, 1409, U'A', 1479, 51, 0, 1425, 1409},
        {{"liberationserif-italic"}, 1341, U'W', 1706, 135, -31, 1861, 1341},
        {{"Liberation Serif", true, false, true}, 1341, U'g', 1024, 1, -436, 964, 964},
        {{"Liberation Mono", true}, 1349, U'i', 1229, 143, 0, 1125, 1484},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(each.request.name);
        drawing::Typeface* typeface = folder.find(each.request);
        ASSERT_TRUE(typeface);
        const drawing::Glyph* glyph = typeface->find(each.character);
        ASSERT_TRUE(glyph);
        const auto box = extentsOf(*glyph);
        ASSERT_TRUE(box);
        constexpr double pixel = 2; // of the font's units
        EXPECT_NEAR(glyph->advance * each.capitalHeight, each.advance, pixel);
        EXPECT_NEAR(box->low.x * each.capitalHeight, each.left, pixel);
        EXPECT_NEAR(box->low.y * each.capitalHeight, each.bottom, pixel);
        EXPECT_NEAR(box->high.x * each.capitalHeight, each.right, pixel);
        EXPECT_NEAR(box->high.y * each.capitalHeight, each.top, pixel);
    }
}

TEST(FontFolder, KnowsEverydayFilesAndRefusesWhatIsNotThere)
{
    fonts::FontFolder folder(HALVORAN_FONTS);
    const auto widthOf = [&](const FontRequest& request, char32_t character) {
        drawing::Typeface* typeface = folder.find(request);
        const drawing::Glyph* glyph = typeface ? typeface->find(character) : nullptr;
        return glyph ? glyph->advance : 0;
    };
    // Whichever font stands for them, these have the widths of the everyday ones.
    EXPECT_NEAR(widthOf({"arial.ttf"}, U'W') / widthOf({"arial.ttf"}, U'A'), 1933.0 / 1366, 1e-3);
    EXPECT_NEAR(widthOf({"ARIALBD.TTF"}, U'W') / widthOf({"ARIALBD.TTF"}, U'A'), 1933.0 / 1479, 1e-3);
    EXPECT_NEAR(widthOf({"Courier New", true}, U'i') / widthOf({"cour"}, U'W'), 1, 1e-3);
    for (const FontRequest& request : {FontRequest{"romans.shx"}, FontRequest{"txt"}, FontRequest{""}})
        EXPECT_FALSE(folder.find(request)) << request.name;
    for (const FontRequest& request : {FontRequest{"nowhere.ttf"}, FontRequest{"No Such Family", true}})
        EXPECT_EQ(folder.find(request), folder.find({"Liberation Sans", true})) << "a plain one in its place";
    drawing::Typeface* sans = folder.find({"Liberation Sans", true});
    ASSERT_TRUE(sans);
    EXPECT_FALSE(sans->find(0x1F600)) << "beyond the basic plane";
    EXPECT_FALSE(sans->find(0x4E2D)) << "a Chinese character, which this font lacks";
}

TEST(FontFolder, TextIsLaidOutWithTheFontsWidths)
{
    fonts::FontFolder folder(HALVORAN_FONTS);
    drawing::TextFormat format;
    format.height = 1409;
    format.font = {"Liberation Sans", true};
    const auto pieces = drawing::layOut(drawing::literalText("AW\u4E2Di", format), {}, &folder);
    ASSERT_EQ(pieces.size(), 1u);
    const auto& glyphs = pieces[0].text.glyphs;
    ASSERT_EQ(glyphs.size(), 4u);
    EXPECT_NEAR(glyphs[1].origin.x, 1366, 2);
    EXPECT_NEAR(glyphs[2].origin.x, 1366 + 1933, 4);
    EXPECT_EQ(glyphs[2].glyph, &drawing::strokeGlyph(0x4E2D));
}

TEST(FontNames, AreReadFromTheFile)
{
    const auto names = fonts::readFontNames(std::filesystem::path(HALVORAN_FONTS) / "LiberationSerif-BoldItalic.ttf");
    ASSERT_TRUE(names);
    EXPECT_EQ(names->family, L"Liberation Serif");
    EXPECT_TRUE(names->bold && names->italic);
    EXPECT_FALSE(fonts::readFontNames(std::filesystem::path(HALVORAN_FONTS) / "LICENSE.txt"));
    EXPECT_FALSE(fonts::readFontNames("nowhere.ttf"));
}

} // namespace
