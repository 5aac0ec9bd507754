// The script language of the desk: what the sessions, which use all of it, do not show.

#include <windows.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "standin/desk/script.h"

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

TEST(Script, KeysAreNamesOrSingleCharacters)
{
    EXPECT_EQ(actionOf<Key>("@key ESC").virtualKey, unsigned(VK_ESCAPE));
    EXPECT_EQ(actionOf<Key>("@key F2").virtualKey, unsigned(VK_F2));
    EXPECT_EQ(actionOf<Key>("@key a").character, L'a');
    EXPECT_THAT(errorOf("@key HYPER"), testing::HasSubstr("no key \"HYPER\""));
}

TEST(Script, PathsCountFromTheScriptsFolder)
{
    EXPECT_EQ(actionOf<PickFile>("@file ../out/my scan.tif").path.wstring(), L"C:\\out\\my scan.tif");
    EXPECT_EQ(actionOf<Shot>("@shot a.png").path.wstring(), L"C:\\scripts\\a.png");
    EXPECT_EQ(actionOf<PickFile>("@file D:\\x.tif").path.wstring(), L"D:\\x.tif");
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
