#include "drawing/field_visitor.h"

#include <cmath>

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

double PlacedGroup::real() const
{
    return checked(*this, parseReal(value), "usable number");
}

int PlacedGroup::integer() const
{
    return checked(*this, parseInteger(value), "usable whole number");
}

Handle PlacedGroup::handleValue() const
{
    return checked(*this, parseHandle(value), "handle");
}

// A number that no reader would take must not reach the file.
void FieldVisitor::putReal(int code, double value)
{
    if (!std::isfinite(value)) {
        throw DrawingError("group " + std::to_string(code) + " of an object is no finite number, and can't be saved");
    }
    put(code, formatReal(value));
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
