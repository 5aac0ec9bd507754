#pragma once

#include "worker/engine/commit_gate.h"
#include "worker/engine/request.h"

namespace worker {

/// Writes the source's image, or its part inside the region, to the target in the format asked for; the part has the
/// size of the region's box, with paper outside the region and outside the image. The resolution goes with it. Throws
/// imaging::ImagingError for an unknown or unwritable format, an unreadable source, and a region that meets no pixel;
/// the target is then as it was.
void convertFile(const ConvertFile& request, CommitGate& gate);

} // namespace worker
