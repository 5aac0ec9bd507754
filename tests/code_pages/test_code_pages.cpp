// Code pages by the names that drawings give them. The bytes are those of Python's codecs.

#include <gtest/gtest.h>

#include "drawing/code_pages.h"
#include "drawing/text_encoding.h"

namespace drawing::test {

TEST(CodePages, AreKnownByTheNamesInDrawingsAndReadAndWritten)
{
    const struct
    {
        const char* name;
        const char* bytes;
        const char* text; // UTF-8
    } cases[] = {
        {"ANSI_1250", "\263\363d\237", "łódź"},
        {"ANSI_1251", "\327\345\360\362\270\346", "Чертёж"},
        {"ansi_1252", "Gr\366\337e \200", "Größe €"},
        {"ANSI_1253", "\323\367\335\344\351\357", "Σχέδιο"},
        {"ANSI_1254", "\375\376\375k", "ışık"},
        {"ANSI_1255", "\372\345\353\360\351\372", "תוכנית"},
        {"ANSI_1256", "\321\323\343", "رسم"},
        {"ANSI_1257", "\373dens", "ūdens"},
        {"ANSI_1258", "\360\342t", "đât"},
        {"ANSI_874", "\341\272\272", "แบบ"},
        {"ANSI_932", "\220}\226\312 \225\134", "図面 表"},
        {"ANSI_936", "\315\274\326\275", "图纸"},
        {"gb2312", "\315\274\326\275", "图纸"},
        {"ANSI_949", "\265\265\270\351", "도면"},
        {"ksc5601", "\265\265\270\351", "도면"},
        {"ANSI_950", "\271\317\255\261 \245\134", "圖面 功"},
        {"big5", "\271\317\255\261", "圖面"},
        {"johab", "\225\241\241e", "도면"},
        {"dos437", "Gr\224\341e", "Größe"},
        {"DOS850", "Gr\224\341e \235", "Größe Ø"},
        {"dos852", "\210\242d\253", "łódź"},
        {"dos855", "\374\250\341\345\204\351", "Чертёж"},
        {"dos857", "\215\237\215k", "ışık"},
        {"dos860", "\207\204o", "ção"},
        {"dos861", "\225\214", "þð"},
        {"dos862", "\232\205\213\220\211\232", "תוכנית"},
        {"dos863", "\216\220", "ÀÉ"},
        {"dos865", "\235\206", "Øå"},
        {"dos866", "\227\245\340\342\361\246", "Чертёж"},
        {"dos869", "\317\364\235\335\343\351", "Σχέδιο"},
        {"dos932", "\220}\226\312", "図面"},
        {"mac-roman", "Gr\232\247e", "Größe"},
        {"iso8859_1", "Gr\366\337e", "Größe"},
        {"iso8859_2", "\263\363d\274", "łódź"},
        {"iso8859_5", "\307\325\340\342\361\326", "Чертёж"},
        {"iso8859_9", "\375\376\375k", "ışık"},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(each.name);
        const TextEncoding encoding(each.name);
        EXPECT_TRUE(encoding.known());
        EXPECT_EQ(encoding.decode(each.bytes), each.text);
        EXPECT_EQ(encoding.encode(each.text), each.bytes);
    }
}

TEST(CodePages, WhatTheyLackIsEscaped)
{
    const TextEncoding japanese("ANSI_932");
    EXPECT_EQ(japanese.encode("\u56f3 \u00e9 \U0001F600"), "\x90\x7d \\U+00E9 \\U+D83D\\U+DE00");
    EXPECT_EQ(japanese.decode("\x90\x7d \\U+00E9 \\U+D83D\\U+DE00"), "\u56f3 \u00e9 \U0001F600");
    // A sign of the same look is another one.
    EXPECT_EQ(TextEncoding("ANSI_1252").encode("\u0141 \u2126"), "\\U+0141 \\U+2126");
}

TEST(CodePages, BytesThatAreNoCharacterAreKept)
{
    const TextEncoding japanese("ANSI_932");
    EXPECT_EQ(japanese.decode("a\x90"), "a\u0090") << "a first byte without a second";
    EXPECT_EQ(TextEncoding("ANSI_1252").decode("\x81"), "\u0081");
}

TEST(CodePages, UnknownOnesAreReadAsWesternEuropean)
{
    for (const char* name : {"UNDEFINED", "ANSI_", "ANSI_1200", "dos1", "iso8859_0", "ANSI_99999999999", "klingon"}) {
        const TextEncoding encoding(name);
        EXPECT_FALSE(encoding.known()) << name;
        EXPECT_EQ(encoding.decode("77\xB0"), "77\u00b0");
    }
    EXPECT_TRUE(TextEncoding("").known()) << "a file may name none";
}

TEST(CodePages, ThoseOfOtherSystemsHaveTheirLikeOnWindows)
{
    const struct
    {
        const char* name;
        int windows;
    } cases[] = {{"dos850", 1252},    {"dos852", 1250},    {"dos866", 1251},  {"johab", 949},
                 {"mac-roman", 1252}, {"iso8859_7", 1253}, {"ANSI_932", 932}, {"ANSI_1258", 1258}};
    for (const auto& each : cases) {
        EXPECT_EQ(windowsCodePage(codePageNumber(each.name).value()), each.windows) << each.name;
    }
}

} // namespace drawing::test
