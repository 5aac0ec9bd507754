#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "drawing/object.h"

namespace drawing::dwg {

/// The names of table records by their handles, and the handles by their names: where DXF refers to a record by name,
/// this form does by handle.
class RecordNames
{
public:
    struct Record
    {
        std::string kind; // of the table: "LAYER", ...
        std::string name;
        Handle handle = 0;
    };

    /// `next`: the handle that the next record made by `obtain` gets.
    explicit RecordNames(Handle next = 0) : m_next(next) {}

    /// Throws DrawingError if the name is longer than any may be.
    void add(std::string_view kind, std::string_view name, Handle handle);
    /// Empty if there is no such record.
    const std::string& nameOf(Handle handle) const;
    /// The handle of the record; without regard to case. 0 if there is none.
    Handle find(std::string_view kind, std::string_view name) const;
    /// The same, but a record that is missing is noted down and given a handle.
    Handle obtain(std::string_view kind, std::string_view name);

    // Multiline styles tell a linetype by its place in the table; two numbers stand for ByLayer and ByBlock.
    void setLinetypes(std::vector<Handle> inOrder) { m_linetypes = std::move(inOrder); }
    int linetypeNumber(std::string_view name) const;
    std::string linetypeOfNumber(int number) const;

    /// The records that `obtain` noted down.
    const std::vector<Record>& made() const { return m_made; }
    Handle next() const { return m_next; }
    /// Takes the next handle for an object of another kind.
    Handle reserve() { return m_next++; }

private:
    std::unordered_map<Handle, std::string> m_names;
    std::unordered_map<std::string, Handle> m_handles; // by kind, a blank and the name in lower case
    std::vector<Record> m_made;
    std::vector<Handle> m_linetypes;
    Handle m_next;
};

} // namespace drawing::dwg
