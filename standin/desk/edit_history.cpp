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
    if (open_.empty())
        return;
    done_.push_back(std::exchange(open_, {}));
    undone_.clear();
}

void EditHistory::clear()
{
    open_.clear();
    done_.clear();
    undone_.clear();
}

bool EditHistory::undo(const Apply& apply)
{
    if (done_.empty() || !applyAll(reversed(done_.back()), apply))
        return false;
    undone_.push_back(std::move(done_.back()));
    done_.pop_back();
    return true;
}

bool EditHistory::redo(const Apply& apply)
{
    if (undone_.empty() || !applyAll(undone_.back(), apply))
        return false;
    done_.push_back(std::move(undone_.back()));
    undone_.pop_back();
    return true;
}

} // namespace desk
