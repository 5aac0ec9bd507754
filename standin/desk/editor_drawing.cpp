// The editor around the drawing: opening, saving and leaving it, its spaces, and what shows of it.

#include <windows.h>
#include <algorithm>

#include "standin/desk/editor.h"

namespace desk {

OpenDrawing* Editor::find(standin::DrawingId drawing) const
{
    for (const auto& each : m_drawings) {
        if (each->id == drawing)
            return each.get();
    }
    return nullptr;
}

bool Editor::openDrawing(const std::filesystem::path& path)
{
    endOfEdit();
    if (!path.empty() && showIfOpen(path))
        return true;
    if (const standin::Failure failure = standin::addDrawing(path)) {
        m_windows.alert(*failure);
        return false;
    }
    m_drawings.push_back(std::make_unique<OpenDrawing>(standin::activeDrawing(), m_windows, m_fonts));
    makeActive(*m_drawings.back());
    showOpenedDrawing();
    for (const std::wstring& note : standin::drawingNotes())
        print(note);
    if (!path.empty())
        m_windows.fileUsed(path);
    return true;
}

bool Editor::showIfOpen(const std::filesystem::path& path)
{
    for (const auto& each : m_drawings) {
        std::error_code error;
        if (!std::filesystem::equivalent(standin::drawingPath(each->id), path, error))
            continue;
        print(path.wstring() + L" is open already.");
        standin::activateDrawing(each->id);
        makeActive(*each);
        return true;
    }
    return false;
}

// What the host is told comes first: the windows ask it as soon as they are shown.
void Editor::makeActive(OpenDrawing& drawing)
{
    m_active->selection.cancelWindow();
    m_active = &drawing;
    // A module may have changed it while another one was shown.
    m_active->scenes.drop();
    m_windows.showDrawingWindow(drawing.id);
    m_windows.drawingChanged();
    m_windows.stateChanged();
}

void Editor::showOpenedDrawing()
{
    const drawing::ViewportRecord& shown = standin::document().activeViewport();
    views().restart({shown.center.x, shown.center.y}, shown.height);
    // What the file says of the view is that of the model space.
    const bool seen = session().inModelSpace() && view().visible().overlaps(scene().extents());
    if (!scene().extents().empty() && !seen)
        zoomExtents();
    m_windows.drawingChanged();
}

void Editor::showDrawing(standin::DrawingId drawing)
{
    OpenDrawing* const next = find(drawing);
    if (next == nullptr || next == m_active)
        return;
    if (m_running > 0) {
        if (m_prompter.present() == nullptr)
            return;
        m_toShow = drawing;
    }
    m_queue.clear();
    cancelCommand();
    if (m_running > 0)
        return;
    endOfEdit();
    standin::activateDrawing(drawing);
    makeActive(*next);
}

void Editor::showNextDrawing(int steps)
{
    const auto present =
        std::find_if(m_drawings.begin(), m_drawings.end(), [this](const auto& each) { return each.get() == m_active; });
    if (present == m_drawings.end())
        return;
    const auto count = static_cast<int>(m_drawings.size());
    const int next = (static_cast<int>(present - m_drawings.begin()) + steps) % count;
    showDrawing(m_drawings[static_cast<std::size_t>((next + count) % count)]->id);
}

bool Editor::modified(standin::DrawingId drawing) const
{
    const OpenDrawing* found = find(drawing);
    return found != nullptr && found->modified();
}

bool Editor::saveDrawing(const std::filesystem::path& path, standin::SaveForm form)
{
    if (const standin::Failure failure = m_active->session.save(path, view(), form)) {
        m_windows.alert(*failure);
        return false;
    }
    print(L"Saved " + path.wstring());
    for (const std::wstring& note : standin::drawingNotes())
        print(note);
    m_windows.fileUsed(path);
    m_windows.stateChanged();
    return true;
}

void Editor::closeDrawing()
{
    if (m_active == &m_noDrawing)
        return;
    m_active->selection.forget();
    m_active->pending.clear();
    m_active->scenes.drop();
    standin::closeDrawing();
    const auto gone =
        std::find_if(m_drawings.begin(), m_drawings.end(), [this](const auto& each) { return each.get() == m_active; });
    const std::unique_ptr<OpenDrawing> closed = std::move(*gone);
    m_drawings.erase(gone);
    m_active = &m_noDrawing;
    if (OpenDrawing* before = find(standin::activeDrawing()))
        makeActive(*before);
    m_windows.closeDrawingWindow(closed->id);
    m_windows.stateChanged();
}

bool Editor::mayDiscard()
{
    if (!m_active->modified())
        return true;
    const std::filesystem::path path = standin::drawingPath();
    switch (m_windows.askToSave(path.empty() ? L"the new drawing" : path.filename().wstring())) {
    case IDYES: {
        if (!path.empty())
            return saveDrawing(path, standin::SaveForm::OfFile);
        const auto target = m_windows.askForDrawing(true);
        return target && saveDrawing(*target);
    }
    case IDNO:
        return true;
    default:
        return false;
    }
}

bool Editor::mayDiscardAll()
{
    for (const standin::DrawingId drawing : standin::openDrawings()) {
        if (!modified(drawing))
            continue;
        showDrawing(drawing);
        if (!mayDiscard())
            return false;
    }
    return true;
}

void Editor::drawingChanged()
{
    m_active->session.markModified();
    regenerate();
}

void Editor::hostChangedDrawing()
{
    regenerate();
    m_windows.wake();
}

void Editor::regenerate()
{
    // The host has another active drawing for a moment while one is being opened or closed.
    if (m_active->id != standin::activeDrawing())
        return;
    if (standin::drawingOpen())
        m_active->selection.dropErased();
    m_active->scenes.drop();
    m_windows.drawingChanged();
}

void Editor::zoomExtents()
{
    const Box extents = scene().extents();
    m_active->views.change([&](ViewTransform& view) { view.fit(extents, 0.04); });
}

void Editor::showSpace(bool model)
{
    standin::setSystemVariable(L"TILEMODE", std::int16_t(model ? 1 : 0));
    spaceChanged();
}

void Editor::spaceChanged()
{
    m_active->selection.clear();
    drawingChanged();
    zoomExtents();
}

} // namespace desk
