// The editor around the drawing: opening, saving and leaving it, its spaces, and what shows of it.

#include <windows.h>

#include "standin/desk/editor.h"

namespace desk {

bool Editor::openDrawing(const std::filesystem::path& path)
{
    forgetDrawing();
    if (const standin::Failure failure = m_session.open(path)) {
        m_windows.closeDrawingWindow();
        m_windows.stateChanged();
        m_windows.alert(*failure);
        return false;
    }
    showOpenedDrawing();
    for (const std::wstring& note : standin::drawingNotes())
        print(note);
    return true;
}

void Editor::showOpenedDrawing()
{
    m_windows.openDrawingWindow();
    m_scenes.drop();
    const drawing::ViewportRecord& shown = standin::document().activeViewport();
    m_views.restart({shown.center.x, shown.center.y}, shown.height);
    if (!scene().extents().empty() && !view().visible().overlaps(scene().extents()))
        zoomExtents();
    m_windows.drawingChanged();
    m_windows.stateChanged();
}

bool Editor::saveDrawing(const std::filesystem::path& path)
{
    if (const standin::Failure failure = m_session.save(path, view())) {
        m_windows.alert(*failure);
        return false;
    }
    print(L"Saved " + path.wstring());
    m_windows.stateChanged();
    return true;
}

void Editor::closeDrawing()
{
    forgetDrawing();
    m_session.close();
    m_windows.closeDrawingWindow();
}

void Editor::forgetDrawing()
{
    m_selection.forget();
    m_pending.clear();
    m_scenes.drop();
}

bool Editor::mayDiscard()
{
    if (!standin::drawingOpen() || !m_session.modified())
        return true;
    const std::filesystem::path path = standin::drawingPath();
    switch (m_windows.askToSave(path.empty() ? L"the new drawing" : path.filename().wstring())) {
    case IDYES: {
        const auto target = path.empty() ? m_windows.askForDrawing(true) : path;
        return target && saveDrawing(*target);
    }
    case IDNO:
        return true;
    default:
        return false;
    }
}

void Editor::drawingChanged()
{
    m_session.markModified();
    regenerate();
}

void Editor::regenerate()
{
    if (standin::drawingOpen())
        m_selection.dropErased();
    m_scenes.drop();
    m_windows.drawingChanged();
}

void Editor::zoomExtents()
{
    const Box extents = scene().extents();
    m_views.change([&](ViewTransform& view) { view.fit(extents, 0.04); });
}

void Editor::showSpace(bool model)
{
    standin::setSystemVariable(L"TILEMODE", std::int16_t(model ? 1 : 0));
    spaceChanged();
}

void Editor::spaceChanged()
{
    m_selection.clear();
    drawingChanged();
    zoomExtents();
}

} // namespace desk
