#include "drawing/field_reader.h"

#include <algorithm>

#include "drawing/error.h"

namespace drawing {

namespace {

constexpr int markerCode = 100;
constexpr int embeddedCode = 101;
constexpr int applicationCode = 102;
constexpr int ownerCode = 330;
constexpr int firstExtendedCode = 1000;
constexpr int applicationNameCode = 1001;

int handleCode(const Record& record)
{
    return record.name == "DIMSTYLE" ? 105 : 5;
}

} // namespace

FieldReader::FieldReader(Record& record) : m_record(record), m_used(record.groups.size()), m_end(record.groups.size())
{}

void FieldReader::read(Object& object)
{
    splitTail(object);
    splitSections();
    readHead(object);
    object.fields(*this);
    if (auto* entity = dynamic_cast<Entity*>(&object)) {
        readStrayProperties(*entity);
    }
    keepRest(object);
}

// Extended data closes a record, after an embedded object if there is one.
void FieldReader::splitTail(Object& object)
{
    const auto& groups = m_record.groups;
    std::size_t extended = groups.size();
    while (extended > 0 && groups[extended - 1].code >= firstExtendedCode) {
        --extended;
    }
    while (extended < groups.size() && groups[extended].code != applicationNameCode) {
        ++extended;
    }
    const auto plain = [](const PlacedGroup& group) { return group.plain(); };
    std::transform(groups.begin() + static_cast<std::ptrdiff_t>(extended), groups.end(),
                   std::back_inserter(object.extendedData), plain);
    m_end = extended;
    const auto first = groups.begin();
    const auto last = first + static_cast<std::ptrdiff_t>(extended);
    const auto embedded = std::find_if(
        first, last, [](const PlacedGroup& g) { return g.code == embeddedCode && g.value == "Embedded Object"; });
    std::transform(embedded, last, std::back_inserter(object.embedded), plain);
    m_end = static_cast<std::size_t>(embedded - first);
}

void FieldReader::splitSections()
{
    m_sections.push_back({"", 0, m_end});
    for (std::size_t i = 0; i < m_end; ++i) {
        if (m_record.groups[i].code == markerCode) {
            m_sections.back().end = i;
            m_sections.push_back({m_record.groups[i].value, i + 1, m_end});
        }
    }
    std::vector<std::string_view> markers;
    for (const Section& section : m_sections) {
        markers.push_back(section.marker);
    }
    m_visits = SectionVisits(std::move(markers));
    m_visits.visit("");
}

void FieldReader::readHead(Object& object)
{
    auto& groups = m_record.groups;
    bool ownerSeen = false;
    bool handleSeen = false;
    for (std::size_t i = 0; i < m_sections[0].end; ++i) {
        const int code = groups[i].code;
        if (code == handleCode(m_record) && !handleSeen) {
            object.handle = groups[i].handleValue();
            handleSeen = m_used[i] = true;
        } else if (code == ownerCode && !ownerSeen) {
            object.owner = groups[i].handleValue();
            ownerSeen = m_used[i] = true;
        } else if (code == applicationCode && groups[i].value.starts_with('{')) {
            readApplicationGroup(object, i);
        }
    }
}

void FieldReader::readApplicationGroup(Object& object, std::size_t& index)
{
    auto& groups = m_record.groups;
    const std::size_t begin = index;
    std::size_t end = begin + 1;
    while (end < m_sections[0].end && !(groups[end].code == applicationCode && groups[end].value == "}")) {
        ++end;
    }
    if (end == m_sections[0].end) {
        throw DrawingError(groups[begin].line, "the application group " + groups[begin].value + " is not closed");
    }
    for (std::size_t i = begin + 1; i < end; ++i) {
        if (groups[begin].value == "{ACAD_REACTORS" && groups[i].code == ownerCode) {
            object.reactors.push_back(groups[i].handleValue());
        } else if (groups[begin].value == "{ACAD_XDICTIONARY") {
            object.extensionDictionary = groups[i].handleValue();
        }
    }
    if (groups[begin].value != "{ACAD_REACTORS" && groups[begin].value != "{ACAD_XDICTIONARY") {
        for (std::size_t i = begin; i <= end; ++i) {
            object.applicationGroups.push_back(groups[i].plain());
        }
    }
    std::fill(m_used.begin() + static_cast<std::ptrdiff_t>(begin),
              m_used.begin() + static_cast<std::ptrdiff_t>(end) + 1, true);
    index = end;
}

// Some programs write the properties of all entities under the marker of the entity's own class.
void FieldReader::readStrayProperties(Entity& entity)
{
    Record strays{m_record.name, m_record.line, takeStrayProperties()};
    if (!strays.groups.empty()) {
        FieldReader reader(strays);
        reader.splitSections();
        reader.context = context;
        entity.properties(reader);
        context = reader.context;
    }
}

// The first of each property that is not said where it belongs. In a section whose fields are known it is what none of
// them has taken; in another only what stands right behind the marker, since further on its code may mean anything.
std::vector<PlacedGroup> FieldReader::takeStrayProperties()
{
    const auto isProperty = [](const PlacedGroup& group) {
        return std::find(propertyCodes.begin(), propertyCodes.end(), group.code) != propertyCodes.end();
    };
    const auto& groups = m_record.groups;
    std::vector<PlacedGroup> strays;
    std::vector<int> said; // of the properties, so that there are few
    const auto isSaid = [&](int code) { return std::find(said.begin(), said.end(), code) != said.end(); };
    for (const Section& section : m_sections) {
        for (std::size_t i = section.begin; i < section.end && section.marker == entityMarker; ++i) {
            if (isProperty(groups[i]) && !isSaid(groups[i].code)) {
                said.push_back(groups[i].code);
            }
        }
    }
    for (std::size_t number = 0; number < m_sections.size(); ++number) {
        const Section& section = m_sections[number];
        for (std::size_t i = section.begin; i < section.end; ++i) {
            if (!m_visits.visited(number) && !isProperty(groups[i])) {
                break;
            }
            if (!m_used[i] && isProperty(groups[i]) && !isSaid(groups[i].code)) {
                m_used[i] = true;
                said.push_back(groups[i].code);
                strays.push_back(groups[i]);
            }
        }
    }
    return strays;
}

void FieldReader::keepRest(Object& object)
{
    for (std::size_t number = 0; number < m_sections.size(); ++number) {
        const Section& section = m_sections[number];
        KeptGroups kept{std::string(m_sections.size() == 1 ? m_lastMarker : section.marker), {}};
        const auto place = [&](std::size_t index) { return m_used.begin() + static_cast<std::ptrdiff_t>(index); };
        kept.groups.reserve(static_cast<std::size_t>(std::count(place(section.begin), place(section.end), false)));
        for (std::size_t i = section.begin; i < section.end; ++i) {
            if (!m_used[i]) {
                kept.groups.push_back(std::move(m_record.groups[i]).plain());
            }
        }
        if (!kept.groups.empty() || m_visits.keptWhenEmpty(number)) {
            object.kept.push_back(std::move(kept));
        }
    }
}

void FieldReader::subclass(std::string_view marker, std::initializer_list<std::string_view> alsoRead)
{
    constexpr std::size_t headPart = 0;
    m_lastMarker = marker;
    m_current = m_visits.visit(marker, alsoRead).value_or(headPart);
}

PlacedGroup* FieldReader::next(int code)
{
    const Section& section = m_sections[m_current];
    for (std::size_t i = section.begin; i < section.end; ++i) {
        if (m_record.groups[i].code == code && !m_used[i]) {
            m_used[i] = true;
            return &m_record.groups[i];
        }
    }
    return nullptr;
}

void FieldReader::real(int code, double& value, std::optional<double>)
{
    if (const PlacedGroup* group = next(code)) {
        value = group->real();
    }
}

void FieldReader::integer(int code, int& value, std::optional<int>)
{
    if (const PlacedGroup* group = next(code)) {
        value = group->integer();
    }
}

void FieldReader::boolean(int code, bool& value, std::optional<bool>)
{
    if (const PlacedGroup* group = next(code)) {
        value = group->boolean();
    }
}

void FieldReader::string(int code, std::string& value, std::optional<std::string_view>)
{
    if (const PlacedGroup* group = next(code)) {
        value = group->plain().value;
    }
}

void FieldReader::handle(int code, Handle& value)
{
    if (const PlacedGroup* group = next(code)) {
        value = group->handleValue();
    }
}

void FieldReader::point(int code, Vector2& value)
{
    real(code, value.x, {});
    real(code + 10, value.y, {});
}

void FieldReader::point(int code, Vector3& value, std::optional<Vector3>)
{
    real(code, value.x, {});
    real(code + 10, value.y, {});
    real(code + 20, value.z, {});
}

void FieldReader::maybe(int code, std::optional<double>& value)
{
    if (const PlacedGroup* group = next(code)) {
        value = group->real();
    }
}

void FieldReader::maybe(int code, std::optional<int>& value)
{
    if (const PlacedGroup* group = next(code)) {
        value = group->integer();
    }
}

void FieldReader::maybe(int code, std::optional<Vector3>& value)
{
    if (const PlacedGroup* group = next(code)) {
        Vector3 found{group->real(), 0, 0};
        real(code + 10, found.y, {});
        real(code + 20, found.z, {});
        value = found;
    }
}

std::vector<PlacedGroup> FieldReader::take(std::initializer_list<int> codes)
{
    std::vector<PlacedGroup> taken;
    const Section& section = m_sections[m_current];
    const auto isWanted = [&](std::size_t i) {
        return !m_used[i] && std::find(codes.begin(), codes.end(), m_record.groups[i].code) != codes.end();
    };
    std::size_t count = 0;
    for (std::size_t i = section.begin; i < section.end; ++i) {
        count += isWanted(i) ? 1 : 0;
    }
    taken.reserve(count);
    for (std::size_t i = section.begin; i < section.end; ++i) {
        if (isWanted(i)) {
            m_used[i] = true;
            taken.push_back(std::move(m_record.groups[i]));
        }
    }
    return taken;
}

} // namespace drawing
