#pragma once

#include <filesystem>
#include <memory>
#include <vector>

#include "drawing/document.h"
#include "standin/desk/edit_history.h"
#include "standin/desk/view_transform.h"
#include "standin/host.h"

namespace desk {

/// The open drawing as the desk works on it: its file, the space that is shown, the desk's own edits, and whether all
/// of it is saved.
class DrawingSession
{
public:
    /// An empty path makes a new drawing. After a failure none is open.
    standin::Failure open(const std::filesystem::path& path);
    /// With the view, which is shown again when the drawing is opened next.
    standin::Failure save(const std::filesystem::path& path, const ViewTransform& view);
    void close();

    /// Something was changed since the drawing was opened or saved.
    bool modified() const;
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
    /// What was added and erased since the last call can be undone as one.
    void endOfCommand() { m_history.commit(); }
    /// False if there is nothing to be taken back (or done again), or it can't be done now.
    bool undo();
    bool redo();

private:
    void forget();

    EditHistory m_history;
    bool m_modified = false; // by the desk itself; the host knows of what it changed
};

} // namespace desk
