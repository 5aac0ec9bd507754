// What is changed in a drawing through the host's API, and how its rasters were before, so that the desk can take it
// back.
#pragma once

#include <map>
#include <optional>
#include <vector>

#include "drawing/document.h"
#include "standin/atil/image.h"
#include "standin/host.h"

class AcDbDatabase;

namespace standin {

/// What an edit of a raster changes: the image of its definition, the number and size of its pixels, and how the image
/// entities lie that show it. The image shares its pixels with the drawing's until one side is written.
class RasterState
{
public:
    drawing::Handle definition = 0;
    std::optional<Atil::Image> image; // nothing if it was not in memory
    drawing::Vector2 pixels, pixelSize;
    std::vector<drawing::Image> entities;
};

/// The changes since they were last taken.
class EditLog
{
public:
    /// The entity was put into the drawing, or taken out.
    void noteEntity(drawing::Handle entity, bool added);
    /// The raster is about to be changed: the first call since the changes were taken keeps how it was.
    void noteRaster(AcDbDatabase& database, drawing::Handle definition);
    /// Rasters that are as they were are left out.
    std::vector<DrawingChange> take(AcDbDatabase& database);

private:
    std::vector<DrawingChange> m_changes;
    std::map<drawing::Handle, std::shared_ptr<const RasterState>> m_rasters;
};

/// Notes it if the database is an open drawing's.
void noteEntityChange(AcDbDatabase* database, drawing::Handle entity, bool added);
void noteRasterChange(AcDbDatabase* database, drawing::Handle definition);

} // namespace standin
