#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "drawing/document.h"
#include "drawing/dwg/class_section.h"

namespace drawing::dwg {

/// The classes of a file to be written: the drawing's own, and those that every drawing needs.
class ClassList
{
public:
    explicit ClassList(const Document& document);

    const std::vector<ObjectClass>& all() const { return m_classes; }
    /// The type of the objects of that record name, and of that class unless it is empty; 0 if there is none.
    int typeOf(std::string_view recordName, std::string_view className = {}) const;

private:
    void add(ObjectClass each);

    std::vector<ObjectClass> m_classes;
    std::unordered_map<std::string, int> m_types; // by the record's name, and by it, a zero and the class's
};

} // namespace drawing::dwg
