#pragma once

#include <cstddef>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "drawing/geometry.h"
#include "drawing/object.h"

namespace drawing {

/// A group with its place in the file. The conversions throw DrawingError with the line if the text is no such number.
struct PlacedGroup : private Group // as it may have no text yet
{
    PlacedGroup() = default;
    explicit PlacedGroup(Group group, std::size_t atLine = 0) : Group(std::move(group)), line(atLine) {}
    /// A number that comes from no text; `value` stays empty.
    PlacedGroup(int ofCode, double number) : Group{ofCode, {}}, m_number(number) {}

    using Group::code;
    using Group::value;
    std::size_t line = 0; // of the value, from 1

    /// The group by itself, a number as text.
    Group plain() const&;
    Group plain() &&;
    double real() const;
    int integer() const;
    bool boolean() const { return integer() != 0; }
    Handle handleValue() const;

private:
    std::optional<double> m_number;
};

/// What a record tells beyond its object's own fields: the writer knows it, the reader learns it.
struct RecordContext
{
    bool paperSpace = false; // the entity lies in a paper space
    std::string blockName;   // of the block that a bracket belongs to
    int attributesFollow = 0;
};

/// Is shown the fields of an object, subclass by subclass, each with its group code, so that reading and writing share
/// one list. A field with an `omitted` value is left out of the file where it has that value.
class FieldVisitor
{
public:
    virtual ~FieldVisitor() = default;

    virtual bool reading() const = 0;

    /// The fields that follow stand under this marker. `alsoRead`: other markers that a reader takes for it.
    virtual void subclass(std::string_view marker, std::initializer_list<std::string_view> alsoRead = {}) = 0;

    virtual void real(int code, double& value, std::optional<double> omitted = {}) = 0;
    virtual void integer(int code, int& value, std::optional<int> omitted = {}) = 0;
    virtual void boolean(int code, bool& value, std::optional<bool> omitted = {}) = 0;
    virtual void string(int code, std::string& value, std::optional<std::string_view> omitted = {}) = 0;
    /// A handle of 0 is left out.
    virtual void handle(int code, Handle& value) = 0;
    virtual void point(int code, Vector2& value) = 0;
    virtual void point(int code, Vector3& value, std::optional<Vector3> omitted = {}) = 0;
    virtual void maybe(int code, std::optional<double>& value) = 0;
    virtual void maybe(int code, std::optional<int>& value) = 0;
    virtual void maybe(int code, std::optional<Vector3>& value) = 0;

    /// For fields of a form of their own. Reading: takes all groups of these codes that are left under the present
    /// marker, in the file's order. Writing: empty.
    virtual std::vector<PlacedGroup> take(std::initializer_list<int> codes) = 0;
    /// Writes a group; a reader ignores it.
    virtual void put(int code, std::string value) = 0;
    /// The same; throws DrawingError if the number is not finite.
    virtual void putReal(int code, double value) = 0;
    void putInteger(int code, int value);
    void putHandle(int code, Handle value);

    RecordContext context;
};

} // namespace drawing
