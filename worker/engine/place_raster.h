#pragma once

#include "worker/engine/commit_gate.h"
#include "worker/engine/request.h"

namespace worker {

/// Makes an empty raster file and a drawing with its image in place: both or neither. What stood under the raster's
/// name stays if that fails.
void makeNewRaster(NewRaster& request, CommitGate& gate);

/// Makes a drawing with the image of an existing raster file, as large as the file's own resolution says.
void insertRaster(InsertRaster& request, CommitGate& gate);

} // namespace worker
