#pragma once

#include <filesystem>
#include <optional>
#include <span>
#include <string_view>

#include "standin/desk/editor.h"

namespace desk {

/// A command of the desk's own. It asks through the editor for what it needs and returns when it is done.
struct DeskCommand
{
    std::wstring_view name;
    std::wstring_view alias; // empty if it has none
    standin::CommandOutcome (*run)(Editor&);
    bool needsDrawing = true;
    std::wstring_view summary; // one line for the help
};

std::span<const DeskCommand> deskCommands();
/// By name or alias in any case; prefixes '_', '.', '\'' are passed over. Null if there is none.
const DeskCommand* findDeskCommand(const std::wstring& name);

/// Groups of commands, each in its own file.
namespace commands {

/// A path as it is typed, which may stand in quotes; nothing if the user gave up.
std::optional<std::filesystem::path> askPath(Editor& editor, const wchar_t* prompt);

standin::CommandOutcome newDrawing(Editor& editor);
standin::CommandOutcome openDrawing(Editor& editor);
standin::CommandOutcome openNamed(Editor& editor);
standin::CommandOutcome closeDrawing(Editor& editor);
standin::CommandOutcome closeAllDrawings(Editor& editor);
standin::CommandOutcome save(Editor& editor);
standin::CommandOutcome saveAs(Editor& editor);
standin::CommandOutcome saveNamed(Editor& editor);
standin::CommandOutcome quit(Editor& editor);
standin::CommandOutcome arx(Editor& editor);
standin::CommandOutcome loadModule(Editor& editor);
standin::CommandOutcome help(Editor& editor);

standin::CommandOutcome zoom(Editor& editor);
standin::CommandOutcome pan(Editor& editor);
standin::CommandOutcome regen(Editor& editor);
standin::CommandOutcome model(Editor& editor);
standin::CommandOutcome layout(Editor& editor);
standin::CommandOutcome frameTimes(Editor& editor);

standin::CommandOutcome line(Editor& editor);
standin::CommandOutcome polyline(Editor& editor);
standin::CommandOutcome circle(Editor& editor);
standin::CommandOutcome text(Editor& editor);
standin::CommandOutcome attachImage(Editor& editor);

standin::CommandOutcome select(Editor& editor);
standin::CommandOutcome erase(Editor& editor);
standin::CommandOutcome undo(Editor& editor);
standin::CommandOutcome redo(Editor& editor);
standin::CommandOutcome list(Editor& editor);
standin::CommandOutcome identifyPoint(Editor& editor);

} // namespace commands
} // namespace desk
