#pragma once

#include <string>
#include <vector>

#include "drawing/entities.h"
#include "drawing/field_visitor.h"
#include "drawing/section_visits.h"

namespace drawing {

/// One record of a file: from a group 0, which `name` and `line` hold, up to the next.
struct Record
{
    std::string name;
    std::size_t line = 0;
    std::vector<PlacedGroup> groups;
};

/// Fills an object from a record. What the object's fields don't take goes into its kept groups, by the rule of
/// SectionVisits, so that writing the object gives all of the record back.
class FieldReader final : public FieldVisitor
{
public:
    explicit FieldReader(Record& record);

    void read(Object& object);

    bool reading() const override { return true; }
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
    std::vector<PlacedGroup> take(std::initializer_list<int> codes) override;
    void put(int, std::string) override {}
    void putReal(int, double) override {}

private:
    /// The groups under one marker; the first section is the head, which has none.
    struct Section
    {
        std::string_view marker;
        std::size_t begin = 0;
        std::size_t end = 0;
    };

    void splitTail(Object& object);
    void splitSections();
    void readHead(Object& object);
    void readApplicationGroup(Object& object, std::size_t& index);
    void readStrayProperties(Entity& entity);
    std::vector<PlacedGroup> takeStrayProperties();
    void keepRest(Object& object);
    PlacedGroup* next(int code);

    Record& m_record;
    std::vector<bool> m_used;
    std::size_t m_end = 0; // groups from here on are extended data or embedded
    std::vector<Section> m_sections;
    SectionVisits m_visits;
    std::size_t m_current = 0; // section that fields are taken from
    std::string_view m_lastMarker;
};

} // namespace drawing
