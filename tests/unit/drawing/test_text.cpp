// Texts, colours and numbers.

#include <clocale>
#include <limits>

#include "drawing/color_index.h"
#include "drawing/numbers.h"
#include "drawing/plain_text.h"
#include "support.h"

namespace drawing::test {

TEST(PlainText, ShowsWhatPercentAndCaretCodesStandFor)
{
    const struct
    {
        const char* text;
        const char* shown;
    } cases[] = {{"45%%d %%P0.1 %%C40", "45° ±0.1 ∅40"},
                 {"%%uunder%%U %%oover%%O", "under over"},
                 {"100%%%", "100%"},
                 {"%%065%%233", "Aé"},
                 {"50%% off", "50%% off"},
                 {"a^Ib^ c^", "a b^c^"},
                 {"%%", "%%"},
                 {"", ""}};
    for (const auto& each : cases) {
        EXPECT_EQ(plainText(each.text), each.shown) << each.text;
    }
}

TEST(PlainText, StripsTheFormattingOfMultiLineText)
{
    const struct
    {
        const char* text;
        std::vector<std::string> lines;
    } cases[] = {{"one\\Ptwo\\P", {"one", "two", ""}},
                 {"{\\fArial|b0|i1|c0|p34;slanted} \\H2.5x;tall", {"slanted tall"}},
                 {"\\A1;\\C1;red\\~x \\Lunder\\l", {"red\u00A0x under"}},
                 {"\\S1/2; \\S3#4; \\S+0.1^ -0.2;", {"1/2 3/4 +0.1/-0.2"}},
                 {"\\{kept\\} \\\\path", {"{kept} \\path"}},
                 {"\\pi-2,l2,t2;item", {"item"}},
                 {"90%%d^Jnext", {"90°", "next"}},
                 {"open \\fArial", {"open "}},
                 {"end\\", {"end\\"}}};
    for (const auto& each : cases) {
        EXPECT_EQ(plainLines(each.text), each.lines) << each.text;
    }
}

TEST(ColourIndex, GivesTheColoursOfTheStandardTable)
{
    const struct
    {
        int index;
        Rgb rgb;
    } cases[] = {{1, {255, 0, 0}},     {2, {255, 255, 0}},   {3, {0, 255, 0}},       {4, {0, 255, 255}},
                 {5, {0, 0, 255}},     {6, {255, 0, 255}},   {7, {255, 255, 255}},   {8, {128, 128, 128}},
                 {9, {192, 192, 192}}, {10, {255, 0, 0}},    {11, {255, 127, 127}},  {12, {165, 0, 0}},
                 {13, {165, 82, 82}},  {20, {255, 63, 0}},   {30, {255, 127, 0}},    {40, {255, 191, 0}},
                 {50, {255, 255, 0}},  {70, {127, 255, 0}},  {94, {0, 127, 0}},      {130, {0, 255, 255}},
                 {140, {0, 191, 255}}, {150, {0, 127, 255}}, {171, {127, 127, 255}}, {200, {191, 0, 255}},
                 {219, {38, 19, 38}},  {240, {255, 0, 63}},  {250, {51, 51, 51}},    {255, {255, 255, 255}}};
    for (const auto& each : cases) {
        EXPECT_EQ(rgbOfIndex(each.index), each.rgb) << "index " << each.index;
    }
    for (const int outside : {-1, 0, 256, 1000}) {
        EXPECT_EQ(rgbOfIndex(outside), rgbOfIndex(7));
    }
}

TEST(Numbers, ArePrintedShortAndReadBackTheSame)
{
    std::setlocale(LC_ALL, "de_DE.UTF-8"); // a decimal comma must not get into a file
    const struct
    {
        double value;
        const char* text;
    } cases[] = {{0, "0.0"},        {-2, "-2.0"},        {0.1, "0.1"},
                 {1e20, "1.0E+20"}, {1.5e-7, "1.5E-07"}, {1.0 / 3, "0.3333333333333333"}};
    for (const auto& each : cases) {
        EXPECT_EQ(formatReal(each.value), each.text);
        EXPECT_EQ(parseReal(each.text), each.value);
    }
    std::setlocale(LC_ALL, "C");
    for (const double extreme : {std::numeric_limits<double>::max(), std::numeric_limits<double>::denorm_min()}) {
        EXPECT_EQ(parseReal(formatReal(extreme)), extreme);
    }
}

TEST(Numbers, OnlyWholeTextsCount)
{
    for (const char* text : {"", " ", "1x", "x", "1,5", "--1", "+-1", "0x10", "inf", "1e400"}) {
        EXPECT_FALSE(parseReal(text)) << text;
    }
    for (const char* text : {"", "1.5", "2147483648", "1e10", "x"}) {
        EXPECT_FALSE(parseInteger(text)) << text;
    }
    EXPECT_EQ(parseInteger("  70 "), 70);
    EXPECT_EQ(parseInteger("-1.0"), -1);
    EXPECT_EQ(parseHandle("1a2B"), 0x1A2Bu);
    for (const char* text : {"", "-1", "G", "10000000000000000"}) {
        EXPECT_FALSE(parseHandle(text)) << text;
    }
}

} // namespace drawing::test
