// Commands around drawing files and modules.

#include "standin/desk/commands.h"
#include "standin/text.h"

namespace desk::commands {
namespace {

using standin::CommandOutcome;

CommandOutcome outcome(bool done)
{
    return done ? CommandOutcome::ended : CommandOutcome::failed;
}

CommandOutcome tell(Editor& editor, const standin::Failure& failure, const std::wstring& success)
{
    editor.print(failure ? *failure : success);
    return outcome(!failure);
}

} // namespace

std::optional<std::filesystem::path> askPath(Editor& editor, const wchar_t* prompt)
{
    Prompt ask;
    ask.text = prompt;
    ask.points = false;
    ask.blanksAreText = true;
    const Reply reply = editor.ask(ask);
    if (reply.kind != Reply::Kind::text)
        return std::nullopt;
    std::wstring path = reply.text;
    if (path.size() >= 2 && path.front() == L'"' && path.back() == L'"')
        path = path.substr(1, path.size() - 2);
    return std::filesystem::path(path);
}

CommandOutcome newDrawing(Editor& editor)
{
    return outcome(editor.openDrawing({}));
}

CommandOutcome openDrawing(Editor& editor)
{
    const auto path = editor.windows().askForDrawing(false);
    return path ? outcome(editor.openDrawing(*path)) : CommandOutcome::cancelled;
}

CommandOutcome openNamed(Editor& editor)
{
    const auto path = askPath(editor, L"Enter name of drawing to open:");
    return path ? outcome(editor.openDrawing(*path)) : CommandOutcome::cancelled;
}

CommandOutcome closeDrawing(Editor& editor)
{
    if (!editor.mayDiscard())
        return CommandOutcome::cancelled;
    editor.closeDrawing();
    return CommandOutcome::ended;
}

CommandOutcome closeAllDrawings(Editor& editor)
{
    while (standin::drawingOpen()) {
        if (closeDrawing(editor) == CommandOutcome::cancelled)
            return CommandOutcome::cancelled;
    }
    return CommandOutcome::ended;
}

CommandOutcome save(Editor& editor)
{
    const auto path = standin::drawingPath();
    return path.empty() ? saveAs(editor) : outcome(editor.saveDrawing(path, standin::SaveForm::OfFile));
}

CommandOutcome saveAs(Editor& editor)
{
    const auto path = editor.windows().askForDrawing(true);
    return path ? outcome(editor.saveDrawing(*path)) : CommandOutcome::cancelled;
}

CommandOutcome saveNamed(Editor& editor)
{
    const auto path = askPath(editor, L"Enter name of file to save as:");
    return path ? outcome(editor.saveDrawing(*path)) : CommandOutcome::cancelled;
}

CommandOutcome quit(Editor& editor)
{
    editor.windows().close(); // which asks
    return CommandOutcome::ended;
}

CommandOutcome arx(Editor& editor)
{
    Prompt ask;
    ask.text = L"Enter an option [Load/Unload/?]:";
    ask.points = false;
    const Reply option = editor.ask(ask);
    if (option.kind != Reply::Kind::text)
        return CommandOutcome::cancelled;
    const std::wstring key = standin::upperCase(option.text);
    if (key == L"?") {
        for (const auto& module : standin::loadedModules())
            editor.print(L"  " + module.wstring());
        return CommandOutcome::ended;
    }
    const bool load = key == L"L" || key == L"LOAD";
    if (!load && key != L"U" && key != L"UNLOAD") {
        editor.print(L"Invalid option.");
        return CommandOutcome::failed;
    }
    const auto name = askPath(editor, load ? L"Enter module to load:" : L"Enter module to unload:");
    if (!name)
        return CommandOutcome::cancelled;
    if (load)
        return tell(editor, standin::loadModule(*name), name->wstring() + L" is loaded.");
    return tell(editor, standin::unloadModule(name->wstring()), name->wstring() + L" is unloaded.");
}

CommandOutcome loadModule(Editor& editor)
{
    const auto path = editor.windows().askForModule();
    if (!path)
        return CommandOutcome::cancelled;
    return tell(editor, standin::loadModule(*path), path->filename().wstring() + L" is loaded.");
}

CommandOutcome help(Editor& editor)
{
    editor.windows().showHelp();
    return CommandOutcome::ended;
}

} // namespace desk::commands
