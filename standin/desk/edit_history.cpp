#include "standin/desk/edit_history.h"

#include <utility>

namespace desk {
namespace {

// Puts each entity in (or out) as the edits say, in order; on a failure what was done is taken back.
bool applyAll(const EditGroup& edits, const EditHistory::Apply& apply)
{
    for (std::size_t i = 0; i < edits.size(); ++i) {
        if (apply(edits[i].entity, edits[i].added))
            continue;
        while (i-- > 0)
            apply(edits[i].entity, !edits[i].added);
        return false;
    }
    return true;
}

EditGroup reversed(const EditGroup& edits)
{
    EditGroup group;
    for (auto edit = edits.rbegin(); edit != edits.rend(); ++edit)
        group.push_back({edit->entity, !edit->added});
    return group;
}

} // namespace

void EditHistory::commit()
{
    if (m_open.empty())
        return;
    m_done.push_back(std::exchange(m_open, {}));
    m_undone.clear();
}

void EditHistory::clear()
{
    m_open.clear();
    m_done.clear();
    m_undone.clear();
}

bool EditHistory::undo(const Apply& apply)
{
    if (m_done.empty() || !applyAll(reversed(m_done.back()), apply))
        return false;
    m_undone.push_back(std::move(m_done.back()));
    m_done.pop_back();
    return true;
}

bool EditHistory::redo(const Apply& apply)
{
    if (m_undone.empty() || !applyAll(m_undone.back(), apply))
        return false;
    m_done.push_back(std::move(m_undone.back()));
    m_undone.pop_back();
    return true;
}

} // namespace desk
