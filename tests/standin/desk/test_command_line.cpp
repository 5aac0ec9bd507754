// What is typed or posted at the command line, its history, and the desk's undo.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>

#include "standin/desk/command_input.h"
#include "standin/desk/edit_history.h"

using namespace desk;

namespace {

// Types all that is posted and writes down what comes of it: entered lines, "<cancel>" and "<refresh>".
std::vector<std::wstring> played(const std::vector<std::wstring>& posts, std::wstring line = {},
                                 bool blanksAreText = false)
{
    InputQueue queue;
    for (const auto& post : posts)
        queue.post(post);
    std::vector<std::wstring> events;
    while (!queue.empty()) {
        switch (typeCharacter(line, queue.take(), blanksAreText)) {
        case LineEvent::entered:
            events.push_back(std::exchange(line, {}));
            break;
        case LineEvent::cancelled:
            events.push_back(L"<cancel>");
            break;
        case LineEvent::refresh:
            events.push_back(L"<refresh>");
            break;
        case LineEvent::changed:
            break;
        }
    }
    events.push_back(L"left: " + line);
    return events;
}

struct Entities
{
    std::map<std::uint64_t, bool> present;
    std::uint64_t locked = 0;

    EditHistory::Turn function()
    {
        return [this](desk::Edit& edit) {
            if (edit.object == locked)
                return false;
            edit.added = !edit.added;
            present[edit.object] = edit.added;
            return true;
        };
    }
};

} // namespace

TEST(CommandInput, CharactersAreTypedAndEntered)
{
    using testing::ElementsAre;
    EXPECT_THAT(played({L"CANCELCMD", L"orvo_invert "}, L"half typ"),
                ElementsAre(L"<cancel>", L"orvo_invert", L"left: "));
    EXPECT_THAT(played({L"arx u HVA6\rx"}), ElementsAre(L"arx", L"u", L"HVA6", L"left: x"));
    EXPECT_THAT(played({L"\t\b"}, L"ab"), ElementsAre(L"<refresh>", L"left: a"));
    EXPECT_THAT(played({L"\b\b"}, L"a"), ElementsAre(L"left: "));
    EXPECT_THAT(played({L"two words\r"}, L"", true), ElementsAre(L"two words", L"left: ")) << "blanks are text";
}

TEST(CommandHistory, UpAndDownGoThroughTheLinesAndBackToTheDraft)
{
    CommandHistory history;
    for (const wchar_t* line : {L"line", L"zoom", L"zoom", L""})
        history.add(line);
    EXPECT_EQ(history.older(L"dra"), L"zoom");
    EXPECT_EQ(history.older(L"zoom"), L"line") << "a repeated line is kept once";
    EXPECT_EQ(history.older(L"line"), L"line");
    EXPECT_EQ(history.newer(L"line"), L"zoom");
    EXPECT_EQ(history.newer(L"zoom"), L"dra");
    EXPECT_EQ(history.newer(L"dra"), L"dra");
}

TEST(EditHistory, UndoTakesBackAGroupAndRedoBringsItAgain)
{
    Entities entities;
    EditHistory history;
    history.record({1, true});
    history.record({2, true});
    history.commit();
    history.record({1, false});
    history.commit();
    entities.present = {{1, false}, {2, true}};

    EXPECT_TRUE(history.undo(entities.function()));
    EXPECT_TRUE(entities.present[1]) << "the erased line is back";
    EXPECT_TRUE(history.undo(entities.function()));
    EXPECT_FALSE(entities.present[1] || entities.present[2]) << "the drawn lines are gone";
    EXPECT_FALSE(history.undo(entities.function()));
    EXPECT_TRUE(history.redo(entities.function()));
    EXPECT_TRUE(entities.present[1] && entities.present[2]);
    EXPECT_TRUE(history.canRedo());
    history.record({3, true});
    history.commit();
    EXPECT_FALSE(history.canRedo()) << "a new edit forgets what was undone";
}

TEST(EditHistory, AGroupThatCantBeTakenBackWholeIsLeftWhole)
{
    Entities entities;
    EditHistory history;
    for (const std::uint64_t entity : {1, 2, 3}) {
        history.record({entity, true});
        entities.present[entity] = true;
    }
    history.commit();
    entities.locked = 1;
    EXPECT_FALSE(history.undo(entities.function()));
    EXPECT_TRUE(entities.present[2] && entities.present[3]) << "what was taken out is put back";
    entities.locked = 0;
    EXPECT_TRUE(history.undo(entities.function())) << "and the group can still be undone";
}
