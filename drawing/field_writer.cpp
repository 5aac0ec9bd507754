#include "drawing/field_writer.h"

#include <algorithm>
#include <cmath>

#include "drawing/binary_form.h"
#include "drawing/error.h"
#include "drawing/numbers.h"

namespace drawing {

DxfSink::DxfSink(TextEncoding encoding, DxfForm form)
    : m_encoding(std::move(encoding)), m_form(form), m_bytes(form == DxfForm::Binary ? binarySentinel() : "")
{}

void DxfSink::group(int code, std::string_view value)
{
    // A value is one line; the format writes control characters as a caret and a letter.
    std::string line;
    for (const char c : m_encoding.encode(value)) {
        if (c == '\n' || c == '\r') {
            line += c == '\n' ? "^J" : "^M";
        } else {
            line += c;
        }
    }
    if (m_form == DxfForm::Binary) {
        appendBinaryGroup(m_bytes, code, line);
    } else {
        textGroup(code, line);
    }
}

void DxfSink::textGroup(int code, std::string_view value)
{
    const std::string number = std::to_string(code);
    constexpr std::size_t codeWidth = 3;
    m_bytes.append(codeWidth - std::min(codeWidth, number.size()), ' ');
    m_bytes += number;
    m_bytes += '\n';
    m_bytes += value;
    m_bytes += '\n';
}

void GroupSink::real(int code, double value)
{
    group(code, formatReal(value));
}

void GroupSink::groups(const Groups& groups)
{
    for (const Group& each : groups) {
        group(each.code, each.value);
    }
}

void FieldWriter::write(const Object& object, const Groups& beforeHandle)
{
    std::vector<std::string_view> markers;
    for (const KeptGroups& kept : object.kept) {
        markers.push_back(kept.subclass);
    }
    m_object = &object;
    m_visits = SectionVisits(std::move(markers));
    writeHead(object, beforeHandle);
    m_current = m_visits.visit("");
    writeKept();
    // The list of fields is shared with the reader, hence not const; a writer changes none of them.
    const_cast<Object&>(object).fields(*this);
    writeKept();
    for (std::size_t i = 0; i < object.kept.size(); ++i) {
        if (!m_visits.visited(i)) {
            m_sink.group(100, object.kept[i].subclass);
            m_sink.groups(object.kept[i].groups);
        }
    }
    m_sink.groups(object.embedded);
    m_sink.groups(object.extendedData);
}

void FieldWriter::writeHead(const Object& object, const Groups& beforeHandle)
{
    m_sink.group(0, object.name());
    m_sink.groups(beforeHandle);
    const bool dimensionStyle = object.name() == "DIMSTYLE";
    m_sink.group(dimensionStyle ? 105 : 5, formatHandle(object.handle));
    m_sink.groups(object.applicationGroups);
    if (object.extensionDictionary != 0) {
        m_sink.group(102, "{ACAD_XDICTIONARY");
        m_sink.group(360, formatHandle(object.extensionDictionary));
        m_sink.group(102, "}");
    }
    if (!object.reactors.empty()) {
        m_sink.group(102, "{ACAD_REACTORS");
        for (const Handle reactor : object.reactors) {
            m_sink.group(330, formatHandle(reactor));
        }
        m_sink.group(102, "}");
    }
    m_sink.group(330, formatHandle(object.owner));
}

void FieldWriter::writeKept()
{
    if (m_current) {
        m_sink.groups(m_object->kept[*m_current].groups);
        m_current.reset();
    }
}

void FieldWriter::subclass(std::string_view marker, std::initializer_list<std::string_view> alsoRead)
{
    writeKept();
    m_current = m_visits.visit(marker, alsoRead);
    m_sink.group(100, marker);
}

// A number that no reader would take must not reach the file.
void FieldWriter::putReal(int code, double value)
{
    if (!std::isfinite(value)) {
        throw DrawingError("group " + std::to_string(code) + " of an object is no finite number, and can't be saved");
    }
    m_sink.real(code, value);
}

void FieldWriter::real(int code, double& value, std::optional<double> omitted)
{
    if (value != omitted) {
        putReal(code, value);
    }
}

void FieldWriter::integer(int code, int& value, std::optional<int> omitted)
{
    if (value != omitted) {
        putInteger(code, value);
    }
}

void FieldWriter::boolean(int code, bool& value, std::optional<bool> omitted)
{
    if (value != omitted) {
        putInteger(code, value ? 1 : 0);
    }
}

void FieldWriter::string(int code, std::string& value, std::optional<std::string_view> omitted)
{
    if (value != omitted) {
        put(code, value);
    }
}

void FieldWriter::handle(int code, Handle& value)
{
    if (value != 0) {
        putHandle(code, value);
    }
}

void FieldWriter::point(int code, Vector2& value)
{
    putReal(code, value.x);
    putReal(code + 10, value.y);
}

void FieldWriter::point(int code, Vector3& value, std::optional<Vector3> omitted)
{
    if (value != omitted) {
        putReal(code, value.x);
        putReal(code + 10, value.y);
        putReal(code + 20, value.z);
    }
}

void FieldWriter::maybe(int code, std::optional<double>& value)
{
    if (value) {
        putReal(code, *value);
    }
}

void FieldWriter::maybe(int code, std::optional<int>& value)
{
    if (value) {
        putInteger(code, *value);
    }
}

void FieldWriter::maybe(int code, std::optional<Vector3>& value)
{
    if (value) {
        point(code, *value, {});
    }
}

} // namespace drawing
