// Commands that add entities.

#include <cmath>

#include "standin/desk/commands.h"
#include "standin/desk/coordinate_input.h"
#include "standin/text.h"

namespace desk::commands {
namespace {

using standin::CommandOutcome;

drawing::Vector3 toVector(Vec2 point)
{
    return {point.x, point.y, 0};
}

void addLine(Editor& editor, Vec2 from, Vec2 to)
{
    auto line = std::make_unique<drawing::Line>();
    line->start = toVector(from);
    line->end = toVector(to);
    editor.addEntity(std::move(line));
}

// Points until Enter or a keyword other than `closing`; each goes to `added`. True if the run was closed.
bool askRun(Editor& editor, Vec2 first, const std::function<void(Vec2 from, Vec2 to)>& added)
{
    Vec2 last = first;
    for (int count = 1;; ++count) {
        Prompt prompt;
        prompt.text = count > 2 ? L"Specify next point or [Close]:" : L"Specify next point:";
        prompt.rubber = Prompt::Rubber::line;
        prompt.base = last;
        const Reply reply = editor.ask(prompt);
        if (reply.kind == Reply::Kind::point) {
            added(last, reply.point);
            last = reply.point;
        } else if (reply.kind == Reply::Kind::text) {
            const std::wstring option = standin::upperCase(reply.text);
            if (count > 2 && (option == L"C" || option == L"CLOSE"))
                return true;
            editor.print(L"Point or option keyword required.");
            --count;
        } else {
            return false;
        }
    }
}

std::optional<Vec2> askPoint(Editor& editor, const wchar_t* text)
{
    Prompt prompt;
    prompt.text = text;
    const Reply reply = editor.ask(prompt);
    return reply.kind == Reply::Kind::point ? std::optional(reply.point) : std::nullopt;
}

// A positive number typed, or the distance from `base` to a point.
std::optional<double> askLength(Editor& editor, const std::wstring& text, Vec2 base, Prompt::Rubber rubber,
                                std::optional<double> preset)
{
    for (;;) {
        Prompt prompt;
        prompt.text = text;
        prompt.base = base;
        prompt.rubber = rubber;
        const Reply reply = editor.ask(prompt);
        if (reply.kind == Reply::Kind::cancel)
            return std::nullopt;
        if (reply.kind == Reply::Kind::enter)
            return preset;
        const double length = reply.kind == Reply::Kind::point
                                  ? std::hypot(reply.point.x - base.x, reply.point.y - base.y)
                                  : parseNumber(reply.text).value_or(0);
        if (length > 0)
            return length;
        editor.print(L"Value must be positive and nonzero.");
    }
}

} // namespace

CommandOutcome line(Editor& editor)
{
    const auto first = askPoint(editor, L"Specify first point:");
    if (!first)
        return CommandOutcome::cancelled;
    Vec2 last = *first;
    const bool closed = askRun(editor, *first, [&](Vec2 from, Vec2 to) {
        addLine(editor, from, to);
        last = to;
    });
    if (closed)
        addLine(editor, last, *first);
    return CommandOutcome::ended;
}

CommandOutcome polyline(Editor& editor)
{
    const auto first = askPoint(editor, L"Specify start point:");
    if (!first)
        return CommandOutcome::cancelled;
    auto run = std::make_unique<drawing::LightPolyline>();
    const auto add = [&](Vec2 point) {
        drawing::PolylinePoint corner;
        corner.position = {point.x, point.y};
        run->points.push_back(corner);
    };
    add(*first);
    std::vector<Vec2> shown{*first};
    run->closed = askRun(editor, *first, [&](Vec2, Vec2 to) {
        add(to);
        shown.push_back(to);
        editor.showPending(shown);
    });
    editor.showPending({});
    if (run->points.size() < 2)
        return CommandOutcome::cancelled;
    editor.addEntity(std::move(run));
    return CommandOutcome::ended;
}

CommandOutcome circle(Editor& editor)
{
    const auto centre = askPoint(editor, L"Specify center point for circle:");
    if (!centre)
        return CommandOutcome::cancelled;
    const auto radius = askLength(editor, L"Specify radius of circle:", *centre, Prompt::Rubber::circle, std::nullopt);
    if (!radius)
        return CommandOutcome::cancelled;
    auto entity = std::make_unique<drawing::Circle>();
    entity->center = toVector(*centre);
    entity->radius = *radius;
    editor.addEntity(std::move(entity));
    return CommandOutcome::ended;
}

CommandOutcome text(Editor& editor)
{
    const auto start = askPoint(editor, L"Specify start point of text:");
    if (!start)
        return CommandOutcome::cancelled;
    const double preset = standin::document().header.real("$TEXTSIZE", 2.5);
    const auto height =
        askLength(editor, L"Specify height <" + formatNumber(preset) + L">:", *start, Prompt::Rubber::line, preset);
    if (!height)
        return CommandOutcome::cancelled;
    Prompt prompt;
    prompt.text = L"Enter text:";
    prompt.points = false;
    prompt.blanksAreText = true;
    const Reply reply = editor.ask(prompt);
    if (reply.kind != Reply::Kind::text)
        return CommandOutcome::cancelled;
    auto entity = std::make_unique<drawing::Text>();
    entity->position = toVector(*start);
    entity->height = *height;
    entity->text = standin::toUtf8(reply.text);
    standin::document().header.setReal("$TEXTSIZE", *height);
    editor.addEntity(std::move(entity));
    return CommandOutcome::ended;
}

} // namespace desk::commands
