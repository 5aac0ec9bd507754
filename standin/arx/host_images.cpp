// What the desk needs for painting and for its own edits.
#include "standin/arx/desk_services.h"
#include "standin/arx/imgdef.h"
#include "standin/arx/object_store.h"

namespace standin {

namespace {

AcDbStub* stubOf(Handle handle)
{
    AcDbDatabase* database = drawingDatabase();
    if (!database)
        return nullptr;
    const bool known = database->state().stubs.count(handle) > 0;
    return known || database->state().document.find(handle) ? idOf(*database, handle).stub() : nullptr;
}

bool setErased(Handle handle, bool erased)
{
    AcDbStub* stub = stubOf(handle);
    AcDbObject* object = stub ? objectOf(*stub) : nullptr;
    if (!object || stub->open() || bool(stub->erased) == erased)
        return false;
    stub->writer = true;
    const bool done = object->erase(erased) == Acad::eOk;
    object->close();
    return done;
}

} // namespace

bool eraseEntity(Handle entity)
{
    return setErased(entity, true);
}

bool restoreEntity(Handle entity)
{
    return setErased(entity, false);
}

bool entityErased(Handle entity)
{
    const AcDbStub* stub = stubOf(entity);
    return stub && stub->erased;
}

std::shared_ptr<const imaging::Bitmap> imagePixels(Handle imageEntity)
{
    AcDbStub* entity = stubOf(imageEntity);
    const auto* image = dynamic_cast<drawing::Image*>(recordOf(entity));
    AcDbStub* stub = image ? stubOf(image->definition) : nullptr;
    auto* definition = stub ? dynamic_cast<AcDbRasterImageDef*>(objectOf(*stub)) : nullptr;
    return definition ? definition->pixelsForPainting() : nullptr;
}

bool imageFramesShown()
{
    const AcDbDatabase* database = drawingDatabase();
    const auto* variables = database ? std::as_const(database->state().document).rasterVariables() : nullptr;
    return !variables || variables->frame != drawing::RasterVariables::kFrameOff;
}

} // namespace standin
