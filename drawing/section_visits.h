#pragma once

#include <cstddef>
#include <initializer_list>
#include <optional>
#include <string_view>
#include <vector>

namespace drawing {

/// The rule by which groups survive that no field holds. Reader and writer keep to it by visiting sections alike:
///
/// A record is a head and, behind it, sections, each begun by a subclass marker (group 100). An object's list of fields
/// names one marker after the other. Each naming visits the first section of that marker, or of one that is read for
/// it, that has not been visited yet.
/// - The reader takes fields out of the section that it visits. What is left of a section is kept under its marker. A
///   section is kept even with nothing left if it was never visited, so that it is not lost, or if its marker stands
///   more than once, so that the writer's visits meet the same section as the reader's did.
/// - The writer visits the kept groups, and writes them behind the fields of their section. What was never visited is
///   written behind all fields, with its marker.
/// - What is left of the head is kept under the marker "", and written before all sections.
/// - Releases before 13 have no markers, and all groups stand in the head. Every field is taken from there, and what is
///   left belongs to the marker named last, which is the one of the object's own class.
class SectionVisits
{
public:
    SectionVisits() = default;
    /// The markers of the sections in their order; the texts have to live as long as this.
    explicit SectionVisits(std::vector<std::string_view> markers);

    /// The section that naming this marker visits; nothing if there is none left.
    std::optional<std::size_t> visit(std::string_view marker, std::initializer_list<std::string_view> alsoRead = {});

    bool visited(std::size_t section) const { return m_visited[section]; }
    /// True if a section has to be kept though nothing is left of it.
    bool keptWhenEmpty(std::size_t section) const;

private:
    std::vector<std::string_view> m_markers;
    std::vector<bool> m_visited;
};

} // namespace drawing
