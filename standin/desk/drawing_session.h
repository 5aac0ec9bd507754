#pragma once

#include <filesystem>
#include <memory>
#include <vector>

#include "drawing/document.h"
#include "standin/desk/edit_history.h"
#include "standin/desk/view_transform.h"
#include "standin/host.h"

namespace desk {

/// An open drawing as the desk works on it while it is the active one: its file, the space that is shown, the edits
/// that can be taken back, and whether all of it is saved.
class DrawingSession
{
public:
    /// With the view, which is shown again when the drawing is opened next.
    standin::Failure save(const std::filesystem::path& path, const ViewTransform& view, standin::SaveForm form);

    /// The desk itself has changed something since the drawing was opened or saved; what was changed through the host's
    /// API the host knows.
    bool markedModified() const { return m_modified; }
    void markModified() { m_modified = true; }

    bool inModelSpace() const;
    /// Of the open drawing.
    const drawing::Block& currentSpace() const;
    /// All that can be erased of the space, whether it is painted or not.
    std::vector<drawing::Handle> entitiesOfSpace() const;

    /// Goes to the current layer of the space that is shown.
    void add(std::unique_ptr<drawing::Entity> entity);
    /// False if one of them is in use and was left.
    bool erase(const std::vector<drawing::Handle>& entities);
    /// What was changed since the last call, by the desk or by modules, can be undone as one.
    void endOfCommand();
    /// False if there is nothing to be taken back (or done again), or it can't be done now.
    bool undo();
    bool redo();
    EditHistory& history() { return m_history; }
    const EditHistory& history() const { return m_history; }

private:
    bool moveInHistory(bool (EditHistory::*move)(const EditHistory::Turn&));

    EditHistory m_history;
    bool m_modified = false;
};

} // namespace desk
