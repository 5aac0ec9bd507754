// System variables at the editor's command line.

#include <limits>

#include "standin/desk/coordinate_input.h"
#include "standin/desk/editor.h"

namespace desk {
namespace {

std::wstring shown(const standin::VariableValue& value)
{
    if (const auto* integer = std::get_if<std::int16_t>(&value))
        return std::to_wstring(*integer);
    if (const auto* real = std::get_if<double>(&value))
        return formatNumber(*real);
    if (const auto* point = std::get_if<standin::DrawingPoint>(&value))
        return formatPoint({point->x, point->y});
    return std::get<std::wstring>(value);
}

// What was typed, as a value of the kind that `present` is; as text if it can't be one.
standin::VariableValue typedValue(const std::wstring& text, const standin::VariableValue& present)
{
    using Short = std::numeric_limits<std::int16_t>;
    const auto number = parseNumber(text);
    if (number && std::holds_alternative<std::int16_t>(present) && *number >= Short::min() && *number <= Short::max())
        return static_cast<std::int16_t>(*number);
    if (number && std::holds_alternative<double>(present))
        return *number;
    if (const auto point = parsePoint(text, {}); point && std::holds_alternative<standin::DrawingPoint>(present))
        return standin::DrawingPoint{point->x, point->y, 0};
    return text;
}

} // namespace

void Editor::askVariable(const std::wstring& name, const standin::VariableValue& present)
{
    Prompt prompt;
    prompt.text = L"Enter new value for " + name + L" <" + shown(present) + L">:";
    prompt.points = false;
    const Reply reply = ask(prompt);
    if (reply.kind != Reply::Kind::text)
        return;
    const bool wasModel = m_active->session.inModelSpace();
    if (!standin::setSystemVariable(name, typedValue(reply.text, present))) {
        print(name + L" can't be set to " + reply.text + L".");
        return;
    }
    m_active->session.markModified();
    if (m_active->session.inModelSpace() != wasModel)
        spaceChanged();
}

} // namespace desk
