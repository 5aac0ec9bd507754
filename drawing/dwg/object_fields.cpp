#include "drawing/dwg/object_fields.h"

#include <algorithm>
#include <numbers>

#include "drawing/dwg/allowance.h"
#include "drawing/error.h"
#include "drawing/numbers.h"

namespace drawing::dwg {

namespace {

constexpr int markerCode = 100;
constexpr std::string_view blockKind = "BLOCK_RECORD";
constexpr double degreesOfRadian = 180 / std::numbers::pi;

} // namespace

ObjectFields::ObjectFields(BitTransfer transfer, RecordNames& ofNames, Record& record, std::size_t mostGroups)
    : bits(std::move(transfer)), names(ofNames), m_record(record), m_mostGroups(mostGroups)
{}

ObjectFields::ObjectFields(Handle own, const TextEncoding& encoding, RecordNames& ofNames, Record& record)
    : bits(own, encoding), names(ofNames), m_record(record), m_used(record.groups.size())
{
    splitSections();
}

// The groups before the first marker are the head, under the marker "".
void ObjectFields::splitSections()
{
    const auto& groups = m_record.groups;
    m_sections.push_back({"", 0, groups.size()});
    for (std::size_t i = 0; i < groups.size(); ++i) {
        if (groups[i].code == markerCode) {
            m_sections.back().end = i;
            m_sections.push_back({groups[i].value, i + 1, groups.size()});
        }
    }
}

std::size_t ObjectFields::unvisited(std::string_view marker) const
{
    const auto found = std::find_if(m_sections.begin(), m_sections.end(),
                                    [&](const Section& each) { return each.marker == marker && !each.visited; });
    return found == m_sections.end() ? noSection : static_cast<std::size_t>(found - m_sections.begin());
}

void ObjectFields::marker(std::string_view name)
{
    if (reading()) {
        auto& groups = m_record.groups;
        groups.emplace_back(Group{markerCode, std::string(name)});
        m_sections.push_back({name, groups.size(), groups.size(), true});
        m_current = m_sections.size() - 1;
        return;
    }
    m_current = unvisited(name);
    m_cursors.clear();
    if (Section* const section = current()) {
        section->visited = true;
    }
}

void ObjectFields::again(std::string_view name)
{
    const auto found = std::find_if(m_sections.rbegin(), m_sections.rend(),
                                    [&](const Section& each) { return each.marker == name && each.visited; });
    m_current = found == m_sections.rend() ? noSection : static_cast<std::size_t>(m_sections.rend() - found) - 1;
    m_cursors.clear();
}

PlacedGroup* ObjectFields::next(int code)
{
    Section* const section = current();
    if (!section) {
        return nullptr;
    }
    // What was taken at the section's beginning is never looked at again.
    while (section->begin < section->end && m_used[section->begin]) {
        ++section->begin;
    }
    // In a long section each code is looked for where it was found last, so that the time does not grow as the square.
    constexpr std::size_t longSection = 64;
    std::size_t* const cursor = section->end - section->begin > longSection ? &m_cursors[code] : nullptr;
    for (std::size_t i = std::max(section->begin, cursor ? *cursor : 0); i < section->end; ++i) {
        if (m_record.groups[i].code == code && !m_used[i]) {
            m_used[i] = true;
            if (cursor) {
                *cursor = i + 1;
            }
            return &m_record.groups[i];
        }
    }
    if (cursor) {
        *cursor = section->end;
    }
    return nullptr;
}

std::vector<PlacedGroup> ObjectFields::takeAll(std::initializer_list<int> codes)
{
    std::vector<PlacedGroup> taken;
    const Section* const section = reading() ? nullptr : current();
    for (std::size_t i = section ? section->begin : 0; section && i < section->end; ++i) {
        if (!m_used[i] && std::find(codes.begin(), codes.end(), m_record.groups[i].code) != codes.end()) {
            m_used[i] = true;
            taken.push_back(m_record.groups[i]);
        }
    }
    return taken;
}

std::vector<PlacedGroup> ObjectFields::takeRest()
{
    std::vector<PlacedGroup> taken;
    const Section* const section = reading() ? nullptr : current();
    for (std::size_t i = section ? section->begin : 0; section && i < section->end; ++i) {
        if (!m_used[i]) {
            m_used[i] = true;
            taken.push_back(m_record.groups[i]);
        }
    }
    return taken;
}

std::size_t ObjectFields::left(int code)
{
    std::size_t count = 0;
    const Section* const section = reading() ? nullptr : current();
    for (std::size_t i = section ? section->begin : 0; section && i < section->end; ++i) {
        count += !m_used[i] && m_record.groups[i].code == code ? 1 : 0;
    }
    return count;
}

void ObjectFields::give(PlacedGroup group)
{
    if (!reading()) {
        return;
    }
    auto& groups = m_record.groups;
    expect(1);
    m_cost += Allowance::ofGroup + Allowance::ofText(group.value);
    if (m_sections.empty()) {
        groups.push_back(std::move(group));
        return;
    }
    groups.insert(groups.begin() + static_cast<std::ptrdiff_t>(m_sections[m_current].end), std::move(group));
    ++m_sections[m_current].end;
    for (std::size_t i = m_current + 1; i < m_sections.size(); ++i) {
        ++m_sections[i].begin;
        ++m_sections[i].end;
    }
}

void ObjectFields::expect(std::size_t count)
{
    auto& groups = m_record.groups;
    if (!reading() || count <= groups.capacity() - groups.size()) {
        return;
    }
    if (count > m_mostGroups || groups.size() > m_mostGroups - count) {
        throw DrawingError("an object has more values than one of its size can mean");
    }
    constexpr std::size_t fewGroups = 32;
    const std::size_t wanted = groups.size() + std::max({count, fewGroups, groups.size() / 2});
    groups.reserve(std::min(wanted, m_mostGroups));
}

void ObjectFields::give(int code, const std::string& value)
{
    if (reading()) {
        give(PlacedGroup(Group{code, value}));
    }
}

void ObjectFields::give(int code, double value)
{
    if (reading()) {
        give(PlacedGroup(code, value));
    }
}

void ObjectFields::give(int code, int value)
{
    if (reading()) {
        give(code, std::to_string(value));
    }
}

void ObjectFields::give(int code, const Vector2& value)
{
    give(code, value.x);
    give(code + 10, value.y);
}

void ObjectFields::give(int code, const Vector3& value)
{
    give(code, value.x);
    give(code + 10, value.y);
    give(code + 20, value.z);
}

void ObjectFields::giveHandle(int code, Handle value)
{
    if (reading()) {
        give(code, formatHandle(value));
    }
}

bool ObjectFields::take(int code, std::string& value)
{
    const PlacedGroup* group = reading() ? nullptr : next(code);
    if (group) {
        value = group->plain().value;
    }
    return group != nullptr;
}

bool ObjectFields::take(int code, double& value)
{
    const PlacedGroup* group = reading() ? nullptr : next(code);
    if (group) {
        value = group->real();
    }
    return group != nullptr;
}

bool ObjectFields::take(int code, int& value)
{
    const PlacedGroup* group = reading() ? nullptr : next(code);
    if (group) {
        value = group->integer();
    }
    return group != nullptr;
}

bool ObjectFields::take(int code, Vector2& value)
{
    const bool found = take(code, value.x);
    take(code + 10, value.y);
    return found;
}

bool ObjectFields::take(int code, Vector3& value)
{
    const bool found = take(code, value.x);
    take(code + 10, value.y);
    take(code + 20, value.z);
    return found;
}

bool ObjectFields::takeAhead(std::string_view markerAhead, int code, int& value)
{
    const std::size_t present = m_current;
    m_current = unvisited(markerAhead);
    m_cursors.clear();
    const bool found = take(code, value);
    m_current = present;
    m_cursors.clear();
    return found;
}

bool ObjectFields::takeHandle(int code, Handle& value)
{
    const PlacedGroup* group = reading() ? nullptr : next(code);
    if (group) {
        value = group->handleValue();
    }
    return group != nullptr;
}

namespace {

template <class Value> void giveUnless(ObjectFields& f, int code, const Value& value, std::optional<Value> omitted)
{
    if (!omitted || value != *omitted) {
        f.give(code, value);
    }
}

} // namespace

void ObjectFields::bit(int code, std::optional<bool> omitted)
{
    int number = omitted.value_or(false) ? 1 : 0;
    take(code, number);
    bool value = number != 0;
    bits.bit(value);
    giveUnless(*this, code, value ? 1 : 0, omitted ? std::optional<int>(*omitted ? 1 : 0) : std::nullopt);
}

template <class Value>
void ObjectFields::field(int code, std::optional<Value> omitted, void (BitTransfer::*move)(Value&))
{
    Value value = omitted.value_or(Value());
    take(code, value);
    (bits.*move)(value);
    giveUnless(*this, code, value, omitted);
}

void ObjectFields::byte(int code, std::optional<int> omitted)
{
    field(code, omitted, &BitTransfer::byte);
}

void ObjectFields::shortNumber(int code, std::optional<int> omitted)
{
    field(code, omitted, &BitTransfer::shortNumber);
}

void ObjectFields::longNumber(int code, std::optional<int> omitted)
{
    field(code, omitted, &BitTransfer::longNumber);
}

void ObjectFields::real(int code, std::optional<double> omitted)
{
    field(code, omitted, &BitTransfer::real);
}

void ObjectFields::angle(int code, std::optional<double> omitted)
{
    double value = omitted.value_or(0);
    take(code, value);
    value /= degreesOfRadian;
    bits.real(value);
    giveUnless(*this, code, value * degreesOfRadian, omitted);
}

void ObjectFields::text(int code, std::optional<std::string_view> omitted)
{
    field(code, omitted ? std::optional<std::string>(*omitted) : std::nullopt, &BitTransfer::text);
}

void ObjectFields::point3(int code, std::optional<Vector3> omitted)
{
    Vector3 value = omitted.value_or(Vector3{});
    take(code, value);
    bits.point(value);
    giveUnless(*this, code, value, omitted);
}

void ObjectFields::rawPoint2(int code)
{
    Vector2 value;
    take(code, value);
    bits.rawFlatPoint(value);
    give(code, value);
}

void ObjectFields::rawPoint3(int code)
{
    Vector3 value;
    take(code, value);
    bits.rawReal(value.x);
    bits.rawReal(value.y);
    bits.rawReal(value.z);
    give(code, value);
}

void ObjectFields::handle(int code, Reference kind)
{
    Handle value = 0;
    takeHandle(code, value);
    bits.handle(value, kind);
    if (value != 0) {
        giveHandle(code, value);
    }
}

void ObjectFields::name(int code, std::string_view kind, Reference reference, std::string_view omitted)
{
    std::string value(omitted);
    take(code, value);
    Handle record = 0;
    if (!reading() && kind == blockKind) {
        record = names.find(kind, value);
        if (record == 0) {
            throw DrawingError("the block " + value + " is missing");
        }
    } else if (!reading() && !value.empty()) {
        record = names.obtain(kind, value);
    }
    bits.handle(record, reference);
    const std::string& read = names.nameOf(record);
    if (reading() && !read.empty() && read != omitted) {
        give(code, read);
    }
}

void ObjectFields::thickness()
{
    double value = 0;
    take(39, value);
    bool flat = value == 0;
    bits.bit(flat);
    if (!flat) {
        bits.real(value);
        give(39, value);
    }
}

void ObjectFields::extrusion()
{
    Vector3 value = worldZAxis;
    take(210, value);
    bool usual = value == worldZAxis;
    bits.bit(usual);
    if (!usual) {
        bits.point(value);
        give(210, value);
    }
}

void ObjectFields::plainExtrusion()
{
    point3(210, worldZAxis);
}

} // namespace drawing::dwg
