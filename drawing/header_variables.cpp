#include "drawing/header_variables.h"

#include <algorithm>
#include <utility>

#include "drawing/numbers.h"

namespace drawing {

const HeaderVariables::Variable* HeaderVariables::find(std::string_view name) const
{
    const auto found =
        std::find_if(m_variables.rbegin(), m_variables.rend(), [&](const Variable& v) { return v.name == name; });
    return found == m_variables.rend() ? nullptr : &*found;
}

HeaderVariables::Variable& HeaderVariables::obtain(std::string_view name)
{
    if (const Variable* found = find(name)) {
        return m_variables[static_cast<std::size_t>(found - m_variables.data())];
    }
    return m_variables.emplace_back(Variable{std::string(name), {}});
}

int HeaderVariables::integer(std::string_view name, int fallback) const
{
    const Variable* found = find(name);
    return found && !found->groups.empty() ? parseInteger(found->groups[0].value).value_or(fallback) : fallback;
}

double HeaderVariables::real(std::string_view name, double fallback) const
{
    const Variable* found = find(name);
    return found && !found->groups.empty() ? parseReal(found->groups[0].value).value_or(fallback) : fallback;
}

std::string HeaderVariables::text(std::string_view name, std::string_view fallback) const
{
    const Variable* found = find(name);
    return found && !found->groups.empty() ? found->groups[0].value : std::string(fallback);
}

Vector3 HeaderVariables::point(std::string_view name, const Vector3& fallback) const
{
    const Variable* found = find(name);
    if (!found || found->groups.size() < 2) {
        return fallback;
    }
    double values[3] = {0, 0, 0};
    for (std::size_t i = 0; i < std::min<std::size_t>(3, found->groups.size()); ++i) {
        const auto value = parseReal(found->groups[i].value);
        if (!value) {
            return fallback;
        }
        values[i] = *value;
    }
    return {values[0], values[1], values[2]};
}

void HeaderVariables::setSingle(std::string_view name, std::string value, int code)
{
    Variable& variable = obtain(name);
    const int keptCode = variable.groups.size() == 1 ? variable.groups[0].code : code;
    variable.groups = {Group{keptCode, std::move(value)}};
}

void HeaderVariables::setInteger(std::string_view name, int value, int code)
{
    setSingle(name, std::to_string(value), code);
}

void HeaderVariables::setReal(std::string_view name, double value, int code)
{
    setSingle(name, formatReal(value), code);
}

void HeaderVariables::setText(std::string_view name, std::string_view value, int code)
{
    setSingle(name, std::string(value), code);
}

void HeaderVariables::setPoint2(std::string_view name, const Vector2& value)
{
    obtain(name).groups = {{10, formatReal(value.x)}, {20, formatReal(value.y)}};
}

void HeaderVariables::setPoint3(std::string_view name, const Vector3& value)
{
    obtain(name).groups = {{10, formatReal(value.x)}, {20, formatReal(value.y)}, {30, formatReal(value.z)}};
}

void HeaderVariables::setGroups(std::string_view name, Groups groups)
{
    obtain(name).groups = std::move(groups);
}

bool HeaderVariables::erase(std::string_view name)
{
    return std::erase_if(m_variables, [&](const Variable& v) { return v.name == name; }) > 0;
}

} // namespace drawing
