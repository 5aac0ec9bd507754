// Commands that act on entities that are there.

#include "standin/desk/commands.h"
#include "standin/desk/coordinate_input.h"
#include "standin/desk/entity_report.h"

namespace desk::commands {
namespace {

using standin::CommandOutcome;

const wchar_t* const inUse = L"What was changed is in use, and was left as it is.";

// What was selected beforehand, else what the user selects now.
std::optional<std::vector<drawing::Handle>> chosenEntities(Editor& editor)
{
    const auto& selected = editor.selection().entities();
    if (!selected.empty())
        return std::vector<drawing::Handle>(selected.begin(), selected.end());
    return editor.askEntities(L"Select objects:");
}

std::wstring counted(std::size_t count)
{
    return std::to_wstring(count) + (count == 1 ? L" object" : L" objects");
}

} // namespace

CommandOutcome select(Editor& editor)
{
    const auto chosen = editor.askEntities(L"Select objects:");
    if (!chosen)
        return CommandOutcome::cancelled;
    editor.print(counted(chosen->size()) + L" selected.");
    return CommandOutcome::ended;
}

CommandOutcome erase(Editor& editor)
{
    const auto chosen = chosenEntities(editor);
    if (!chosen)
        return CommandOutcome::cancelled;
    if (!editor.eraseEntities(*chosen)) {
        editor.print(L"Some objects are in use and were left.");
        return CommandOutcome::failed;
    }
    editor.print(counted(chosen->size()) + L" erased.");
    return CommandOutcome::ended;
}

CommandOutcome undo(Editor& editor)
{
    if (editor.undo())
        return CommandOutcome::ended;
    editor.print(editor.session().history().canUndo() ? inUse : L"Nothing to undo.");
    return CommandOutcome::failed;
}

CommandOutcome redo(Editor& editor)
{
    if (editor.redo())
        return CommandOutcome::ended;
    editor.print(editor.session().history().canRedo() ? inUse : L"Nothing to redo.");
    return CommandOutcome::failed;
}

CommandOutcome list(Editor& editor)
{
    const auto chosen = chosenEntities(editor);
    if (!chosen)
        return CommandOutcome::cancelled;
    for (const drawing::Handle handle : *chosen) {
        if (const auto* entity = standin::document().find<drawing::Entity>(handle)) {
            for (const std::wstring& line : describe(standin::document(), *entity))
                editor.print(line);
        }
    }
    return CommandOutcome::ended;
}

CommandOutcome identifyPoint(Editor& editor)
{
    Prompt prompt;
    prompt.text = L"Specify point:";
    const Reply reply = editor.ask(prompt);
    if (reply.kind != Reply::Kind::point)
        return CommandOutcome::cancelled;
    editor.print(L"X = " + formatNumber(reply.point.x) + L"  Y = " + formatNumber(reply.point.y));
    return CommandOutcome::ended;
}

} // namespace desk::commands
