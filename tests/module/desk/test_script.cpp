// The script language of the desk.

#include "standin/desk/script.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <windows.h>

using namespace desk::script;

namespace {

const std::filesystem::path folder = L"C:\\scripts";

Step only(std::string_view line)
{
    const auto steps = parse(line, folder);
    EXPECT_EQ(steps.size(), 1u) << line;
    return steps.empty() ? Step{} : steps.front();
}

template <class T> T actionOf(std::string_view line)
{
    const Step step = only(line);
    const T* action = std::get_if<T>(&step.action);
    EXPECT_NE(action, nullptr) << line << " was taken for another directive";
    return action != nullptr ? *action : T{};
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
    EXPECT_EQ(std::get<Type>(steps[0].action).text, L"LINE 0,0 5,5");
    EXPECT_EQ(steps[1].line, 4);
    EXPECT_TRUE(std::holds_alternative<Idle>(steps[1].action));
}

TEST(Script, RelativeCoordinatesAreTypedAndNoDirectives)
{
    EXPECT_EQ(actionOf<Type>("@5,5").text, L"@5,5");
    EXPECT_EQ(actionOf<Type>("@10<45").text, L"@10<45");
}

TEST(Script, ClickTakesItsWordsInAnyOrder)
{
    const Click click = actionOf<Click>("@click 12.5,-3 double shift");
    EXPECT_EQ(click.place, (Place{{12.5, -3}, false}));
    EXPECT_TRUE(click.twice);
    EXPECT_TRUE(click.shift);
    EXPECT_FALSE(click.right);
    EXPECT_FALSE(click.control);
    EXPECT_TRUE(actionOf<Click>("@click 1,2 right").right);
    EXPECT_TRUE(actionOf<Click>("@click 1,2 ctrl").control);
}

TEST(Script, PlacesMayBeViewPixels)
{
    EXPECT_EQ(actionOf<Move>("@move view:200,150").place, (Place{{200, 150}, true}));
    const Drag drag = actionOf<Drag>("@drag 1,2 view:3,4 -5,6 ctrl");
    EXPECT_THAT(drag.places, testing::ElementsAre(Place{{1, 2}, false}, Place{{3, 4}, true}, Place{{-5, 6}, false}));
    EXPECT_TRUE(drag.control);
    EXPECT_FALSE(drag.shift);
}

TEST(Script, TheButtonIsHeldOverSeveralStepsEachWithItsOwnKeys)
{
    const Press press = actionOf<Press>("@press view:3,4 ctrl shift");
    EXPECT_EQ(press.place, (Place{{3, 4}, true}));
    EXPECT_TRUE(press.shift && press.control);
    const Move move = actionOf<Move>("@move 5,6 shift");
    EXPECT_TRUE(move.shift && !move.control);
    const Release release = actionOf<Release>("@release 7.5,8");
    EXPECT_EQ(release.place, (Place{{7.5, 8}, false}));
    EXPECT_FALSE(release.shift || release.control);
}

TEST(Script, TheViewsSizeIsWidthByHeight)
{
    EXPECT_EQ(actionOf<ResizeView>("@size 800x600").size, (imaging::Size{800, 600}));
}

TEST(Script, KeysAreNamesOrSingleCharacters)
{
    EXPECT_EQ(actionOf<Key>("@key ESC").virtualKey, unsigned(VK_ESCAPE));
    EXPECT_EQ(actionOf<Key>("@key F2").virtualKey, unsigned(VK_F2));
    EXPECT_EQ(actionOf<Key>("@key a").character, L'a');
    EXPECT_THAT(errorOf("@key HYPER"), testing::HasSubstr("no key \"HYPER\""));
}

TEST(Script, DialogDirectives)
{
    EXPECT_EQ(actionOf<WaitForDialog>("@dialog \"Change raster\"").title, L"Change raster");
    const SetText set = actionOf<SetText>("@set 1012 two words");
    EXPECT_EQ(set.id, 1012);
    EXPECT_EQ(set.text, L"two words");
    EXPECT_EQ(actionOf<SetText>("@set 7 \"\"").text, L"");
    EXPECT_TRUE(actionOf<Check>("@check 5 1").on);
    EXPECT_EQ(actionOf<Choose>("@choose 5 3").index, 3);
    EXPECT_EQ(actionOf<Slide>("@slide 5 -20").position, -20);
    EXPECT_EQ(actionOf<Push>("@push ok").id, IDOK);
    EXPECT_EQ(actionOf<Push>("@push 1044").id, 1044);
    EXPECT_EQ(actionOf<Answer>("@answer no").button, IDNO);
}

TEST(Script, PathsCountFromTheScriptsFolder)
{
    EXPECT_EQ(actionOf<PickFile>("@file ../out/my scan.tif").path.wstring(), L"C:\\out\\my scan.tif");
    EXPECT_EQ(actionOf<Shot>("@shot a.png").path.wstring(), L"C:\\scripts\\a.png");
    EXPECT_EQ(actionOf<PickFile>("@file D:\\x.tif").path.wstring(), L"D:\\x.tif");
}

TEST(Script, Expectations)
{
    EXPECT_TRUE(actionOf<ExpectRaster>("@expect raster").current);
    EXPECT_FALSE(actionOf<ExpectRaster>("@expect no raster").current);
    EXPECT_EQ(actionOf<ExpectTool>("@expect tool 3").id, 3);
    actionOf<ExpectNoTool>("@expect no tool");
    EXPECT_EQ(actionOf<ExpectBox>("@expect box \"Save changes?\"").text, L"Save changes?");
    EXPECT_EQ(actionOf<ExpectText>("@expect text 1001 \"300 dpi\"").text, L"300 dpi");
    EXPECT_FALSE(actionOf<ExpectFile>("@expect no file a.tif").present);
    EXPECT_EQ(actionOf<ExpectEntities>("@expect entities 12").count, 12);
    EXPECT_FALSE(actionOf<ExpectPixel>("@expect pixel 10,20 paper").ink);
    EXPECT_EQ(actionOf<ExpectSelection>("@expect selection 1,2,30,40").pixels, (imaging::Rect{1, 2, 30, 40}));
    actionOf<ExpectNoSelection>("@expect no selection");
}

TEST(Script, MistakesNameTheirLineAndWhatWasExpected)
{
    const struct
    {
        const char* text;
        const char* message;
    } cases[] = {
        {"LINE\n@klick 1,2", "line 2: there is no directive \"@klick\""},
        {"@click", "line 1: the place is missing"},
        {"@click 12", "line 1: a place should be 2 numbers parted by commas, not \"12\""},
        {"@click 1,2 hard", "line 1: after the place only"},
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
        {"@expect rain", "line 1: this can't be expected: \"rain\""},
        {"@expect pixel 1,2 grey", "line 1: a pixel is ink or paper"},
        {"@shot", "line 1: the path is missing"},
    };
    for (const auto& [text, message] : cases)
        EXPECT_THAT(errorOf(text), testing::HasSubstr(message)) << text;
}
