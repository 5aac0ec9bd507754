#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <string>
#include <string_view>

#include "drawing/document.h"
#include "drawing/mendings.h"

namespace drawing {

/// Counts the objects for which a form of file has no place, by the name of their kind.
class LeftOut
{
public:
    void add(std::string_view name) { ++m_counts[std::string(name)]; }
    /// Adds the entities of all blocks, and the objects of no block and no table, that have no place.
    void addListed(const Document& document, const std::function<bool(const Object&)>& hasPlace);

    /// A sentence that names all kinds, or none. `form`: as in "... has no place for them".
    Notes notes(std::string_view form) const;

private:
    std::map<std::string, std::size_t> m_counts;
};

} // namespace drawing
