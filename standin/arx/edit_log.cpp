#include "standin/arx/edit_log.h"

#include "imaging/bitmap.h"
#include "standin/arx/document_manager.h"
#include "standin/arx/imgdef.h"
#include "standin/arx/object_store.h"

namespace standin {

namespace {

AcDbRasterImageDef* definitionOf(AcDbDatabase& database, drawing::Handle handle)
{
    standin::ObjectSlot* slot = idOf(database, handle).slot();
    return slot ? dynamic_cast<AcDbRasterImageDef*>(objectOf(*slot)) : nullptr;
}

template <class Call> void forEachImage(const drawing::Document& document, drawing::Handle definition, Call call)
{
    for (const drawing::Handle record : document.table("BLOCK_RECORD").records) {
        const auto* block = document.find<drawing::Block>(record);
        for (const drawing::Handle entity : block ? block->entities : std::vector<drawing::Handle>()) {
            const auto* image = document.find<drawing::Image>(entity);
            if (image && image->definition == definition)
                call(*image);
        }
    }
}

std::shared_ptr<const RasterState> stateOf(AcDbDatabase& database, drawing::Handle handle)
{
    const AcDbRasterImageDef* definition = definitionOf(database, handle);
    const drawing::Document& document = database.state().document;
    const auto* record = document.find<drawing::ImageDefinition>(handle);
    if (!definition || !record)
        return nullptr;
    auto state = std::make_shared<RasterState>();
    state->definition = handle;
    if (const Atil::Image* image = definition->loadedImage())
        state->image = *image;
    state->pixels = record->pixels;
    state->pixelSize = record->pixelSize;
    forEachImage(document, handle, [&](const drawing::Image& image) { state->entities.push_back(image); });
    return state;
}

bool sameImage(const RasterState& one, const RasterState& other)
{
    return !one.image || !other.image || one.image->pixels() == other.image->pixels();
}

bool lieAlike(const drawing::Image& one, const drawing::Image& other)
{
    return one.handle == other.handle && one.position == other.position && one.u == other.u && one.v == other.v &&
           one.pixels == other.pixels && one.clip == other.clip && one.display == other.display;
}

bool same(const RasterState& one, const RasterState& other)
{
    return sameImage(one, other) &&
           std::equal(one.entities.begin(), one.entities.end(), other.entities.begin(), other.entities.end(), lieAlike);
}

// Whatever of it is open belongs to somebody who is at work on it.
bool inUse(AcDbDatabase& database, const RasterState& state)
{
    if (idOf(database, state.definition).slot()->open())
        return true;
    return std::any_of(state.entities.begin(), state.entities.end(),
                       [&](const drawing::Image& image) { return idOf(database, image.handle).slot()->open(); });
}

// An entity that is erased just now has its record as well.
void putBack(AcDbDatabase& database, const drawing::Image& before)
{
    auto* image = recordOf<drawing::Image>(idOf(database, before.handle));
    if (!image)
        return;
    image->position = before.position;
    image->u = before.u;
    image->v = before.v;
    image->pixels = before.pixels;
    image->clip = before.clip;
    image->display = before.display;
}

} // namespace

void EditLog::noteEntity(drawing::Handle entity, bool added)
{
    m_changes.push_back({entity, added, nullptr});
}

void EditLog::noteRaster(AcDbDatabase& database, drawing::Handle definition)
{
    if (m_rasters.count(definition) == 0)
        m_rasters[definition] = stateOf(database, definition);
}

std::vector<DrawingChange> EditLog::take(AcDbDatabase& database)
{
    std::vector<DrawingChange> changes = std::move(m_changes);
    m_changes.clear();
    const auto rasters = std::exchange(m_rasters, {});
    for (const auto& [definition, before] : rasters) {
        const auto now = before ? stateOf(database, definition) : nullptr;
        if (now && !same(*before, *now))
            changes.push_back({definition, false, before});
    }
    return changes;
}

void noteEntityChange(AcDbDatabase* database, drawing::Handle entity, bool added)
{
    if (documentManager().find(database))
        database->state().edits.noteEntity(entity, added);
}

void noteRasterChange(AcDbDatabase* database, drawing::Handle definition)
{
    if (documentManager().find(database))
        database->state().edits.noteRaster(*database, definition);
}

std::vector<DrawingChange> takeChanges()
{
    AcDbDatabase* database = drawingDatabase();
    return database ? database->state().edits.take(*database) : std::vector<DrawingChange>();
}

std::shared_ptr<const RasterState> rasterState(Handle definition)
{
    AcDbDatabase* database = drawingDatabase();
    return database ? stateOf(*database, definition) : nullptr;
}

bool restoreRaster(const RasterState& state)
{
    AcDbDatabase* database = drawingDatabase();
    AcDbRasterImageDef* definition = database ? definitionOf(*database, state.definition) : nullptr;
    auto* record = database ? recordOf<drawing::ImageDefinition>(idOf(*database, state.definition)) : nullptr;
    if (!definition || !record || inUse(*database, state))
        return false;
    idOf(*database, state.definition).slot()->writer = true;
    const bool done = !state.image || definition->putImage(*state.image);
    if (done) {
        record->pixels = state.pixels;
        record->pixelSize = state.pixelSize;
        for (const drawing::Image& image : state.entities)
            putBack(*database, image);
    }
    definition->close();
    return done;
}

PixelsHeld pixelsHeld(const RasterState& state)
{
    if (!state.image)
        return {};
    const auto pixels = state.image->pixels();
    return {pixels.get(), std::size_t(pixels->wordsPerRow()) * sizeof(std::uint64_t) * std::size_t(pixels->height())};
}

} // namespace standin
