#pragma once

#include <functional>
#include <vector>

#include "standin/desk/editor_windows.h"
#include "standin/desk/view_transform.h"

namespace desk {

/// What the view shows, and the views before it.
class ViewHistory
{
public:
    explicit ViewHistory(EditorWindows& windows) : m_windows(windows) {}

    const ViewTransform& present() const { return m_present; }
    /// What is left unchanged by it is not remembered.
    void change(const std::function<void(ViewTransform&)>& change);
    /// Back to the view before the latest change, if there is one.
    void previous();
    /// The window has another size, which is no other view.
    void resize(imaging::Size client) { m_present.resize(client); }
    /// Another drawing: its own view, with none before it.
    void restart(Vec2 centre, double height);

private:
    EditorWindows& m_windows;
    ViewTransform m_present;
    std::vector<ViewTransform> m_former; // the oldest first
};

} // namespace desk
