// What the desk needs for painting and for its own edits.
#include "standin/arx/desk_services.h"
#include "standin/arx/imgdef.h"
#include "standin/arx/object_store.h"

namespace standin {

namespace {

standin::ObjectSlot* slotOf(Handle handle)
{
    AcDbDatabase* database = drawingDatabase();
    if (!database)
        return nullptr;
    const bool known = database->state().slots.count(handle) > 0;
    return known || database->state().document.find(handle) ? idOf(*database, handle).slot() : nullptr;
}

bool setErased(Handle handle, bool erased, LayerLock lock)
{
    standin::ObjectSlot* slot = slotOf(handle);
    AcDbObject* object = slot ? objectOf(*slot) : nullptr;
    if (!object || slot->open() || bool(slot->erased) == erased)
        return false;
    if (lock == LayerLock::heeded && onLockedLayer(*slot))
        return false;
    slot->writer = true;
    const bool done = object->erase(erased) == Acad::eOk;
    object->close();
    return done;
}

} // namespace

bool eraseEntity(Handle entity, LayerLock lock)
{
    return setErased(entity, true, lock);
}

bool restoreEntity(Handle entity)
{
    return setErased(entity, false, LayerLock::overridden);
}

bool entityErased(Handle entity)
{
    const standin::ObjectSlot* slot = slotOf(entity);
    return slot && slot->erased;
}

std::shared_ptr<const imaging::Bitmap> imagePixels(Handle imageEntity)
{
    standin::ObjectSlot* entity = slotOf(imageEntity);
    const auto* image = dynamic_cast<drawing::Image*>(recordOf(entity));
    standin::ObjectSlot* slot = image ? slotOf(image->definition) : nullptr;
    auto* definition = slot ? dynamic_cast<AcDbRasterImageDef*>(objectOf(*slot)) : nullptr;
    return definition ? definition->pixelsForPainting() : nullptr;
}

bool imageFramesShown()
{
    const AcDbDatabase* database = drawingDatabase();
    const auto* variables = database ? std::as_const(database->state().document).rasterVariables() : nullptr;
    return !variables || variables->frame != drawing::RasterVariables::frameOff;
}

} // namespace standin
