#pragma once

#include "worker/engine/commit_gate.h"
#include "worker/engine/fonts.h"
#include "worker/engine/request.h"

namespace worker {

/// Burns what the drawing's model space shows into the raster in a file: lines with the pens of their colours, areas
/// filled, inside the region. Everything becomes ink; paper is never drawn. Raster images in the drawing are left out.
/// Puts 0 into the result, or -1, with the file untouched, when nothing of the drawing lies over a pixel that may be
/// drawn on; whether the pixels were ink before plays no part. Without fonts all text is in the stroke font.
///
/// Throws imaging::ImagingError or drawing::DrawingError, with the file as it was, for a drawing, a table of pens or a
/// raster that can't be read, for corners without an area between them, and for a drawing that is too much to draw.
void rasterizeFile(Rasterize& request, Fonts* fonts, CommitGate& gate);

} // namespace worker
