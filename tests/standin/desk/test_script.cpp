// The script language of the desk: what the sessions, which use all of it, do not show.

#include <windows.h>
#include <algorithm>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iterator>
#include <regex>
#include <set>

#include "standin/desk/script.h"
#include "standin/desk/script_steps.h"
#include "standin/text.h"

using namespace desk::script;

namespace {

const std::filesystem::path folder = L"C:\\scripts";

// The words behind a directive's name.
Words words(std::wstring_view text)
{
    return {text, folder};
}

std::string errorOf(std::string_view text)
{
    try {
        parse(text, folder);
    } catch (const ScriptError& error) {
        return error.what();
    }
    return "no error";
}

} // namespace

TEST(Script, CommentsAndEmptyLinesAreNoStepsButAreCounted)
{
    const auto steps = parse("\xEF\xBB\xBF; a comment\r\n\r\n  LINE 0,0 5,5  \r\n@idle", folder);
    ASSERT_EQ(steps.size(), 2u);
    EXPECT_EQ(steps[0].line, 3);
    EXPECT_EQ(steps[0].source, L"LINE 0,0 5,5");
    EXPECT_EQ(steps[1].line, 4);
}

TEST(Script, RelativeCoordinatesAreTypedAndNoDirectives)
{
    EXPECT_EQ(parse("@5,5\n@10<45", folder).size(), 2u);
}

TEST(Script, OptionsStandInAnyOrder)
{
    Words line = words(L"12.5,-3 double shift");
    const Click click = readClick(line);
    EXPECT_EQ(click.place, (Place{{12.5, -3}, false}));
    EXPECT_EQ(click.button, MouseButton::left);
    EXPECT_TRUE(click.twice && click.shift);
    EXPECT_FALSE(click.control);
    Words other = words(L"view:1,2 ctrl middle");
    const Click middle = readClick(other);
    EXPECT_EQ(middle.place, (Place{{1, 2}, true}));
    EXPECT_EQ(middle.button, MouseButton::middle);
    EXPECT_TRUE(middle.control);
}

TEST(Script, KeysAreNamesOrSingleCharacters)
{
    const struct
    {
        const wchar_t* text;
        unsigned key;
        wchar_t character;
        bool control;
    } cases[] = {
        {L"ESC", VK_ESCAPE, 0, false},     {L"a", 0, L'a', false}, {L"+", 0, L'+', false}, {L"ctrl+Z", 'Z', 0, true},
        {L"ctrl+DEL", VK_DELETE, 0, true},
    };
    for (const auto& [text, virtualKey, character, control] : cases) {
        Words line = words(text);
        const Key key = readKey(line);
        EXPECT_EQ(key.virtualKey, virtualKey) << text;
        EXPECT_EQ(key.character, character) << text;
        EXPECT_EQ(key.control, control) << text;
    }
}

TEST(Script, PathsCountFromTheScriptsFolder)
{
    EXPECT_EQ(words(L" ../out/my scan.tif").path().wstring(), L"C:\\out\\my scan.tif");
    EXPECT_EQ(words(L"\"a.png\"").path().wstring(), L"C:\\scripts\\a.png");
    EXPECT_EQ(words(L"D:\\x.tif").path().wstring(), L"D:\\x.tif");
}

TEST(Script, APictureIsOfAnyNumberOfParts)
{
    Words line = words(L"\"my menu.png\" toolbar view:10,20,30,50 menu");
    const Shot shot = readShot(line);
    EXPECT_EQ(shot.path.wstring(), L"C:\\scripts\\my menu.png");
    ASSERT_EQ(shot.parts.size(), 3u);
    EXPECT_EQ(shot.parts[0].what, PicturePart::What::toolbar);
    EXPECT_EQ(shot.parts[1].what, PicturePart::What::view);
    EXPECT_EQ(shot.parts[1].box, (imaging::Rect{10, 20, 30, 50}));
    EXPECT_EQ(shot.parts[2].what, PicturePart::What::menu);
    Words plain = words(L"a.png");
    EXPECT_TRUE(readShot(plain).parts.empty());
}

// Both ways, so that neither the guide nor the table can fall behind.
TEST(Script, TheGuideTellsOfEachDirective)
{
    std::ifstream file(HALVORAN_SOURCE_DIR "/docs/desk.md");
    const std::string guide{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    ASSERT_FALSE(guide.empty());
    std::set<std::string> told;
    // A row's first cell holds forms in backquotes; "no raster" after "@expect raster" stands for "@expect no raster".
    for (std::size_t row = guide.find("\n| `@"); row != std::string::npos; row = guide.find("\n| `@", row + 1)) {
        const std::string cell = guide.substr(row + 1, guide.find(" | ", row + 3) - row);
        const std::regex form("`(@?)([^`]*)`");
        bool expectation = false;
        for (std::sregex_iterator each(cell.begin(), cell.end(), form), end; each != end; ++each) {
            const std::string text = (*each)[2];
            expectation = expectation || text.starts_with("expect ");
            if ((*each)[1].length() > 0) {
                told.insert(text);
            } else if (expectation && text.starts_with("no ")) {
                told.insert("expect " + text);
            }
        }
    }
    std::set<std::string> unknown = told;
    for (const Directive& directive : directives()) {
        const std::string name = standin::toUtf8(directive.name);
        const auto found = std::find_if(told.begin(), told.end(), [&](const std::string& form) {
            return form == name || form.starts_with(name + ' ');
        });
        EXPECT_NE(found, told.end()) << "the guide is silent about @" << name;
        std::erase_if(unknown, [&](const std::string& form) { return form == name || form.starts_with(name + ' '); });
    }
    EXPECT_THAT(unknown, testing::IsEmpty());
}

TEST(Script, MistakesNameTheirLineAndWhatWasExpected)
{
    const struct
    {
        const char* text;
        const char* message;
    } cases[] = {
        {"LINE\n@klick 1,2", "line 2: there is no directive \"@klick 1,2\""},
        {"@click", "line 1: the place is missing"},
        {"@click 12", "line 1: a place should be 2 numbers parted by commas, not \"12\""},
        {"@click 1,2 hard", "line 1: after the place only"},
        {"@drag 1,2 3,4 right", "line 1: after the places only middle, shift and ctrl may stand"},
        {"@wheel 1,2", "line 1: the number of notches is missing"},
        {"@key HYPER", "line 1: there is no key \"HYPER\""},
        {"@key ctrl+?", "line 1: there is no key \"?\""},
        {"@click 1,2,3", "a place should be 2 numbers"},
        {"@drag 1,2", "line 1: a drag needs two places or more"},
        {"@press 1,2 3,4", "line 1: after the place only shift and ctrl may stand"},
        {"@size 800", "line 1: a size should be WIDTHxHEIGHT, not \"800\""},
        {"@size 0x600", "line 1: a size should be WIDTHxHEIGHT, not \"0x600\""},
        {"@check 5 2", "line 1: a check mark is 0 or 1"},
        {"@push 1 2", "line 1: \"2\" is too much"},
        {"@wait soon", "line 1: the milliseconds should be a whole number, not \"soon\""},
        {"@answer maybe", "line 1: an answer is yes, no, ok or cancel"},
        {"@dialog \"Open", "line 1: the closing quotation mark is missing"},
        {"@expect rain", "line 1: there is no directive \"@expect rain\""},
        {"@expect pixel 1,2 grey", "line 1: a pixel is ink or paper"},
        {"@expect control 5", "line 1: the control's state is missing"},
        {"@expect control 5 red", "line 1: a control is usable, greyed, ticked, clear or focused"},
        {"@shot", "line 1: the path is missing"},
        {"@shot a.png sky", "line 1: a picture shows window, view, toolbar, dialog, menu or splash"},
        {"@shot a.png view:1,2", "line 1: a box of the view should be 4 numbers"},
        {"@shot a.png view:5,5,5,9", "line 1: the box of the view is empty"},
    };
    for (const auto& [text, message] : cases)
        EXPECT_THAT(errorOf(text), testing::HasSubstr(message)) << text;
}
