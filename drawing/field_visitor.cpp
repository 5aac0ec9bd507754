#include "drawing/field_visitor.h"

#include "drawing/error.h"
#include "drawing/numbers.h"

namespace drawing {

namespace {

template <class Value> Value checked(const PlacedGroup& group, std::optional<Value> value, const char* kind)
{
    if (!value) {
        constexpr std::size_t shownFlag = 40;
        throw DrawingError(group.line, "\"" + group.value.substr(0, shownFlag) + "\" is no " + kind + " (group " +
                                           std::to_string(group.code) + ")");
    }
    return *value;
}

} // namespace

Group PlacedGroup::plain() const&
{
    return {code, m_number ? formatReal(*m_number) : value};
}

Group PlacedGroup::plain() &&
{
    return {code, m_number ? formatReal(*m_number) : std::move(value)};
}

double PlacedGroup::real() const
{
    return m_number ? *m_number : checked(*this, parseReal(value), "usable number");
}

int PlacedGroup::integer() const
{
    return checked(*this, parseInteger(m_number ? formatReal(*m_number) : value), "usable whole number");
}

Handle PlacedGroup::handleValue() const
{
    return checked(*this, parseHandle(value), "handle");
}

void FieldVisitor::putInteger(int code, int value)
{
    put(code, std::to_string(value));
}

void FieldVisitor::putHandle(int code, Handle value)
{
    put(code, formatHandle(value));
}

} // namespace drawing
