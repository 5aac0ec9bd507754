#pragma once

#include <string>
#include <utility>

#include "drawing/field_visitor.h"
#include "drawing/section_visits.h"
#include "drawing/text_encoding.h"

namespace drawing {

/// The two forms of a DXF file: lines of text, or codes and values as bytes.
enum class DxfForm
{
    Text,
    Binary,
};

/// Takes the groups of records as they are written.
class GroupSink
{
public:
    virtual ~GroupSink() = default;

    virtual void group(int code, std::string_view value) = 0;
    virtual void real(int code, double value);
    void groups(const Groups& groups);
};

/// The bytes of a DXF file as they grow; in text form a line with the code and a line with the value.
class DxfSink final : public GroupSink
{
public:
    DxfSink(TextEncoding encoding, DxfForm form);

    void group(int code, std::string_view value) override;
    std::string take() { return std::move(m_bytes); }

private:
    void textGroup(int code, std::string_view value);

    TextEncoding m_encoding;
    DxfForm m_form;
    std::string m_bytes;
};

/// Writes an object as a record: its fields, and the kept groups under the markers where they stood.
class FieldWriter final : public FieldVisitor
{
public:
    explicit FieldWriter(GroupSink& sink) : m_sink(sink) {}

    /// `beforeHandle` stands between the record's name and its handle.
    void write(const Object& object, const Groups& beforeHandle = {});

    bool reading() const override { return false; }
    void subclass(std::string_view marker, std::initializer_list<std::string_view> alsoRead) override;
    void real(int code, double& value, std::optional<double> omitted) override;
    void integer(int code, int& value, std::optional<int> omitted) override;
    void boolean(int code, bool& value, std::optional<bool> omitted) override;
    void string(int code, std::string& value, std::optional<std::string_view> omitted) override;
    void handle(int code, Handle& value) override;
    void point(int code, Vector2& value) override;
    void point(int code, Vector3& value, std::optional<Vector3> omitted) override;
    void maybe(int code, std::optional<double>& value) override;
    void maybe(int code, std::optional<int>& value) override;
    void maybe(int code, std::optional<Vector3>& value) override;
    std::vector<PlacedGroup> take(std::initializer_list<int>) override { return {}; }
    void put(int code, std::string value) override { m_sink.group(code, value); }
    void putReal(int code, double value) override;

private:
    void writeHead(const Object& object, const Groups& beforeHandle);
    void writeKept();

    GroupSink& m_sink;
    const Object* m_object = nullptr;
    SectionVisits m_visits;               // of the object's kept groups
    std::optional<std::size_t> m_current; // the kept groups to be written behind the present fields
};

} // namespace drawing
