#pragma once

#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "drawing/dwg/bit_transfer.h"
#include "drawing/dwg/record_names.h"
#include "drawing/field_reader.h"
#include "drawing/geometry.h"

namespace drawing::dwg {

/// Handles by which an object holds others in this form; in DXF the others' place in the file says it.
struct Links
{
    Handle first = 0; // of the vertices, attributes or entities
    Handle last = 0;
    Handle sequenceEnd = 0;
    bool hasParts = false;    // of a block reference
    Handle viewportEntry = 0; // of a viewport, in the list of viewports
};

/// Moves the fields of one object between its bits and the groups that the same object has in DXF, so that each kind
/// of object is told once for both ways, and everything that the project does with groups holds for this form too.
///
/// Reading, fields are taken from the bits and added to the record. Writing, they are looked up in the record and
/// appended to the bits; each group serves once, in its order, within the section of the present marker. A field that
/// has an `omitted` value has no group where it has that value; others that lack their group count as 0.
class ObjectFields
{
public:
    /// Reads into `record`. Throws DrawingError, as other calls do, once there are more than `mostGroups`: a value may
    /// have as little as two bits, and a group takes memory.
    ObjectFields(BitTransfer transfer, RecordNames& names, Record& record, std::size_t mostGroups);
    /// Writes from `record`, which has to be divided by markers.
    ObjectFields(Handle own, const TextEncoding& encoding, RecordNames& names, Record& record);

    bool reading() const { return bits.reading(); }
    const std::string& recordName() const { return m_record.name; }

    /// The bits, for fields that are told differently there.
    BitTransfer bits;

    // The groups. What follows stands under this marker.
    void marker(std::string_view name);
    /// What follows stands again under a marker that was named before.
    void again(std::string_view name);
    /// Reading: adds a group. Writing: nothing.
    void give(int code, const std::string& value);
    void give(int code, double value);
    void give(int code, int value);
    void give(int code, const Vector2& value);
    void give(int code, const Vector3& value);
    /// Reading: makes room for so many more groups.
    void expect(std::size_t groups);
    void giveHandle(int code, Handle value);
    /// Writing: takes the next group of this code; false, and the value as it was, if there is none. Reading: false.
    bool take(int code, std::string& value);
    bool take(int code, double& value);
    bool take(int code, int& value);
    bool take(int code, Vector2& value);
    bool take(int code, Vector3& value);
    bool takeHandle(int code, Handle& value);
    /// The same out of the next section of that marker, before its turn.
    bool takeAhead(std::string_view markerAhead, int code, int& value);
    /// Writing: all groups of these codes that are left under the present marker. Reading: none.
    std::vector<PlacedGroup> takeAll(std::initializer_list<int> codes);
    /// Writing: all that is left under the present marker.
    std::vector<PlacedGroup> takeRest();
    /// Writing: how many groups of that code are left under the present marker. Reading: 0.
    std::size_t left(int code);
    bool has(int code) { return left(code) > 0; }

    // Fields of one group, or of the two or three of a point.
    void bit(int code, std::optional<bool> omitted = {});
    void byte(int code, std::optional<int> omitted = {});
    void shortNumber(int code, std::optional<int> omitted = {});
    void longNumber(int code, std::optional<int> omitted = {});
    void real(int code, std::optional<double> omitted = {});
    void angle(int code, std::optional<double> omitted = {}); // degrees in groups, radians in bits
    void text(int code, std::optional<std::string_view> omitted = {});
    void point3(int code, std::optional<Vector3> omitted = {});
    void rawPoint2(int code);
    void rawPoint3(int code);
    void handle(int code, Reference kind); // a handle of 0 has no group
    /// A record of a table: by its name in groups, by its handle in bits.
    void name(int code, std::string_view kind, Reference reference = Reference::HardPointer,
              std::string_view omitted = {});

    // Those that many kinds have.
    void thickness();
    void extrusion(); // under 210
    /// An extrusion without the bit that spares the usual one.
    void plainExtrusion();

    RecordNames& names;
    Links links;
    /// Reading: the memory that the groups take, as Allowance counts it.
    std::size_t cost() const { return m_cost; }
    /// Writing: bits that were carried along unread will follow the fields.
    bool restFollows = false;

private:
    struct Section
    {
        std::string_view marker;
        std::size_t begin = 0;
        std::size_t end = 0;
        bool visited = false;
    };
    static constexpr std::size_t noSection = ~std::size_t(0);

    void give(PlacedGroup group);
    template <class Value> void field(int code, std::optional<Value> omitted, void (BitTransfer::*move)(Value& value));
    void splitSections();
    std::size_t unvisited(std::string_view marker) const;
    Section* current() { return m_current < m_sections.size() ? &m_sections[m_current] : nullptr; }
    PlacedGroup* next(int code);

    Record& m_record;
    std::vector<bool> m_used;
    std::vector<Section> m_sections;
    std::size_t m_current = 0;                      // beyond the sections: none of them
    std::unordered_map<int, std::size_t> m_cursors; // of the present section: where each code is looked for
    std::size_t m_mostGroups = 0;
    std::size_t m_cost = 0;
};

} // namespace drawing::dwg
