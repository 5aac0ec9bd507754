#pragma once

#include "worker/engine/commit_gate.h"
#include "worker/engine/request.h"

namespace worker {

/// Writes the source's image, or its part inside the region, to the target in the format asked for. This saves under
/// another name or kind of file, saves a part, and crops: then the target is the source itself. A part has the size of
/// the box around what of the region lies inside the image, with paper outside the region. The resolution goes with it.
/// Throws imaging::ImagingError for an unknown or unwritable format, an unreadable source, and a region that meets no
/// pixel; the target is then as it was.
void convertFile(const ConvertFile& request, CommitGate& gate);

} // namespace worker
