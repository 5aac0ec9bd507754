#pragma once

#include <cstdint>
#include <functional>
#include <vector>

namespace desk {

/// One change of the drawing by the desk itself.
struct Edit
{
    std::uint64_t entity = 0;
    bool added = false; // false: erased

    friend bool operator==(const Edit&, const Edit&) = default;
};

/// What one command changed, in the order in which it did so.
using EditGroup = std::vector<Edit>;

/// The desk's own edits, for Undo and Redo. What modules change is not among them.
class EditHistory
{
public:
    /// Carries out one edit: puts the entity into the drawing or takes it out. False if it can't be done now.
    using Apply = std::function<bool(std::uint64_t entity, bool present)>;

    /// Gathers edits until commit; an empty group is dropped.
    void record(Edit edit) { m_open.push_back(edit); }
    void commit();
    void clear();

    bool canUndo() const { return !m_done.empty(); }
    bool canRedo() const { return !m_undone.empty(); }
    /// Takes the latest group back, its last edit first; redo carries it out again. False if there is none or an edit
    /// could not be carried out; then the edits before it are put back and the history stays as it was.
    bool undo(const Apply& apply);
    bool redo(const Apply& apply);

private:
    EditGroup m_open;
    std::vector<EditGroup> m_done, m_undone;
};

} // namespace desk
