#include "standin/desk/selection.h"

#include "standin/host.h"

namespace desk {

void Selection::set(const std::vector<drawing::Handle>& entities)
{
    m_entities = {entities.begin(), entities.end()};
    changed();
}

void Selection::clear()
{
    m_entities.clear();
    changed();
}

void Selection::forget()
{
    m_entities.clear();
    m_latest.clear();
    m_windowCorner.reset();
}

void Selection::dropErased()
{
    std::erase_if(m_entities, [](drawing::Handle entity) { return standin::entityErased(entity); });
}

void Selection::pick(const Scene& scene, Vec2 at, double reach, bool remove)
{
    const drawing::Handle found = scene.pick(at, reach);
    if (found == 0) {
        m_windowCorner = at;
        m_removeWithWindow = remove;
        return;
    }
    change(found, remove);
    changed();
}

void Selection::finishWindow(const Scene& scene, Vec2 corner)
{
    Box window;
    window.add(*m_windowCorner);
    window.add(corner);
    const bool crossing = crosses(*m_windowCorner, corner);
    m_windowCorner.reset();
    for (const drawing::Handle entity : scene.pickWindow(window, crossing))
        change(entity, m_removeWithWindow);
    changed();
}

void Selection::change(drawing::Handle entity, bool remove)
{
    if (remove) {
        m_entities.erase(entity);
    } else {
        m_entities.insert(entity);
    }
}

void Selection::changed()
{
    if (!m_entities.empty())
        m_latest.assign(m_entities.begin(), m_entities.end());
    m_windows.overlayChanged();
    m_windows.stateChanged();
}

} // namespace desk
