// Commands that change what the view shows.

#include "standin/desk/commands.h"
#include "standin/desk/coordinate_input.h"
#include "standin/text.h"

namespace desk::commands {
namespace {

using standin::CommandOutcome;

void zoomToWindow(Editor& editor, Vec2 a, Vec2 b)
{
    Box box;
    box.add(a);
    box.add(b);
    editor.views().change([&](ViewTransform& view) { view.fit(box, 0); });
}

CommandOutcome zoomToCorner(Editor& editor, Vec2 first)
{
    Prompt prompt;
    prompt.text = L"Specify opposite corner:";
    prompt.rubber = Prompt::Rubber::rectangle;
    prompt.base = first;
    const Reply second = editor.ask(prompt);
    if (second.kind != Reply::Kind::point)
        return CommandOutcome::cancelled;
    zoomToWindow(editor, first, second.point);
    return CommandOutcome::ended;
}

// "2x" counts from the present view, "2" from the whole drawing.
bool zoomByFactor(Editor& editor, std::wstring text)
{
    const bool fromPresent = !text.empty() && (text.back() == L'x' || text.back() == L'X');
    if (fromPresent)
        text.pop_back();
    const auto factor = parseNumber(text);
    if (!factor || *factor <= 0)
        return false;
    if (!fromPresent)
        editor.zoomExtents();
    editor.views().change([&](ViewTransform& view) { view.set(view.centre(), view.height() / *factor); });
    return true;
}

void goToSpace(Editor& editor, bool model)
{
    if (editor.session().inModelSpace() == model)
        return;
    editor.showSpace(model);
    editor.print(model ? L"Model space." : L"Paper space layout.");
}

} // namespace

CommandOutcome zoom(Editor& editor)
{
    Prompt prompt;
    prompt.text = L"Specify corner of window, or [All/Extents/Previous/Window] or a scale factor (nX):";
    const Reply reply = editor.ask(prompt);
    if (reply.kind == Reply::Kind::point)
        return zoomToCorner(editor, reply.point);
    if (reply.kind != Reply::Kind::text)
        return CommandOutcome::cancelled;
    const std::wstring option = standin::upperCase(reply.text);
    if (option == L"E" || option == L"EXTENTS" || option == L"A" || option == L"ALL") {
        editor.zoomExtents();
    } else if (option == L"P" || option == L"PREVIOUS") {
        editor.views().previous();
    } else if (option == L"W" || option == L"WINDOW") {
        prompt.text = L"Specify first corner:";
        const Reply first = editor.ask(prompt);
        return first.kind == Reply::Kind::point ? zoomToCorner(editor, first.point) : CommandOutcome::cancelled;
    } else if (!zoomByFactor(editor, reply.text)) {
        editor.print(L"Invalid option.");
        return CommandOutcome::failed;
    }
    return CommandOutcome::ended;
}

CommandOutcome pan(Editor& editor)
{
    Prompt prompt;
    prompt.text = L"Specify base point:";
    const Reply from = editor.ask(prompt);
    if (from.kind != Reply::Kind::point)
        return CommandOutcome::cancelled;
    prompt.text = L"Specify second point:";
    prompt.rubber = Prompt::Rubber::line;
    prompt.base = from.point;
    const Reply to = editor.ask(prompt);
    if (to.kind != Reply::Kind::point)
        return CommandOutcome::cancelled;
    editor.views().change([&](ViewTransform& view) { view.set(view.centre() + from.point - to.point, view.height()); });
    return CommandOutcome::ended;
}

CommandOutcome regen(Editor& editor)
{
    editor.regenerate();
    editor.print(L"Regenerating model.");
    return CommandOutcome::ended;
}

CommandOutcome frameTimes(Editor& editor)
{
    editor.windows().reportFrameTimes();
    return CommandOutcome::ended;
}

CommandOutcome model(Editor& editor)
{
    goToSpace(editor, true);
    return CommandOutcome::ended;
}

CommandOutcome layout(Editor& editor)
{
    goToSpace(editor, false);
    return CommandOutcome::ended;
}

} // namespace desk::commands
