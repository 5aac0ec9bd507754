#include "drawing/section_visits.h"

#include <algorithm>
#include <utility>

namespace drawing {

SectionVisits::SectionVisits(std::vector<std::string_view> markers)
    : m_markers(std::move(markers)), m_visited(m_markers.size())
{}

std::optional<std::size_t> SectionVisits::visit(std::string_view marker,
                                                std::initializer_list<std::string_view> alsoRead)
{
    for (std::size_t i = 0; i < m_markers.size(); ++i) {
        const bool named =
            m_markers[i] == marker || std::find(alsoRead.begin(), alsoRead.end(), m_markers[i]) != alsoRead.end();
        if (named && !m_visited[i]) {
            m_visited[i] = true;
            return i;
        }
    }
    return std::nullopt;
}

bool SectionVisits::keptWhenEmpty(std::size_t section) const
{
    return !m_visited[section] || std::count(m_markers.begin(), m_markers.end(), m_markers[section]) > 1;
}

} // namespace drawing
