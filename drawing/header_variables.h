#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "drawing/geometry.h"
#include "drawing/object.h"

namespace drawing {

/// The drawing's header variables, in the file's order. Names begin with "$". Unknown ones are held like all others. A
/// name may stand more than once, as those of the drawing's custom properties do; by its name the last one is found.
class HeaderVariables
{
public:
    struct Variable
    {
        std::string name;
        Groups groups;
        bool operator==(const Variable&) const = default;
    };

    const std::vector<Variable>& all() const { return m_variables; }
    bool has(std::string_view name) const { return find(name) != nullptr; }

    // The value, or `fallback` where the variable is missing or of another form.
    int integer(std::string_view name, int fallback = 0) const;
    double real(std::string_view name, double fallback = 0) const;
    std::string text(std::string_view name, std::string_view fallback = {}) const;
    Vector3 point(std::string_view name, const Vector3& fallback = {}) const;

    // Set the value, keeping the group code that the variable has; a new variable takes `code`.
    void setInteger(std::string_view name, int value, int code = 70);
    void setReal(std::string_view name, double value, int code = 40);
    void setText(std::string_view name, std::string_view value, int code = 1);
    void setPoint2(std::string_view name, const Vector2& value);
    void setPoint3(std::string_view name, const Vector3& value);
    void setGroups(std::string_view name, Groups groups);
    /// Adds a variable behind all others, whether there is one of that name or not.
    void append(Variable variable) { m_variables.push_back(std::move(variable)); }
    bool erase(std::string_view name); // all of that name; false if there was none

private:
    const Variable* find(std::string_view name) const;
    Variable& obtain(std::string_view name);
    void setSingle(std::string_view name, std::string value, int code);

    std::vector<Variable> m_variables;
};

} // namespace drawing
