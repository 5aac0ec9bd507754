#include "standin/desk/drawing_session.h"

#include "drawing/flatten.h"

namespace desk {
namespace {

bool turnRaster(Edit& edit)
{
    auto present = standin::rasterState(edit.object);
    if (present == nullptr || !standin::restoreRaster(*edit.raster))
        return false;
    edit.raster = std::move(present);
    return true;
}

bool turn(Edit& edit)
{
    if (edit.raster != nullptr)
        return turnRaster(edit);
    const bool done = edit.added ? standin::eraseEntity(edit.object, standin::LayerLock::overridden)
                                 : standin::restoreEntity(edit.object);
    if (done)
        edit.added = !edit.added;
    return done;
}

// The sheet itself as a drawing file has it: the first of a layout's viewports, which is no object of its user's.
bool isSheet(const drawing::Entity& entity)
{
    const auto* viewport = dynamic_cast<const drawing::Viewport*>(&entity);
    return viewport && viewport->number == drawing::Viewport::sheetNumber;
}

} // namespace

standin::Failure DrawingSession::save(const std::filesystem::path& path, const ViewTransform& view,
                                      standin::SaveForm form)
{
    drawing::ViewportRecord& shown = standin::document().activeViewport();
    shown.center = {view.centre().x, view.centre().y};
    shown.height = view.height();
    shown.aspect = double(view.client().width) / view.client().height;
    standin::Failure failure = standin::saveDrawing(path, form);
    if (!failure)
        m_modified = false;
    return failure;
}

bool DrawingSession::inModelSpace() const
{
    const auto value = standin::systemVariable(L"TILEMODE");
    const auto* integer = value ? std::get_if<std::int16_t>(&*value) : nullptr;
    return integer == nullptr || *integer != 0;
}

const drawing::Block& DrawingSession::currentSpace() const
{
    const drawing::Document& document = standin::document();
    return inModelSpace() ? document.modelSpace() : document.paperSpace();
}

std::vector<drawing::Handle> DrawingSession::entitiesOfSpace() const
{
    const drawing::Document& document = standin::document();
    std::vector<drawing::Handle> found;
    for (const drawing::Handle handle : currentSpace().entities) {
        const auto* entity = document.find<drawing::Entity>(handle);
        if (entity != nullptr && drawing::isShown(document, *entity) && !isSheet(*entity))
            found.push_back(handle);
    }
    return found;
}

void DrawingSession::add(std::unique_ptr<drawing::Entity> entity)
{
    drawing::Document& document = standin::document();
    drawing::Block& space = inModelSpace() ? document.modelSpace() : document.paperSpace();
    entity->layer = document.header.text("$CLAYER", "0");
    const drawing::Entity& added = document.addEntity(space, std::move(entity));
    m_history.record({added.handle, true});
}

bool DrawingSession::erase(const std::vector<drawing::Handle>& entities)
{
    bool all = true;
    for (const drawing::Handle entity : entities) {
        if (!standin::eraseEntity(entity))
            all = false;
    }
    return all;
}

void DrawingSession::endOfCommand()
{
    for (const standin::DrawingChange& change : standin::takeChanges())
        m_history.record({change.object, change.added, change.before});
    m_history.commit();
}

bool DrawingSession::undo()
{
    return moveInHistory(&EditHistory::undo);
}

bool DrawingSession::redo()
{
    return moveInHistory(&EditHistory::redo);
}

bool DrawingSession::moveInHistory(bool (EditHistory::*move)(const EditHistory::Turn&))
{
    endOfCommand();
    const bool done = (m_history.*move)(turn);
    standin::takeChanges(); // what was taken back is no edit
    return done;
}

} // namespace desk
