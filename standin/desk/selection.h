#pragma once

#include <optional>
#include <set>
#include <vector>

#include "standin/desk/editor_windows.h"
#include "standin/desk/scene.h"

namespace desk {

/// The entities that are selected, and the window that is being drawn to select more of them.
class Selection
{
public:
    explicit Selection(EditorWindows& windows) : m_windows(windows) {}

    const std::set<drawing::Handle>& entities() const { return m_entities; }
    bool empty() const { return m_entities.empty(); }
    /// What is selected now, or was selected last.
    const std::vector<drawing::Handle>& latest() const { return m_latest; }

    void set(const std::vector<drawing::Handle>& entities);
    void clear();
    /// With the drawing all of it goes.
    void forget();
    void dropErased();

    /// Adds (or removes) what lies within `reach` of a drawing point, or begins a window there.
    void pick(const Scene& scene, Vec2 at, double reach, bool remove);
    /// Where the window began, in drawing units; nothing while none is drawn.
    std::optional<Vec2> windowCorner() const { return m_windowCorner; }
    /// The other corner of the window. From right to left it also takes what it only touches.
    void finishWindow(const Scene& scene, Vec2 corner);
    static bool crosses(Vec2 first, Vec2 second) { return second.x < first.x; }
    void cancelWindow() { m_windowCorner.reset(); }

private:
    void change(drawing::Handle entity, bool remove);
    void changed();

    EditorWindows& m_windows;
    std::set<drawing::Handle> m_entities;
    std::vector<drawing::Handle> m_latest;
    std::optional<Vec2> m_windowCorner;
    bool m_removeWithWindow = false;
};

} // namespace desk
