#include "standin/arx/imgvars.h"

#include "standin/arx/object_store.h"
#include "standin/arx/rx_define.h"
#include "standin/host.h"

ACRX_DEFINE_MEMBERS(AcDbRasterVariables, AcDbObject)

Acad::ErrorStatus AcDbRasterVariables::openRasterVariables(AcDbRasterVariables*& variables, AcDb::OpenMode mode,
                                                           AcDbDatabase* database)
{
    variables = nullptr;
    AcDbDatabase* from = database ? database : standin::drawingDatabase();
    if (!from)
        return Acad::eNoDatabase;
    drawing::Document& document = from->state().document;
    const drawing::RasterVariables* record = document.rasterVariables();
    if (!record && mode == AcDb::kForWrite)
        record = &document.obtainRasterVariables();
    if (!record)
        return Acad::eKeyNotFound;
    return acdbOpenObject(variables, standin::idOf(*from, record->handle), mode);
}

AcDbRasterVariables::FrameSettings AcDbRasterVariables::imageFrame() const
{
    assertReadEnabled("imageFrame");
    const auto* record = standin::recordOf<drawing::RasterVariables>(objectId());
    return record ? FrameSettings(record->frame) : kImageFrameInvalid;
}

Acad::ErrorStatus AcDbRasterVariables::setImageFrame(FrameSettings frame)
{
    const Acad::ErrorStatus status = assertWriteEnabled("setImageFrame");
    if (status != Acad::eOk)
        return status;
    auto* record = standin::recordOf<drawing::RasterVariables>(objectId());
    if (!record || frame < kImageFrameOff || frame > kImageFrameOnNoPlot)
        return Acad::eInvalidInput;
    if (record->frame != frame) {
        record->frame = frame;
        setModified();
    }
    return Acad::eOk;
}
